// SPDX-License-Identifier: GPL-3.0-or-later
// Schedule files as text.
#ifndef ORVANE_STEPPING_SCHEDULE_TEXT_H_
#define ORVANE_STEPPING_SCHEDULE_TEXT_H_

#include "files/batch.h"

namespace orvane {

/// NAME.TFS becomes NAME.txt: one line for each row with number, end time, waveform, frequency and
/// current. A file that a reader would refuse is listed all the same, the reason after the first
/// bad row and noted.
Conversion ScheduleText();

}  // namespace orvane

#endif  // ORVANE_STEPPING_SCHEDULE_TEXT_H_
