// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane {
namespace {

// Of the window over a whole period of its cosine.
double WindowSum(std::size_t length) { return static_cast<double>(length) / 2; }
double WindowSquares(std::size_t length) { return 3 * static_cast<double>(length) / 8; }

Result<> CanTransform(std::size_t scans, double rate) {
  if (scans < kLeastSpectrumScans) {
    return Failure("too few scans for a spectrum");
  }
  return rate > 0 && std::isfinite(rate) ? Result<>() : Failure("the sample rate is not known");
}

void AddSquares(std::span<const Complex> bins, double* sums) {
  for (const Complex& bin : bins) {
    *sums++ += bin.real() * bin.real() + bin.imag() * bin.imag();
  }
}

}  // namespace

void SpectrumChannel::Scale(double factor) {
  for (double& power : powers) {
    power *= factor * factor;
  }
}

double Spectrum::Amplitude(std::size_t channel, std::size_t bin) const {
  return Doubled(bin) * std::sqrt(channels[channel].powers[bin]) / WindowSum(length);
}

double Spectrum::Density(std::size_t channel, std::size_t bin) const {
  return Doubled(bin) * channels[channel].powers[bin] / (rate * WindowSquares(length));
}

double Spectrum::RootDensity(std::size_t channel, std::size_t bin) const {
  return std::sqrt(Density(channel, bin));
}

SegmentPowers::SegmentPowers(std::size_t length) : fft_(length), window_(length) {
  for (std::size_t n = 0; n < length; ++n) {
    const double turn = static_cast<double>(n) / static_cast<double>(length);
    window_[n] = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * turn);
  }
}

std::uint64_t SegmentPowers::Add(std::span<const double> values, std::span<double> sums) {
  std::uint64_t segments = 0;
  const std::size_t length = Length();
  double* const input = fft_.Input().data();
  for (std::size_t first = 0; first + length <= values.size(); first += length - length / 2) {
    const double* const from = values.data() + first;
    const double* const window = window_.data();
    for (std::size_t n = 0; n < length; ++n) {
      input[n] = from[n] * window[n];
    }
    AddSquares(fft_.Transform(), sums.data());
    ++segments;
  }
  return segments;
}

std::size_t SegmentLength(std::size_t scans, std::size_t segment) {
  return segment == 0 ? scans : QuickLength(std::min(scans, segment));
}

void TakeChannelsApart(std::span<const std::int32_t> held, std::size_t channels,
                       std::vector<double>* values) {
  constexpr std::size_t kBlock = 256;  // scans that stay in the nearest cache
  const std::size_t scans = channels == 0 ? 0 : held.size() / channels;
  values->resize(scans * channels);
  for (std::size_t begin = 0; begin < scans; begin += kBlock) {
    const std::size_t end = std::min(scans, begin + kBlock);
    for (std::size_t channel = 0; channel < channels; ++channel) {
      double* to = values->data() + channel * scans;
      for (std::size_t scan = begin; scan < end; ++scan) {
        to[scan] = held[scan * channels + channel];
      }
    }
  }
}

Result<Spectrum> SpectrumOfScans(std::span<const std::int32_t> held, std::size_t channels,
                                 double rate, std::size_t segment) {
  std::vector<double> values;
  TakeChannelsApart(held, channels, &values);
  return SpectrumOfValues(values, channels, rate, segment);
}

Result<Spectrum> SpectrumOfValues(std::span<const double> values, std::size_t channels, double rate,
                                  std::size_t segment) {
  const std::size_t scans = channels == 0 ? 0 : values.size() / channels;
  const std::size_t length = SegmentLength(scans, segment);
  if (const Result<> can = CanTransform(length, rate); !can) {
    return Failure(can.Message());
  }
  Spectrum spectrum{rate, length, 0, std::vector<SpectrumChannel>(channels)};
  SegmentPowers segments(length);
  for (std::size_t c = 0; c < channels; ++c) {
    std::vector<double>& powers = spectrum.channels[c].powers;
    powers.resize(length / 2 + 1);
    spectrum.segments = segments.Add(values.subspan(c * scans, scans), powers);
    spectrum.channels[c].Scale(std::sqrt(1 / static_cast<double>(spectrum.segments)));
  }
  return spectrum;
}

void TakeUnits(const std::vector<WaveformChannel>& channels, Spectrum* spectrum) {
  const std::size_t count = std::min(channels.size(), spectrum->channels.size());
  for (std::size_t c = 0; c < count; ++c) {
    SpectrumChannel& channel = spectrum->channels[c];
    channel.name = channels[c].name;
    channel.unit.clear();
    // " (mV)"
    const std::string& unit = channels[c].unit;
    if (unit.size() > 3) {
      channel.unit = unit.substr(2, unit.size() - 3);
    }
    channel.Scale(channels[c].scale);
  }
}

std::string SpectrumLabel(const SpectrumChannel& channel, bool is_density) {
  const std::string unit = channel.unit.empty() ? "counts" : channel.unit;
  return channel.name + " (" + unit + (is_density ? "/√Hz)" : ")");
}

}  // namespace orvane
