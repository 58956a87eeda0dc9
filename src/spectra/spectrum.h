// SPDX-License-Identifier: GPL-3.0-or-later
// Spectra of waveforms through a Hann window, w(n) = (1 - cos(2 pi n / N)) / 2. With X the
// transform of the values times w, fs the sample rate and squares averaged over segments:
//   amplitude      2 |X| / sum w              of a sine that lies on a bin
//   power density  2 |X|^2 / (fs sum w^2)     of noise
// The first bin, of frequency 0, and that of fs / 2 have a 1 in place of the 2.
#ifndef ORVANE_SPECTRA_SPECTRUM_H_
#define ORVANE_SPECTRA_SPECTRUM_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"
#include "spectra/fft.h"
#include "timeseries/waveform_channels.h"

namespace orvane {

struct SpectrumChannel {
  std::string name;
  std::string unit;            ///< such as "mV"; empty: counts
  std::vector<double> powers;  ///< mean |X|^2, of each bin

  /// Multiplies the values that the spectrum is of.
  void Scale(double factor);
};

struct Spectrum {
  double rate = 0;             ///< Hz
  std::size_t length = 0;      ///< scans of a segment, N
  std::uint64_t segments = 0;  ///< averaged
  std::vector<SpectrumChannel> channels;

  /// Bins that a channel has, at most N / 2 + 1.
  std::size_t Bins() const { return channels.empty() ? 0 : channels.front().powers.size(); }
  double BinWidth() const { return rate / static_cast<double>(length); }
  /// n fs / N, in Hz.
  double Frequency(std::size_t bin) const {
    return static_cast<double>(bin) * rate / static_cast<double>(length);
  }
  /// In the channel's unit.
  double Amplitude(std::size_t channel, std::size_t bin) const;
  /// In the channel's unit, squared, per Hz.
  double Density(std::size_t channel, std::size_t bin) const;
  /// The square root of the power density, in the channel's unit per root Hz.
  double RootDensity(std::size_t channel, std::size_t bin) const;

 private:
  double Doubled(std::size_t bin) const { return bin == 0 || 2 * bin == length ? 1 : 2; }
};

/// A spectrum needs so many scans.
inline constexpr std::size_t kLeastSpectrumScans = 4;

/// Adds up the squares of segments of one length. Each thread needs one of its own.
class SegmentPowers {
 public:
  /// At least kLeastSpectrumScans.
  explicit SegmentPowers(std::size_t length);

  /// Adds those of segments that overlap by half, from the first value on; how many there are.
  /// `sums` has Length() / 2 + 1 numbers.
  std::uint64_t Add(std::span<const double> values, std::span<double> sums);
  std::size_t Length() const { return fft_.Length(); }

 private:
  RealFft fft_;
  std::vector<double> window_;
};

/// How many scans a segment has: all of `scans`, or the quick length that is at most `segment`.
std::size_t SegmentLength(std::size_t scans, std::size_t segment);

/// The values of each channel of a piece of a record, one channel after the other; `held` is scan
/// after scan.
void TakeChannelsApart(std::span<const std::int32_t> held, std::size_t channels,
                       std::vector<double>* values);

/// Of a piece of a record, in held values (sample x 256): of one segment, or averaged over such of
/// at most `segment` scans where that is not 0. Fails for too few scans and where the rate is not
/// above 0.
Result<Spectrum> SpectrumOfScans(std::span<const std::int32_t> held, std::size_t channels,
                                 double rate, std::size_t segment = 0);
/// The same of values that were worked out, `channels` times as many, one channel after the other.
Result<Spectrum> SpectrumOfValues(std::span<const double> values, std::size_t channels, double rate,
                                  std::size_t segment = 0);

/// Names the channels of a spectrum of held values and makes them of the units in which waveforms
/// are shown.
void TakeUnits(const std::vector<WaveformChannel>& channels, Spectrum* spectrum);

/// "E1 (mV/√Hz)", for an amplitude "E1 (mV)".
std::string SpectrumLabel(const SpectrumChannel& channel, bool is_density);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRUM_H_
