// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_HARMONIC_TABLE_H_
#define ORVANE_SPECTRA_HARMONIC_TABLE_H_

#include <optional>
#include <vector>

#include "spectra/spectrum.h"

namespace orvane {

struct HarmonicRow {
  int number = 1;        ///< 1, 3, 5 ...
  double frequency = 0;  ///< Hz
  /// Of a sine of this frequency, in the channel's unit: from the power of the five bins about it,
  /// less the noise in them, so that it need not lie on a bin. 0 where that is below the noise.
  double amplitude = 0;
  /// Noise floor in the channel's unit per root Hz: the root of the median density of the bins
  /// between the neighbouring odd harmonics that are three bins clear of every odd harmonic, mains
  /// line and frequency 0. None where no bin is.
  std::optional<double> floor;
  /// Power of the line over the noise in the window's 1.5 bins, in dB.
  std::optional<double> signal_to_noise;
};

struct HarmonicTableOptions {
  double fundamental = 0;                ///< Hz
  std::vector<double> mains = {50, 60};  ///< Hz; lines are at their multiples
  int most = 64;                         ///< rows
};

/// The odd harmonics of a channel up to the spectrum's last bins. Empty where a segment has less
/// than four periods of the fundamental: then neighbouring lines run together.
std::vector<HarmonicRow> HarmonicTable(const Spectrum& spectrum, std::size_t channel,
                                       const HarmonicTableOptions& options);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_HARMONIC_TABLE_H_
