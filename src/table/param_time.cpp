// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_time.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <optional>

#include "base/number_text.h"
#include "table/clock.h"

namespace orvane {
namespace {

constexpr std::uint32_t kDaysPerBlock = 1461;  // four years
constexpr std::uint32_t kEndOfTime =
    4102444800U;  // 2100-01-01, the first that seconds cannot express

// Days before each month, January first.
constexpr std::array<std::uint32_t, 12> kCommonYear = {0,   31,  59,  90,  120, 151,
                                                       181, 212, 243, 273, 304, 334};
constexpr std::array<std::uint32_t, 12> kLeapYear = {0,   31,  60,  91,  121, 152,
                                                     182, 213, 244, 274, 305, 335};

const std::array<std::uint32_t, 12>& DaysBeforeMonths(std::uint32_t year_in_century) {
  return year_in_century % 4 == 0 ? kLeapYear : kCommonYear;
}

bool IsDivider(char c) { return c == ' ' || c == '-' || c == '/' || c == ':'; }

// The numbers between the dividers; more than six are counted but not kept.
struct Fields {
  std::array<std::int32_t, 6> numbers{};
  std::size_t count = 0;
};

Fields SplitFields(std::string_view text) {
  Fields fields;
  for (std::size_t at = 0; at < text.size();) {
    if (IsDivider(text[at])) {
      ++at;
      continue;
    }
    const auto end = static_cast<std::size_t>(
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), IsDivider) -
        text.begin());
    if (fields.count < fields.numbers.size()) {
      fields.numbers[fields.count] = ParseIntPrefix(text.substr(at, end - at));
    }
    ++fields.count;
    at = end;
  }
  return fields;
}

bool HasDateForm(std::string_view text) {
  return text.find_first_of("/-") != std::string_view::npos;
}

bool IsInRange(std::int32_t value, std::int32_t limit) { return value >= 0 && value < limit; }

// kept: September is checked by a rule of its own and has 30 days like the others; a year counts
// as a leap year by its two last digits alone, so 1900 and 2100 do.
bool IsDayOfMonth(std::int32_t day, std::int32_t month, std::int32_t year_in_century) {
  switch (month) {
    case 2:
      return day < (year_in_century % 4 == 0 ? 30 : 29);
    case 4:
    case 6:
    case 9:
    case 11:
      return day < 31;
    default:
      return true;
  }
}

std::optional<ParamTime> TimeFromFields(const Fields& fields, bool with_date) {
  const std::int32_t* number = fields.numbers.data();
  ParamTime time;
  if (with_date) {
    const std::int32_t century = number[0] / 100;
    const std::int32_t year = number[0] % 100;
    if (century < 19 || century > 99 || !IsInRange(number[1], 13) || !IsInRange(number[2], 32) ||
        !IsDayOfMonth(number[2], number[1], year)) {
      return std::nullopt;
    }
    time.century = static_cast<std::uint8_t>(century);
    time.year = static_cast<std::uint8_t>(year);
    time.month = static_cast<std::uint8_t>(number[1]);
    time.day = static_cast<std::uint8_t>(number[2]);
    time.weekday = 1;
    number += 3;
  }
  if (!IsInRange(number[0], 24) || !IsInRange(number[1], 60) || !IsInRange(number[2], 60)) {
    return std::nullopt;
  }
  time.hour = static_cast<std::uint8_t>(number[0]);
  time.minute = static_cast<std::uint8_t>(number[1]);
  time.second = static_cast<std::uint8_t>(number[2]);
  return time;
}

std::string TwoDigits(std::uint8_t number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

}  // namespace

bool IsValid(const ParamTime& time) {
  return time.second <= 59 && time.minute <= 59 && time.hour <= 23 && time.day <= 31 &&
         time.month <= 12 && time.year <= 99 && time.weekday <= 7 && time.century <= 99 &&
         (time.century == 0 || time.century >= 19);
}

std::string FormatParamTime(const ParamTime& time) {
  if (!IsValid(time)) {
    return "Invalid Date and Time";
  }
  std::string text =
      TwoDigits(time.hour) + ":" + TwoDigits(time.minute) + ":" + TwoDigits(time.second);
  if (!HasNoDate(time) || time.weekday != 0) {
    text = TwoDigits(time.century) + TwoDigits(time.year) + "/" + TwoDigits(time.month) + "/" +
           TwoDigits(time.day) + " " + text;
  }
  return text;
}

ParamTime ParseParamTime(std::string_view text) {
  return TimeFromFields(SplitFields(text), HasDateForm(text)).value_or(ParamTime{});
}

bool ParseParamTimeStrictly(std::string_view text, ParamTime* time) {
  const bool with_date = HasDateForm(text);
  const Fields fields = SplitFields(text);
  const auto result = TimeFromFields(fields, with_date);
  if (!result || fields.count > (with_date ? 6U : 3U) ||
      !std::all_of(text.begin(), text.end(), [](char c) { return IsDigit(c) || IsDivider(c); })) {
    return false;
  }
  *time = *result;
  return true;
}

bool HasNoDate(const ParamTime& time) {
  return time.century == 0 && time.year == 0 && time.month == 0 && time.day == 0;
}

std::uint32_t ParamTimeToSeconds(const ParamTime& time) {
  std::uint32_t years = 0;
  if (time.century > 20) {
    return 0xFFFFFFFF;
  }
  if (time.century == 20) {
    years = time.year + 30U;
  } else if (time.century == 19) {
    if (time.year < 70) {
      return 0;
    }
    years = time.year - 70U;
  }
  std::uint32_t days = years * 365 + (years + 1) / 4;
  if (time.month >= 1 && time.month <= 12) {
    days += DaysBeforeMonths(time.year)[time.month - 1U] + time.day - 1U;
  }
  return days * kSecondsPerDay + time.hour * 3600U + time.minute * 60U + time.second;
}

ParamTime SecondsToParamTime(std::uint32_t seconds) {
  const std::uint32_t days = seconds / kSecondsPerDay;
  const std::uint32_t rest = seconds % kSecondsPerDay;
  const std::uint32_t day_of_block = days % kDaysPerBlock;
  // The third year of a block is the leap year (1972) and ends at day 1096.
  const std::uint32_t year_of_block = day_of_block < 1096 ? std::min(day_of_block / 365, 2U) : 3;
  const std::uint32_t year = 1970 + 4 * (days / kDaysPerBlock) + year_of_block;
  std::uint32_t day = day_of_block - (year_of_block == 3 ? 1096 : year_of_block * 365);

  ParamTime time;
  time.weekday = static_cast<std::uint8_t>((days + 3) % 7 + 1);
  if (year >= 2100) {
    time.century = 21;
    time.month = 1;
    time.day = 1;
    return time;
  }
  const auto& before = DaysBeforeMonths(year);
  const auto month = std::upper_bound(before.begin(), before.end(), day) - before.begin();
  day -= before[static_cast<std::size_t>(month - 1)];
  time.century = static_cast<std::uint8_t>(year / 100);
  time.year = static_cast<std::uint8_t>(year % 100);
  time.month = static_cast<std::uint8_t>(month);
  time.day = static_cast<std::uint8_t>(day + 1);
  time.hour = static_cast<std::uint8_t>(rest / 3600);
  time.minute = static_cast<std::uint8_t>(rest / 60 % 60);
  time.second = static_cast<std::uint8_t>(rest % 60);
  return time;
}

namespace {

void TakeDate(const ParamTime& from, ParamTime* time) {
  time->century = from.century;
  time->year = from.year;
  time->month = from.month;
  time->day = from.day;
  time->weekday = from.weekday;
}

}  // namespace

ParamTime ShiftedByHours(const ParamTime& time, std::int64_t hours) {
  if (hours == 0 || !IsValid(time)) {
    return time;
  }
  ParamTime shifted = time;
  if (HasNoDate(time) && time.weekday == 0) {
    shifted.hour = static_cast<std::uint8_t>(((time.hour + hours) % 24 + 24) % 24);
    return shifted;
  }
  const std::int64_t seconds = ParamTimeToSeconds(time);
  const std::int64_t moved = seconds + hours * 3600;
  const bool is_countable = time.century >= 19 && time.month > 0 && time.day > 0 &&
                            (time.century > 19 || time.year >= 70) && seconds < kEndOfTime;
  if (!is_countable || moved < 0 || moved >= kEndOfTime) {
    return time;
  }
  return SecondsToParamTime(static_cast<std::uint32_t>(moved));
}

void CompleteDateFromToday(ParamTime* time, const Clock& clock) {
  if (!HasNoDate(*time)) {
    return;
  }
  const ParamTime now = clock.Now();
  TakeDate(now, time);
  const std::uint32_t seconds = ParamTimeToSeconds(*time);
  const auto behind = std::int64_t{ParamTimeToSeconds(now)} - std::int64_t{seconds};
  if (behind > kSecondsPerDay / 2) {
    *time = SecondsToParamTime(seconds + kSecondsPerDay);
  } else if (behind < -kSecondsPerDay / 2) {
    *time = SecondsToParamTime(seconds - kSecondsPerDay);
  }
}

void CompleteEndDate(const ParamTime& start, ParamTime* end) {
  if (!HasNoDate(*end)) {
    return;
  }
  TakeDate(start, end);
  if (const std::uint32_t seconds = ParamTimeToSeconds(*end); seconds < ParamTimeToSeconds(start)) {
    *end = SecondsToParamTime(seconds + kSecondsPerDay);
  }
}

ParamTime UtcClock::Now() const {
  const std::time_t now = std::time(nullptr);
  return SecondsToParamTime(static_cast<std::uint32_t>(now));
}

}  // namespace orvane
