// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_FIT_POINTS_H_
#define ORVANE_RESPONSE_FIT_POINTS_H_

#include <array>
#include <vector>

#include "response/box_model.h"
#include "response/fit_step.h"

namespace orvane {

/// The points of one channel in the slots of its box's calibration.
struct FitPoints {
  /// The slots must be filled. `drive`: the resistors that some passes are driven through.
  FitPoints(const BoxModel& model, std::size_t channel, double drive);
  FitPoints(const FitPoints&) = delete;
  FitPoints& operator=(const FitPoints&) = delete;

  std::vector<FitPoint> points;
  std::array<FitSlot, kSlotPasses.size()> fit_slots;  ///< Qt takes the shorter name for its own
};

/// Appends the error of each point of a slot that takes part, up to a frequency in Hz.
void AddErrors(const FitSlot& slot, const FrontEndParameters& parameters, double highest_frequency,
               std::vector<double>* errors);

/// 0 without values; of an even count the greater of the two in the middle. Reorders the values.
double Median(std::vector<double>* values);

/// The deviation of real and of imaginary part, from the errors of points. Half of all errors of
/// two normal parts lie below 1.1774 deviations. Not below what rounding leaves.
double NoiseOf(std::vector<double> errors);

/// The width of the loss for such a noise, by trial: less makes good points count too little.
inline double WidthFor(double noise) { return 4 * noise; }

/// A point whose Cauchy weight is below this counts as left out.
inline constexpr double kLeastTrust = 0.3;

}  // namespace orvane

#endif  // ORVANE_RESPONSE_FIT_POINTS_H_
