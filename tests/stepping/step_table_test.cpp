// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/step_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/number_text.h"
#include "stepping/step_presets.h"
#include "stepping/window_table.h"
#include "support/table_help.h"

namespace orvane {
namespace {

using testing::Get;
using testing::NewTable;
using testing::Set;

// "end/waveform/Hz/A" of each row that is not wholly empty, with gaps told.
std::string Rows(const ScheduleTable& table) {
  std::string text;
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (!IsEmpty(table[i])) {
      text += i > 0 && IsEmpty(table[i - 1]) ? "GAP " : "";
      text += FormatInt(table[i].end_time) + "/" + FormatInt(table[i].waveform) + "/" +
              FormatReal(table[i].frequency, 6) + "/" + FormatReal(table[i].current, 6) + " ";
    }
  }
  return text;
}

struct Case {
  const char* what;
  StepParameters parameters;
  FrequencyList requested;
  const char* rows;  // "4": refused
};

StepParameters With(int per_octave, double lowest, int total, int cycles = 0, int tech = 4) {
  return {tech, per_octave, lowest, 60, cycles, total, 10, 0};
}

TEST(StepTable, FollowsItsParameters) {
  StepParameters falling = With(0, 3, 0);
  falling.corner = 4;
  const Case kCases[] = {
      {"goes on by octaves to the first at or below 1.25 x lowest",
       With(0, 100, 0),
       {1024, 512},
       "60/4/1024/10 120/4/512/10 180/4/256/10 240/4/128/10 300/4/64/10 "},
      {"the last row is stretched to the total",
       With(0, 512, 600),
       {1024, 512},
       "60/4/1024/10 600/4/512/10 "},
      {"rows that the time never reaches are cleared",
       With(0, 100, 100),
       {1024, 512},
       "60/4/1024/10 100/4/512/10 "},
      {"the pattern of the last octave goes on",
       With(0, 2, 0),
       {64, 12, 10, 8},
       "60/4/64/10 120/4/12/10 180/4/10/10 240/4/8/10 300/4/6/10 360/4/5/10 420/4/4/10 480/4/3/10 "
       "540/4/2.5/10 600/4/2/10 "},
      // 1.75 x 6.6 is below 12, so that the octave begins anew; with 1.875 it would not.
      {"the tolerance is that of the row before",
       With(0, 2, 0),
       {12, 6.6},
       "60/4/12/10 120/4/6.6/10 180/4/3.3/10 240/4/1.65/10 "},
      {"3 an octave, below the list",
       With(3, 250, 0),
       {512},
       "60/4/512/10 120/4/406.375/10 180/4/322.54/10 240/4/256/10 "},
      {"enough cycles where the time is too short, a day at most",
       With(0, 1e-9, 0, 90),
       {0.7},
       "129/4/0.7/10 387/4/0.35/10 902/4/0.175/10 1931/4/0.0875/10 3989/4/0.04375/10 "
       "8104/4/0.021875/10 16333/4/0.0109375/10 32791/4/0.00546875/10 65706/4/0.00273437/10 "
       "86400/4/0.00136719/10 "},
      {"time domain", With(0, 8, 0, 0, kTdip), {8}, "60/1/8/10 "},
      {"an interior zero is a step without current",
       With(0, 4, 0),
       {8, 0, 4},
       "60/4/8/10 120/4/0/0 180/4/4/10 "},
      {"the current falls off above the corner", falling, {4, 3}, "60/4/4/7.07107 120/4/3/8 "},
      {"no frequency", With(0, 1, 0), {}, "4"},
      {"a negative frequency", With(0, 1, 0), {8, -1}, "4"},
      {"NaN", With(0, 1, 0), {8, std::nan("")}, "4"},
      {"infinite lowest", With(0, HUGE_VAL, 0), {8}, "4"},
      {"201 an octave", With(201, 1, 0), {8}, "4"},
      {"more than a day", With(0, 1, 86401), {8}, "4"},
      {"cycles below 0", With(0, 1, 0, -1), {8}, "4"},
      {"no time", {4, 0, 1, 0, 0, 0, 10, 0}, {8}, "4"},
      {"negative current", {4, 0, 1, 60, 0, 0, -1, 0}, {8}, "4"},
      {"negative corner", {4, 0, 1, 60, 0, 0, 1, -1}, {8}, "4"},
  };
  for (const Case& c : kCases) {
    ScheduleTable table{};
    table[0] = {7, 7, 7, 7};
    table[150] = {7, 7, 7, 7};
    const int status = CalculateStepTable(c.parameters, c.requested, &table);
    if (c.rows == std::string("4")) {
      EXPECT_EQ(status, 4) << c.what;
      EXPECT_EQ(Rows(table), "7/7/7/7 GAP 7/7/7/7 ") << c.what;
      EXPECT_NE(StepFault(c.parameters, c.requested), "") << c.what;
    } else {
      EXPECT_EQ(status, 0) << c.what;
      EXPECT_EQ(Rows(table), c.rows) << c.what;
    }
  }
}

TEST(StepTable, StopsAfterADayAndAfter200Rows) {
  ScheduleTable table{};
  StepParameters parameters = With(0, 0, 0);
  parameters.seconds = 1000;
  ASSERT_EQ(CalculateStepTable(parameters, {8192}, &table), 0);
  EXPECT_EQ(table[86].end_time, 86400);
  EXPECT_TRUE(IsEmpty(table[87]));
  parameters.seconds = 1;
  ASSERT_EQ(CalculateStepTable(parameters, {8192}, &table), 0);
  EXPECT_EQ(table[199].end_time, 200);
  EXPECT_EQ(table[199].frequency, std::ldexp(8192, -199));
  EXPECT_TRUE(IsEmpty(table[200]));
}

TEST(StepPresets, EndAtTheirTotalWithTheirLowestFrequency) {
  struct Preset {
    int tech;
    int asked;
    int cycle;
    const char* settings;  // FEND, TPFR, CPFR, FRQ1, the last two frequencies of the list
    int rows;
    double last;
  };
  const Preset kPresets[] = {
      {kSip, 480, 480, "0.0625 60 15 0.5 0.125 0.0625", 4, 0.0625},
      {kSip, 900, 900, "0.0625 50 15 64 128 64", 12, 0.0625},
      {kSip, 2400, 2400, "0.03125 50 15 85.3333333 128 85.3333333", 25, 0.03125},
      {kSip, 3600, 3600, "0.0078125 60 6 170.666667 256 170.666667", 31, 0.0078125},
      {kSip, 2700, 900, "0.0625 50 15 64 128 64", 12, 0.0625},
      {kFdem, 1, 900, "1 60 60 6400 1024 512", 15, 1},
      {kFdem, 2700, 2700, "8 80 60 2 341.333333 256", 34, 8},
      {kFdem, 3600, 3600, "0.7 60 115 8533.333333 568.8888889 512", 56, 711.1111111 / 1024},
      {kCsamt, 1800, 1800, "1 60 100 7680 711.11111 512", 28, 1},
      {kCsamt, 1234, 2700, "8 80 60 2 341.333333 256", 34, 8},
  };
  for (const Preset& preset : kPresets) {
    for (const bool is_stored : {false, true}) {
      ParamTable table = NewTable();
      Set(&table, "FR19", "3");
      Set(&table, "TTOT", is_stored ? FormatInt(preset.asked) : "480");
      ApplyDefaultStepping(&table, preset.tech, is_stored ? 0 : preset.asked);
      const std::string what = FormatInt(preset.tech) + " " + FormatInt(preset.asked);
      EXPECT_EQ(Get(table, "TTOT"), FormatInt(preset.cycle)) << what;
      EXPECT_EQ(Get(table, "WFRM") + Get(table, "NUMITEM") + Get(table, "AUTO") +
                    Get(table, "FPOC") + Get(table, "FR19"),
                "41100");
      const FrequencyList list = StoredFrequencies(table);
      std::size_t count = 0;
      while (count < list.size() && list[count] != 0) {
        ++count;
      }
      EXPECT_EQ(Get(table, "FEND") + " " + Get(table, "TPFR") + " " + Get(table, "CPFR") + " " +
                    Get(table, "FRQ1") + " " + FormatReal(list[count - 2]) + " " +
                    FormatReal(list[count - 1]),
                preset.settings)
          << what;
      ScheduleTable rows{};
      ASSERT_EQ(CalculateStepTable(StoredStepParameters(table), list, &rows), 0);
      ASSERT_EQ(WrittenRows(rows).size(), static_cast<std::size_t>(preset.rows)) << what;
      EXPECT_EQ(WrittenRows(rows).back().end_time, preset.cycle) << what;
      EXPECT_EQ(WrittenRows(rows).back().frequency, preset.last) << what;
    }
  }
}

TEST(StepPresets, TransmitterLimitsCurrentAndCorner) {
  struct Limit {
    int tech;
    TransmitterLimits limits;  // resistance, voltage, wire
    double current;
    const char* stored;
  };
  const Limit kLimits[] = {
      {kCsamt, WithDefaults({}, kCsamt), 16, "16 3673"},
      {kSip, WithDefaults({}, kSip), 20, "20 0"},
      {kFdem, {100, 400, 0}, 10, "4 1000"},
      {kFdem, {0, 14.1, 53051.64769729845}, 2, "2 1000"},  // q 99.4
      {kFdem, {0, 14.2, 53051.64769729845}, 2, "2 9"},     // q 100.8
      {kFdem, {0, 1e200, 1e-200}, 2, "2 1000"},
  };
  for (const Limit& limit : kLimits) {
    ParamTable table = NewTable();
    ApplyTransmitter(&table, limit.tech, limit.limits, limit.current);
    EXPECT_EQ(Get(table, "CRMX") + " " + Get(table, "FCMX"), limit.stored);
  }
}

TEST(WindowTable, CoversTheTimeWithoutCurrent) {
  const auto tdip = CalculateWindows(kTdip, 1, 0.125, 16);
  ASSERT_EQ(tdip.size(), 16U);
  EXPECT_EQ(tdip[15].start + tdip[15].width, 2000);
  EXPECT_EQ(tdip[0].start, 0);
  EXPECT_EQ(tdip[0].rate, 2400);
  const auto tdem = CalculateWindows(kTdem, 3, 25, 21);
  ASSERT_EQ(tdem.size(), 21U);
  EXPECT_DOUBLE_EQ(tdem[20].start + tdem[20].width, 15);  // three quarters of the half period
  EXPECT_DOUBLE_EQ(tdem[0].start, 1000.0 / 24000);
  EXPECT_NEAR(tdem[1].width / tdem[0].width, tdem[20].width / tdem[19].width, 1e-9);
  EXPECT_EQ(CalculateWindows(kTdem, 1, 25, 300).size(), 199U);
  for (const double repeat : {0.0, -1.0, std::nan(""), 1e-4, 24000.0}) {
    EXPECT_TRUE(CalculateWindows(kTdem, 1, repeat, 21).empty()) << repeat;
  }
}

}  // namespace
}  // namespace orvane
