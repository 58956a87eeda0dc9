// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/fit_points.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr double kLowFrequencies = 50;  // Hz; below, the response is close to that at 0 Hz
constexpr double kErrorOffset = 0.1;    // of the full scale: by trial
constexpr double kLeastNoise = 2e-5;

}  // namespace

FitPoints::FitPoints(const BoxModel& model, std::size_t channel, double drive)
    : points(model.entries) {
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
      points[i] = {model.frequencies[i], measured[i],
                   is_usable ? 1 / (std::abs(measured[i]) + kErrorOffset) : 0};
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
