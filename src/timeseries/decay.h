// SPDX-License-Identifier: GPL-3.0-or-later
// Decays after a transmitter's current is switched off, from one record of one channel. The current
// is taken to flow one way, be off, flow the other way and be off again in each period.
#ifndef ORVANE_TIMESERIES_DECAY_H_
#define ORVANE_TIMESERIES_DECAY_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "timeseries/fold.h"

namespace orvane {

/// In seconds after the first scan without current.
struct DecayWindow {
  double start = 0;
  double end = 0;

  double Width() const { return end - start; }
  bool operator==(const DecayWindow&) const = default;
};

/// Windows as a user writes them, in milliseconds, such as "40-80,80-160". Fails with what is
/// wrong: 1 to kMostDecayWindows windows, none of them empty.
Result<std::vector<DecayWindow>> DecayWindowsOf(std::string_view text);
inline constexpr std::size_t kMostDecayWindows = 199;

/// What the recording says of the current.
struct DecayTiming {
  double rate = 0;       ///< Hz
  double frequency = 0;  ///< Hz
  double off_share = 0;  ///< of a whole period, between current one way and the other: TD50 1/4
};

/// Where the current is switched, in places of the half period that a fold with `halves` makes.
struct SwitchEdges {
  std::size_t on = 0;         ///< the first place with current
  std::size_t on_places = 0;  ///< so many have current, the rest of the half period has not
  double sign = 1;            ///< -1: the half period that begins at `on` is the reversed one
  double clearness = 0;       ///< how far they stand out; see `FindEdges()`

  static constexpr double kLeastClearness = 6;
  bool AreClear() const { return clearness >= kLeastClearness; }
};

/// Finds the edges in a folded half period, which goes on with the opposite sign. At each place k
/// the step D(k) is the mean of the m places from k on less that of the m before, m the 32nd part
/// of the places; the current goes on where D(k) - D(k + on_places) is greatest in magnitude.
/// `clearness` is that over 1.48 times the median magnitude of all places. The sign makes the step
/// up at `on` positive. Fails, with a reason for the user, where the fold is too short.
Result<SwitchEdges> FindEdges(std::span<const double> folded, double off_share);

/// A value that each period of a record has, and 1.48 MAD over the periods.
struct DecayValue {
  double value = 0;
  double spread = 0;
};

struct Decay {
  DecayValue on;  ///< mean of the last half of the time with current, less its last scan
  std::vector<DecayValue> windows;          ///< mean of the decay within each window
  std::optional<DecayValue> chargeability;  ///< see `DecayOf()`; none where the voltage is 0
};

/// The decay of a trace, in its unit, at edges that were found in it or in another channel of its
/// record. The linear drift is removed that a line fitted together with the waveform has
/// (`DriftPerScan()`); half periods are folded with their sign; between scans, the decay is a
/// straight line, and after the last scan without current it stays. chargeability = 1000 *
/// sum(V_k dt_k) / (V_on sum(dt_k)), in mV/V. Fails, with a reason for the user, where a window
/// is not within the time without current.
Result<Decay> DecayOf(std::span<const double> values, const DecayTiming& timing,
                      const SwitchEdges& edges, const std::vector<DecayWindow>& windows);

/// The half period of a trace from the switch on, in the sign of the edges, without drift: what a
/// display draws. The time without current begins at place `edges.on_places`.
Result<Fold> FoldFromEdge(std::span<const double> values, const DecayTiming& timing,
                          const SwitchEdges& edges);

/// `FindEdges()` in a trace: of its fold without drift.
Result<SwitchEdges> FindEdgesIn(std::span<const double> values, const DecayTiming& timing);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_DECAY_H_
