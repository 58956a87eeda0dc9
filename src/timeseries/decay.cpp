// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/decay.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "timeseries/robust.h"

namespace orvane {
namespace {

constexpr double kMilliseconds = 1000;
constexpr std::size_t kLeastPlaces = 8;  // of a half period: two for each half of on and off

// A mean over places of a half period that begins with the switch on.
struct Weights {
  std::size_t first = 0;
  std::vector<double> of_places;

  bool Has(std::size_t place) const { return place >= first && place - first < of_places.size(); }
  double Of(std::size_t place) const { return of_places[place - first]; }
};

// Without the last place, where scans may be from both sides of the switch.
Weights OnWeights(std::size_t on_places) {
  const std::size_t first = on_places / 2;
  const std::size_t count = std::max<std::size_t>(1, on_places - first - 1);
  return {first, std::vector<double>(count, 1 / static_cast<double>(count))};
}

// The mean of straight lines between places from `begin` to `end`, counted in places from the first
// without current, of which there are `off_places`; `on_places` are before it.
Weights WindowWeights(double begin, double end, std::size_t on_places, std::size_t off_places) {
  const auto first = static_cast<std::size_t>(begin);
  Weights weights{on_places + first, {}};
  const auto add = [&](std::size_t place, double weight) {
    const std::size_t at = std::min(place, off_places - 1) - first;
    weights.of_places.resize(std::max(weights.of_places.size(), at + 1));
    weights.of_places[at] += weight / (end - begin);
  };
  for (std::size_t place = first; place < off_places && static_cast<double>(place) < end; ++place) {
    const auto at = static_cast<double>(place);
    const double from = std::max(begin - at, 0.0);
    const double to = std::min(end - at, 1.0);
    const double later = (to * to - from * from) / 2;  // the share of the next place
    add(place, to - from - later);
    add(place + 1, later);
  }
  return weights;
}

// All means that make a decay: that of the time with current, then the windows.
Result<std::vector<Weights>> AllWeights(const std::vector<DecayWindow>& windows, double step,
                                        std::size_t on_places, std::size_t places) {
  const std::size_t off_places = places - on_places;
  const auto most = static_cast<double>(off_places);
  std::vector<Weights> all = {OnWeights(on_places)};
  for (const DecayWindow& window : windows) {
    const double begin = window.start / step;
    const double end = window.end / step;
    // A place more is the rounding of the period to whole places.
    if (!(begin >= 0) || !(begin < end) || !(begin < most) || !(end <= most + 1)) {
      return Failure("the window from " + FormatReal(window.start * kMilliseconds, 6) + " to " +
                     FormatReal(window.end * kMilliseconds, 6) +
                     " ms is not within the time without current, " +
                     FormatReal(most * step * kMilliseconds, 6) + " ms");
    }
    all.push_back(WindowWeights(begin, std::min(end, most), on_places, off_places));
  }
  return all;
}

std::size_t OnPlaces(std::size_t places, double off_share) {
  return static_cast<std::size_t>(
      std::round(static_cast<double>(places) * std::clamp(1 - 2 * off_share, 0.0, 1.0)));
}

std::vector<double> WithoutDrift(std::span<const double> values, const PhasePlaces& periods) {
  const double drift = DriftPerScan(values, periods);
  std::vector<double> without(values.begin(), values.end());
  for (std::size_t scan = 0; scan < without.size(); ++scan) {
    without[scan] -= drift * static_cast<double>(scan);
  }
  return without;
}

struct FlatFold {
  std::vector<double> values;  // of each scan, without drift
  Fold fold;                   // of their half periods
};
Result<FlatFold> FoldFlat(std::span<const double> values, const DecayTiming& timing) {
  const auto periods = PhasePlaces::Of(values.size(), timing.rate, timing.frequency, false);
  if (!periods) {
    return Failure(periods.Message());
  }
  std::vector<double> flat = WithoutDrift(values, *periods);
  auto fold = FoldTrace(flat, timing.rate, timing.frequency, true);
  return fold ? Result<FlatFold>({std::move(flat), std::move(*fold)}) : Failure(fold.Message());
}

// Where a place of the fold is, counted from the switch on, and its sign there.
struct Turned {
  std::size_t place;
  double sign;
};
Turned FromEdge(std::size_t place, std::size_t places, const SwitchEdges& edges) {
  return place < edges.on ? Turned{place + places - edges.on, -edges.sign}
                          : Turned{place - edges.on, edges.sign};
}

Fold TurnedFold(const Fold& fold, const SwitchEdges& edges) {
  Fold turned = fold;
  for (std::size_t i = 0; i < fold.means.size(); ++i) {
    const Turned at = FromEdge(i, fold.means.size(), edges);
    turned.means[at.place] = at.sign * fold.means[i];
    turned.spreads[at.place] = fold.spreads[i];
  }
  return turned;
}

// What each period has of each mean: that of all periods, and what the period's own scans differ.
class PeriodValues {
 public:
  PeriodValues(const Fold& fold, const std::vector<Weights>& weights)
      : weights_(weights), rows_(weights.size()) {
    for (std::size_t i = 0; i < weights.size(); ++i) {
      double mean = 0;
      for (std::size_t k = 0; k < weights[i].of_places.size(); ++k) {
        mean += weights[i].of_places[k] * fold.means[weights[i].first + k];
      }
      rows_[i].assign(fold.periods, mean);
      means_.push_back(mean);
    }
  }

  void Add(std::size_t period, std::size_t place, double difference) {
    constexpr double kHalves = 2;  // of a period have this place
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (weights_[i].Has(place)) {
        rows_[i][period] += weights_[i].Of(place) * difference / kHalves;
      }
    }
  }

  const std::vector<double>& Of(std::size_t row) const { return rows_[row]; }
  DecayValue Value(std::size_t row) const {
    return {means_[row], RobustStatsOf(rows_[row]).spread};
  }

 private:
  const std::vector<Weights>& weights_;
  std::vector<std::vector<double>> rows_;
  std::vector<double> means_;
};

// In mV/V, from the values of one period or of all.
template <typename ValueOf>
double Chargeability(const std::vector<DecayWindow>& windows, double on, const ValueOf& value_of) {
  double area = 0;
  double time = 0;
  for (std::size_t k = 0; k < windows.size(); ++k) {
    area += value_of(k) * windows[k].Width();
    time += windows[k].Width();
  }
  constexpr double kMillivolts = 1000;
  return kMillivolts * area / (on * time);
}

std::optional<DecayValue> ChargeabilityOf(const Decay& decay, const PeriodValues& periods,
                                          const std::vector<DecayWindow>& windows) {
  const double value =
      Chargeability(windows, decay.on.value, [&](std::size_t k) { return decay.windows[k].value; });
  if (!std::isfinite(value)) {
    return std::nullopt;
  }
  std::vector<double> each;
  for (std::size_t period = 0; period < periods.Of(0).size(); ++period) {
    each.push_back(Chargeability(windows, periods.Of(0)[period],
                                 [&](std::size_t k) { return periods.Of(k + 1)[period]; }));
  }
  return DecayValue{value, RobustStatsOf(std::move(each)).spread};
}

}  // namespace

Result<std::vector<DecayWindow>> DecayWindowsOf(std::string_view text) {
  std::vector<DecayWindow> windows;
  for (bool goes_on = true; goes_on;) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string_view one = text.substr(0, end);
    const std::size_t dash = std::min(one.find('-'), one.size());
    const auto start = ParseReal(one.substr(0, dash));
    const auto stop = ParseReal(one.substr(std::min(dash + 1, one.size())));
    if (!start || !stop || !(*start >= 0) || !(*start < *stop) || !std::isfinite(*stop)) {
      return Failure(std::string("\"").append(one) +
                     "\" is no window such as 40-80, in milliseconds");
    }
    windows.push_back({*start / kMilliseconds, *stop / kMilliseconds});
    goes_on = end < text.size();
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (windows.size() > kMostDecayWindows) {
    return Failure("there are more than " + FormatInt(kMostDecayWindows) + " windows");
  }
  return windows;
}

Result<SwitchEdges> FindEdges(std::span<const double> folded, double off_share) {
  const std::size_t places = folded.size();
  const std::size_t on_places = OnPlaces(places, off_share);
  const bool has_room = on_places >= 2 && places - on_places >= 2;
  if (places < kLeastPlaces || !has_room) {
    return Failure("half a period has too few scans for a decay: " + FormatInt(places));
  }
  // Sums from the beginning of five half periods on, every second of them reversed.
  constexpr std::size_t kHalfPeriods = 5;
  std::vector<double> sums = {0};
  for (std::size_t i = 0; i < kHalfPeriods * places; ++i) {
    const double value = folded[i % places];
    sums.push_back(sums.back() + ((i / places) % 2 == 0 ? value : -value));
  }
  const std::size_t m = std::max<std::size_t>(1, places / 32);
  const auto step = [&](std::size_t k) {
    return (sums[k + m] - 2 * sums[k] + sums[k - m]) / static_cast<double>(m);
  };
  SwitchEdges edges;
  edges.on_places = on_places;
  double greatest = 0;
  std::vector<double> magnitudes;
  for (std::size_t k = 0; k < places; ++k) {
    const std::size_t at = k + 2 * places;  // two half periods later nothing is reversed
    const double both = step(at) - step(at + on_places);
    magnitudes.push_back(std::abs(both));
    if (std::abs(both) > greatest) {
      greatest = std::abs(both);
      edges.on = k;
      edges.sign = both > 0 ? 1 : -1;
    }
  }
  constexpr double kOfNormal = 1.48;
  constexpr double kRounding = 1e-12;  // of the greatest, where there is no noise at all
  const double noise = kOfNormal * RobustStatsOf(std::move(magnitudes)).median;
  edges.clearness = greatest > 0 ? greatest / std::max(noise, kRounding * greatest) : 0;
  return edges;
}

Result<SwitchEdges> FindEdgesIn(std::span<const double> values, const DecayTiming& timing) {
  const auto flat = FoldFlat(values, timing);
  return flat ? FindEdges(flat->fold.means, timing.off_share) : Failure(flat.Message());
}

Result<Fold> FoldFromEdge(std::span<const double> values, const DecayTiming& timing,
                          const SwitchEdges& edges) {
  const auto flat = FoldFlat(values, timing);
  return flat ? Result<Fold>(TurnedFold(flat->fold, edges)) : Failure(flat.Message());
}

Result<Decay> DecayOf(std::span<const double> values, const DecayTiming& timing,
                      const SwitchEdges& edges, const std::vector<DecayWindow>& windows) {
  const auto flat = FoldFlat(values, timing);
  const auto halves = flat ? PhasePlaces::Of(values.size(), timing.rate, timing.frequency, true)
                           : Failure(flat.Message());
  const auto weights = halves
                           ? AllWeights(windows, halves->Step(), edges.on_places, halves->Places())
                           : Failure(halves.Message());
  if (!weights) {
    return Failure(weights.Message());
  }
  const Fold fold = TurnedFold(flat->fold, edges);
  PeriodValues periods(fold, *weights);
  for (std::size_t scan = 0; scan < halves->Scans(); ++scan) {
    const PhasePlaces::At at = halves->Of(scan);
    const Turned turned = FromEdge(at.place, halves->Places(), edges);
    const double sign = at.turn % 2 != 0 ? -turned.sign : turned.sign;
    periods.Add(at.turn / 2, turned.place, sign * flat->values[scan] - fold.means[turned.place]);
  }
  Decay decay{periods.Value(0), {}, {}};
  for (std::size_t k = 0; k < windows.size(); ++k) {
    decay.windows.push_back(periods.Value(k + 1));
  }
  decay.chargeability = ChargeabilityOf(decay, periods, windows);
  return decay;
}

}  // namespace orvane
