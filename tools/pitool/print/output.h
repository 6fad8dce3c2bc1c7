// SPDX-License-Identifier: Apache-2.0
/// @file
/// The two streams that pitool writes to.
#pragma once

#include "print/terminal.h"

#include <string>
#include <string_view>

namespace pitool {

/// Makes a reader that goes away an error of the writer instead of its death. Call once, at the start.
void PrepareOutput();

/// Says when both streams are coloured; AUTO until then.
void UseColors(WhenColor when);

/// What a text for standard output is laid out for.
Screen OutputScreen();

/// Lets WriteOutput write to a file instead of standard output: to a new one beside it, which CloseOutput
/// renames, so that a reader finds the old content or all of the new.
///
/// A link is followed. What exists and is no regular file is refused.
/// @return false when it cannot be created; standard error says why
bool OpenOutput(const std::string& file);

/// Puts the file in place, with the mode of the one that was there before. Without OpenOutput it does
/// nothing.
/// @param isWhole false: something could not be written, and the old file stays
/// @return false when the file could not be put in place; standard error says why
bool CloseOutput(bool isWhole);

/// Shows on standard error, if it is a terminal, how far the work is; the next message or output replaces it.
/// @param text empty: nothing
void ShowProgress(std::string_view text);

/// Writes all of a text to standard output, or to the file of OpenOutput.
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
