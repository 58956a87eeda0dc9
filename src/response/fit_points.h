// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_FIT_POINTS_H_
#define ORVANE_RESPONSE_FIT_POINTS_H_

#include <array>
#include <span>
#include <vector>

#include "response/box_model.h"
#include "response/fit_step.h"

namespace orvane {

/// A point weighs 1 / (|h| + offset): its error counts as a part of the response where that is
/// large against the offset, and of the full scale where it is small. Errors are told with this
/// one.
inline constexpr double kUsualOffset = 0.1;

/// The points of one channel in the slots of its box's calibration.
struct FitPoints {
  /// The slots must be filled. `drive`: the resistors that some passes are driven through.
  FitPoints(const BoxModel& model, std::size_t channel, double drive, double offset = kUsualOffset);
  FitPoints(const FitPoints&) = delete;
  FitPoints& operator=(const FitPoints&) = delete;

  /// Weighs every point that takes part anew.
  void Weigh(double offset);
  double offset;
  std::vector<FitPoint> points;
  std::array<FitSlot, kSlotPasses.size()> fit_slots;  ///< Qt takes the shorter name for its own
};

/// Appends the error of each point of a slot that takes part, up to a frequency in Hz.
void AddErrors(const FitSlot& slot, const FrontEndParameters& parameters, double highest_frequency,
               std::vector<double>* errors);

/// The offset for the noise that some slots show: noise of the full scale over noise of the value,
/// from the medians of the errors where the response is below a half and above. By steps of a
/// factor of two, so that a little of either changes nothing. The usual one where few are below.
double OffsetFor(std::span<const FitSlot> slots, const FrontEndParameters& parameters);

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
