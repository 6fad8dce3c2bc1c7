// SPDX-License-Identifier: Apache-2.0
/// @file
/// The two streams that pitool writes to.
#pragma once

#include "print/text.h"

#include <string>
#include <string_view>

namespace pitool {

/// Makes what would end the program while it writes, a reader that went away or a limit of the size of files,
/// an error of the writer. Call once, at the start.
void PrepareOutput();

/// @param when both streams are coloured: "always", "never", or "auto", as without a call: on a terminal that
///             knows colours, unless NO_COLOR is set
void UseColors(const std::string& when);

/// What a text for the output is laid out for. A terminal has the width that it says, else that of COLUMNS,
/// else 80 columns. What is coloured although it is no terminal is likely shown on one later, and has the
/// width of COLUMNS where that is given.
Screen OutputScreen();

/// Lets WriteOutput write to a new file beside this one, which CloseOutput renames, so that a reader finds
/// the old content or all of the new, and which a signal that ends the program removes. A link is followed.
/// What exists and is no regular file is refused, and so is a link to nothing.
/// @return false when it cannot be created; standard error says why
bool OpenOutput(const std::string& file);

/// Puts the file of OpenOutput, if any, in place, with the mode of the one that was there before.
/// @param isWhole false: something could not be written, and the old file stays
/// @return whether all is written and in place; else standard error says why
bool CloseOutput(bool isWhole);

/// Shows on standard error, if it is a terminal, how far the work is; the next message or output replaces it.
/// @param text empty: nothing
void ShowProgress(std::string_view text);

/// Writes all of a text to standard output, or to the file of OpenOutput.
/// @return false when it could not be written whole; then it has said so on standard error, unless the reader
///         just went away
bool WriteOutput(std::string_view text);

/// Writes "pitool: message" as one line to standard error.
void ReportError(std::string_view message);

/// Writes "pitool: file: warning: message" as one line to standard error.
/// @param file empty: of none
void ReportWarning(std::string_view file, std::string_view message);

}  // namespace pitool
