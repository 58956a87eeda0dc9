// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_header.h"

#include <algorithm>

#include "base/ascii.h"

namespace orvane {

bool IsBlank(const TsHeader& header) {
  const auto bytes = BytesOf(header);
  const auto are_all = [&bytes](std::size_t count, std::byte value) {
    return std::all_of(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count),
                       [value](std::byte byte) { return byte == value; });
  };
  // Of the shorter headers the rest is zero.
  return are_all(bytes.size(), std::byte{0}) ||
         are_all(BytesIn(TsHeaderSize::kBand), std::byte{0xFF});
}

double SampleRate(const TsHeader& header) {
  const double value = header.rate;
  switch (header.rate_unit) {
    case 0:
      return value;
    case 1:
      return value * (1.0 / 60);
    case 2:
      return value * (1.0 / 3600);
    case -1:
      return value * 10;
    case -2:
      return value * 100;
    default:
      return value * 0;
  }
}

std::uint64_t ScanBytes(const TsHeader& header) {
  return std::uint64_t{header.channels} * header.sample_width;
}

std::uint64_t DataBytes(const TsHeader& header) { return header.scans * ScanBytes(header); }

std::uint64_t TrailingBytes(const TsHeader& header) {
  return header.trailing_scans * ScanBytes(header);
}

int BandNumber(std::string_view path) {
  return !path.empty() && IsDigit(path.back()) ? path.back() - '0' : 0;
}

}  // namespace orvane
