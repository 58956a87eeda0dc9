// SPDX-License-Identifier: GPL-3.0-or-later
// Schedule files (*.TFS): rows one after another, nothing else.
#ifndef ORVANE_STEPPING_TFS_FILE_H_
#define ORVANE_STEPPING_TFS_FILE_H_

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"
#include "stepping/schedule_row.h"

namespace orvane {

/// The rows of a file as far as a reader looks, and what it thinks of them.
struct ScheduleRows {
  std::vector<ScheduleRow> rows;  ///< up to the end of the file or a row with end time 0
  int bad_row = 0;                ///< number of the first row, from 1, that is refused; 0: none
  std::string refusal;            ///< why the file is refused, "row 3: ..."; empty: it is not
  bool is_cut = false;            ///< the file ends within a row
  Result<> outcome;               ///< of opening and reading it
};
ScheduleRows ReadScheduleRows(const std::filesystem::path& path);

struct ScheduleReport {
  bool is_open = false;
  int rows = 0;         ///< read
  std::string message;  ///< "PATH: reason" where the table is empty now
};
/// Fills `table` with the rows of a file, or empties it where that cannot be opened or is refused.
/// True where it has rows now.
bool ReadScheduleFile(const std::filesystem::path& path, ScheduleTable* table,
                      ScheduleReport* report);

/// Why `ReadScheduleFile` would refuse a file of these rows; empty where it would not.
std::string WhyUnreadable(std::span<const ScheduleRow> rows);

/// Writes the rows before the first empty one.
Result<> WriteScheduleFile(const std::filesystem::path& path, std::span<const ScheduleRow> rows);

}  // namespace orvane

#endif  // ORVANE_STEPPING_TFS_FILE_H_
