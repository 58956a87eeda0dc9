// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/channel_fit.h"

#include <algorithm>
#include <numeric>

#include "response/fit_step.h"

namespace orvane {
namespace {

constexpr double kLowFrequencies = 50;  // Hz; below, only gains differ
constexpr double kLeastPriorWeight = 2e-4;
constexpr double kWorstRms = 0.05;
constexpr double kErrorOffset = 0.01;
constexpr int kIterations = 25;
constexpr int kCircuitIterations = 40;
constexpr int kRounds = 2;
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

double RootMeanSquare(const std::vector<double>& errors) {
  const double squares = std::inner_product(errors.begin(), errors.end(), errors.begin(), 0.0);
  return errors.empty() ? 0 : std::sqrt(squares / static_cast<double>(errors.size()));
}

}  // namespace

ChannelFit::ChannelFit(const BoxModel& model, std::size_t channel, std::uint32_t flags,
                       const FrontEndParameters& start)
    : nominal_(NominalParameters(flags)), unfitted_(start), parameters_(start) {
  nominal_[kDelay] = IsPossibleDelay(start[kDelay]) ? start[kDelay] : kUsualDelay;
  parameters_[kDelay] = nominal_[kDelay];
  for (const std::size_t part : kCircuit) {
    const bool is_missing =
        std::find(kNotInSecond.begin(), kNotInSecond.end(), part) != kNotInSecond.end();
    if ((flags & kSecondVariant) == 0 || !is_missing) {
      parts_.push_back(part);
    }
  }
  TakePoints(model, channel);
}

void ChannelFit::TakePoints(const BoxModel& model, std::size_t channel) {
  points_.resize(model.entries);
  const Complex* measured = &model.responses[channel * BoxModel::kSlotEntries];
  for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
    const std::size_t begin = model.slot_starts[slot];
    const std::size_t end = model.SlotEnd(slot);
    slots_[slot] = {std::span(points_).subspan(begin, end - begin),
                    PassSetting(kSlotPasses[slot], parameters_[kDrive])};
    for (std::size_t i = begin; i < end; ++i) {
      // The value at 0 Hz is the first record's, as good as that one is close to it.
      const double frequency = model.frequencies[i == begin ? i + 1 : i];
      const bool is_usable =
          frequency > 0 && std::isfinite(frequency) && IsFinite(measured[i]) &&
          (i != begin || (slots_[slot].setting.coupling != 1 && frequency <= kLowFrequencies));
      points_[i] = {model.frequencies[i], measured[i],
                    is_usable ? 1 / (std::abs(measured[i]) + kErrorOffset) : 0};
    }
  }
}

double ChannelFit::Polarity() const {
  double sum = 0;
  for (std::size_t slot = 0; slot <= 8; ++slot) {
    const auto points = slots_[slot].points;
    if (!points.empty() && std::isfinite(points[0].measured.real())) {
      sum += points[0].measured.real();
    }
  }
  return sum < 0 ? -1 : 1;
}

BoxModel::FitReport ChannelFit::Run() {
  const Slots all(slots_);
  polarity_ = Polarity();
  if (polarity_ < 0) {
    parameters_[kBaseGain] = -2;
  }
  prior_weight_ = kLeastPriorWeight;
  Adjust(all.first(4), kGains, kIterations, kLowFrequencies);
  FitCircuit();
  const Slots last = all.subspan(13);
  DropWildPoints(last);
  prior_weight_ = kLeastPriorWeight;
  Adjust(last, kGains, kIterations, kAnyFrequency);
  Judge();
  return report_;
}

void ChannelFit::FitCircuit() {
  const Slots slots = Slots(slots_).subspan(4, 9);
  Adjust(slots, parts_, kCircuitIterations, kAnyFrequency);
  for (int round = 0; round < kRounds; ++round) {
    const bool has_dropped = DropWildPoints(slots);
    const double before = prior_weight_;
    prior_weight_ = std::max(kLeastPriorWeight, RootMeanSquare(Errors(slots)));
    if (!has_dropped && prior_weight_ <= 1.5 * before) {
      return;
    }
    Adjust(slots, parts_, kCircuitIterations, kAnyFrequency);
  }
}

void ChannelFit::Adjust(Slots slots, std::span<const std::size_t> parts, int most_iterations,
                        double highest_frequency) {
  FitStep step(slots, parts, {nominal_, parameters_, polarity_, prior_weight_, highest_frequency});
  if (step.HasPoints()) {
    report_.iterations += step.Run(most_iterations, &parameters_);
  }
}

std::vector<double> ChannelFit::Errors(Slots slots) const {
  std::vector<double> errors;
  for (const FitSlot& slot : slots) {
    const FrontEnd front_end(parameters_, slot.setting);
    for (const FitPoint& point : slot.points) {
      if (point.weight > 0) {
        const Complex h = front_end.Response(point.frequency);
        errors.push_back(std::abs(h - point.measured) * point.weight);
      }
    }
  }
  return errors;
}

bool ChannelFit::DropWildPoints(Slots slots) {
  const std::vector<double> errors = Errors(slots);
  if (errors.empty()) {
    return false;
  }
  std::vector<double> sorted = errors;
  const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
  std::nth_element(sorted.begin(), middle, sorted.end());
  const double limit = std::max(8 * *middle, 2e-3);
  const auto is_wild = [limit](double error) { return error > limit; };
  const auto wild = static_cast<std::size_t>(std::count_if(errors.begin(), errors.end(), is_wild));
  if (wild == 0 || wild * 10 > errors.size()) {
    return false;  // of so many the model is at fault
  }
  auto error = errors.begin();
  for (const FitSlot& slot : slots) {
    for (FitPoint& point : slot.points) {
      if (point.weight > 0 && is_wild(*error++)) {
        point.weight = 0;
      }
    }
  }
  report_.rejected += wild;
  return true;
}

void ChannelFit::Judge() {
  const std::vector<double> errors = Errors(slots_);
  report_.points = errors.size();
  report_.rms = RootMeanSquare(errors);
  report_.max = errors.empty() ? 0 : *std::max_element(errors.begin(), errors.end());
  const auto is_finite = [this](std::size_t part) { return std::isfinite(parameters_[part]); };
  report_.is_kept = !errors.empty() && report_.rms <= kWorstRms &&
                    std::all_of(parts_.begin(), parts_.end(), is_finite) &&
                    std::all_of(kGains.begin(), kGains.end(), is_finite);
  if (!report_.is_kept) {
    parameters_ = unfitted_;
  }
}

}  // namespace orvane
