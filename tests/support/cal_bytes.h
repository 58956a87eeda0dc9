// SPDX-License-Identifier: GPL-3.0-or-later
// Calibration files put together byte by byte, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_CAL_BYTES_H_
#define ORVANE_TESTS_SUPPORT_CAL_BYTES_H_

#include <array>
#include <bit>
#include <string>
#include <vector>

#include "support/tbl_bytes.h"

namespace orvane::testing {

/// 2026/11/21 08:30:00, SNUM -2, STAT 7, HW "zla5k", VER "5.0", settings 1 to 5.
inline std::string CalHeaderBytes(int ctyp, int channels) {
  return std::string("\0\x1E\x08\x15\x0B\x1A\x06\x14", 8) + Little(0xFFFE, 2) +
         Little(static_cast<std::uint16_t>(channels), 2) + "ab" + Little(7, 2) +
         static_cast<char>(ctyp) + "cde" + Padded("zla5k", 12) + Padded("5.0", 12) + IntBytes(1) +
         IntBytes(2) + IntBytes(3) + IntBytes(4) + IntBytes(5) + "COIL12345678" + RealBytes(0.5) +
         RealBytes(1234.25) + RealBytes(-2.125) + std::string(32, 'x');
}

/// A record of one channel or more, each with the same six values.
inline std::string CalRecordBytes(int kind, float frequency, int step,
                                  const std::array<float, 6>& values, int channels = 1) {
  std::string bytes = Little(static_cast<std::uint8_t>(kind), 1) + "?" + FloatBytes(frequency) +
                      Little(static_cast<std::uint16_t>(step), 2);
  for (int c = 0; c < channels; ++c) {
    for (const float value : values) {
      bytes += FloatBytes(value);
    }
  }
  return bytes;
}

/// Passes of so many records each, one channel; the first step of a pass is `first_step`.
inline std::string CalPassBytes(const std::vector<int>& passes, int first_step = 1) {
  std::string bytes;
  for (const int records : passes) {
    for (int i = 0; i < records; ++i) {
      bytes += CalRecordBytes(0, 1, first_step + i, {1, 2, 3, 4, 5, 6});
    }
  }
  return bytes;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_CAL_BYTES_H_
