// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_CLOCK_H_
#define ORVANE_TABLE_CLOCK_H_

#include "table/param_entry.h"

namespace orvane {

/// Where a rule gets the time from, so that tests can set it.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  /// The present date and time, weekday included.
  virtual ParamTime Now() const = 0;
};

/// The computer's clock in UTC, in which recordings are scheduled.
class UtcClock : public Clock {
 public:
  ParamTime Now() const override;
};

}  // namespace orvane

#endif  // ORVANE_TABLE_CLOCK_H_
