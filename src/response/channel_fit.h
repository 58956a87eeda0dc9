// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_CHANNEL_FIT_H_
#define ORVANE_RESPONSE_CHANNEL_FIT_H_

#include <array>
#include <span>
#include <vector>

#include "response/box_model.h"
#include "response/fit_step.h"

namespace orvane {

/// Fits the circuit of one channel to the slots of a calibration, in steps: gains at low
/// frequencies, then the whole circuit at one gain, then the gains again.
class ChannelFit {
 public:
  /// The slots must be filled. `start` holds what the calibration measured of delay and drive.
  ChannelFit(const BoxModel& model, std::size_t channel, std::uint32_t flags,
             const FrontEndParameters& start);

  BoxModel::FitReport Run();
  const FrontEndParameters& Parameters() const { return parameters_; }

 private:
  using Slots = std::span<FitSlot>;

  void TakePoints(const BoxModel& model, std::size_t channel);
  double Polarity() const;
  void Adjust(Slots slots, std::span<const std::size_t> parts, int most_iterations,
              double highest_frequency);
  void FitCircuit();
  /// The errors of the points that take part.
  std::vector<double> Errors(Slots slots) const;
  bool DropWildPoints(Slots slots);
  void Judge();

  FrontEndParameters nominal_;
  FrontEndParameters unfitted_;
  FrontEndParameters parameters_;
  std::vector<FitPoint> points_;
  std::array<FitSlot, kSlotPasses.size()> slots_{};
  std::vector<std::size_t> parts_;  // what the circuit step adjusts
  double polarity_ = 1;
  double prior_weight_ = 0;
  BoxModel::FitReport report_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CHANNEL_FIT_H_
