// SPDX-License-Identifier: GPL-3.0-or-later
// Whether boxes may leave with a table: rules over it and over the files that go with it.
// docs/checks.md lists them.
#ifndef ORVANE_CHECK_CHECK_H_
#define ORVANE_CHECK_CHECK_H_

#include <filesystem>
#include <memory>
#include <vector>

#include "check/finding.h"
#include "table/param_table.h"

namespace orvane {

struct CheckMemory;

/// Where the files are that rules look at; an empty path leaves out the rules that need it.
struct Places {
  std::filesystem::path table;         ///< the file of the table: schedule files lie beside it
  std::filesystem::path calibrations;  ///< a folder
  std::filesystem::path card;          ///< a folder on the card or disk that will be recorded on
  /// The folder of the boxes' start-up files, SERIAL.tbl or SERIAL/StartUp.tbl in any case.
  std::filesystem::path set;
  /// What was seen of files before, where somebody looks again and again.
  std::shared_ptr<CheckMemory> memory = {};
};

/// What the rules say that need no file, in the order of the rules. Quick enough for every edit.
/// `now` is in UTC.
std::vector<Finding> CheckTable(const ParamTable& table, const ParamTime& now);

/// What the others say, and the rules of steps where the steps are in a file. Reads files and
/// folders, writes nothing, and uses only what it is given: for a thread of its own, give it
/// copies.
std::vector<Finding> CheckFiles(const ParamTable& table, const ParamTime& now,
                                const Places& places);

/// What all rules say, those that need no file first.
std::vector<Finding> CheckAll(const ParamTable& table, const ParamTime& now, const Places& places);

}  // namespace orvane

#endif  // ORVANE_CHECK_CHECK_H_
