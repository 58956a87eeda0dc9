// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "response/box_response.h"
#include "response/fit_report.h"
#include "response/sensor_response.h"
#include "response/uncertainty.h"
#include "response/verdict.h"
#include "support/recording_help.h"
#include "support/sweeps.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

const std::vector<std::size_t> kAllPasses = {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};

// A box as the shop may have built it: every visible part off by up to its tolerance.
Sweeps DrawBox(std::mt19937* random, double noise) {
  constexpr FrontEndParameters kSpread = {0.01, 0.005, 0.005, 0.1, 0.1, 0.1, 0.1, 0.1, 0.15, 0,
                                          0.1,  0.15,  0.1,   0.2, 0.3, 0.1, 0.3, 0,   0.01, 0.1};
  const auto draw = [random](double reach) {
    return std::uniform_real_distribution<double>(-reach, reach)(*random);
  };
  Sweeps box;
  box.parts = NominalParameters(0);
  for (std::size_t part = 0; part < box.parts.size(); ++part) {
    box.parts[part] =
        part < 3 ? draw(kSpread[part]) : box.parts[part] * std::exp(draw(kSpread[part]));
  }
  box.parts[kDelay] += draw(0.5);
  box.drive = box.parts[kDrive];
  box.passes = kAllPasses;
  box.deviation = [random, noise](std::size_t, int) {
    std::normal_distribution<double> normal(0, noise);
    const double real = normal(*random);
    return Complex(real, normal(*random));
  };
  return box;
}

TEST(BoxFit, RecoversBoxesFromNoisySweeps) {
  struct Limit {
    std::vector<int> filters;
    double middle;  // 0.1 Hz to 12 kHz
    double high;    // to 20 kHz
  };
  // Twice what the worst of 40 other boxes came to in an independent computation.
  const std::vector<Limit> limits = {{{0}, 9.8e-4, 1.66e-3},  {{16}, 6.6e-4, 9.8e-4},
                                     {{17}, 3.6e-3, 4.2e-3},  {{18, 19, 20}, 4.8e-3, 4.8e-3},
                                     {{80}, 8.8e-4, 1.58e-3}, {{81, 82, 83, 84}, 6e-3, 6.6e-3}};
  std::mt19937 random(20261121);
  for (int i = 0; i < 40; ++i) {
    SCOPED_TRACE(i);
    const Sweeps box = DrawBox(&random, 1e-4);
    const CalData cal = box.Fitted();
    EXPECT_TRUE(cal.model.fits[0].is_kept);
    const FrontEndParameters parts = ParametersOf(cal, 0);
    for (const Limit& limit : limits) {
      EXPECT_LE(LargestError(box.parts, parts, false, 0.1, 12000, limit.filters), limit.middle);
      EXPECT_LE(LargestError(box.parts, parts, true, 12000, 20000, limit.filters), limit.high);
    }
    EXPECT_LE(LargestError(box.parts, parts, false, 0.001, 0.1), 2.8e-4);
    EXPECT_LE(LargestError(box.parts, parts, true, 0.001, 0.1), 6.4e-3);
  }
}

TEST(BoxFit, LeavesWildRecordsOut) {
  std::mt19937 random(2);
  Sweeps box = DrawBox(&random, 1e-4);
  const auto noise = box.deviation;
  box.deviation = [noise](std::size_t pass, int i) {
    const int at = static_cast<int>(pass) + i;
    return noise(pass, i) + (at == 20 ? 0.04 : at == 31 ? -0.03 : 0);
  };
  const CalData cal = box.Fitted();
  EXPECT_FALSE(cal.model.fits[0].IsDoubtful());
  EXPECT_GE(cal.model.fits[0].rejected, 18U);  // two in each of the slots 4 to 12
  EXPECT_LE(LargestError(box.parts, ParametersOf(cal, 0), false, 0.1, 20000), 6.8e-3);
}

// Downwards or upwards, and with a delay that turns the highest frequency round.
TEST(BoxFit, TakesPassesInAnyOrder) {
  std::mt19937 random(5);
  Sweeps box = DrawBox(&random, 1e-4);
  box.parts[kDelay] = 25;
  box.deviation = {};
  CalData cal = box.Fitted();
  const BoxModel up = cal.model;
  for (std::size_t pass = 1; pass < cal.PassCount(); ++pass) {
    const auto begin = cal.records.begin();
    std::reverse(begin + cal.pass_table[pass], begin + cal.pass_table[pass + 1]);
  }
  cal.model = FitBoxModel(cal, cal.channel_flags);
  EXPECT_EQ(cal.model.parameters, up.parameters);
  EXPECT_EQ(cal.model.frequencies, up.frequencies);
  EXPECT_EQ(cal.model.responses, up.responses);
  EXPECT_NEAR(up.parameters[kDelay], 25, 0.1);
}

TEST(Verdict, NamesWhatIsWrong) {
  struct Case {
    const char* what;
    std::vector<std::size_t> without;
    std::size_t spoilt;  // pass; 0: none
    Complex factor;
    Usability usability;
    const char* text;  // somewhere in the verdict
    std::set<int> filters;
  };
  const std::vector<Case> cases = {
      {"good", {}, 0, 1, Usability::kWell, "well", {}},
      {"pass 15", {14}, 0, 1, Usability::kWithCare, "pass 15 (x 1, filter 4) is missing", {20, 84}},
      {"a gain", {6}, 0, 1, Usability::kNotUsable, "pass 7 (x 16, filter 0) is missing", {}},
      {"reversed", {}, 14, -1, Usability::kWithCare, "pass 15 (x 1, filter 4) does not", {20, 84}},
      {"x4 too large", {}, 5, 1.1, Usability::kWithCare, "pass 6 (x 4, filter 0) does not go", {}},
      {"all zero but few",
       {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
       14,
       0,
       Usability::kNotUsable,
       "no model fits",
       {}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    std::mt19937 random(9);
    Sweeps box = DrawBox(&random, 3e-4);
    std::erase_if(box.passes, [&test](std::size_t pass) {
      return std::find(test.without.begin(), test.without.end(), pass) != test.without.end();
    });
    const auto noise = box.deviation;
    box.deviation = [noise, &test](std::size_t pass, int i) {
      const Complex error = noise(pass, i);
      return pass == test.spoilt ? (1.0 + error) * test.factor - 1.0 : error;
    };
    const ChannelVerdict verdict = JudgeChannel(box.Fitted(), 0);
    EXPECT_EQ(verdict.usability, test.usability);
    EXPECT_NE(verdict.Text().find(test.text), std::string::npos) << verdict.Text();
    for (const int filter : test.filters) {
      EXPECT_TRUE(verdict.filters.contains(filter)) << filter;
    }
  }
}

TEST(Verdict, OfRecordsAlone) {
  struct Case {
    std::vector<CurvePoint> points;
    const char* unit;
    const char* text;
  };
  const std::vector<Case> cases = {
      {{{1, 1}, {9, 1}}, "7", "well"},
      {{}, "7", "not usable: there are no records of kind 2"},
      {{{5, 1}}, "7", "usable with care: there is a single record, at 5 Hz"},
      {{{1, 1}, {11, 1}}, "", "usable with care: there is no record between 1 Hz and 11 Hz"},
      {{{2, 1}, {1, -1}},
       "7",
       "usable with care: the phase jumps by 180 degrees between 1 Hz and 2 Hz"},
      {{{1, 1}, {9, 1}}, "8", "usable with care: the header names another serial number, 7"},
  };
  for (const Case& test : cases) {
    CalData cal;
    cal.header.ctyp = kSensorCal;
    cal.header.nchn = std::int16_t{1};
    cal.header.snum = std::int16_t{7};
    for (const CurvePoint& point : test.points) {
      testing::AddRecord(kSensorCal, point.frequency, {point.response}, 0, &cal);
    }
    EXPECT_EQ(JudgeRecords(cal, kSensorCal, 0, test.unit).Text(), test.text);
  }
}

// Of boxes with noise only: the worst of a response goes beyond the band of 95 % now and then.
TEST(Uncertainty, HoldsWhereTheTruthIsKnown) {
  std::mt19937 random(11);
  int within = 0;
  constexpr int kBoxes = 40;
  const FrontEndSetting setting{2, 17, 0, 100};
  for (int i = 0; i < kBoxes; ++i) {
    const Sweeps box = DrawBox(&random, 1e-3);
    const CalData cal = box.Fitted();
    const ResponseBands bands = ModelUncertainty(cal, 0).At(setting, 3000);
    const Complex ratio = FrontEnd(ParametersOf(cal, 0), setting).Response(3000) /
                          FrontEnd(box.parts, setting).Response(3000);
    within += std::abs(std::abs(ratio) - 1) <= bands.noise.amplitude ? 1 : 0;
    EXPECT_LT(bands.noise.amplitude, 0.02);
    EXPECT_GT(bands.wider.amplitude, bands.noise.amplitude);
  }
  EXPECT_GE(within, kBoxes * 8 / 10);
  Sweeps box = DrawBox(&random, 1e-4);
  box.passes.pop_back();
  const ModelUncertainty uncertainty(box.Fitted(), 0);
  EXPECT_GT(uncertainty.At({0, 20, 0, {}}, 3000).noise.amplitude, 0.1) << "its pass is missing";
  EXPECT_LT(uncertainty.At({0, 16, 0, {}}, 3000).noise.amplitude, 2e-3);
}

TEST(BoxFit, NeverFails) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double response : {0.0, -1.0, std::nan(""), infinite, 1e30, 1e-30}) {
    Sweeps box;
    box.parts = NominalParameters(0);
    box.passes = kAllPasses;
    box.delay = response;
    box.deviation = [response](std::size_t, int) { return response; };
    const CalData cal = box.Fitted();
    for (const double part : ParametersOf(cal, 0)) {
      EXPECT_TRUE(std::isfinite(part) || !std::isfinite(response)) << response;
    }
    EXPECT_EQ(cal.model.fits[0].is_kept, std::abs(response) < 1) << response;
  }
  // A box that is no box: its start stays, with what was measured of delay and drive.
  std::mt19937 random(3);
  Sweeps box = DrawBox(&random, 1);
  box.delay = 3;
  const CalData cal = box.Fitted();
  FrontEndParameters expected = NominalParameters(0);
  expected[kDelay] = 3;
  expected[kDrive] = static_cast<float>(box.drive);
  EXPECT_FALSE(cal.model.fits[0].is_kept);
  EXPECT_EQ(ParametersOf(cal, 0), expected);
}

CalData PlainBox(int channels) {
  CalData cal;
  cal.header.nchn = static_cast<std::int16_t>(channels);
  cal.pass_table = {0};
  cal.model = FitBoxModel(cal, cal.channel_flags);
  return cal;
}

TEST(BoxResponse, TellsWhatKeepsItFromBeingComputed) {
  using testing::Recording;
  using testing::Text;
  using testing::Whole;
  struct Case {
    const char* what;
    std::string settings;
    int channels;
    int band;
    double frequency;
    int status;
    std::vector<double> validities;
  };
  const std::string none = Whole("CHEX", 0) + Whole("CHEY", 13);
  const std::vector<Case> cases = {
      {"fine", Whole("CHEX", 1), 2, 0, 1, 0, {0, 0}},
      {"channel counts", "", 3, 0, 1, 1246, {}},
      {"coupled, at 0 Hz", Whole("CHEX", 2) + Whole("ACDC", 1), 2, 0, 0, 1232, {0, -1}},
      {"direct by any code but 1", Whole("CHEX", 2) + Whole("ACDC", -1), 2, 0, 0, 0, {0, 0}},
      {"keys that map no channel", none + Whole("ACDC", 1), 2, 0, 0, 0, {0, 0}},
      {"the later component counts",
       Whole("CHEX", 1) + Whole("CHHZ", 1) + Whole("ACDH", 0),
       2,
       0,
       0,
       0,
       {0, 0}},
      {"band", Whole("SRL19", 30), 2, 20, 1, 1223, {0, 0}},
      {"table index", Text("VER", "k7420") + Whole("SRW1", 7), 2, 1, 1, 1233, {0, 0}},
      {"older family without records",
       Text("HW", "zla5") + Whole("CHEY", 2),
       2,
       0,
       1,
       1229,
       {0, -1}},
      {"not older: an A behind", Text("HW", "ZLA5A") + Whole("CHEY", 2), 2, 0, 1, 0, {0, 0}},
      {"not older: QVN", Text("HW", "ZLAQVN") + Whole("CHEY", 2), 2, 0, 1, 0, {0, 0}},
  };
  const CalData cal = PlainBox(2);
  std::array<Complex, 2> responses;
  std::array<double, 2> validities{};
  for (const Case& test : cases) {
    const RecordingHeader header = Recording(test.settings, test.channels);
    EXPECT_EQ(ComputeBoxResponse(&cal, &header, test.band, test.frequency, responses, validities),
              test.status)
        << test.what;
    if (!test.validities.empty()) {
      EXPECT_EQ(std::vector(validities.begin(), validities.end()), test.validities) << test.what;
    }
  }
  const RecordingHeader header = Recording("", 2);
  EXPECT_EQ(ComputeBoxResponse(nullptr, &header, 0, 1, responses, validities), 1228);
  EXPECT_EQ(ComputeBoxResponse(&cal, nullptr, 0, 1, responses, validities), 1222);
}

TEST(BoxResponse, TakesMagneticSettingsFromDampedBoardsOnly) {
  using testing::Recording;
  using testing::Text;
  using testing::Whole;
  const std::string settings = Whole("CHHX", 1) + Whole("CHEY", 2) + Whole("EYR", 301) +
                               Whole("LPFR", 18) + Whole("HGNC", 1) + Whole("ACDH", 1);
  for (const std::string board : {"7452c0", "7452C1", "7452C0 ", "x7452C1", "7452C2"}) {
    const bool is_damped = board == "7452c0" || board == "7452C1";
    const auto all = FillChannelSettings(Recording(settings + Text("HW", board), 2));
    EXPECT_EQ(all[0].Source(), is_damped ? 767.0 : 0.0) << board;
    EXPECT_EQ(all[0].low_pass, is_damped ? 18 : 0) << board;
    EXPECT_EQ(all[0].coupling, 1);
    EXPECT_EQ(all[0].gain, 1);
    EXPECT_EQ(all[1].Source(), 150.5);
    EXPECT_EQ(all[1].low_pass, 18);
    EXPECT_FALSE(all[2].is_mapped);
  }
}

TEST(RecordCurve, TakesOneSeriesAndSkipsWhatItCannotJoin) {
  CalData cal;
  for (const auto& [kind, step, value] :
       {std::array{2, 1, 1}, {3, 1, 9}, {2, 2, 2}, {2, 2, 3}, {2, 1, 4}, {2, 3, 5}}) {
    testing::AddRecord(kind, value, {Complex(value)}, 0, &cal, step);
  }
  EXPECT_EQ(RecordsOfKind(cal, 2).size(), 3U);
  EXPECT_TRUE(RecordsOfKind(cal, 4).empty());
  // Without a value between 10 and 20 Hz the anchor's: the lower one up to 0.4 of the distance.
  const RecordCurve gap({{10, 3}, {20, -7}, {20, 1}, {-1, 5}, {std::nan(""), 5}});
  EXPECT_EQ(gap.At(13.9), 3.0);
  EXPECT_EQ(gap.At(14), -7.0);
  EXPECT_EQ(gap.At(20), -7.0);
  EXPECT_EQ(RecordCurve({{10, 0}, {20, 0}}).At(15), 0.0);
  // What lies a quarter of a turn ahead falls towards 0 Hz, what lies behind does not.
  EXPECT_NEAR(std::abs(RecordCurve({{10, Complex(0, 1)}}).At(5)), 0.5, 1e-2);
  EXPECT_NEAR(std::abs(RecordCurve({{10, Complex(0, -1)}}).At(5)), 2, 1e-2);
  // Of a coil the channel that has any part of a record.
  for (const Complex used : {Complex(3, 0), Complex(0, 3)}) {
    CalData coil;
    coil.header.ctyp = kSensorCal;
    coil.header.nchn = std::int16_t{2};
    testing::AddRecord(kSensorCal, 10, {0, used}, 0, &coil);
    SensorResponse sensor;
    const RecordingHeader plain = testing::Recording("", 1);
    ASSERT_EQ(sensor.Prepare(&coil, &plain), kOk);
    const Complex whole = sensor.At(10);
    EXPECT_GT(std::abs(whole), 2);
    // Used with half of the sensitivity that it was calibrated with.
    coil.header.hnom = 200;
    const RecordingHeader half = testing::Recording(testing::Real("HNOM", 100), 1);
    ASSERT_EQ(sensor.Prepare(&coil, &half), kOk);
    EXPECT_EQ(sensor.At(10), 0.5 * whole);
  }
}

}  // namespace
}  // namespace orvane
