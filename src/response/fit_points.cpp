// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/fit_points.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {
namespace {

constexpr double kLowFrequencies = 50;  // Hz; below, the response is close to that at 0 Hz
constexpr double kSmall = 0.5;          // of the full scale
constexpr std::size_t kLeastSmall = 4;
constexpr int kLeastOffset = -4;  // as powers of two, of the usual one
constexpr int kMostOffset = 3;
constexpr double kLeastNoise = 2e-5;

}  // namespace

FitPoints::FitPoints(const BoxModel& model, std::size_t channel, double drive, double error_offset)
    : offset(error_offset), points(model.entries) {
  const Complex* measured = &model.responses[channel * BoxModel::kSlotEntries];
  for (std::size_t slot = 0; slot < fit_slots.size(); ++slot) {
    const std::size_t begin = model.slot_starts[slot];
    const std::size_t end = model.SlotEnd(slot);
    fit_slots[slot] = {std::span(points).subspan(begin, end - begin),
                       PassSetting(kSlotPasses[slot], drive)};
    for (std::size_t i = begin; i < end; ++i) {
      // The value at 0 Hz is the first record's, as good as that one is close to it.
      const double frequency = model.frequencies[i == begin ? i + 1 : i];
      const bool is_usable =
          frequency > 0 && std::isfinite(frequency) && IsFinite(measured[i]) &&
          (i != begin || (fit_slots[slot].setting.coupling != 1 && frequency <= kLowFrequencies));
      points[i] = {model.frequencies[i], measured[i], is_usable ? 1.0 : 0.0};
    }
  }
  Weigh(offset);
}

void FitPoints::Weigh(double error_offset) {
  offset = error_offset;
  for (FitPoint& point : points) {
    if (point.weight > 0) {
      point.weight = 1 / (std::abs(point.measured) + offset);
    }
  }
}

void AddErrors(const FitSlot& slot, const FrontEndParameters& parameters, double highest_frequency,
               std::vector<double>* errors) {
  const FrontEnd front_end(parameters, slot.setting);
  for (const FitPoint& point : slot.points) {
    if (point.weight > 0 && point.frequency <= highest_frequency) {
      const Complex h = front_end.Response(point.frequency);
      errors->push_back(std::abs(h - point.measured) * point.weight);
    }
  }
}

double OffsetFor(std::span<const FitSlot> slots, const FrontEndParameters& parameters) {
  struct {
    std::vector<double> errors;
    double squares = 0;
    // Squares of the median error and of the usual response.
    std::pair<double, double> Usual() {
      const double error = Median(&errors);
      return {error * error, squares / static_cast<double>(errors.size())};
    }
  } small, large;
  for (const FitSlot& slot : slots) {
    const FrontEnd front_end(parameters, slot.setting);
    for (const FitPoint& point : slot.points) {
      if (point.weight > 0) {
        const double square = std::norm(point.measured);
        auto& group = square < kSmall * kSmall ? small : large;
        group.errors.push_back(std::abs(front_end.Response(point.frequency) - point.measured));
        group.squares += square;
      }
    }
  }
  if (small.errors.size() < kLeastSmall || large.errors.size() < small.errors.size()) {
    return kUsualOffset;
  }
  // error^2 = a^2 + b^2 |h|^2 in both groups; the offset is a / b.
  const auto [low_error, low] = small.Usual();
  const auto [high_error, high] = large.Usual();
  if (high_error < kLeastNoise * kLeastNoise) {
    return kUsualOffset;  // rounding
  }
  const double slope = (high_error - low_error) / (high - low);
  const double constant = low_error - slope * low;
  int power = slope <= 0 ? kMostOffset : kLeastOffset;
  if (slope > 0 && constant > 0) {
    const double times = std::sqrt(constant / slope) / kUsualOffset;
    power = static_cast<int>(
        std::lround(std::clamp<double>(std::log2(times), kLeastOffset, kMostOffset)));
  }
  return std::ldexp(kUsualOffset, power);
}

double Median(std::vector<double>* values) {
  if (values->empty()) {
    return 0;
  }
  const auto middle = values->begin() + static_cast<std::ptrdiff_t>(values->size() / 2);
  std::nth_element(values->begin(), middle, values->end());
  return *middle;
}

double NoiseOf(std::vector<double> errors) {
  constexpr double kMedianOfNoise = 1.1774;
  return std::max(Median(&errors) / kMedianOfNoise, kLeastNoise);
}

}  // namespace orvane
