// SPDX-License-Identifier: GPL-3.0-or-later
// A time-domain recording whose decay is known in closed form, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_DECAY_BYTES_H_
#define ORVANE_TESTS_SUPPORT_DECAY_BYTES_H_

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "support/ts_bytes.h"

namespace orvane::testing {

/// Current one way, none, the other way, none. While it flows the voltage is `volts`; once it is
/// off it is volts x share x exp(-t / tau), t in seconds. All of that drifts and has noise.
struct DecayBytes {
  int rate = 512;  ///< Hz
  double frequency = 0.5;
  double off_share = 0.25;             ///< of a period: TD50
  std::vector<double> volts = {0.02};  ///< of each channel
  double share = 0.05;
  double tau = 0.4;
  double starts_at = 0;  ///< of a period
  int scans = 4096;
  double drift = 0;  ///< volts per second
  double noise = 0;  ///< volts
  int status = 0;

  static constexpr double kFullScale = 2.5;  ///< FSCV, volts; gains are 1

  double At(double volt, double seconds) const {
    const double turns = frequency * seconds + starts_at;
    const double half = 2 * (turns - std::floor(turns));
    const double in_half = half - std::floor(half);
    const double on = 1 - 2 * off_share;
    const double since = (in_half - on) / (2 * frequency);  // the current is off
    // What falls on an edge but for its rounding belongs behind it.
    const double value = since < -1e-9 ? volt : volt * share * std::exp(-since / tau);
    return half < 1 ? value : -value;
  }
  /// Mean of the decay between two times, in volts, by integration.
  double Mean(double volt, double from, double to) const {
    return volt * share * tau * (std::exp(-from / tau) - std::exp(-to / tau)) / (to - from);
  }

  std::string Bytes(unsigned seed = 1) const {
    std::mt19937 random(seed);
    std::normal_distribution<double> normal;
    TsBytes record{.frequency = frequency,
                   .channels = static_cast<int>(volts.size()),
                   .status = status,
                   .rate = rate,
                   .unit = 0};
    for (int scan = 0; scan < scans; ++scan) {
      const double seconds = static_cast<double>(scan) / rate;
      for (const double volt : volts) {
        const double value = At(volt, seconds) + drift * seconds + noise * normal(random);
        record.samples.push_back(static_cast<int>(std::lround(value / kFullScale * 8388607)));
      }
    }
    return record.Bytes();
  }

  /// The table of the recording: TDIP, "TD50", 8 windows.
  static std::string Table(int tech = 2, int waveform = 1, int windows = 8) {
    std::string bytes = HeaderV2();
    const auto add = [&bytes](const char* key, std::uint8_t type, const std::string& value) {
      bytes += RecordV2(key, kMaskAnyMode, type, value);
    };
    add("TECH", IntPT, IntBytes(tech));
    add("WFRM", IntPT, IntBytes(waveform));
    add("NUMITEM", IntPT, IntBytes(windows));
    add("EGNC", IntPT, IntBytes(0));
    add("HGNC", IntPT, IntBytes(0));
    add("FSCV", FltPT, RealBytes(kFullScale));
    add("FREQ", FltPT, RealBytes(0.5));
    add("CHDEF1", StrPT, "Ex1");
    add("CHDEF2", StrPT, "Ex2");
    return bytes;
  }
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_DECAY_BYTES_H_
