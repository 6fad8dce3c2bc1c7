// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives in the text format 0.0.4 that the textfile collector of Prometheus' node exporter reads.
#pragma once

#include "drive_summary.h"

#include <string>
#include <vector>

namespace pitool {

/// A series for each drive and family. A drive is its model, serial number and device; of several reports of
/// one the newest counts, since a series may be there only once; of those of one time the worst. Where the
/// serial number identifies no drive, the worst counts.
///
/// Only what is known is printed: an alert must not rest on a doubtful figure.
/// @param refused how many inputs gave no drive
std::string PrometheusText(const std::vector<const DriveSummary*>& drives, std::size_t refused);

}  // namespace pitool
