// SPDX-License-Identifier: GPL-3.0-or-later
// How well the response of a fitted box is known.
#ifndef ORVANE_RESPONSE_UNCERTAINTY_H_
#define ORVANE_RESPONSE_UNCERTAINTY_H_

#include <vector>

#include "response/cal_file.h"
#include "response/fit_points.h"

namespace orvane {

/// By how much a response may be off: 95 of 100 are within these.
struct ResponseBand {
  double amplitude = 0;  ///< relative
  double phase = 0;      ///< degrees
};

/// The band from the scatter of the records alone, and the one if the drive resistors are 1 % off
/// and gains drift by 2e-4 between passes as well. Nothing more is fitted for the second.
struct ResponseBands {
  ResponseBand noise;
  ResponseBand wider;
};

/// The uncertainty of one channel's model in any setting. With H the matrix of the last normal
/// equations, A what the records add to it and P what paper does, the variables' covariance is
/// H^-1 (noise^2 A + P) H^-1; that of a response follows from its slopes. docs/response.md has the
/// coverage.
class ModelUncertainty {
 public:
  /// `cal` needs its model. Without a fit that was kept all parts have the tolerance of paper.
  ModelUncertainty(const CalData& cal, std::size_t channel);

  /// Zero at 0 Hz with a coupling capacitor, where the response is.
  ResponseBands At(const FrontEndSetting& setting, double frequency) const;

  /// Of so many deviations the band has.
  static constexpr double kFactor = 3.1;

 private:
  using Matrix = std::vector<Variables>;

  void TakePaper();
  void TakeFit(const BoxModel::FitReport& fit, const FitPoints& points, const FitStep& step);
  double Deviation(const Matrix& covariance, const Variables& slopes) const;

  FrontEndParameters parameters_;
  std::vector<std::size_t> parts_;
  Matrix covariance_;
  Matrix wider_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_UNCERTAINTY_H_
