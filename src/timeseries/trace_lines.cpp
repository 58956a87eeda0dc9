// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/trace_lines.h"

#include <algorithm>
#include <cstdint>

namespace orvane {
namespace {

// Where the least and greatest value of some scans are.
struct Peaks {
  std::size_t low;
  std::size_t high;
};

}  // namespace

void ThinScans(const CTsRec& record, ScanRange scans, std::size_t channels, int pixels,
               const std::function<void(std::size_t scan, std::size_t channel)>& put) {
  const std::size_t count = scans.end - scans.begin;
  const auto columns = std::min(static_cast<std::size_t>(std::max(pixels, 1)), count);
  std::vector<Peaks> peaks(channels);
  for (std::size_t column = 0; column < columns; ++column) {
    const std::size_t begin = scans.begin + count * column / columns;
    const std::size_t end = scans.begin + count * (column + 1) / columns;
    std::fill(peaks.begin(), peaks.end(), Peaks{begin, begin});
    for (std::size_t scan = begin + 1; scan < end; ++scan) {
      const CTsRecRow row = record.Row(scan);
      for (std::size_t channel = 0; channel < peaks.size(); ++channel) {
        Peaks& of = peaks[channel];
        const std::int32_t held = row.Held(channel);
        of.low = held < record.Row(of.low).Held(channel) ? scan : of.low;
        of.high = held > record.Row(of.high).Held(channel) ? scan : of.high;
      }
    }
    for (std::size_t channel = 0; channel < peaks.size(); ++channel) {
      const auto [first, last] = std::minmax(peaks[channel].low, peaks[channel].high);
      put(first, channel);
      if (last != first) {
        put(last, channel);
      }
    }
  }
}

}  // namespace orvane
