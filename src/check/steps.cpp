// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/steps.h"

#include "check/check_memory.h"
#include "stepping/step_table.h"

namespace orvane {

ScheduleFile FindSchedule(const Situation& situation) {
  return situation.places.memory->schedules.Look(situation.places.table, situation.Int("AUTO"));
}

// Without a schedule the one frequency is the only step; it has no end.
CheckedSteps FixedStep(const Situation& situation) {
  CheckedSteps steps{.rows = {}, .key = "CREQ"};
  if (situation.Real("CREQ") > 0) {
    steps.rows.push_back(
        {.end_time = {}, .waveform = {}, .frequency = situation.Real("CREQ"), .current = {}});
  }
  return steps;
}

CheckedSteps CalculatedSteps(const Situation& situation) {
  if (HasFixedStep(situation)) {
    return FixedStep(situation);
  }
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
