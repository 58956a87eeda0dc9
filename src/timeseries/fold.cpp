// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/fold.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"

namespace orvane {
namespace {

// Sums at one place.
struct Sums {
  double count = 0;
  double values = 0;
  double scans = 0;

  double Mean() const { return count > 0 ? values / count : 0; }
  double MeanScan() const { return count > 0 ? scans / count : 0; }
};

}  // namespace

Result<PhasePlaces> PhasePlaces::Of(std::size_t scans, double rate, double frequency, bool halves) {
  constexpr double kRounding = 1e-9;  // a period that lacks no more than this is whole
  if (!(rate > 0) || !std::isfinite(rate)) {
    return Failure("the sample rate is not known");
  }
  if (!(frequency > 0) || !std::isfinite(frequency)) {
    return Failure("the record has no frequency above 0");
  }
  const double turns = halves ? 2 : 1;
  const double period = rate / frequency;  // scans
  if (!(period >= 2 * turns)) {
    return Failure(std::string(halves ? "half a period of " : "a period of ") +
                   FormatReal(frequency) + " Hz has no two scans");
  }
  const double periods = std::floor(static_cast<double>(scans) / period + kRounding);
  if (periods < 2) {
    return Failure("the record has no two whole periods of " + FormatReal(frequency) + " Hz");
  }
  PhasePlaces result;
  result.places_ = static_cast<std::size_t>(std::round(period / turns));
  result.periods_ = static_cast<std::size_t>(periods);
  result.steps_per_scan_ = static_cast<double>(result.places_) * turns / period;
  result.step_ = 1 / (turns * frequency * static_cast<double>(result.places_));
  const auto whole = std::uint64_t{result.places_} * result.periods_ * (halves ? 2 : 1);
  result.scans_ = std::min(scans, static_cast<std::size_t>(std::ceil(periods * period)) + 1);
  while (result.scans_ > 0 && result.Steps(result.scans_ - 1) >= whole) {
    --result.scans_;
  }
  return result;
}

Result<Fold> FoldTrace(std::span<const double> values, double rate, double frequency, bool halves) {
  const auto places = PhasePlaces::Of(values.size(), rate, frequency, halves);
  if (!places) {
    return Failure(places.Message());
  }
  const auto signed_value = [&](std::size_t scan, std::size_t turn) {
    return halves && turn % 2 != 0 ? -values[scan] : values[scan];
  };
  std::vector<Sums> sums(places->Places());
  for (std::size_t scan = 0; scan < places->Scans(); ++scan) {
    const PhasePlaces::At at = places->Of(scan);
    sums[at.place].count += 1;
    sums[at.place].values += signed_value(scan, at.turn);
  }
  Fold fold{{}, std::vector<double>(sums.size()), places->Periods(), places->Step()};
  for (const Sums& sum : sums) {
    fold.means.push_back(sum.count > 0 ? sum.Mean() : std::numeric_limits<double>::quiet_NaN());
  }
  for (std::size_t scan = 0; scan < places->Scans(); ++scan) {
    const PhasePlaces::At at = places->Of(scan);
    const double distance = signed_value(scan, at.turn) - fold.means[at.place];
    fold.spreads[at.place] += distance * distance;
  }
  for (std::size_t i = 0; i < sums.size(); ++i) {
    fold.spreads[i] = sums[i].count > 1 ? std::sqrt(fold.spreads[i] / (sums[i].count - 1)) : 0;
  }
  return fold;
}

double DriftPerScan(std::span<const double> values, const PhasePlaces& places) {
  std::vector<Sums> sums(places.Places());
  for (std::size_t scan = 0; scan < places.Scans(); ++scan) {
    Sums& sum = sums[places.Of(scan).place];
    sum.count += 1;
    sum.values += values[scan];
    sum.scans += static_cast<double>(scan);
  }
  double product = 0;
  double square = 0;
  for (std::size_t scan = 0; scan < places.Scans(); ++scan) {
    const Sums& sum = sums[places.Of(scan).place];
    const double time = static_cast<double>(scan) - sum.MeanScan();
    product += time * (values[scan] - sum.Mean());
    square += time * time;
  }
  return square > 0 ? product / square : 0;
}

}  // namespace orvane
