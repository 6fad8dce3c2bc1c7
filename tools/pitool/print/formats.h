// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives in the formats of other programs.
#pragma once

#include "drive_table.h"
#include "reports.h"

#include <cstddef>
#include <string>

namespace pitool {

/// Comma-separated values (RFC 4180): the names of the columns, which docs/pitool-json.md lists, and a line a
/// drive. Figures that are not known are empty, doubtful ones are in their columns and named in the last one.
/// A text that a spreadsheet would take for a formula begins with an apostrophe.
std::string CsvText(const DriveList& drives);

/// Metrics in the text format 0.0.4 that the textfile collector of Prometheus' node exporter reads: a series
/// for each drive and family. A drive is its model, serial number and device; of several reports of one the
/// newest (SortByAge) counts, since a series may be there only once; of equally old ones the worst. Where the
/// serial number identifies no drive, the worst counts.
///
/// Only what is known is printed: an alert must not rest on a doubtful figure.
/// @param refused how many inputs gave no drive
std::string PrometheusText(const DriveList& drives, std::size_t refused);

/// With more drives, good ones have no sheet on a page.
constexpr std::size_t HTML_SHEETS_OF_ALL = 500;

/// A page that can be mailed and printed, without scripts and addresses: what to act on first, pictures of
/// wear, models, all drives, and the sheets.
/// @param all     drives: they are counted and acted on
/// @param drives  those shown, in this order; the details of those that have sheets are these as HTML
/// @param refused inputs that gave no drive
std::string HtmlPage(const DriveList& all, const DriveList& drives, const Refusals& refused);

}  // namespace pitool
