// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_strip_model.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr RecordColumn kFrequency{RecordColumn::Kind::kFrequency};
constexpr double kLeastSpan = 1;  // a factor of 2

}  // namespace

void RecordStripModel::Range::Add(double value) {
  if (!(value > 0) || !std::isfinite(value)) {
    return;
  }
  const double power = std::log2(value);
  low = is_known ? std::min(low, power) : power;
  high = is_known ? std::max(high, power) : power;
  is_known = true;
}

double RecordStripModel::Range::Share(double value) const {
  if (!(value > 0) || !std::isfinite(value)) {
    return 0;
  }
  const double span = std::max(high - low, kLeastSpan);
  const double from = (low + high - span) / 2;
  return std::clamp((std::log2(value) - from) / span, 0.0, 1.0);
}

RecordStripModel::RecordStripModel(const RecordList& list, const RecordNumbers& left_out,
                                   std::uint64_t places, int width)
    : count_(static_cast<std::size_t>(
          std::min<std::uint64_t>(places, static_cast<std::uint64_t>(std::max(width, 1))))),
      ranges_(list.Channels()) {
  for (std::size_t column = 0; column < count_; ++column) {
    const auto first = static_cast<std::size_t>(column * places / count_);
    const auto end = static_cast<std::size_t>((column + 1) * places / count_);
    if (first >= list.Size()) {
      break;
    }
    columns_.push_back(ColumnOf(list, left_out, first, std::min(end, list.Size())));
  }
}

StripColumn RecordStripModel::ColumnOf(const RecordList& list, const RecordNumbers& left_out,
                                       std::size_t first, std::size_t end) {
  StripColumn column{.first = first, .rows = end - first, .is_left_out = true};
  column.channels.resize(list.Channels());
  for (std::size_t row = first; row < end; ++row) {
    column.is_left_out = column.is_left_out && left_out.Has(list.Number(row));
    AddRow(list, row, &column);
  }
  return column;
}

void RecordStripModel::AddRow(const RecordList& list, std::size_t row, StripColumn* column) {
  column->has_bad = column->has_bad || list.IsBad(row);
  column->has_saturated = column->has_saturated || list.IsSaturated(row);
  const std::optional<double> frequency = list.Value(row, kFrequency);
  frequencies_.Add(frequency.value_or(0));
  column->frequency = column->frequency ? column->frequency : frequency;
  const auto stats = list.Stats(row);
  for (std::size_t channel = 0; channel < stats.size(); ++channel) {
    const std::int32_t value = stats[channel].PeakToPeak();
    ranges_[channel].Add(value);
    auto& peaks = column->channels[channel];
    peaks = peaks ? StripPeaks{std::min(peaks->least, value), std::max(peaks->most, value)}
                  : StripPeaks{value, value};
  }
}

double RecordStripModel::HeightOf(std::size_t channel, std::int32_t peak_to_peak) const {
  return ranges_[channel].Share(peak_to_peak);
}

std::optional<double> RecordStripModel::HeightOf(const std::optional<double>& frequency) const {
  const bool is_stepped = frequencies_.high > frequencies_.low;
  return is_stepped && frequency ? std::optional(frequencies_.Share(*frequency)) : std::nullopt;
}

std::uint64_t RecordAtShare(double share, std::uint64_t records) {
  if (records == 0) {
    return 0;
  }
  const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(records);
  return std::min(static_cast<std::uint64_t>(place), records - 1) + 1;
}

}  // namespace orvane
