// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_time.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <utility>

#include "support/told.h"
#include "table/clock.h"

namespace orvane {
namespace {

ParamTime At(int year, int month, int day, int hour, int minute, int second, int weekday = 1) {
  const auto byte = [](int number) { return static_cast<std::uint8_t>(number); };
  return {byte(second), byte(minute),     byte(hour),    byte(day),
          byte(month),  byte(year % 100), byte(weekday), byte(year / 100)};
}

TEST(ParamTime, AsText) {
  const std::pair<ParamTime, const char*> cases[] = {
      {{5, 4, 3, 0, 0, 0, 0, 0}, "03:04:05"},
      {{5, 4, 3, 0, 0, 0, 1, 0}, "0000/00/00 03:04:05"},
      {At(2009, 6, 30, 14, 5, 0), "2009/06/30 14:05:00"},
      {At(9999, 12, 31, 23, 59, 59, 7), "9999/12/31 23:59:59"}};
  for (const auto& [time, text] : cases) {
    EXPECT_EQ(FormatParamTime(time), text);
  }
  for (const ParamTime& time :
       {At(2009, 6, 30, 14, 5, 60), At(2009, 6, 30, 14, 60, 0), At(2009, 6, 30, 24, 5, 0),
        At(2009, 6, 32, 14, 5, 0), At(2009, 13, 30, 14, 5, 0), At(2009, 6, 30, 14, 5, 0, 8),
        At(1899, 6, 30, 14, 5, 0), At(100, 6, 30, 14, 5, 0), At(10000, 6, 30, 14, 5, 0),
        ParamTime{0, 5, 14, 30, 6, 100, 1, 20}}) {
    EXPECT_EQ(FormatParamTime(time), "Invalid Date and Time");
  }
}

TEST(ParamTime, FromText) {
  const ParamTime none;
  const struct {
    const char* text;
    ParamTime time;
    bool strict;  // accepted by the strict form too
    // clang-format off
  } cases[] = {
      {"2009/06/30 14:05:09", At(2009, 6, 30, 14, 5, 9), true},
      {"2009-6-30-14-5", At(2009, 6, 30, 14, 5, 0), true},
      {"2009/06/30", At(2009, 6, 30, 0, 0, 0), true}, {"2009/06", At(2009, 6, 0, 0, 0, 0), true},
      {"14:05:09", At(0, 0, 0, 14, 5, 9, 0), true}, {"14 5", At(0, 0, 0, 14, 5, 0, 0), true},
      {"23", At(0, 0, 0, 23, 0, 0, 0), true},
      {"2008/02/29 10:00:00", At(2008, 2, 29, 10, 0, 0), true},
      {"1900/02/29", At(1900, 2, 29, 0, 0, 0), true},
      {"9999/12/31 23:59:59", At(9999, 12, 31, 23, 59, 59), true},
      {"2009/02/28", At(2009, 2, 28, 0, 0, 0), true},
      {"2009/08/31", At(2009, 8, 31, 0, 0, 0), true}, {"14:05x", At(0, 0, 0, 14, 5, 0, 0), false},
      {"2009/06/30 14:05:00 7", At(2009, 6, 30, 14, 5, 0), false},
      {"14:05:09:1", At(0, 0, 0, 14, 5, 9, 0), false},
      {"2009/06/30T", At(2009, 6, 30, 0, 0, 0), false},
      {"+14:05", At(0, 0, 0, 14, 5, 0, 0), false}, {"14:05\t", At(0, 0, 0, 14, 5, 0, 0), false},
      {"noon", none, false}, {"2009/02/29 10:00:00", none, false}, {"2008/02/30", none, false},
      {"2009/04/31", none, false}, {"2009/06/31", none, false}, {"2009/09/31", none, false},
      {"2009/11/31", none, false}, {"2009/01/32", none, false}, {"2009/13/01", none, false},
      {"1899/12/31", none, false}, {"10000/01/01", none, false},
      {"99999999999/01/01", none, false}, {"24:00:00", none, false}, {"10:60:00", none, false},
      {"2009/06/30 10:00:60", none, false}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ParseParamTime(c.text), c.time);
    const ParamTime old = At(1999, 1, 2, 3, 4, 5);
    ParamTime time = old;
    EXPECT_EQ(ParseParamTimeStrictly(c.text, &time), c.strict);
    EXPECT_EQ(time, c.strict ? c.time : old);
  }
}

TEST(ParamTime, SecondsOfEveryDayBothWays) {
  const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::uint32_t days = 0;
  for (int year = 1970; year < 2100; ++year) {
    for (int month = 1; month <= 12; ++month) {
      const int length = lengths[month - 1] + (month == 2 && year % 4 == 0 ? 1 : 0);
      for (int day = 1; day <= length; ++day, ++days) {
        const std::uint32_t of_day = days * 7919 % 86400;
        const auto clock = static_cast<int>(of_day);
        // The first day was a Thursday.
        const ParamTime time = At(year, month, day, clock / 3600, clock / 60 % 60, clock % 60,
                                  static_cast<int>((days + 3) % 7) + 1);
        ASSERT_EQ(ParamTimeToSeconds(time), days * 86400 + of_day) << FormatParamTime(time);
        ASSERT_EQ(SecondsToParamTime(days * 86400 + of_day), time) << FormatParamTime(time);
      }
    }
  }
  EXPECT_EQ(days * 86400, 4102444800U);
  EXPECT_EQ(SecondsToParamTime(4102444800U), At(2100, 1, 1, 0, 0, 0, 5));
  for (const std::uint32_t late : {4102444800U + 100 * 86400, 0xFFFFFFFFU}) {
    ParamTime time = SecondsToParamTime(late);
    time.weekday = 0;
    EXPECT_EQ(time, At(2100, 1, 1, 0, 0, 0, 0));
  }
}

TEST(ParamTime, SecondsOutsideTheYearsThatCount) {
  EXPECT_EQ(ParamTimeToSeconds(At(0, 0, 0, 1, 2, 3, 0)), 3723U);
  EXPECT_EQ(ParamTimeToSeconds(At(1800, 1, 2, 0, 0, 1)), 86401U);
  EXPECT_EQ(ParamTimeToSeconds(At(1900, 1, 1, 0, 0, 1)), 0U);
  EXPECT_EQ(ParamTimeToSeconds(At(1969, 12, 31, 23, 59, 59)), 0U);
  EXPECT_EQ(ParamTimeToSeconds(At(2100, 1, 1, 0, 0, 0)), 0xFFFFFFFFU);
  EXPECT_EQ(ParamTimeToSeconds(At(2009, 0, 0, 0, 0, 1)), 1230768001U);
}

TEST(ParamTime, TimeOfDayGetsTheNearestDate) {
  const struct {
    ParamTime now, time, completed;
  } cases[] = {
      {At(2009, 7, 1, 1, 0, 0, 3), At(0, 0, 0, 2, 0, 0, 0), At(2009, 7, 1, 2, 0, 0, 3)},
      {At(2009, 7, 1, 1, 0, 0, 3), At(0, 0, 0, 13, 0, 0, 0), At(2009, 7, 1, 13, 0, 0, 3)},
      {At(2009, 7, 1, 1, 0, 0, 3), At(0, 0, 0, 13, 0, 1, 0), At(2009, 6, 30, 13, 0, 1, 2)},
      {At(2009, 12, 31, 23, 0, 0, 4), At(0, 0, 0, 11, 0, 0, 0), At(2009, 12, 31, 11, 0, 0, 4)},
      {At(2009, 12, 31, 23, 0, 0, 4), At(0, 0, 0, 10, 59, 59, 0), At(2010, 1, 1, 10, 59, 59, 5)},
      {At(2009, 7, 1, 1, 0, 0, 3), At(2001, 1, 1, 5, 0, 0), At(2001, 1, 1, 5, 0, 0)}};
  for (const auto& c : cases) {
    ParamTime time = c.time;
    CompleteDateFromToday(&time, testing::FixedClock(c.now));
    EXPECT_EQ(time, c.completed) << FormatParamTime(c.completed);
  }
}

TEST(ParamTime, EndGetsTheStartsDateOrTheNext) {
  const ParamTime start = At(2009, 12, 31, 22, 0, 0, 4);
  const std::pair<ParamTime, ParamTime> cases[] = {
      {At(0, 0, 0, 22, 0, 0, 0), start},
      {At(0, 0, 0, 21, 59, 59, 0), At(2010, 1, 1, 21, 59, 59, 5)},
      {At(2001, 1, 1, 5, 0, 0), At(2001, 1, 1, 5, 0, 0)}};
  for (const auto& [given, completed] : cases) {
    ParamTime end = given;
    CompleteEndDate(start, &end);
    EXPECT_EQ(end, completed) << FormatParamTime(completed);
  }
}

}  // namespace
}  // namespace orvane
