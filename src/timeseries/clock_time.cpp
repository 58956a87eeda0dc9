// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/clock_time.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "base/number_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr int kMostDecimals = 9;
constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 3600;

double SecondOfDay(const ParamTime& time) {
  return time.hour * kSecondsPerHour + time.minute * kSecondsPerMinute + time.second;
}

std::string Digits(std::int64_t value, std::size_t width) {
  const std::string digits = FormatInt(value);
  return std::string(width > digits.size() ? width - digits.size() : 0, '0').append(digits);
}

// Steps that a clock's face has; below a second they are decimal, above a day whole days.
double RoundStep(double least) {
  constexpr auto kSteps = std::to_array<double>(
      {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200});
  const auto* const step = std::lower_bound(kSteps.begin(), kSteps.end(), least);
  return step != kSteps.end() ? *step : std::ceil(least / kSecondsPerDay) * kSecondsPerDay;
}

}  // namespace

std::string ClockText(const ParamTime& start, double seconds, int decimals) {
  decimals = std::clamp(decimals, 0, kMostDecimals);
  const auto parts = static_cast<std::int64_t>(std::llround(std::pow(10.0, decimals)));
  const std::int64_t day = kSecondsPerDay * parts;
  const auto moved = static_cast<std::int64_t>(
      std::llround(std::fmod(seconds, kSecondsPerDay) * static_cast<double>(parts)));
  const auto at = static_cast<std::int64_t>(SecondOfDay(start)) * parts + moved;
  const std::int64_t in_day = ((at % day) + day) % day;
  const std::int64_t second = in_day / parts;
  std::string text = Digits(second / kSecondsPerHour, 2)
                         .append(":")
                         .append(Digits(second / kSecondsPerMinute % kSecondsPerMinute, 2))
                         .append(":")
                         .append(Digits(second % kSecondsPerMinute, 2));
  return decimals == 0
             ? text
             : text.append(".").append(Digits(in_day % parts, static_cast<std::size_t>(decimals)));
}

AxisTicks ClockTicks(const ParamTime& start, double low, double high, int most) {
  const double begin = SecondOfDay(start);
  AxisTicks ticks = TicksBetween(begin + low, begin + high, most);
  if (ticks.step >= 1) {
    ticks.precision = 0;
    ticks.step = RoundStep((high - low) / most);
    ticks.values.clear();
    const double first = std::ceil((begin + low) / ticks.step - 1e-9);
    for (int i = 0; i <= most && (first + i) * ticks.step <= begin + high; ++i) {
      ticks.values.push_back((first + i) * ticks.step);
    }
  }
  for (double& value : ticks.values) {
    value -= begin;
  }
  return ticks;
}

int ClockDecimals(double seconds_per_scan) {
  return seconds_per_scan > 0 && seconds_per_scan < 1
             ? std::min(static_cast<int>(std::ceil(-std::log10(seconds_per_scan))) + 1,
                        kMostDecimals)
             : 0;
}

}  // namespace orvane
