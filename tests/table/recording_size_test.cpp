// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/recording_size.h"

#include "support/table_help.h"
#include "support/told.h"
#include "table/param_time.h"

namespace orvane {
namespace {

TEST(RecordingSize, FollowsTheSchedule) {
  constexpr double kLow = 3600.0 * (6 * 150 * 3 + 32);
  constexpr double kHigh = 6 * 2400 * 3 + 32;
  constexpr double kMt =
      3600.0 * (4 * 15 * 3 + 32) + 225 * (4 * 2400 * 3 + 32) + 1800 * (4 * 150 * 3 + 32);
  const std::string hour = "STIM=2026/11/21_07:00:00 ETIM=2026/11/21_08:00:00 ";
  const struct {
    std::string settings;
    int channels;
    double stated;  // bytes
    double exact;
  } cases[] = {
      {hour + "MTSR=0 HSMP=1 L2NS=2 L3NS=1 L4NS=9", 6, kLow + 3600 * kHigh, kLow + 3600 * kHigh},
      // No length, no slot, negative amounts.
      {"STIM=2026/11/21_07:00:00 ETIM=2026/11/21_07:00:00 HSMP=1 L2NS=2 L3NS=1", 6, 0, 0},
      {hour + "HSMP=0 L2NS=2 L3NS=1", 6, kLow, kLow},
      {hour + "HSMP=4 L2NS=-2 L3NS=-1", 6, kLow, kLow},
      // The window, clipped to its half hour in the recording: 0.5 x 1800 / 4 rounded, twice.
      {hour + "HSMP=4 L2NS=1 L3NS=1 HTIM=2026/11/21_07:30:00 ETMH=2026/11/21_09:00:00", 6,
       kLow + 450 * kHigh, kLow + 450 * kHigh},
      {hour + "HSMP=4 L2NS=1 L3NS=1 HTIM=2026/11/21_06:00:00 ETMH=2026/11/21_07:30:00", 6,
       kLow + 450 * kHigh, kLow + 450 * kHigh},
      {hour + "HSMP=4 L2NS=1 L3NS=1 HTIM=2026/11/21_09:00:00 ETMH=2026/11/21_09:30:00", 6, 0, 0},
      // MT, and a sampling that counts as MT.
      {hour + "MTSR=1 HSMP=8 L2NS=0 L3NS=1 L4NS=16", 4, kMt, kMt},
      {hour + "MTSR=7 HSMP=8 L2NS=0 L3NS=1 L4NS=16", 4, kMt, kMt},
      // DAMT beyond 32 bits.
      {"MTSR=2 HSMP=1 STIM=2026/11/20_00:00:00 ETIM=2026/11/22_00:00:00", 6,
       172800.0 * kHigh - 4294967296.0, 172800.0 * kHigh},
      // 23:00 of yesterday is nearest to noon plus a day's end at 01:00.
      {"MTSR=2 HSMP=1 STIM=23:00:00 ETIM=01:00:00", 1, 7200.0 * (2400 * 3 + 32),
       7200.0 * (2400 * 3 + 32)}};
  for (const auto& [settings, channels, stated, exact] : cases) {
    SCOPED_TRACE(settings);
    ParamTable table = testing::NewTable();
    testing::SetAll(&table, "L2NS=0 L3NS=0 L4NS=0 " + settings);
    const RecordingSize size = EstimateRecordingSize(
        table, channels, testing::FixedClock(ParseParamTime("2026/11/21 12:00:00")));
    EXPECT_EQ(size.stated, stated / 1048576.0);
    EXPECT_EQ(size.exact, exact / 1048576.0);
  }
}

}  // namespace
}  // namespace orvane
