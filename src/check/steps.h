// SPDX-License-Identifier: GPL-3.0-or-later
// Where the steps of a table come from.
#ifndef ORVANE_CHECK_STEPS_H_
#define ORVANE_CHECK_STEPS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "check/situation.h"

namespace orvane {

/// The numbers of "AUTO" that name schedule files, "2.TFS" to "10.TFS".
inline constexpr int kFirstScheduleFile = 2;
inline constexpr int kLastScheduleFile = 10;

/// Whether the parameters give the steps.
bool HasCalculatedSteps(const Situation& situation);
/// Whether a file has them.
bool HasStepFile(const Situation& situation);

struct ScheduleFile {
  std::filesystem::path path;
  bool is_there = false;
  std::string fault;              ///< why it is refused; empty: it is not
  std::vector<ScheduleRow> rows;  ///< none where it is refused
};
/// The file that "AUTO" names, beside the table and in any case.
ScheduleFile FindSchedule(const Situation& situation);

/// The steps of the parameters; none without a schedule.
CheckedSteps CalculatedSteps(const Situation& situation);
/// The steps of the file.
CheckedSteps FileSteps(const Situation& situation);

}  // namespace orvane

#endif  // ORVANE_CHECK_STEPS_H_
