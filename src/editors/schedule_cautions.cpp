// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/schedule_cautions.h"

#include "table/param_time.h"

namespace orvane {

bool IsUnset(const ParamTime& time) { return time == ParamTime{}; }

ScheduleCautions CautionSchedule(ParamTime start, ParamTime end, const Clock& now) {
  ScheduleCautions cautions;
  if (IsUnset(start)) {
    return cautions;
  }
  CompleteDateFromToday(&start, now);
  if (ParamTimeToSeconds(start) < ParamTimeToSeconds(now.Now())) {
    cautions.start = "in the past (it is " + FormatParamTime(now.Now()) + " UTC)";
  }
  if (!IsUnset(end)) {
    CompleteEndDate(start, &end);
    if (ParamTimeToSeconds(end) < ParamTimeToSeconds(start)) {
      cautions.end = "before the start";
    }
  }
  return cautions;
}

}  // namespace orvane
