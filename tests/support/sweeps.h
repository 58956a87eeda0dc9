// SPDX-License-Identifier: GPL-3.0-or-later
// Calibrations of boxes whose parts are known.
#ifndef ORVANE_TESTS_SUPPORT_SWEEPS_H_
#define ORVANE_TESTS_SUPPORT_SWEEPS_H_

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "response/cal_file.h"
#include "support/cal_bytes.h"

namespace orvane::testing {

inline constexpr int kSweepLength = 33;

/// 0.05 Hz to 20 kHz, as records hold it.
inline double SweepFrequency(int i) {
  return static_cast<float>(0.05 * std::pow(20000 / 0.05, i / (kSweepLength - 1.0)));
}

/// One record more, of a pass that begins with step 1.
inline void AddRecord(int kind, double frequency, const std::vector<Complex>& responses,
                      double value4, CalData* cal, int step = 1) {
  CalFileRecord record;
  record.kind = static_cast<std::uint8_t>(kind);
  record.frequency = static_cast<float>(frequency);
  record.step = static_cast<std::int16_t>(step);
  for (std::size_t c = 0; c < responses.size(); ++c) {
    record.channels[c].values[3] = static_cast<float>(value4);
    record.channels[c].real = static_cast<float>(responses[c].real());
    record.channels[c].imaginary = static_cast<float>(responses[c].imag());
  }
  cal->records.push_back(record);
}

/// A box of one channel, swept in some passes; the others are empty.
struct Sweeps {
  FrontEndParameters parts{};
  std::uint32_t flags = 0;
  double noise = 0;
  double delay = 2;
  double drive = 600;
  std::vector<std::size_t> passes;
  /// Added to the response of a pass at a frequency; without one a fixed pattern is.
  std::function<Complex(std::size_t pass, int i)> deviation;

  Complex Response(std::size_t pass, int i) const {
    const FrontEndSetting setting = PassSetting(pass, parts[kDrive]);
    const auto k = static_cast<int>(pass);
    const Complex relative =
        deviation ? deviation(pass, i)
                  : Complex(std::cos(7 * i + 3 * k), std::sin(5 * i + 2 * k)) * noise;
    return FrontEnd(parts, setting).Response(SweepFrequency(i)) * (1.0 + relative);
  }

  CalData Fitted() const {
    CalData cal;
    cal.header.nchn = std::int16_t{1};
    cal.channel_flags[0] = flags;
    for (std::size_t pass = 0; pass <= 14; ++pass) {
      cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
      if (pass == 0) {
        AddRecord(1, 1, {1}, delay, &cal);
      } else if (std::find(passes.begin(), passes.end(), pass) != passes.end()) {
        for (int i = 0; i < kSweepLength; ++i) {
          AddRecord(1, SweepFrequency(i), {Response(pass, i)}, drive, &cal, i + 1);
        }
      }
    }
    cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
    cal.model = FitBoxModel(cal, cal.channel_flags);
    return cal;
  }
};

/// The file of a box, kind 1, each channel with the same parts; passes 0 to 2 without a meaning.
/// `bad`: a channel that no circuit describes, from 0; -1: none.
inline std::string BoxBytes(const Sweeps& sweeps, int channels, int bad = -1) {
  std::string bytes = CalHeaderBytes(1, channels);
  for (std::size_t pass = 0; pass <= 14; ++pass) {
    for (int i = 0; i < kSweepLength; ++i) {
      const Complex response = pass < 3 ? 1 : sweeps.Response(pass, i);
      const std::array<float, 6> values = {1,
                                           0,
                                           0,
                                           pass == 0 ? 2.0F : 600.0F,
                                           static_cast<float>(response.real()),
                                           static_cast<float>(response.imag())};
      bytes += Little(1, 1) + "?" + FloatBytes(static_cast<float>(SweepFrequency(i))) +
               Little(static_cast<std::uint16_t>(i + 1), 2);
      for (int c = 0; c < channels; ++c) {
        for (std::size_t k = 0; k < values.size(); ++k) {
          const bool is_wild = c == bad && k == 4;
          bytes += FloatBytes(is_wild ? 3 * values[k] * static_cast<float>(i % 3) : values[k]);
        }
      }
    }
  }
  return bytes;
}

/// The largest relative error of a model over gains, filters and sources, between two frequencies.
/// Filters are "LPFR" codes.
inline double LargestError(const FrontEndParameters& is, const FrontEndParameters& model,
                           bool is_coupled, double from, double to,
                           const std::vector<int>& filters = {0, 16, 17, 18, 19, 20, 80, 81, 82, 83,
                                                              84}) {
  double largest = 0;
  for (const int low_pass : filters) {
    for (int gain = -1; gain <= 2; ++gain) {
      for (const double source : {0, 100, 1000}) {
        const FrontEndSetting setting{gain, low_pass, is_coupled ? 1 : 0, source};
        const FrontEnd one(is, setting);
        const FrontEnd other(model, setting);
        for (int i = 0; i <= 40; ++i) {
          const double frequency = from * std::pow(to / from, i / 40.0);
          const Complex expected = one.Response(frequency);
          largest = std::max(largest,
                             std::abs(other.Response(frequency) - expected) / std::abs(expected));
        }
      }
    }
  }
  return largest;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_SWEEPS_H_
