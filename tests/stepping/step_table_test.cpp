// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/step_table.h"

#include <cmath>

#include "base/number_text.h"
#include "stepping/step_presets.h"
#include "stepping/window_table.h"
#include "support/table_help.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// "end:Hz" of each row, "!WAVEFORM!A" behind it where they are not 4 and 10; "-" for empty ones
// between others.
std::string Rows(const ScheduleTable& table) {
  std::string text;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const ScheduleRow& row = table[i];
    if (!IsEmpty(row)) {
      text += i > 0 && IsEmpty(table[i - 1]) ? "- " : "";
      text += FormatInt(row.end_time) + ":" + FormatReal(row.frequency, 6);
      if (row.waveform != 4 || row.current != 10) {
        text.append("!").append(FormatInt(row.waveform)).append("!");
        text.append(FormatReal(row.current, 6));
      }
      text += ' ';
    }
  }
  return text;
}

// FPOC, FEND, TTOT, CPFR, TECH; of the others what usually is.
StepParameters With(int per_octave, double lowest, int total, int cycles = 0, Tech tech = kCsamt) {
  return {tech, per_octave, lowest, 60, cycles, total, 10, 0};
}

TEST(StepTable, FollowsItsParameters) {
  struct Case {
    StepParameters parameters;
    FrequencyList requested;
    const char* rows;
  };
  const Case kCases[] = {
      // By octaves to the first at or below 1.25 x lowest; cut and stretched to the total.
      {With(0, 100, 0), {1024, 512}, "60:1024 120:512 180:256 240:128 300:64 "},
      {With(0, 512, 600), {1024, 512}, "60:1024 600:512 "},
      {With(0, 100, 100), {1024, 512}, "60:1024 100:512 "},
      // The pattern of the list's last octave goes on.
      {With(0, 3, 0), {64, 12, 10, 8}, "60:64 120:12 180:10 240:8 300:6 360:5 420:4 480:3 "},
      // 1.75 x 6.6 is below 12, so that the octave begins anew; with 1.875 it would not.
      {With(0, 2, 0), {12, 6.6}, "60:12 120:6.6 180:3.3 240:1.65 "},
      {With(3, 250, 0), {512}, "60:512 120:406.375 180:322.54 240:256 "},
      // Enough cycles where the time is too short, a day at most.
      {With(0, 0.003, 0, 90), {0.7, 0.01}, "129:0.7 9129:0.01 27129:0.005 63129:0.0025 "},
      {With(0, 1e-9, 0, 90), {0.7, 0.001}, "129:0.7 86400:0.001 "},
      {With(0, 8, 86400), {8}, "86400:8 "},
      {With(0, 8, 0, 0, kTdip), {8}, "60:8!1!10 "},
      {With(0, 4, 0), {8, 0, 4}, "60:8 120:0!4!0 180:4 "},
      {{kCsamt, 0, 3, 60, 0, 0, 10, 4}, {4, 3}, "60:4!4!7.07107 120:3!4!8 "},
  };
  for (const Case& c : kCases) {
    ScheduleTable table{};
    table.fill({7, 7, 7, 7});
    EXPECT_EQ(CalculateStepTable(c.parameters, c.requested, &table), 0) << c.rows;
    EXPECT_EQ(Rows(table), c.rows);
  }
}

TEST(StepTable, RefusesWhatMakesNoScheduleAndLeavesTheTable) {
  const std::pair<StepParameters, FrequencyList> kCases[] = {
      {With(0, 1, 0), {}},
      {With(0, 1, 0), {8, -1}},
      {With(0, 1, 0), {8, NAN}},
      {With(0, HUGE_VAL, 0), {8}},
      {With(0, -1, 0), {8}},
      {With(201, 1, 0), {8}},
      {With(-1, 1, 0), {8}},
      {With(0, 1, 86401), {8}},
      {With(0, 1, -1), {8}},
      {With(0, 1, 0, -1), {8}},
      {{kCsamt, 0, 1, 0, 0, 0, 1}, {8}},
      {{kCsamt, 0, 1, 86401, 0, 0, 1}, {8}},
      {{kCsamt, 0, 1, 9, 0, 0, -1}, {8}},
      {{kCsamt, 0, 1, 9, 0, 0, 1, -1}, {8}},
  };
  for (const auto& [parameters, requested] : kCases) {
    ScheduleTable table{};
    table[1] = {7, 4, 7, 10};
    EXPECT_EQ(CalculateStepTable(parameters, requested, &table), 4);
    EXPECT_EQ(Rows(table), "- 7:7 ") << StepFault(parameters, requested);
  }
}

TEST(StepPresets, EndAtTheirTotalWithTheirLowestFrequency) {
  struct Preset {
    Tech tech;
    int stored, cycle;
    const char* settings;  // FEND, TPFR, CPFR, the second and the last frequency of the list
    int rows;
    double last;
  };
  const Preset kPresets[] = {
      {kSip, 480, 480, "0.0625 60 15 0.5 0.0625", 4, 0.0625},
      {kSip, 900, 900, "0.0625 50 15 64 64", 12, 0.0625},
      {kSip, 2400, 2400, "0.03125 50 15 85.3333333 85.3333333", 25, 0.03125},
      {kSip, 3600, 3600, "0.0078125 60 6 170.666667 170.666667", 31, 1. / 128},
      {kSip, 2700, 900, "0.0625 50 15 64 64", 12, 0.0625},
      {kFdem, 480, 480, "64 60 60 3840 512", 8, 64},
      {kFdem, 1, 900, "1 60 60 6400 512", 15, 1},
      {kFdem, 2700, 2700, "8 80 60 2 256", 34, 8},
      {kFdem, 3600, 3600, "0.7 60 115 8533.333333 512", 56, 711.1111111 / 1024},
      {kCsamt, 1800, 1800, "1 60 100 7680 512", 28, 1},
      {kCsamt, 1234, 2700, "8 80 60 2 256", 34, 8}};
  for (const Preset& preset : kPresets) {
    ParamTable table = NewTable();
    Set(&table, "FR19", "3");
    Set(&table, "TTOT", FormatInt(preset.stored));
    ApplyDefaultStepping(&table, preset.tech, 0);
    EXPECT_EQ(Get(table, "WFRM") + Get(table, "NUMITEM") + Get(table, "AUTO") + Get(table, "FPOC") +
                  Get(table, "FR19"),
              "41100");
    const FrequencyList list = StoredFrequencies(table);
    const auto end = std::find(list.begin(), list.end(), 0.0);
    EXPECT_EQ(Get(table, "FEND") + " " + Get(table, "TPFR") + " " + Get(table, "CPFR") + " " +
                  Get(table, "FRQ1") + " " + FormatReal(*(end - 1)),
              preset.settings);
    ScheduleTable rows{};
    ASSERT_EQ(CalculateStepTable(StoredStepParameters(table), list, &rows), 0);
    ASSERT_EQ(WrittenRows(rows).size(), static_cast<std::size_t>(preset.rows));
    EXPECT_EQ(WrittenRows(rows).back().end_time, preset.cycle);
    EXPECT_EQ(WrittenRows(rows).back().frequency, preset.last);
  }
}

TEST(StepPresets, TransmitterLimitsCurrentAndCorner) {
  for (const auto& [tech, resistance, voltage, wire] :
       {std::tuple(kSip, 100, 1000, 100), std::tuple(kTdip, 100, 1000, 100),
        std::tuple(kCsamt, 50, 1000, 1000), std::tuple(kFdem, 50, 1000, 1000),
        std::tuple(kTdem, 0, 0, 0)}) {
    const TransmitterLimits usual = WithDefaults({}, tech);
    EXPECT_EQ((std::array{usual.resistance, usual.voltage, usual.wire_length}),
              (std::array<double, 3>{1. * resistance, 1. * voltage, 1. * wire}));
    EXPECT_EQ(WithDefaults({7, 8, 9}, tech).voltage, 8);
  }
  const std::tuple<Tech, TransmitterLimits, double, const char*> kLimits[] = {
      {kCsamt, WithDefaults({}, kCsamt), 16, "16 3673"},
      {kSip, WithDefaults({}, kSip), 20, "20 0"},
      {kFdem, {100, 400, 0}, 10, "4 1000"},
      {kFdem, {0, 14.1, 53051.64769729845}, 2, "2 1000"},  // q 99.4
      {kFdem, {0, 14.2, 53051.64769729845}, 2, "2 9"},     // q 100.8
      {kFdem, {0, 1e200, 1e-200}, 2, "2 1000"},
  };
  for (const auto& [tech, limits, current, stored] : kLimits) {
    ParamTable table = NewTable();
    ApplyTransmitter(&table, tech, limits, current);
    EXPECT_EQ(Get(table, "CRMX") + " " + Get(table, "FCMX"), stored);
  }
}

TEST(WindowTable, CoversTheTimeWithoutCurrent) {
  const auto tdip = CalculateWindows(kTdip, 1, 0.125, 16);
  ASSERT_EQ(tdip.size(), 16U);
  EXPECT_EQ(tdip[15].start + tdip[15].width, 2000);
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
