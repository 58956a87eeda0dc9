// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/timeline.h"

#include <array>

#include "stepping/tfs_file.h"
#include "support/table_help.h"
#include "support/temp_dir.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// 2026/11/24 23:30:00 UTC.
class EveningClock : public Clock {
 public:
  ParamTime Now() const override {
    return {
        .minute = 30, .hour = 23, .day = 24, .month = 11, .year = 26, .weekday = 2, .century = 20};
  }
};

Timeline LineOf(const char* settings, int hours = 0) {
  ParamTable table = NewTable();
  SetAll(&table, settings);
  return TimelineOf(table, EveningClock(), hours);
}

TEST(Timeline, SaysWhatIsRecordedWhen) {
  struct Case {
    const char* settings;
    int hours;
    const char* text;
  };
  for (const auto& [settings, hours, text] : {
           Case{"TECH=5", 0, "Start or end of the recording is not set"},
           Case{"TECH=5 STIM=2026/11/24_17:00:00 ETIM=2026/11/24_16:00:00", 0,
                "The end is not after the start"},
           Case{"TECH=5 MTSR=1 HSMP=300 STIM=2026/11/24_17:00:00 ETIM=2026/11/25_06:00:00 "
                "HTIM=2026/11/24_22:00:00 ETMH=2026/11/25_02:00:00",
                -3,
                "Recording from 2026/11/24 14:00:00 to 2026/11/25 03:00:00 (UTC-3), 13 h; high "
                "rates from 2026/11/24 19:00:00 to 2026/11/24 23:00:00, 48 slots of 300 s; now "
                "2026/11/24 20:30:00, it ends in 6 h 30 min"},
           Case{"TECH=5 MTSR=0 HSMP=3600 STIM=2026/11/26_00:00:00 ETIM=2026/11/26_00:59:59", 2,
                "Recording from 2026/11/26 02:00:00 to 2026/11/26 02:59:59 (UTC+2), 59 min 59 s; "
                "high rates from 2026/11/26 02:00:00 to 2026/11/26 02:59:59, 1 slot of 3600 s; "
                "now 2026/11/25 01:30:00, it starts in 1 d"},
           Case{"TECH=5 MTSR=2 STIM=2026/11/24_17:00:00 ETIM=2026/11/24_18:00:00", 0,
                "Recording from 2026/11/24 17:00:00 to 2026/11/24 18:00:00 (UTC), 1 h; now "
                "2026/11/24 23:30:00, it ended 5 h 30 min ago"},
           Case{"TECH=5 MTSR=1 STIM=2026/11/24_23:00:00 ETIM=2026/11/24_23:31:00 "
                "HTIM=2026/11/23_22:00:00 ETMH=2026/11/23_23:00:00",
                0,
                "Recording from 2026/11/24 23:00:00 to 2026/11/24 23:31:00 (UTC), 31 min; no high "
                "rates: their times are outside the recording; now 2026/11/24 23:30:00, it ends in "
                "1 min"},
           Case{"TECH=1 AUTO=2", 0, "steps as in the file 2.TFS"},
           Case{"TECH=2", 0, "No times and no schedule are set"},
           Case{"TECH=1 AUTO=1 FRQ0=8 TPFR=60 TTOT=60 CRMX=5", 0, "1 step in a cycle of 1 min"},
       }) {
    SCOPED_TRACE(settings);
    EXPECT_EQ(LineOf(settings, hours).text, text);
  }
}

TEST(Timeline, ShowsTheStepsOfAScheduleFile) {
  const TempDir folder;
  ParamTable table = NewTable();
  SetAll(&table, "TECH=1 AUTO=2 STIM=2026/11/24_17:00:00 ETIM=2026/11/24_17:01:00");
  ScheduleFileMemory memory;
  const auto line = [&] {
    return TimelineOf(table, EveningClock(), 0, &memory.Look(folder / "Startup.tbl", 2));
  };
  ASSERT_EQ(line().lanes.size(), 2U);
  EXPECT_EQ(line().lanes[1].note, "2.TFS is not beside the table");
  EXPECT_NE(line().plan.find("; the schedule file 2.TFS is not beside"), std::string::npos);
  const auto row = [](std::int32_t end) { return ScheduleRow{end, std::int16_t{4}, 8.0, 5.0}; };
  const std::array rows = {row(10), row(30)};
  ASSERT_TRUE(WriteScheduleFile(folder / "2.tfs", rows));
  const TimeLane steps = line().lanes[1];
  EXPECT_EQ(steps.period, 30);
  ASSERT_EQ(steps.parts.size(), 2U);
  EXPECT_EQ(steps.parts[1].what, "8 Hz, 5 A");
  EXPECT_NE(line().plan.find("; 2 steps of 2.TFS in a cycle of 30 s"), std::string::npos);
  ASSERT_TRUE(WriteScheduleFile(folder / "2.tfs", std::array{row(20)}));
  EXPECT_EQ(line().lanes[1].period, 20) << "another size or time: read again";
  WriteAll(folder / "2.tfs", "cut");
  EXPECT_TRUE(line().lanes[1].note.starts_with("2.TFS: ")) << line().lanes[1].note;
}

TEST(Timeline, LanesAndMidnightsAreOnTheClockShown) {
  constexpr double kDay = 86400;
  const Timeline line = LineOf(
      "TECH=5 MTSR=1 HSMP=300 STIM=1970/01/03_23:00:00 ETIM=1970/01/05_01:00:00 "
      "HTIM=1970/01/04_22:00:00 ETMH=1970/01/09_00:00:00",
      1);
  EXPECT_EQ(line.start, 3 * kDay);
  EXPECT_EQ(line.end, 4 * kDay + 7200);
  EXPECT_EQ(line.midnights, std::vector<double>{4 * kDay}) << "not the start itself";
  ASSERT_EQ(line.lanes.size(), 2U);
  EXPECT_EQ(line.lanes[1].start, 3 * kDay + 23 * 3600.0);
  EXPECT_EQ(line.lanes[1].end, line.end) << "clipped";
  const Timeline years = LineOf("TECH=5 HSMP=1 STIM=1971/01/01_00:00:00 ETIM=2099/12/31_00:00:00");
  EXPECT_TRUE(years.midnights.empty());
  EXPECT_LE(SpansOf(years.lanes[1], 0).size(), 10000U);
}

TEST(Timeline, NarrowPartsBecomeBands) {
  const auto spans = [](double least) {
    const TimeLane lane = {
        "Steps", 100, 125, 10, {{0, 1, "a", false}, {1, 2, "b", false}, {2, 10, "c", false}}};
    std::string text;
    for (const LanePart& span : SpansOf(lane, least)) {
      text += (text.empty() ? "" : " ") + std::to_string(static_cast<int>(span.start)) + "-" +
              std::to_string(static_cast<int>(span.end)) + (span.is_band ? "*" : span.what);
    }
    return text;
  };
  EXPECT_EQ(spans(1),
            "100-101a 101-102b 102-110c 110-111a 111-112b 112-120c 120-121a 121-122b "
            "122-125c")
      << "the last cycle is cut";
  EXPECT_EQ(spans(3), "100-102* 102-110c 110-112* 112-120c 120-122* 122-125c");
  EXPECT_EQ(spans(11), "100-125*");
}

TEST(Timeline, TakesAnyTable) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    ParamTable table = RandomTable(seed);
    Set(&table, "TECH", std::to_string(seed % 8));
    const Timeline line = TimelineOf(table, EveningClock(), static_cast<int>(seed) - 30);
    EXPECT_FALSE(line.text.empty());
    EXPECT_LE(line.lanes.empty() ? 0 : line.start, line.end);
    for (const TimeLane& lane : line.lanes) {
      EXPECT_LE(SpansOf(lane, (line.end - line.start) / 400).size(), 900U);
    }
  }
}

}  // namespace
}  // namespace orvane
