// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_VIEW_FILTER_H_
#define ORVANE_TIMESERIES_VIEW_FILTER_H_

#include <optional>
#include <string>
#include <vector>

#include "base/result.h"

namespace orvane {

/// What is done to waveforms before they are shown, never to the file. The passes are Butterworth
/// filters of second order, forward and then backward, so that nothing is delayed; a corner
/// frequency comes out at half its amplitude. The notches are 2 Hz wide. Before and after the
/// record its values are taken to go on mirrored in the first and the last one.
struct ViewFilter {
  bool removes_trend = false;            ///< mean and straight line, by least squares
  std::optional<double> high_pass = {};  ///< Hz
  std::optional<double> low_pass = {};   ///< Hz
  /// 50 or 60 Hz with its multiples, at most `kMostNotches` lines, below half the sample rate.
  std::optional<double> mains = {};

  static constexpr int kMostNotches = 20;

  bool IsOff() const { return !removes_trend && !high_pass && !low_pass && !mains; }
  bool operator==(const ViewFilter&) const = default;

  /// For titles, such as "mean and trend removed, low pass 100 Hz"; empty where it is off.
  std::string Text() const;
  /// Fails, with a reason for the user, where a frequency is not above 0 or not below half the
  /// sample rate, and where a filter has no sample rate.
  Result<> Check(double rate) const;
  /// Filters the values of a trace of a whole record. `Check()` must hold.
  void Apply(double rate, std::vector<double>* values) const;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_VIEW_FILTER_H_
