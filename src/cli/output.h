// SPDX-License-Identifier: GPL-3.0-or-later
// Results go to stdout, everything else to stderr.
#ifndef ORVANE_CLI_OUTPUT_H_
#define ORVANE_CLI_OUTPUT_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "table/param_table.h"
#include "table/tbl_file.h"

namespace orvane {

/// Exit codes of the tool.
enum ExitCode : int { kAllDone = 0, kSomeFailed = 1, kWrongUsage = 2 };

/// Writes a result to stdout. False, with a message, where it cannot take it.
[[nodiscard]] bool PrintResult(std::string_view text);

/// A line on stderr that begins with the tool's name. On a terminal it is `PrintableUtf8()`.
void PrintMessage(std::string_view text);

/// What the parser says of a wrong command line, in lines of its own.
void PrintUsageFault(std::string_view text);

/// A line of stdout that is a path: on a terminal `PrintableUtf8()`, elsewhere byte for byte.
std::string PathLine(const std::filesystem::path& path);

/// True, with a message, where a result would take the place of the file it comes from, or where
/// the system does not say.
[[nodiscard]] bool IsInput(const std::filesystem::path& to, const std::filesystem::path& file,
                           std::string_view refusal);

/// The value of an entry as text, in UTF-8 and printable.
std::string PrintableValue(const ParamEntry& entry);

/// The method of a table whose file does not name it.
enum class WithoutMethod {
  kDefault,  ///< that of the dictionary
  kMtAmt,    ///< 5, as the desktop program takes it
};

/// Loads a file onto the dictionary's defaults. False, with a message, where that fails. Of a file
/// that does not hold all parameters a message says how many it holds.
[[nodiscard]] bool LoadOntoDefaults(const std::filesystem::path& path, ParamTable* table,
                                    TblReport* report,
                                    WithoutMethod method = WithoutMethod::kDefault);

/// The same for the verbs of `table`: without a method it is MT/AMT, and a message names records
/// that the table has no place for.
[[nodiscard]] bool LoadTable(const std::filesystem::path& path, ParamTable* table,
                             TblReport* report);

/// Says what a file holds after its last whole record, if anything.
void TellCut(const std::filesystem::path& path, const TblReport& report);

/// The entry of a key that a user typed; null, with a message, where there is none. A key is looked
/// up by its first eight characters; what is longer is not a key.
const ParamEntry* FindOrTell(const ParamTable& table, const std::string& key);

}  // namespace orvane

#endif  // ORVANE_CLI_OUTPUT_H_
