// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/fold.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "timeseries/measure.h"
#include "timeseries/robust.h"
#include "timeseries/view_filter.h"

namespace orvane::testing {
namespace {

constexpr double kPi = std::numbers::pi;

std::vector<double> Counting(std::size_t scans) {
  std::vector<double> values(scans);
  for (std::size_t n = 0; n < scans; ++n) {
    values[n] = static_cast<double>(n);
  }
  return values;
}

// 2.5 scans a period: round(2.5) = 3 places, 1.2 of them a scan, so that scans 0 to 9 are at steps
// 0 1 2 4 5 6 7 8 10 11. Half a period of 5 scans has 3 places again, the same steps, and sign.
TEST(Fold, EachScanGoesToTheNearestPlaceOfItsPhase) {
  const auto whole = FoldTrace(Counting(11), 10, 4, false);
  ASSERT_TRUE(whole) << whole.Message();
  EXPECT_EQ(whole->means, (std::vector<double>{2.5, 4.5, 5.5}));  // {0 5} {1 3 6 8} {2 4 7 9}
  EXPECT_NEAR(whole->spreads[0], std::sqrt(12.5), 1e-12);
  EXPECT_EQ(whole->periods, 4U) << "the last scan belongs to none";
  EXPECT_NEAR(whole->step, 1.0 / 12, 1e-12);
  const auto halves = FoldTrace(Counting(10), 10, 2, true);
  ASSERT_TRUE(halves) << halves.Message();
  // Turns: 0 0 0 1 1 2 2 2 3 3.
  EXPECT_EQ(halves->means,
            (std::vector<double>{2.5, (1.0 - 3 + 6 - 8) / 4, (2.0 - 4 + 7 - 9) / 4}));
  EXPECT_EQ(halves->periods, 2U);
}

TEST(Fold, SaysWhyNot) {
  struct Case {
    std::size_t scans;
    double rate;
    double frequency;
    const char* reason;
  };
  for (const Case& c : {Case{100, 0, 1, "the sample rate is not known"},
                        Case{100, 10, 0, "the record has no frequency above 0"},
                        Case{100, 10, std::nan(""), "the record has no frequency above 0"},
                        Case{19, 10, 1, "the record has no two whole periods of 1 Hz"},
                        Case{100, 10, 5.5, "a period of 5.5 Hz has no two scans"}}) {
    EXPECT_EQ(FoldTrace(Counting(c.scans), c.rate, c.frequency, false).Message(), c.reason);
  }
  EXPECT_TRUE(FoldTrace(Counting(20), 10, 1, false)) << "two are enough";
}

// A steep waveform in half a dozen periods: a plain line through all of it would be far off.
TEST(Fold, DriftIsThatOfTheLineWhateverTheWaveform) {
  for (const double frequency : {1.0, 1.03}) {
    std::vector<double> values = Counting(600);
    const auto places = PhasePlaces::Of(values.size(), 100, frequency, false);
    for (std::size_t n = 0; n < values.size(); ++n) {
      values[n] = 0.25 * values[n] + (places->Of(n).place < 30 ? 1000 : -77);
    }
    EXPECT_NEAR(DriftPerScan(values, *places), 0.25, 1e-9) << frequency;
  }
}

TEST(Measure, BetweenTwoTimesTheseIncluded) {
  const std::vector<double> values = {9, 1, 3, 5, 7, -9};
  for (const auto& [one, other] : {std::pair{0.1, 0.4}, std::pair{0.449, 0.051}}) {
    const auto m = Measure(values, 10, one, other);
    ASSERT_TRUE(m);
    EXPECT_EQ(m->scans, 4U);
    EXPECT_DOUBLE_EQ(m->mean, 4);
    EXPECT_DOUBLE_EQ(m->rms, std::sqrt(21.0));  // 1 + 9 + 25 + 49 over 4
    EXPECT_EQ(m->min + 10 * m->max, 71);
    EXPECT_DOUBLE_EQ(m->slope, 20);
    EXPECT_EQ(MeasurementText(other, one, {{"Ex1 (mV)", *m}}).substr(0, 10), "from (s)\t0");
  }
  EXPECT_EQ(Measure(values, 0, 3, 100)->scans, 3U) << "without a rate a scan is a second";
  EXPECT_EQ(Measure(values, 10, 0.1, 0.1)->slope, 0);
  EXPECT_FALSE(Measure(values, 10, 0.11, 0.19));
  EXPECT_FALSE(Measure(values, 10, -5, -1));
  EXPECT_FALSE(Measure({}, 10, 0, 1));
  EXPECT_EQ(MeasurementText(1, 1.5, {{"Hx", *Measure(values, 1, 1, 1.5)}}),
            "from (s)\t1\tto (s)\t1.5\tdt (s)\t0.5\t1/dt (Hz)\t2\n"
            "channel\tscans\tmean\tRMS\tminimum\tmaximum\tslope (per s)\nHx\t1\t1\t1\t1\t1\t0\n");
}

TEST(Robust, MedianAndSpreadOfWhatIsFinite) {
  const RobustStats stats = RobustStatsOf({1, 100, std::nan(""), 3, 2, 4});  // median 3
  EXPECT_EQ(stats.count, 5U);
  EXPECT_EQ(stats.median, 3);
  EXPECT_DOUBLE_EQ(stats.spread, 1.48);  // of 0 1 1 2 97
  EXPECT_TRUE(stats.IsOutlier(3 + 5.19) && stats.IsOutlier(-3) && !stats.IsOutlier(3 + 5.17));
  EXPECT_EQ(RobustStatsOf({1, 2, 3, 10}).median, 2.5);
  EXPECT_FALSE(RobustStatsOf({1, 2, 50}).IsOutlier(50)) << "of three nobody can tell";
}

// What forward and backward runs of a second-order Butterworth filter by the bilinear transform let
// through: 1 / (1 + r^4), r the ratio of the tangents; for the high pass 1 / r. No phase moves.
TEST(ViewFilter, LetsThroughWhatTheFormulaSays) {
  constexpr double kRate = 1000;
  constexpr double kCorner = 40;
  for (const double frequency : {4.0, 30.0, 40.0, 90.0}) {
    for (const bool is_high : {false, true}) {
      std::vector<double> sine(4000);
      for (std::size_t n = 0; n < sine.size(); ++n) {
        sine[n] = std::sin(2 * kPi * frequency * static_cast<double>(n) / kRate + 0.4);
      }
      std::vector<double> values = sine;
      ViewFilter filter;
      (is_high ? filter.high_pass : filter.low_pass) = kCorner;
      ASSERT_TRUE(filter.Check(kRate));
      filter.Apply(kRate, &values);
      const double ratio = std::tan(kPi * frequency / kRate) / std::tan(kPi * kCorner / kRate);
      const double gain = 1 / (1 + std::pow(ratio, is_high ? -4 : 4));
      for (std::size_t n = 1000; n < 3000; ++n) {
        ASSERT_NEAR(values[n], gain * sine[n], 1e-6) << frequency << " " << is_high;
      }
    }
  }
}

TEST(ViewFilter, NotchesRemoveTheLinesAndLeaveTheRest) {
  const auto wave = [](std::size_t n, double frequency) {
    return std::sin(2 * kPi * frequency * static_cast<double>(n) / 1000);
  };
  std::vector<double> values(6000);
  for (std::size_t n = 0; n < values.size(); ++n) {
    values[n] = 5 + wave(n, 50) + wave(n, 150) + wave(n, 450) + wave(n, 20);
  }
  ViewFilter filter;
  filter.mains = 50;
  filter.Apply(1000, &values);
  for (std::size_t n = 1500; n < 4500; ++n) {
    ASSERT_NEAR(values[n], 5 + wave(n, 20), 0.01);
  }
}

TEST(ViewFilter, RemovesTrendsAndKeepsConstantsAndLinesToTheEdges) {
  ViewFilter filter;
  EXPECT_TRUE(filter.IsOff() && filter.Text().empty());
  filter.removes_trend = true;
  std::vector<double> line = Counting(100);
  filter.Apply(0, &line);
  EXPECT_NEAR(line[0], 0, 1e-9);
  EXPECT_NEAR(line[99], 0, 1e-9);
  filter = {};
  filter.low_pass = 10;
  for (const double slope : {0.0, 1.0}) {
    std::vector<double> values = Counting(1000);
    for (double& value : values) {
      value = 3 + slope * value;
    }
    filter.Apply(1000, &values);
    EXPECT_NEAR(values[0], 3, 0.05 * slope + 1e-9);
    EXPECT_NEAR(values[999], 3 + 999 * slope, 0.05 * slope + 1e-9);
  }
  std::vector<double> one = {4};
  filter.Apply(1000, &one);
  EXPECT_NEAR(one[0], 4, 1e-12);
}

TEST(ViewFilter, SaysWhatItDoesAndWhatItCannot) {
  const ViewFilter all{true, 0.5, 100, 60};
  EXPECT_EQ(all.Text(),
            "mean and trend removed, high pass 0.5 Hz, low pass 100 Hz, notch 60 Hz and multiples");
  EXPECT_TRUE(all.Check(1000));
  EXPECT_EQ(all.Check(150).Message(),
            "low pass 100 Hz is not between 0 and 75 Hz, half the sample rate");
  EXPECT_EQ(all.Check(0).Message(), "high pass needs a sample rate");
  EXPECT_FALSE((ViewFilter{false, 0.0, {}, {}}.Check(100)));
  EXPECT_FALSE((ViewFilter{false, {}, std::nan(""), {}}.Check(100)));
  EXPECT_FALSE((ViewFilter{false, {}, 50, {}}.Check(100))) << "half the rate itself";
}

}  // namespace
}  // namespace orvane::testing
