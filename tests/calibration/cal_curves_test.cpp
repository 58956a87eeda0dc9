// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_curves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "calibration/cal_text.h"
#include "calibration/short_fixed.h"
#include "response/cal_lines.h"
#include "response/fit_report.h"
#include "support/batch_help.h"
#include "support/cal_bytes.h"
#include "support/sweeps.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class CalCurvesTest : public ::testing::Test {
 protected:
  CalCurves Load(const std::string& bytes) {
    WriteAll(dir_ / "a.clb", bytes);
    const auto curves = LoadCalCurves(dir_ / "a.clb");
    EXPECT_EQ(curves.Message(), "");
    return curves ? *curves : CalCurves();
  }
  TempDir dir_;
};

TEST_F(CalCurvesTest, FrequenciesFallAndEqualOnesKeepTheirOrder) {
  std::string bytes = CalHeaderBytes(0, 1);  // of any kind
  for (const auto& [frequency, real] :
       {std::pair(1.F, 1.F), std::pair(8.F, 2.F), std::pair(8.F, 3.F), std::pair(kNan, 4.F),
        std::pair(2.F, 5.F), std::pair(64.F, 6.F)}) {
    bytes += CalRecordBytes(0, frequency, 1, {0, 0, 0, 0, real, 0});
  }
  // A frequency that does not compare is passed by none.
  const CalCurve curve = Load(bytes).channels[0];
  EXPECT_EQ(curve.amplitude, (std::vector<double>{2, 3, 1, 4, 6, 5}));
  EXPECT_EQ(curve.sweep, (std::vector<int>{1, 2, 0, 3, 5, 4}));
}

TEST_F(CalCurvesTest, ReadingEndsAt500RecordsAndAtASecondSeriesOfKind2) {
  EXPECT_EQ(Load(CalHeaderBytes(1, 1) + CalPassBytes({600})).channels[0].phase.size(), 500U);
  struct Case {
    std::vector<std::pair<int, int>> kinds_and_steps;
    std::size_t count;
  };
  for (const Case& c : std::vector<Case>{{{{2, 1}, {2, 2}, {2, 2}, {2, 1}}, 3},
                                         {{{1, 2}, {2, 1}, {1, 3}, {2, 2}}, 4},
                                         {{{1, 2}, {1, 1}, {2, 1}}, 3},
                                         {{{2, 5}, {3, 1}, {2, 1}}, 3}}) {
    std::string bytes = CalHeaderBytes(1, 1);
    for (const auto& [kind, step] : c.kinds_and_steps) {
      bytes += CalRecordBytes(kind, 1, step, {});
    }
    EXPECT_EQ(Load(bytes).channels[0].frequency.size(), c.count);
  }
  const std::string cut = CalHeaderBytes(1, 1) + CalPassBytes({2});
  EXPECT_EQ(Load(cut.substr(0, cut.size() - 1)).channels[0].frequency.size(), 1U);
}

TEST_F(CalCurvesTest, ReversedChannelsAreTurned) {
  struct Case {
    std::vector<double> phases;
    double turn;
  };
  for (const Case& c : std::vector<Case>{{{170, 170}, -180},
                                         {{150, 150}, 0},
                                         {{-150}, 0},
                                         {{-151}, 180},
                                         {{178, -178}, 0},
                                         {{}, 0}}) {
    auto phases = c.phases;
    FoldPhases(&phases);
    for (std::size_t i = 0; i < phases.size(); ++i) {
      EXPECT_EQ(phases[i], c.phases[i] + c.turn);
    }
  }
  const CalCurves curves =
      Load(CalHeaderBytes(1, 2) + CalRecordBytes(0, 1, 1, {0, 0, 0, 0, -3, 4}, 2));
  EXPECT_EQ(curves.channels[1].amplitude[0], 5);
  EXPECT_NEAR(curves.channels[1].phase[0], 126.869897645844, 1e-12);
}

TEST_F(CalCurvesTest, WhatCannotBeLoadedIsTold) {
  const std::string path = (dir_ / "none.clb").string();
  EXPECT_EQ(LoadCalCurves(path).Message(), "Failed to open file " + path + "!");
  for (const std::string& bytes :
       {CalHeaderBytes(1, 1).substr(1), CalHeaderBytes(1, 13), CalHeaderBytes(1, 0)}) {
    WriteAll(path, bytes);
    EXPECT_EQ(LoadCalCurves(path).Message(), "Failed to read calbration header!");
  }
}

TEST_F(CalCurvesTest, TextsStandByteForByte) {
  const std::string common =
      " UTC,   ,   ,  UTC,  2026/11/21 08:30:00,\n"
      "SNUM,   ,   ,  Int,  -2,\n"
      "NCHN,   ,   ,  Int,  2,\n"
      "STAT,   ,   ,  Int,  7,\n"
      "  HW,   ,   ,  Str,  zla5k,\n"
      " VER,   ,   ,  Str,  5.0,\n"
      "TCMB,   ,   ,  Int,  1,\n"
      "TALS,   ,   ,  Int,  2,\n"
      "LFRQ,   ,   ,  Int,  3,\n"
      "Q2SR,   ,   ,  Int,  4,\n"
      "LPFR,   ,   ,  Int,  5,\n";
  const std::string sensor =
      " HSN,   ,   ,  StrPT,  COIL12345678,\n"
      "HATT,   ,   ,  FltPT,    0.50000,\n"
      "HNOM,   ,   ,  FltPT,  1234.25000,\n"
      "CPHC,   ,   ,  FltPT,   -2.12500,\n";
  const std::string block =
      "                      -1.2500,12345.6787, 0.0000,  0.06250,-3.0000, 4.0000, 5.0000,"
      " 126.87,\n";
  const std::string record = " 255,  1.235e+04,  -2,\n" + block + block + "\n";
  const auto record_bytes =
      CalRecordBytes(255, 12345.6789F, -2, {-1.25F, 12345.6789F, 0, 0.0625F, -3, 4}, 2);
  for (const auto& [ctyp, header] :
       {std::pair(0, common), std::pair(1, common), std::pair(2, common + sensor),
        std::pair(3, common + sensor)}) {
    const std::string bytes = CalHeaderBytes(ctyp, 2) + record_bytes;
    WriteAll(dir_ / "A.CLB", bytes + record_bytes.substr(1));
    const BatchResult result = RunOne(ExportCalToText(), dir_ / "A.CLB");
    EXPECT_EQ(result.status, BatchStatus::kDoneWithNote);
    ASSERT_EQ(result.outputs.size(), 1U);
    EXPECT_TRUE(std::filesystem::equivalent(result.outputs[0], dir_ / "a.txt"));
    EXPECT_EQ(result.outputs[0].filename(), "a.txt");
    EXPECT_EQ(ReadAll(dir_ / "a.txt"), header + record);
  }
  WriteAll(dir_ / "B.clc", CalHeaderBytes(1, 1) + CalPassBytes({600}));
  EXPECT_TRUE(RunOne(ExportCalToText(), dir_ / "B.clc").IsDone());
  const std::string text = ReadAll(dir_ / "b.txt");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 11 + 3 * 500);
  EXPECT_TRUE(
      text.ends_with(" 500,\n                       1.0000, 2.0000, 3.0000,  4.00000,"
                     " 5.0000, 6.0000, 7.8102,  50.19,\n\n"));
  WriteAll(dir_ / "c.clb", "short");
  EXPECT_EQ(RunOne(ExportCalToText(), dir_ / "c.clb").code, kCalTextNoHeader);
  EXPECT_EQ(RunOne(ExportCalToText(), dir_ / "none").code, kCalTextNoInput);
  EXPECT_EQ(RunOne(ExportCalToText(), dir_ / "A.CLB", dir_ / "c.clb").code, kCalTextNoOutput);
}

TEST_F(CalCurvesTest, ARatioStaysWithinAPassAndInterpolatesThere) {
  const CalCurve curve{{1000, 100, 100, 10, 5, 0.5, 0},
                       {8, 6, 9, 4, 1, 1, 1},
                       {170, 20, 30, 10, 0, 0, 0},
                       {0, 0, 1, 1, 1, 1, 1}};
  const CalCurve reference{
      {1000, 100, 100, 1, 0}, {2, 3, 4.5, 0.03, 1}, {-170, 5, 5, -15, 0}, {0, 0, 1, 1, 1}};
  const CalCurve ratio = RatioOf(curve, reference);
  ASSERT_EQ(ratio.frequency, (std::vector<double>{1000, 100, 100, 10, 5}));
  const std::vector<double> amplitudes = {4, 2, 2, 4 / std::sqrt(4.5 * 0.03)};
  const std::vector<double> phases = {-20, 15, 25, 15};
  for (std::size_t i = 0; i < amplitudes.size(); ++i) {
    EXPECT_NEAR(ratio.amplitude[i], amplitudes[i], 1e-9) << i;
    EXPECT_NEAR(ratio.phase[i], phases[i], 1e-9) << i;
  }
  // From 170 to -170 degrees by 180.
  EXPECT_NEAR(RatioOf({{10}, {1}, {180}, {0}}, {{1, 100}, {1, 1}, {170, -170}, {0, 0}}).phase[0], 0,
              1e-9);
}

TEST_F(CalCurvesTest, TheViewStepsAndReads) {
  Load(CalHeaderBytes(1, 2) + CalRecordBytes(0, 1, 1, {0, 0, 0, 0, 2, 0}, 2) +
       CalRecordBytes(0, 10, 2, {0, 0, 0, 0, 0, 3}, 2));
  CalDisplay ranges;
  CalView view(&ranges);
  ASSERT_EQ(view.Open(dir_ / "a.clb").Message(), "");
  EXPECT_EQ(view.Title(), "a.clb Channel: 1");
  EXPECT_FALSE(view.Step(-1));
  EXPECT_TRUE(view.Step(1));
  EXPECT_EQ(view.Title(), "a.clb Channel: 2");
  EXPECT_FALSE(view.Step(1));
  view.ShowAll();
  EXPECT_EQ(view.Traces().size(), 2U);
  view.MoveCursor(1);
  EXPECT_EQ(view.Cursor(), 1);
  view.SetCursor({});
  view.MoveCursor(-1);
  EXPECT_EQ(view.Cursor(), 10);
  view.MoveCursor(1);
  EXPECT_EQ(view.Cursor(), 10) << "the last";
  view.SetCursor(3.5);  // nearer to 10 by its logarithm
  ASSERT_EQ(view.Readings().size(), 2U);
  EXPECT_EQ(view.Readings()[1].amplitude, 3);
  view.MoveCursor(-1);
  view.MoveCursor(-1);
  EXPECT_EQ(view.Cursor(), 1);
  EXPECT_EQ(view.WhyNoModel(), "A calibration of fewer than 3 passes has no model");
  view.FitDisplay();
  EXPECT_EQ(ranges, (CalDisplay{5, 10, 100, 2, 1, 0, 4}));
  // A reference of one channel serves each of them, one of several its own.
  for (const auto& [channels, expected] : {std::pair(1, 7.F), std::pair(2, 9.F)}) {
    std::string reference = CalHeaderBytes(2, channels) + CalRecordBytes(0, 10, 1, {});
    reference.resize(reference.size() - 24);
    for (const float amplitude : {7.F, 9.F}) {
      reference += CalRecordBytes(0, 1, 1, {0, 0, 0, 0, amplitude, 0}).substr(8);
    }
    WriteAll(dir_ / "b.clc", reference.substr(0, reference.size() - (channels == 1 ? 24 : 0)));
    ASSERT_EQ(view.OpenReference(dir_ / "b.clc").Message(), "");
    ASSERT_EQ(view.Traces().size(), 4U);
    EXPECT_EQ(view.Traces()[3].curve.amplitude, std::vector<double>{expected});
  }
  view.RemoveReference();
  for (const auto& [bytes, why] :
       {std::pair(CalHeaderBytes(2, 1) + CalPassBytes({1}), "Only boxes have a model"),
        {CalHeaderBytes(1, 1) + CalPassBytes({101}), "has 101 records"}}) {
    Load(bytes);
    EXPECT_TRUE(view.Open(dir_ / "a.clb"));
    EXPECT_NE(view.WhyNoModel().find(why), std::string::npos) << view.WhyNoModel();
  }
  EXPECT_FALSE(view.Open(dir_ / "none"));
  EXPECT_EQ(view.Count(), 0U);
  EXPECT_FALSE(view.Step(1));
}

TEST_F(CalCurvesTest, TheCursorReadsEveryPassAtItsFrequency) {
  std::string bytes = CalHeaderBytes(1, 1);
  for (const float amplitude : {2.F, 3.F}) {
    bytes += CalRecordBytes(0, 10, 1, {0, 0, 0, 0, amplitude, 0}) +
             CalRecordBytes(0, 1, 2, {0, 0, 0, 0, amplitude + 5, 0});
  }
  Load(bytes);
  CalDisplay ranges;
  CalView view(&ranges);
  ASSERT_EQ(view.Open(dir_ / "a.clb").Message(), "");
  view.SetCursor(8);
  const auto readings = view.Readings();
  ASSERT_EQ(readings.size(), 2U);
  EXPECT_EQ(readings[0].amplitude, 2);
  EXPECT_EQ(readings[1].amplitude, 3);
  EXPECT_EQ(readings[1].sweep, 1);
  EXPECT_FALSE(view.HasModel()) << "two passes";
  EXPECT_EQ(view.WhyNoModel(), "A calibration of fewer than 3 passes has no model");
}

TEST_F(CalCurvesTest, RangesFitTheFileOrWhatIsCompared) {
  const auto file = [this](const char* name, float amplitude, float imaginary) {
    WriteAll(dir_ / name, CalHeaderBytes(2, 1) +
                              CalRecordBytes(0, 10, 1, {0, 0, 0, 0, amplitude, imaginary}) +
                              CalRecordBytes(0, 1, 2, {0, 0, 0, 0, amplitude, 0}));
  };
  file("fits", 4, 0.1F);
  file("large", 40, 0);
  file("near", 4.01F, 0.1F);
  CalDisplay ranges;
  CalView view(&ranges);
  ASSERT_EQ(view.Open(dir_ / "fits").Message(), "");
  EXPECT_EQ(view.Display(), CalDisplay());
  EXPECT_EQ(view.RangesText(), "");
  ASSERT_EQ(view.Open(dir_ / "large").Message(), "");
  EXPECT_EQ(view.Display(), (CalDisplay{50, 10, 20, 20, 1, 0, 4}));
  EXPECT_NE(view.RangesText(), "");
  EXPECT_EQ(ranges, CalDisplay()) << "those that are set stay for the next file";
  ASSERT_EQ(view.Open(dir_ / "near").Message(), "");
  ASSERT_EQ(view.OpenReference(dir_ / "fits").Message(), "");
  view.SetRatio(true);  // 100.25 %, a few thousandths of a degree
  EXPECT_NEAR(view.Traces()[0].curve.amplitude[1], 100.25, 1e-5);
  EXPECT_NEAR(view.Display().min_amplitude, 100.24, 1e-9);
  EXPECT_NEAR(view.Display().max_amplitude, 100.28, 1e-9);
  EXPECT_NEAR(view.Display().max_phase - view.Display().min_phase, 0.04, 1e-9);
  CalDisplay own = view.Display();
  own.max_phase = 7;
  view.SetDisplay(own);
  EXPECT_EQ(view.Display().max_phase, 7);
  view.RemoveReference();
  EXPECT_EQ(view.Display(), CalDisplay());

  view.SetCursor(10);
  file("near", 5, 0);
  EXPECT_EQ(view.Reload().Message(), "");
  EXPECT_EQ(view.Readings()[0].amplitude, 5);
  WriteAll(dir_ / "near", "short");
  EXPECT_FALSE(view.Reload());
  EXPECT_EQ(view.Readings()[0].amplitude, 5);
  // Of the channels shown the second is gone.
  WriteAll(dir_ / "near", CalHeaderBytes(2, 2) + CalRecordBytes(0, 10, 1, {}, 2));
  ASSERT_EQ(view.Open(dir_ / "near").Message(), "");
  view.ShowAll();
  file("near", 5, 0);
  EXPECT_EQ(view.Reload().Message(), "");
  EXPECT_EQ(view.Title(), "near Channel: 1");
}

TEST_F(CalCurvesTest, LinesBreakWhereThePhaseWrapsAndTheLegendTellsPasses) {
  std::string bytes = CalHeaderBytes(1, 2);
  for (int pass = 0; pass < 5; ++pass) {
    bytes += CalRecordBytes(0, 10, 1, {0, 0, 0, 0, -1, 0.1F}, 2) +
             CalRecordBytes(0, 1, 2, {0, 0, 0, 0, -1, -0.1F}, 2);
  }
  Load(bytes);
  CalDisplay ranges;
  CalView view(&ranges);
  ASSERT_EQ(view.Open(dir_ / "a.clb").Message(), "");
  auto lines = LinesOf(view);
  ASSERT_EQ(lines.size(), 5U);
  ASSERT_EQ(lines[4].phases.size(), 3U);
  EXPECT_NEAR(lines[4].phases[0], 174.29, 0.01);
  EXPECT_TRUE(std::isnan(lines[4].phases[1]));
  EXPECT_NEAR(lines[4].phases[2], -174.29, 0.01);
  EXPECT_FALSE(std::isnan(lines[4].amplitudes[1])) << "amplitudes do not wrap";
  EXPECT_EQ(lines[4].color, 4);
  const auto texts = [&view] {
    std::string all;
    for (const CalLegendRow& row : LegendOf(view)) {
      all += row.text + "; ";
    }
    return all;
  };
  const std::string passes =
      "Pass 1; Pass 2; Pass 3; Pass 4: x 1, filter 0; Pass 5: x 0.25, filter 0; ";
  EXPECT_EQ(texts(), passes);
  view.ShowAll();
  EXPECT_EQ(texts(), "Channel 1; Channel 2; " + passes);
  lines = LinesOf(view);
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[9].color, 1);
  EXPECT_EQ(lines[9].mark, 4);
}

TEST_F(CalCurvesTest, TheModelLiesOnThePointsOfItsPasses) {
  Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  sweeps.parts[kBaseGain] = -1.98;  // reversed: its phases are turned
  WriteAll(dir_ / "a.clb", BoxBytes(sweeps, 2, 1));
  CalDisplay ranges;
  CalView view(&ranges);
  ASSERT_EQ(view.Open(dir_ / "a.clb").Message(), "");
  ASSERT_TRUE(view.HasModel()) << view.WhyNoModel();
  EXPECT_EQ(FitWarning(*view.Model()),
            "Channel 2: not usable: no model fits; the parts have their nominal values; 108 of 396 "
            "records are far off");
  EXPECT_EQ(view.Traces().size(), 1U);
  view.SetModel(true);
  const auto traces = view.Traces();
  ASSERT_EQ(traces.size(), 4U);
  EXPECT_EQ(traces[1].Label(), "Channel 1, model");
  const CalCurve& model = traces[1].curve;
  for (std::size_t k = 0; k < model.frequency.size(); ++k) {  // of the band around it
    EXPECT_LT(traces[2].curve.amplitude[k], model.amplitude[k]);
    EXPECT_GT(traces[3].curve.phase[k], model.phase[k]);
    EXPECT_LT(traces[3].curve.amplitude[k], 1.1 * model.amplitude[k]);
  }
  for (std::size_t k = 1; k < model.frequency.size(); ++k) {
    EXPECT_TRUE(model.sweep[k] != model.sweep[k - 1] ||
                model.frequency[k] < model.frequency[k - 1]);
  }
  std::size_t compared = 0;
  for (std::size_t i = 0; i < traces[0].curve.frequency.size(); ++i) {
    for (std::size_t k = 0; k < model.frequency.size(); ++k) {
      if (model.sweep[k] == traces[0].curve.sweep[i] &&
          model.frequency[k] == traces[0].curve.frequency[i]) {
        EXPECT_NEAR(model.amplitude[k], traces[0].curve.amplitude[i], 2e-3);
        EXPECT_NEAR(std::remainder(model.phase[k] - traces[0].curve.phase[i], 360), 0, 0.1);
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 12U * kSweepLength) << "passes 3 to 14";
  const auto table = FitTable(*view.Model());
  EXPECT_EQ(table[0], (std::vector<std::string>{"Model", "fitted", "nominal"}));
  EXPECT_EQ(table.size(), 49U);
}

template <int precision, int width>
void ExpectPrintfs(double value) {
  if (std::isnan(value) && !kPrintsSignOfNan) {
    return;
  }
  std::array<char, kMaxNumberText> text{};
  std::array<char, kMaxNumberText> expected{};
  const auto length = static_cast<std::size_t>(
      std::snprintf(expected.data(), expected.size(), "%*.*f", width, precision, value));
  std::replace(expected.begin(), expected.end(), ',', '.');  // as the locale may have it
  const char* end = WriteShortFixed<precision, width>(text.data(), value);
  std::replace(expected.begin(), expected.end(), ',', '.');  // the user's locale is printf's
  EXPECT_EQ(std::string_view(text.data(), static_cast<std::size_t>(end - text.data())),
            std::string_view(expected.data(), length));
}

TEST(ShortFixed, WritesWhatPrintfWrites) {
  std::vector<double> values = {0,        9.99995,  9.99996, 99.99995, 999.99, 999.995, 999.99995,
                                999.9999, 1000,     0.03125, 0.00005,  1e-30,  1e30,    HUGE_VAL,
                                kNan,     -179.995, 0.125,   0.375,    12.5,   0.000005};
  std::mt19937 random(3);
  for (int i = 0; i < 20000; ++i) {
    values.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
    values.push_back(
        std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 30) - 40));
  }
  for (const double value : values) {
    for (const double sign : {1.0, -1.0}) {
      ExpectPrintfs<4, 7>(std::copysign(value, sign));
      ExpectPrintfs<5, 9>(std::copysign(value, sign));
      ExpectPrintfs<2, 7>(std::copysign(value, sign));
    }
  }
}

TEST(CalDisplayFormTest, RefusesWhatIsOutOfRangeAndKeepsTheRest) {
  const CalDisplay odd{0.1 + 0.2, 1e-10, -360, 1e10, 5, 360, 10000};
  EXPECT_EQ(CalDisplayForm(odd).Display(), odd);  // minimum above maximum is not a fault
  for (const auto& [control, text, is_right] :
       {std::tuple(CalDisplayForm::kPhaseGridLines, "1", false),
        std::tuple(CalDisplayForm::kPhaseGridLines, "2", true),
        std::tuple(CalDisplayForm::kPhaseGridLines, "10001", false),
        std::tuple(CalDisplayForm::kMinAmplitude, "0", false),
        std::tuple(CalDisplayForm::kMaxFrequency, "1e10", true),
        std::tuple(CalDisplayForm::kMaxPhase, "360.5", false),
        std::tuple(CalDisplayForm::kMinPhase, "", false)}) {
    CalDisplayForm form({});
    form.Model().SetText(control, text);
    EXPECT_EQ(!form.Model().Validate(), is_right) << control << text;
  }
}

}  // namespace
}  // namespace orvane
