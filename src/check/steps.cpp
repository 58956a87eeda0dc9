// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/steps.h"

#include <algorithm>

#include "base/number_text.h"
#include "check/check_memory.h"
#include "files/file_system.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "stepping/step_table.h"
#include "stepping/tfs_file.h"

namespace orvane {
namespace {

CheckMemory::Schedule ReadSchedule(const std::filesystem::path& path) {
  ScheduleRows read = ReadScheduleRows(path);
  CheckMemory::Schedule schedule;
  schedule.fault = read.outcome ? read.refusal : read.outcome.Message();
  if (schedule.fault.empty()) {
    schedule.rows = std::move(read.rows);
  }
  return schedule;
}

}  // namespace

ScheduleFile FindSchedule(const Situation& situation) {
  const std::filesystem::path path =
      situation.places.table.parent_path() / PathOf(FormatInt(situation.Int("AUTO")) + ".TFS");
  ScheduleFile file{.path = path, .fault = {}, .rows = {}};
  const auto found = FindInAnyCase(path);
  if (!found) {
    file.is_there = true;  // or perhaps not: what failed is told
    file.fault = found.Message();
    return file;
  }
  file.path = *found;
  file.is_there = Exists(file.path) != Existence::kNotThere;
  if (!file.is_there) {
    return file;
  }
  CheckMemory::Schedule held = situation.places.memory->schedules.Get(
      file.path, [&file] { return ReadSchedule(file.path); });
  file.fault = std::move(held.fault);
  file.rows = std::move(held.rows);
  return file;
}

CheckedSteps CalculatedSteps(const Situation& situation) {
  CheckedSteps steps{.rows = {}, .key = "FRQ0"};
  ScheduleTable table;
  if (HasCalculatedSteps(situation) &&
      CalculateStepTable(StoredStepParameters(situation.table), StoredFrequencies(situation.table),
                         &table) == kStepsCalculated) {
    const auto rows = WrittenRows(table);
    steps.rows.assign(rows.begin(), rows.end());
  }
  return steps;
}

CheckedSteps FileSteps(const Situation& situation) {
  CheckedSteps steps{.rows = {}, .key = "AUTO"};
  if (HasStepFile(situation) && !situation.places.table.empty()) {
    steps.rows = FindSchedule(situation).rows;
  }
  return steps;
}

}  // namespace orvane
