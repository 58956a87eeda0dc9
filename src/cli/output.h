// SPDX-License-Identifier: GPL-3.0-or-later
// Results go to stdout, everything else to stderr.
#ifndef ORVANE_CLI_OUTPUT_H_
#define ORVANE_CLI_OUTPUT_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "core/param_table.h"
#include "core/tbl_file.h"

namespace orvane {

/// Exit codes of the tool.
enum ExitCode : int { kAllDone = 0, kSomeFailed = 1, kWrongUsage = 2 };

/// Writes a result to stdout. False, with a message, where it cannot take it.
[[nodiscard]] bool PrintResult(std::string_view text);

/// A line on stderr that begins with the tool's name.
void PrintMessage(std::string_view text);

/// Stored bytes as they are, control bytes as \xNN.
std::string Printable(std::string_view bytes);

/// The value of an entry as text, printable.
std::string PrintableValue(const ParamEntry& entry);

/// Loads a file onto the dictionary's defaults. False, with a message, where that fails.
[[nodiscard]] bool LoadOntoDefaults(const std::filesystem::path& path, ParamTable* table,
                                    TblReport* report);

}  // namespace orvane

#endif  // ORVANE_CLI_OUTPUT_H_
