// SPDX-License-Identifier: GPL-3.0-or-later
// Middle and spread of values of which some may be wild.
#ifndef ORVANE_TIMESERIES_ROBUST_H_
#define ORVANE_TIMESERIES_ROBUST_H_

#include <cstddef>
#include <vector>

namespace orvane {

/// Middle and spread of the finite ones of some values.
struct RobustStats {
  std::size_t count = 0;  ///< of finite values
  double median = 0;      ///< of an even count the mean of the two in the middle
  double spread = 0;      ///< 1.48 times the median of the distances from the median

  /// Beyond 3.5 spreads from the median, among at least four values: of fewer nobody can tell.
  bool IsOutlier(double value) const;
  static constexpr double kSpreads = 3.5;
  static constexpr std::size_t kLeastCount = 4;
};

RobustStats RobustStatsOf(std::vector<double> values);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_ROBUST_H_
