// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/schedule_file.h"

#include "base/number_text.h"
#include "files/file_system.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "stepping/tfs_file.h"
#include "table/param_access.h"
#include "table/tech.h"

namespace orvane {

int ScheduleFileNumber(const ParamTable& table) {
  const std::int32_t number = IntParam(table, "AUTO");
  const bool is_one =
      TechOf(table) != kMtAmt && number >= kFirstScheduleFile && number <= kLastScheduleFile;
  return is_one ? number : 0;
}

namespace {

std::filesystem::path UsualPath(const std::filesystem::path& table, int number) {
  return table.parent_path() / PathOf(FormatInt(number) + ".TFS");
}

// Of the file as it is found.
ScheduleFile Read(const std::filesystem::path& path) {
  ScheduleFile file{.path = path, .fault = {}, .rows = {}};
  file.is_there = Exists(file.path) != Existence::kNotThere;
  if (!file.is_there) {
    return file;
  }
  ScheduleRows read = ReadScheduleRows(file.path);
  file.fault = read.outcome ? read.refusal : read.outcome.Message();
  if (file.fault.empty()) {
    file.rows = std::move(read.rows);
  }
  return file;
}

// What failed is told: the file is there, or perhaps not.
template <typename ReadFile>
ScheduleFile FileOf(const std::filesystem::path& usual, const ReadFile& read) {
  const auto found = FindInAnyCase(usual);
  return found
             ? read(*found)
             : ScheduleFile{.path = usual, .is_there = true, .fault = found.Message(), .rows = {}};
}

}  // namespace

ScheduleFile FindScheduleFile(const std::filesystem::path& table, int number) {
  return FileOf(UsualPath(table, number), Read);
}

const ScheduleFile& ScheduleFileMemory::Look(const std::filesystem::path& table, int number) {
  return last_ = FileOf(UsualPath(table, number), [this](const std::filesystem::path& path) {
           return seen_.Get(path, [&path] { return Read(path); });
         });
}

}  // namespace orvane
