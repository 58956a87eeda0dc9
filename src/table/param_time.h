// SPDX-License-Identifier: GPL-3.0-or-later
// Times as text and as seconds. The calendar is the boxes' own: every fourth year is a leap year.
#ifndef ORVANE_TABLE_PARAM_TIME_H_
#define ORVANE_TABLE_PARAM_TIME_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "table/param_entry.h"

namespace orvane {

class Clock;

inline constexpr int kSecondsPerDay = 86400;

/// Whether every field is in its range; a date need not be in the calendar.
bool IsValid(const ParamTime& time);

/// "2009/06/30 14:05:00", without a date "14:05:00", "Invalid Date and Time" where it is not
/// valid.
std::string FormatParamTime(const ParamTime& time);

/// Reads "year/month/day hour:minute:second" (blank, '-', '/' and ':' all divide) or, with neither
/// '/' nor '-', "hour:minute:second". Missing trailing fields are 0, the weekday of a date becomes
/// 1. An invalid text gives an all-zero time.
ParamTime ParseParamTime(std::string_view text);

/// The same for a text that must be right: false, and `time` unchanged, for any character that is
/// no digit, blank or divider, for more fields than the form has and for what is invalid.
[[nodiscard]] bool ParseParamTimeStrictly(std::string_view text, ParamTime* time);

/// Whether century, year, month and day are all 0: a time of day.
bool HasNoDate(const ParamTime& time);

/// Seconds since 1970-01-01 00:00:00; a time without date counts from that day. 0 for 1900 to 1969,
/// 0xFFFFFFFF from 2100 on.
std::uint32_t ParamTimeToSeconds(const ParamTime& time);

/// The inverse, with the true weekday. From 2100 on: 2100-01-01 00:00:00.
ParamTime SecondsToParamTime(std::uint32_t seconds);

/// A time moved by whole hours: a time of day within its day, without a date as before; a dated one
/// through the calendar. What is invalid or would leave the years 1970 to 2099 stays as it is.
ParamTime ShiftedByHours(const ParamTime& time, std::int64_t hours);

/// Gives a time of day the date, of yesterday, today or tomorrow, that brings it closest to now.
void CompleteDateFromToday(ParamTime* time, const Clock& clock);

/// Gives an end without date the start's date, or the next day's where it would lie before the
/// start.
void CompleteEndDate(const ParamTime& start, ParamTime* end);

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_TIME_H_
