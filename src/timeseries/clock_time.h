// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_CLOCK_TIME_H_
#define ORVANE_TIMESERIES_CLOCK_TIME_H_

#include <string>

#include "table/param_entry.h"
#include "timeseries/waveform_channels.h"

namespace orvane {

/// "14:05:00.25": the time of day so many seconds after a record's start, which may be before it or
/// on another day. At most 9 decimals.
std::string ClockText(const ParamTime& start, double seconds, int decimals);

/// Round times of day between two times in seconds from the start, at most `most`; the values are
/// seconds from the start, the precision the decimals of their seconds.
AxisTicks ClockTicks(const ParamTime& start, double low, double high, int most);

/// As many decimals as tell scans apart that are so many seconds apart.
int ClockDecimals(double seconds_per_scan);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_CLOCK_TIME_H_
