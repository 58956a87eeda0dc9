// SPDX-License-Identifier: GPL-3.0-or-later
// Where the steps of a table come from.
#ifndef ORVANE_CHECK_STEPS_H_
#define ORVANE_CHECK_STEPS_H_

#include "check/situation.h"
#include "stepping/schedule_file.h"

namespace orvane {

/// Whether the parameters give the steps.
bool HasCalculatedSteps(const Situation& situation);
/// Whether one frequency is transmitted all the time.
bool HasFixedStep(const Situation& situation);
/// Whether a file has them.
bool HasStepFile(const Situation& situation);

/// The file that "AUTO" names, beside the table and in any case.
ScheduleFile FindSchedule(const Situation& situation);

/// The steps of the parameters; none without a schedule.
CheckedSteps CalculatedSteps(const Situation& situation);
/// The steps of the file.
CheckedSteps FileSteps(const Situation& situation);

}  // namespace orvane

#endif  // ORVANE_CHECK_STEPS_H_
