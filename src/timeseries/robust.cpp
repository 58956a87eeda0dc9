// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/robust.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

// Of at least one value, whose order changes.
double Median(std::vector<double>* values) {
  const auto middle = values->begin() + static_cast<std::ptrdiff_t>(values->size() / 2);
  std::nth_element(values->begin(), middle, values->end());
  const double upper = *middle;
  if (values->size() % 2 != 0) {
    return upper;
  }
  return upper / 2 + *std::max_element(values->begin(), middle) / 2;
}

}  // namespace

bool RobustStats::IsOutlier(double value) const {
  // Values that are equal but for their rounding have no spread, and none of them is wild.
  constexpr double kRounding = 1e-9;
  return count >= kLeastCount &&
         std::abs(value - median) > kSpreads * spread + kRounding * std::abs(median);
}

RobustStats RobustStatsOf(std::vector<double> values) {
  std::erase_if(values, [](double value) { return !std::isfinite(value); });
  RobustStats stats;
  stats.count = values.size();
  if (values.empty()) {
    return stats;
  }
  constexpr double kOfNormal = 1.48;  // makes it the standard deviation where values are normal
  stats.median = Median(&values);
  for (double& value : values) {
    value = std::abs(value - stats.median);
  }
  stats.spread = kOfNormal * Median(&values);
  return stats;
}

}  // namespace orvane
