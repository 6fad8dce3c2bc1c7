// SPDX-License-Identifier: Apache-2.0
/// @file
/// SCSI sense data as text.
#pragma once

#include "print/terminal.h"

#include <pi/sense.h>

#include <string>

namespace pitool {

/// What sense codes mean.
struct SenseMeaning {
    std::string m_KeyText;
    std::string m_AdditionalText;  ///< empty: the pair is unknown, or not in the data
    std::string m_Severity;        ///< as events name it
};

/// @param sense holds a key
SenseMeaning ExplainSense(const PI::CSense& sense);

/// Meaning as lines of text, or as JSON.
/// @param sense  holds a key
/// @param isData false when the codes were given by themselves: then nothing is said of a format
std::string SenseSheet(const PI::CSense& sense, bool isData, const Screen& screen = {});
std::string SenseJson(const PI::CSense& sense, bool isData);

}  // namespace pitool
