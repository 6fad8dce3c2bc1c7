// SPDX-License-Identifier: Apache-2.0
/// @file
/// SCSI sense codes as text.
#pragma once

#include "sense_data.h"
#include "terminal.h"

#include <string>

namespace pitool {

/// What sense codes mean.
struct SenseMeaning {
    std::string m_KeyText;
    std::string m_AdditionalText;  ///< empty: the pair is unknown
    std::string m_Severity;        ///< as events name it
};

SenseMeaning ExplainSense(const SenseCodes& codes);

/// Meaning as lines of text, or as JSON.
std::string SenseSheet(const SenseCodes& codes, const Screen& screen = {});
std::string SenseJson(const SenseCodes& codes);

}  // namespace pitool
