// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/harmonic_table.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double kLeastPeriods = 4;   // of the fundamental in a segment
constexpr double kClear = 3;          // bins
constexpr std::size_t kHalfLine = 2;  // bins on either side of a line's
constexpr double kNoiseBins = 1.5;    // that the window lets through

// Whether a bin is not clear of the multiples of a frequency; `step` is 1 or, for odd multiples, 2.
bool IsNearMultiple(double bin, double line, int step) {
  if (!(line > 0)) {
    return false;
  }
  const double first = step == 1 ? 0 : line;
  const double nearest = std::max(0.0, std::round((bin - first) / (step * line)));
  return std::abs(bin - (first + nearest * step * line)) < kClear;
}

double Median(std::vector<double>* values) {
  const auto middle = values->begin() + static_cast<std::ptrdiff_t>(values->size() / 2);
  std::nth_element(values->begin(), middle, values->end());
  return values->size() % 2 != 0 ? *middle
                                 : (*middle + *std::max_element(values->begin(), middle)) / 2;
}

class Table {
 public:
  Table(const Spectrum* spectrum, std::size_t channel, const HarmonicTableOptions* options)
      : spectrum_(*spectrum), channel_(channel), options_(*options) {}

  // The density of the noise about an odd harmonic.
  std::optional<double> Floor(int number) const {
    const double low = InBins((number - 2) * options_.fundamental);
    const double high = InBins((number + 2) * options_.fundamental);
    std::vector<double> densities;
    for (auto bin = static_cast<std::size_t>(std::max(0.0, std::ceil(low)));
         bin < spectrum_.Bins() && static_cast<double>(bin) <= high; ++bin) {
      if (IsClear(static_cast<double>(bin))) {
        densities.push_back(spectrum_.Density(channel_, bin));
      }
    }
    return densities.empty() ? std::nullopt : std::optional(Median(&densities));
  }

  HarmonicRow Row(int number) const {
    HarmonicRow row{number, number * options_.fundamental, 0, std::nullopt, std::nullopt};
    const auto floor = Floor(number);
    const auto bin = static_cast<std::size_t>(std::lround(InBins(row.frequency)));
    double power = 0;
    for (std::size_t k = bin - kHalfLine; k <= bin + kHalfLine; ++k) {
      power += (spectrum_.Density(channel_, k) - floor.value_or(0)) * spectrum_.BinWidth();
    }
    row.amplitude = power > 0 ? std::sqrt(2 * power) : 0;
    if (floor) {
      row.floor = std::sqrt(*floor);
      const double noise = *floor * kNoiseBins * spectrum_.BinWidth();
      if (power > 0 && noise > 0) {
        row.signal_to_noise = 10 * std::log10(power / noise);
      }
    }
    return row;
  }

  // Whether the bins of a line are there.
  bool Has(int number) const {
    return InBins(number * options_.fundamental) + kHalfLine + 1 <
           static_cast<double>(spectrum_.Bins());
  }

 private:
  double InBins(double frequency) const { return frequency / spectrum_.BinWidth(); }

  bool IsClear(double bin) const {
    return bin >= kClear && !IsNearMultiple(bin, InBins(options_.fundamental), 2) &&
           std::none_of(options_.mains.begin(), options_.mains.end(),
                        [&](double mains) { return IsNearMultiple(bin, InBins(mains), 1); });
  }

  const Spectrum& spectrum_;
  std::size_t channel_;
  const HarmonicTableOptions& options_;
};

}  // namespace

std::vector<HarmonicRow> HarmonicTable(const Spectrum& spectrum, std::size_t channel,
                                       const HarmonicTableOptions& options) {
  std::vector<HarmonicRow> rows;
  if (!(options.fundamental >= kLeastPeriods * spectrum.BinWidth())) {
    return rows;
  }
  const Table table(&spectrum, channel, &options);
  for (int k = 0; k < options.most && table.Has(2 * k + 1); ++k) {
    rows.push_back(table.Row(2 * k + 1));
  }
  return rows;
}

}  // namespace orvane
