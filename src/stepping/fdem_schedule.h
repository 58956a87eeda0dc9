// SPDX-License-Identifier: GPL-3.0-or-later
// Schedules from a fixed set of frequencies, apart from any table.
#ifndef ORVANE_STEPPING_FDEM_SCHEDULE_H_
#define ORVANE_STEPPING_FDEM_SCHEDULE_H_

#include <cstdint>
#include <span>
#include <vector>

#include "stepping/schedule_row.h"

namespace orvane {

/// In Hz, descending: 143 and 78 of them.
std::span<const double> WholeFrequencySet();
std::span<const double> ReducedFrequencySet();

struct FdemRequest {
  std::int32_t seconds = 0;  ///< each step lasts at least so long
  std::int32_t cycles = 0;   ///< for each frequency
  double current = 0;        ///< A, of every step
  bool is_reduced = false;
};

/// The rows of the schedule. Neither a day nor a falling current bounds it; `false` where an end
/// time does not fit 32 bits.
bool BuildFdemSchedule(const FdemRequest& request, std::vector<ScheduleRow>* rows);

}  // namespace orvane

#endif  // ORVANE_STEPPING_FDEM_SCHEDULE_H_
