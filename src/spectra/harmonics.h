// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_HARMONICS_H_
#define ORVANE_SPECTRA_HARMONICS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "response/complex.h"

namespace orvane {

struct Harmonic {
  int number = 1;  ///< n
  std::size_t bin = 0;
};

/// The odd harmonics n = 1, 3, 5 ... of a base frequency and their bins, m = trunc(n f0 N / fs +
/// 0.5): of the first `most` those whose n f0 is at most 0.4 of the sample rate and whose bin is
/// at least 1 and less than N / 2. A record of less than half a period has no bin for the first.
std::vector<Harmonic> OddHarmonics(double base_frequency, double sample_rate, std::size_t samples,
                                   int most);

/// What a sine between two bins comes out as at the nearest one.
struct BinError {
  double bins = 0;       ///< d = f N / fs - m
  double amplitude = 1;  ///< is multiplied by sin(pi d) / (N sin(pi d / N))
  double phase = 0;      ///< is moved by 180 d (N - 1) / N degrees

  /// Less than 0.02 % and 2 degrees are not worth a word.
  bool IsWorthANote() const { return bins > 0.01 || bins < -0.01; }
};
/// `samples` is not 0.
BinError BinErrorOf(double frequency, double sample_rate, std::size_t samples, std::size_t bin);

/// Pointers of several harmonics, or sums along them.
inline constexpr std::size_t kHarmonicLanes = 4;
struct HarmonicPointers {
  using Lanes = std::array<double, kHarmonicLanes>;
  Lanes cosine;
  Lanes sine;
};

/// Fourier coefficients of a record at a few bins,
///   X(m) = 1/N sum over j of x(j) exp(-2 pi i j m / N),
/// with no more rounding than a sum with exact sines and cosines has. What depends on the record's
/// length and the bins alone is worked out once.
///
/// The kernels of all bins repeat after L = N / gcd(N, bins): the samples are first added up over
/// these periods, in integers. Where all bins are odd multiples of N / L, the second half of a
/// period is the negative of the first, and the second quarter its mirror. The few sums that are
/// left go against rotating pointers, which start from a table again before they drift.
class HarmonicPlan {
 public:
  /// The bins must be less than `samples`, which is not 0.
  HarmonicPlan(std::size_t samples, const std::vector<std::size_t>& bins);

  /// The values at the bins, in their order, for as many samples as the plan is made for.
  std::vector<Complex> Evaluate(std::span<const std::int32_t> samples) const;
  std::size_t Samples() const { return samples_; }

 private:
  static constexpr std::size_t kRun = 64;  // points between two looks into the table

  Complex Root(std::uint64_t n) const;
  void SeedPointers();
  std::vector<std::int64_t> Fold(std::span<const std::int32_t> samples) const;
  HarmonicPointers SumLanes(std::size_t group, const std::vector<double>& even,
                            const std::vector<double>& odd) const;

  std::size_t samples_;
  std::size_t period_;               // L
  bool has_half_waves_ = false;      // all reduced bins are odd and L is even
  std::size_t points_ = 0;           // of a period that are left, without the first and the middle
  std::vector<std::uint64_t> bins_;  // reduced: in units of N / L
  std::vector<Complex> coarse_roots_;  // of unity, of order L
  std::vector<Complex> fine_roots_;
  std::vector<HarmonicPointers> seeds_;  // for each group of lanes, for each run
  std::vector<HarmonicPointers> steps_;  // for each group
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_HARMONICS_H_
