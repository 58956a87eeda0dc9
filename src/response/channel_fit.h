// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_CHANNEL_FIT_H_
#define ORVANE_RESPONSE_CHANNEL_FIT_H_

#include <span>
#include <vector>

#include "response/fit_points.h"

namespace orvane {

/// The parts that the sweeps show, of a channel with such flags: those of the circuit step.
std::vector<std::size_t> VisibleParts(std::uint32_t flags);

/// What the parts of a channel are drawn to: those on paper, and the delay as measured.
FrontEndParameters PaperValues(std::uint32_t flags, double measured_delay);

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

  double Polarity() const;
  void Adjust(Slots chosen, std::span<const std::size_t> parts, int most_iterations,
              double highest_frequency);
  std::vector<double> Errors(Slots chosen, double highest_frequency) const;
  void Judge();

  FrontEndParameters nominal_;
  FrontEndParameters unfitted_;
  FrontEndParameters parameters_;
  FitPoints points_;
  std::vector<std::size_t> parts_;  // what the circuit step adjusts
  double polarity_ = 1;
  BoxModel::FitReport report_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CHANNEL_FIT_H_
