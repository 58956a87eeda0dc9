// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/fdem_schedule.h"

#include <limits>

namespace orvane {

bool BuildFdemSchedule(const FdemRequest& request, std::vector<ScheduleRow>* rows) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  rows->clear();
  std::int64_t end = 0;
  for (const double frequency : request.is_reduced ? ReducedFrequencySet() : WholeFrequencySet()) {
    double seconds = request.cycles / frequency + 0.5;
    if (seconds < request.seconds) {
      seconds = request.seconds;
    }
    end += static_cast<std::int64_t>(seconds);  // 32-bit cycles over 0.3 Hz: far from 64 bits
    if (end > kMost || end < -kMost) {
      return false;
    }
    rows->push_back(
        {static_cast<std::int32_t>(end), kFrequencyDomainWaveform, frequency, request.current});
  }
  return true;
}

}  // namespace orvane
