// SPDX-License-Identifier: GPL-3.0-or-later
// The periods of a record laid over each other.
#ifndef ORVANE_TIMESERIES_FOLD_H_
#define ORVANE_TIMESERIES_FOLD_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/result.h"

namespace orvane {

/// Which place of its period each scan goes to. Where rate / frequency is no integer it is the
/// nearest of round(rate / frequency) places of its phase.
class PhasePlaces {
 public:
  /// Of a record of so many scans; rate and frequency in Hz. With `halves` the places are those of
  /// half a period, round(rate / frequency / 2). Fails, with a reason for the user, without a rate,
  /// without a frequency above 0, with fewer than two whole periods, and where a period, or half of
  /// one, has no two scans.
  static Result<PhasePlaces> Of(std::size_t scans, double rate, double frequency, bool halves);

  std::size_t Places() const { return places_; }
  /// Whole periods of the record.
  std::size_t Periods() const { return periods_; }
  /// Scans that belong to them, from the first one on.
  std::size_t Scans() const { return scans_; }
  /// Between two places, in seconds.
  double Step() const { return step_; }

  struct At {
    std::size_t place = 0;
    std::size_t turn = 0;  ///< period, or half period, from 0
  };
  /// Of a scan below `Scans()`.
  At Of(std::size_t scan) const {
    const std::uint64_t steps = Steps(scan);
    return {static_cast<std::size_t>(steps % places_), static_cast<std::size_t>(steps / places_)};
  }

 private:
  std::uint64_t Steps(std::size_t scan) const {
    return static_cast<std::uint64_t>(static_cast<double>(scan) * steps_per_scan_ + 0.5);
  }

  std::size_t places_ = 0;
  std::size_t periods_ = 0;
  std::size_t scans_ = 0;
  double step_ = 0;
  double steps_per_scan_ = 1;
};

/// A period, or half of one, as the mean of those of a record.
struct Fold {
  /// At each place, in the unit of the trace; "not a number" at a place without a scan, which
  /// records of few and short periods may have.
  std::vector<double> means;
  std::vector<double> spreads;  ///< standard deviation about the mean; 0 of a single scan
  std::size_t periods = 0;      ///< whole ones, folded
  double step = 0;              ///< seconds from place to place
};

/// Folds a trace at its frequency. With `halves`, second halves of periods count with the opposite
/// sign: what transmitters reverse stays, offsets go. Fails as `PhasePlaces::Of()`.
Result<Fold> FoldTrace(std::span<const double> values, double rate, double frequency, bool halves);

/// How much a trace drifts, per scan: the slope of a straight line that is fitted together with a
/// waveform of this period, whatever its form. The waveform is what each scan has in common with
/// the others at its place, so the line is fitted to the distances from the means of the places.
/// `places` are those of whole periods.
double DriftPerScan(std::span<const double> values, const PhasePlaces& places);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_FOLD_H_
