// SPDX-License-Identifier: GPL-3.0-or-later
// The schedule file that a table names by its number.
#ifndef ORVANE_STEPPING_SCHEDULE_FILE_H_
#define ORVANE_STEPPING_SCHEDULE_FILE_H_

#include <filesystem>
#include <string>
#include <vector>

#include "files/file_system.h"
#include "stepping/schedule_row.h"
#include "table/param_table.h"

namespace orvane {

/// The numbers of "AUTO" that name schedule files, "2.TFS" to "10.TFS".
inline constexpr int kFirstScheduleFile = 2;
inline constexpr int kLastScheduleFile = 10;

/// The number of the table's schedule file; 0 where it has none, as with MT/AMT always.
int ScheduleFileNumber(const ParamTable& table);

struct ScheduleFile {
  std::filesystem::path path;
  bool is_there = false;
  std::string fault;              ///< why it is refused; empty: it is not
  std::vector<ScheduleRow> rows;  ///< none where it is refused
};
/// The file of a number beside that of the table, in any case of letters.
ScheduleFile FindScheduleFile(const std::filesystem::path& table, int number);

/// The file as it was read last: read again only where path, size or time are others, or where
/// there was none or one that is refused.
class ScheduleFileMemory {
 public:
  /// As `FindScheduleFile()`; stays valid until the next look.
  const ScheduleFile& Look(const std::filesystem::path& table, int number);

 private:
  std::filesystem::path usual_;  // in the usual case of letters
  FileInfo info_;
  ScheduleFile file_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_SCHEDULE_FILE_H_
