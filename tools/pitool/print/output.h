// SPDX-License-Identifier: Apache-2.0
/// @file
/// The two streams that pitool writes to.
#pragma once

#include "print/terminal.h"

#include <string_view>

namespace pitool {

/// Makes a reader that goes away an error of the writer instead of its death. Call once, at the start.
void PrepareOutput();

/// Says when both streams are coloured; AUTO until then.
void UseColors(WhenColor when);

/// What a text for standard output is laid out for.
Screen OutputScreen();

/// Writes all of a text to standard output.
///
/// @return false when it could not be written whole; then it has said so on standard error, once, unless the
///         reader just went away
bool WriteOutput(std::string_view text);

/// Writes "pitool: message" as one line to standard error.
void ReportError(std::string_view message);

/// Writes "pitool: warning: message" as one line to standard error.
void ReportWarning(std::string_view message);

/// Writes "pitool: file: reason" as one line to standard error.
void ReportFileError(std::string_view file, std::string_view reason);

/// Writes "pitool: file: warning: message" as one line to standard error.
void ReportFileWarning(std::string_view file, std::string_view message);

}  // namespace pitool
