// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/recording_size.h"

#include <gtest/gtest.h>

#include "table/param_access.h"
#include "table/param_time.h"

namespace orvane {
namespace {

class FixedClock : public Clock {
 public:
  ParamTime Now() const override { return ParseParamTime("2026/11/21 12:00:00"); }
};

struct Schedule {
  const char* what;
  std::array<std::int32_t, 5> numbers;  // MTSR HSMP L2NS L3NS L4NS
  std::array<const char*, 4> times;     // STIM ETIM HTIM ETMH
  int channels;
  double stated;  // bytes
  double exact;
};

TEST(RecordingSize, FollowsTheSchedule) {
  const char* const start = "2026/11/21 07:00:00";
  const char* const end = "2026/11/21 08:00:00";
  constexpr double kLow = 3600.0 * (6 * 150 * 3 + 32);
  constexpr double kHigh = 6 * 2400 * 3 + 32;
  const Schedule schedules[] = {
      {"AMT, whole hour",
       {0, 1, 2, 1, 9},
       {start, end, "", ""},
       6,
       kLow + 3600 * kHigh,
       kLow + 3600 * kHigh},
      {"no length", {0, 1, 2, 1, 0}, {start, start, "", ""}, 6, 0, 0},
      {"no slot", {0, 0, 2, 1, 0}, {start, end, "", ""}, 6, kLow, kLow},
      {"negative amounts", {0, 4, -2, -1, 0}, {start, end, "", ""}, 6, kLow, kLow},
      // The window, clipped to its half hour in the recording: 0.5 x 1800 / 4 rounded, twice.
      {"AMT, clipped window",
       {0, 4, 1, 1, 0},
       {start, end, "2026/11/21 07:30:00", "2026/11/21 09:00:00"},
       6,
       kLow + 450 * kHigh,
       kLow + 450 * kHigh},
      {"empty window",
       {0, 4, 1, 1, 0},
       {start, end, "2026/11/21 09:00:00", "2026/11/21 09:30:00"},
       6,
       0,
       0},
      {"MT, unknown sampling",
       {7, 8, 0, 1, 16},
       {start, end, "", ""},
       4,
       3600.0 * (4 * 15 * 3 + 32) + 225 * (4 * 2400 * 3 + 32) + 1800 * (4 * 150 * 3 + 32),
       3600.0 * (4 * 15 * 3 + 32) + 225 * (4 * 2400 * 3 + 32) + 1800 * (4 * 150 * 3 + 32)},
      {"DAMT beyond 32 bits",
       {2, 1, 0, 0, 0},
       {"2026/11/20 00:00:00", "2026/11/22 00:00:00", "", ""},
       6,
       172800.0 * kHigh - 4294967296.0,
       172800.0 * kHigh},
      // 23:00 of yesterday is nearest to noon plus a day's end at 01:00.
      {"times of day",
       {2, 1, 0, 0, 0},
       {"23:00:00", "01:00:00", "", ""},
       1,
       7200.0 * (2400 * 3 + 32),
       7200.0 * (2400 * 3 + 32)},
  };
  for (const Schedule& schedule : schedules) {
    SCOPED_TRACE(schedule.what);
    ParamTable table;
    ASSERT_EQ(table.BuildParamIndex(), kOk);
    const std::array keys = {"MTSR", "HSMP", "L2NS", "L3NS", "L4NS"};
    for (std::size_t i = 0; i < keys.size(); ++i) {
      PutInt(&table, keys[i], schedule.numbers[i]);
    }
    const std::array time_keys = {"STIM", "ETIM", "HTIM", "ETMH"};
    for (std::size_t i = 0; i < time_keys.size(); ++i) {
      PutTime(&table, time_keys[i], ParseParamTime(schedule.times[i]));
    }
    const RecordingSize size = EstimateRecordingSize(table, schedule.channels, FixedClock());
    EXPECT_EQ(size.stated, schedule.stated / 1048576.0);
    EXPECT_EQ(size.exact, schedule.exact / 1048576.0);
  }
}

}  // namespace
}  // namespace orvane
