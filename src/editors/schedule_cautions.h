// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_SCHEDULE_CAUTIONS_H_
#define ORVANE_EDITORS_SCHEDULE_CAUTIONS_H_

#include <string>

#include "table/clock.h"
#include "table/param_entry.h"

namespace orvane {

/// Whether a time was never set: every byte is zero.
bool IsUnset(const ParamTime& time);

/// What a crew should know of the times of an MT/AMT recording, in UTC; empty: nothing. Dates that
/// are left out are completed as a box does, and as the estimate of the space does.
struct ScheduleCautions {
  std::string start;  ///< it is in the past
  std::string end;    ///< it is before the start
};
ScheduleCautions CautionSchedule(ParamTime start, ParamTime end, const Clock& now);

}  // namespace orvane

#endif  // ORVANE_EDITORS_SCHEDULE_CAUTIONS_H_
