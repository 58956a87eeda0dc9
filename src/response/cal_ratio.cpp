// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <map>

#include "response/cal_view.h"

namespace orvane {
namespace {

struct Point {
  double log_frequency;
  double log_amplitude;
  double phase;
};

bool IsDrawable(const CalCurve& curve, std::size_t i) {
  return curve.frequency[i] > 0 && std::isfinite(curve.frequency[i]) && curve.amplitude[i] > 0 &&
         std::isfinite(curve.amplitude[i]) && std::isfinite(curve.phase[i]);
}

// The points that have logarithms, those of each sweep apart, frequencies rising: what was measured
// with other settings is no reference.
std::map<int, std::vector<Point>> PointsOf(const CalCurve& curve) {
  std::map<int, std::vector<Point>> sweeps;
  for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
    if (IsDrawable(curve, i)) {
      sweeps[curve.sweep[i]].push_back(
          {std::log(curve.frequency[i]), std::log(curve.amplitude[i]), curve.phase[i]});
    }
  }
  for (auto& [sweep, points] : sweeps) {
    std::stable_sort(points.begin(), points.end(), [](const Point& a, const Point& b) {
      return a.log_frequency < b.log_frequency;
    });
  }
  return sweeps;
}

constexpr double kSameFrequency = 1e-6;  // relative

// The reference at a frequency; false beyond its ends.
bool ReferenceAt(const std::vector<Point>& points, double log_frequency, Point* at) {
  const auto begin = std::lower_bound(
      points.begin(), points.end(), log_frequency - kSameFrequency,
      [](const Point& point, double wanted) { return point.log_frequency < wanted; });
  if (begin != points.end() && begin->log_frequency <= log_frequency + kSameFrequency) {
    *at = *begin;
    return true;
  }
  if (begin == points.begin() || begin == points.end()) {
    return false;
  }
  const Point& low = *(begin - 1);
  const Point& high = *begin;
  const double share =
      (log_frequency - low.log_frequency) / (high.log_frequency - low.log_frequency);
  *at = {log_frequency, low.log_amplitude + share * (high.log_amplitude - low.log_amplitude),
         low.phase + share * std::remainder(high.phase - low.phase, 360)};
  return true;
}

}  // namespace

CalCurve RatioOf(const CalCurve& curve, const CalCurve& reference) {
  const auto sweeps = PointsOf(reference);
  CalCurve ratio;
  for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
    const auto sweep = sweeps.find(curve.sweep[i]);
    const double frequency = curve.frequency[i];
    Point at{};
    if (sweep == sweeps.end() || !IsDrawable(curve, i) ||
        !ReferenceAt(sweep->second, std::log(frequency), &at)) {
      continue;
    }
    ratio.frequency.push_back(frequency);
    ratio.amplitude.push_back(curve.amplitude[i] / std::exp(at.log_amplitude));
    ratio.sweep.push_back(curve.sweep[i]);
    ratio.phase.push_back(std::remainder(curve.phase[i] - at.phase, 360));
  }
  return ratio;
}

}  // namespace orvane
