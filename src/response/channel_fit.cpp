// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/channel_fit.h"

#include <algorithm>
#include <numbers>
#include <numeric>

namespace orvane {
namespace {

constexpr double kLowFrequencies = 50;  // Hz; below, only gains differ
constexpr double kLeastPriorWeight = 1e-4;
constexpr double kWorstRms = 0.05;
constexpr int kIterations = 25;
constexpr int kCircuitIterations = 40;
constexpr int kRounds = 12;
constexpr double kFirstWidth = 1;
constexpr double kNarrowing = 30;
constexpr double kSteady = 0.02;     // of the width, from round to round
constexpr double kRoughFall = 1e-3;  // of the loss in an iteration
constexpr double kFineFall = 1e-8;
constexpr double kAnyFrequency = 1e300;

constexpr auto kGains = std::to_array<std::size_t>({kBaseGain, kStageA, kStageB});
// Only the sum of both windings and the series resistor is visible: choke A's stays nominal. So do
// the stages, which one gain alone cannot separate from the base gain.
constexpr auto kCircuit =
    std::to_array<std::size_t>({kBaseGain, 3, 4, 5, 6, 7, kChokeA, kChokeB, kChokeBWire, kSeries,
                                kCoupling, kInput, kTank, kTrapSwitch, kDelay, kBias});
// Of these a channel of the second variant has none, or shows no trace of them in its band.
constexpr auto kNotInSecond =
    std::to_array<std::size_t>({4, 5, 6, 7, kChokeB, kChokeBWire, kTank, kTrapSwitch});

bool IsPossibleDelay(double delay) { return delay >= -kLongestDelay && delay <= kLongestDelay; }

// The rms of an error that noise makes.
double PriorWeightFor(double noise) {
  return std::max(kLeastPriorWeight, std::numbers::sqrt2 * noise);
}

double RootMeanSquare(const std::vector<double>& errors) {
  const double squares = std::inner_product(errors.begin(), errors.end(), errors.begin(), 0.0);
  return errors.empty() ? 0 : std::sqrt(squares / static_cast<double>(errors.size()));
}

}  // namespace

std::vector<std::size_t> VisibleParts(std::uint32_t flags) {
  std::vector<std::size_t> parts;
  for (const std::size_t part : kCircuit) {
    const bool is_missing =
        std::find(kNotInSecond.begin(), kNotInSecond.end(), part) != kNotInSecond.end();
    if ((flags & kSecondVariant) == 0 || !is_missing) {
      parts.push_back(part);
    }
  }
  return parts;
}

FrontEndParameters PaperValues(std::uint32_t flags, double measured_delay) {
  FrontEndParameters values = NominalParameters(flags);
  values[kDelay] = IsPossibleDelay(measured_delay) ? measured_delay : kUsualDelay;
  return values;
}

ChannelFit::ChannelFit(const BoxModel& model, std::size_t channel, std::uint32_t flags,
                       const FrontEndParameters& start)
    : nominal_(PaperValues(flags, start[kDelay])),
      unfitted_(start),
      parameters_(start),
      points_(model, channel, start[kDrive]),
      parts_(VisibleParts(flags)) {
  parameters_[kDelay] = nominal_[kDelay];
}

double ChannelFit::Polarity() const {
  double sum = 0;
  for (std::size_t slot = 0; slot <= 8; ++slot) {
    const auto points = points_.fit_slots[slot].points;
    if (!points.empty() && std::isfinite(points[0].measured.real())) {
      sum += points[0].measured.real();
    }
  }
  return sum < 0 ? -1 : 1;
}

BoxModel::FitReport ChannelFit::Run() {
  const Slots all(points_.fit_slots);
  polarity_ = Polarity();
  if (polarity_ < 0) {
    parameters_[kBaseGain] = -2;
  }
  Adjust(all.first(4), kGains, kIterations, kLowFrequencies);
  Adjust(all.subspan(4, 9), parts_, kCircuitIterations, kAnyFrequency);
  Adjust(all.subspan(13), kGains, kIterations, kAnyFrequency);
  Judge();
  return report_;
}

// The loss begins wide, because half of the points lie on any circuit, and is narrowed in steps to
// what the noise asks for, until both are steady. The circuit's points also tell how the noise
// grows with the response, and so what each of them is to weigh. Only then is the minimum sought to
// the last.
void ChannelFit::Adjust(Slots slots, std::span<const std::size_t> parts, int most_iterations,
                        double highest_frequency) {
  const bool is_circuit = parts.size() > kGains.size();
  double width = kFirstWidth;
  double prior_weight = kLeastPriorWeight;
  bool is_fine = false;
  for (int round = 0; round < kRounds; ++round) {
    is_fine = is_fine || round + 1 == kRounds;
    FitStep step(slots, parts,
                 {nominal_, parameters_, polarity_, prior_weight, highest_frequency, width});
    if (!step.HasPoints()) {
      return;
    }
    report_.iterations += step.Run(most_iterations, is_fine ? kFineFall : kRoughFall, &parameters_);
    const double offset = is_circuit ? OffsetFor(slots, parameters_) : points_.offset;
    const bool is_same = offset == points_.offset;
    points_.Weigh(offset);
    const double noise = NoiseOf(Errors(slots, highest_frequency));
    const double before = width;
    width = std::max(WidthFor(noise), width / kNarrowing);
    prior_weight = PriorWeightFor(noise);
    if (is_same && std::abs(width - before) <= kSteady * before) {
      if (is_fine) {
        return;
      }
      is_fine = true;
    }
  }
}

std::vector<double> ChannelFit::Errors(Slots slots, double highest_frequency) const {
  std::vector<double> errors;
  for (const FitSlot& slot : slots) {
    AddErrors(slot, parameters_, highest_frequency, &errors);
  }
  return errors;
}

void ChannelFit::Judge() {
  report_.offset = points_.offset;
  report_.weighted_noise = NoiseOf(Errors(points_.fit_slots, kAnyFrequency));
  report_.prior_weight = PriorWeightFor(report_.weighted_noise);
  points_.Weigh(kUsualOffset);
  const std::vector<double> errors = Errors(points_.fit_slots, kAnyFrequency);
  report_.noise = NoiseOf(errors);
  const double width = WidthFor(report_.noise);
  std::vector<double> taken;
  std::copy_if(errors.begin(), errors.end(), std::back_inserter(taken),
               [width](double error) { return CauchyWeight(error * error, width) >= kLeastTrust; });
  report_.rejected = errors.size() - taken.size();
  if (report_.rejected * 3 > errors.size()) {
    taken = errors;  // of so many the model is at fault
    report_.rejected = 0;
  }
  report_.points = taken.size();
  report_.rms = RootMeanSquare(taken);
  report_.max = taken.empty() ? 0 : *std::max_element(taken.begin(), taken.end());
  const auto is_finite = [this](std::size_t part) { return std::isfinite(parameters_[part]); };
  report_.is_kept = !taken.empty() && report_.rms <= kWorstRms &&
                    std::all_of(parts_.begin(), parts_.end(), is_finite) &&
                    std::all_of(kGains.begin(), kGains.end(), is_finite);
  if (!report_.is_kept) {
    parameters_ = unfitted_;
  }
}

}  // namespace orvane
