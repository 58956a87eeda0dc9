// SPDX-License-Identifier: GPL-3.0-or-later
// The schedule file that a table names by its number.
#ifndef ORVANE_STEPPING_SCHEDULE_FILE_H_
#define ORVANE_STEPPING_SCHEDULE_FILE_H_

#include <filesystem>
#include <string>
#include <vector>

#include "files/seen_files.h"
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

/// The same, read again only where something of the file has changed.
class ScheduleFileMemory {
 public:
  /// Stays valid until the next look.
  const ScheduleFile& Look(const std::filesystem::path& table, int number);

 private:
  SeenFiles<ScheduleFile> seen_;
  ScheduleFile last_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_SCHEDULE_FILE_H_
