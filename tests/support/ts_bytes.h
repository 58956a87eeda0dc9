// SPDX-License-Identifier: GPL-3.0-or-later
// Time series records put together byte by byte, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_TS_BYTES_H_
#define ORVANE_TESTS_SUPPORT_TS_BYTES_H_

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "support/tbl_bytes.h"

namespace orvane::testing {

/// A record of box 2417 at 2009/06/30 03:04:05. Header bytes without a meaning hold their offset.
struct TsBytes {
  double frequency = 4;
  int channels = 1;
  std::vector<int> samples = {};  ///< scan after scan
  int width = 3;
  int status = 0;
  int rate = 24;
  int unit = -2;
  int trailing = 0;
  std::size_t header_size = 252;
  int scans = -1;  ///< as the header tells; -1: as there are samples

  std::string Header() const {
    std::string bytes;
    for (std::size_t i = 0; i < header_size; ++i) {
      bytes += static_cast<char>(i);
    }
    const int whole = channels == 0 ? 0 : static_cast<int>(samples.size()) / channels;
    const auto put = [&bytes](std::size_t at, const std::string& field) {
      bytes.replace(at, field.size(), field);
    };
    put(0, std::string("\5\4\3\36\6\11\1\24"));
    put(8, Little(2417, 2) + Little(static_cast<std::uint64_t>(scans < 0 ? whole : scans), 2));
    put(12, Little(static_cast<std::uint64_t>(channels), 1));
    put(14, Little(static_cast<std::uint64_t>(status), 1));
    put(17, Little(static_cast<std::uint64_t>(width), 1) +
                Little(static_cast<std::uint64_t>(rate), 2) +
                Little(static_cast<std::uint64_t>(unit), 1));
    put(27, Little(static_cast<std::uint64_t>(trailing), 1));
    if (header_size == 252) {
      put(36, RealBytes(frequency));
    }
    return bytes;
  }
  std::string Bytes() const {
    std::string bytes = Header();
    for (const int sample : samples) {
      bytes += Little(static_cast<std::uint64_t>(sample), static_cast<std::size_t>(width));
    }
    return bytes + std::string(static_cast<std::size_t>(trailing * channels * width), 'T');
  }
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TS_BYTES_H_
