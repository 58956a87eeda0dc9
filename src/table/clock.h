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

/// A time that stands still.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const ParamTime& time) : time_(time) {}
  ParamTime Now() const override { return time_; }

 private:
  ParamTime time_;
};

}  // namespace orvane

#endif  // ORVANE_TABLE_CLOCK_H_
