// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_RECORD_TIME_H_
#define ORVANE_EXPORT_RECORD_TIME_H_

#include <cstdint>
#include <optional>

#include "table/param_time.h"

namespace orvane {

/// Seconds since 1970 of a record's time stamp, taken as UTC; none where it has no date that can be
/// told so.
inline std::optional<std::uint32_t> SecondsOf(const ParamTime& time) {
  constexpr std::uint32_t kNoTime = 0xFFFFFFFF;
  const std::uint32_t seconds = ParamTimeToSeconds(time);
  const bool is_known = IsValid(time) && !HasNoDate(time) && seconds != 0 && seconds != kNoTime;
  return is_known ? std::optional(seconds) : std::nullopt;
}

}  // namespace orvane

#endif  // ORVANE_EXPORT_RECORD_TIME_H_
