// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/tfs_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "stepping/fdem_form.h"
#include "stepping/fdem_schedule.h"
#include "stepping/schedule_text.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

TEST(TfsFile, ReadsGoodFilesAndEmptiesTheTableForOthers) {
  const std::string good = StepBytes(60, 4, 8, 5);
  struct Case {
    std::string bytes;
    int rows;
    const char* reason;  // part of it; empty: the rows stay
  };
  const Case kCases[] = {
      {good, 1, ""},
      {StepBytes(60, 0, 0, 0) + StepBytes(86400, 11, 1e300, 200), 2, ""},
      {good + StepBytes(0, 99, -1, -1) + StepBytes(1, 99, -1, -1), 1, ""},
      {good + StepBytes(61, 4, 8, 5).substr(0, 21), 1, ""},
      {ManySteps(199), 199, ""},
      {ManySteps(200), 200, "200 rows and no end"},
      {"", 0, "no rows"},
      {StepBytes(0, 4, 8, 5), 0, "no rows"},
      {good + good, 2, "row 2: end time 60 s is not after 60 s"},
      {StepBytes(-1, 4, 8, 5) + good, 2, "row 1: end time -1 s"},
      {good + StepBytes(86401, 4, 8, 5), 2, "row 2: end time 86401 s"},
      {StepBytes(60, 12, 8, 5), 1, "row 1: waveform 12"},
      {StepBytes(60, -1, 8, 5), 1, "row 1: waveform -1"},
      {StepBytes(60, 4, -8, 5), 1, "row 1: frequency -8"},
      {StepBytes(60, 4, HUGE_VAL, 5), 1, "row 1: frequency inf"},
      {StepBytes(60, 4, 8, 200.5), 1, "row 1: current 200.5 A"},
      {StepBytes(60, 4, 8, -0.5), 1, "row 1: current -0.5 A"},
      {StepBytes(60, 4, 8, std::nan("")), 1, "row 1: current"},
  };
  const TempDir dir;
  for (const Case& c : kCases) {
    WriteAll(dir / "a.TFS", c.bytes);
    ScheduleTable table{};
    table.fill({7, 7, 7, 7});
    ScheduleReport report;
    const bool has_rows = ReadScheduleFile(dir / "a.TFS", &table, &report);
    EXPECT_EQ(has_rows, *c.reason == '\0') << report.message;
    EXPECT_NE(report.message.find(c.reason), std::string::npos) << report.message;
    EXPECT_EQ(report.rows, c.rows);
    EXPECT_EQ(WrittenRows(table).size(), static_cast<std::size_t>(has_rows ? c.rows : 0));
    EXPECT_TRUE(IsEmpty(table[200]));
    if (has_rows) {
      ASSERT_EQ(WriteScheduleFile(dir / "b.TFS", table).Message(), "");
      const auto kept = 22 * static_cast<std::size_t>(c.rows);
      EXPECT_EQ(ReadAll(dir / "b.TFS"), c.bytes.substr(0, kept));
    }
  }
  const std::vector<ScheduleRow> rows = {{0, 0, 0, 5}, {0, 1, 0, 0}, {}, {60, 4, 8, 5}};
  ASSERT_EQ(WriteScheduleFile(dir / "a.TFS", rows).Message(), "");
  EXPECT_EQ(ReadAll(dir / "a.TFS"), StepBytes(0, 0, 0, 5) + StepBytes(0, 1, 0, 0));
}

TEST(ScheduleText, NamesTheBadRowAndGoesOn) {
  const TempDir dir;
  WriteAll(dir / "a.b.TFS", StepBytes(60, 4, 8533.33333, 5) + StepBytes(60, 12, 0.5, 0.00005) +
                                StepBytes(-2, 77, 1, 1));
  Batch batch({ScheduleText(), {dir / "a.b.TFS"}, {}, 1});
  batch.Start();
  batch.Wait();
  EXPECT_EQ(batch.Result(0)->text, "row 2: waveform 12");
  EXPECT_EQ(ReadAll(dir / "a.b.txt"),
            "   1,         60,       FD,    8533.33333000,     5.0000,\n"
            "   2,         60,   EXTCLK,       0.50000000,     0.0001, row 2: waveform 12\n"
            "   3,         -2,       77,       1.00000000,     1.0000,\n");
}

TEST(FdemSchedule, GoesIntoTheFolderAndReplacesOnlyWhatItMay) {
  const TempDir dir;
  Told no;
  FdemForm form(&no, dir.Path());
  form.Open();
  form.Model().SetText(FdemForm::kPath, " night ");
  EXPECT_EQ(form.Path(), dir / "night.TFS");
  ASSERT_TRUE(form.Save());
  EXPECT_EQ(ReadAll(dir / "night.TFS").size(), 143U * 22);
  form.Model().SetIndex(FdemForm::kSet, 1);
  EXPECT_FALSE(form.Save()) << "there is one, and the answer is no";
  EXPECT_EQ(ReadAll(dir / "night.TFS").size(), 143U * 22);
  form.Choose((dir / "night.TFS").string());  // the file dialog has asked
  EXPECT_TRUE(form.Save());
  EXPECT_EQ(ReadAll(dir / "night.TFS").size(), 78U * 22);
}

TEST(FdemSchedule, LastsLongEnoughForCyclesAndSeconds) {
  std::vector<ScheduleRow> rows;
  ASSERT_TRUE(BuildFdemSchedule({60, 60, 5, false}, &rows));
  ASSERT_EQ(rows.size(), 143U);
  EXPECT_EQ(rows[0].end_time, 60);
  EXPECT_EQ(rows[142].end_time - rows[141].end_time, 197);
  ASSERT_TRUE(BuildFdemSchedule({10, 100, 250, true}, &rows));
  EXPECT_EQ(rows[50].end_time - rows[49].end_time, 12);
  ASSERT_TRUE(BuildFdemSchedule({0, 0, 5, false}, &rows));
  EXPECT_EQ(WhyUnreadable(rows), "row 1: end time 0 ends the schedule");
  EXPECT_TRUE(BuildFdemSchedule({2147483647 / 143, 0, 5, false}, &rows));
  EXPECT_FALSE(BuildFdemSchedule({2147483647 / 143 + 1, 0, 5, false}, &rows));
}

}  // namespace
}  // namespace orvane
