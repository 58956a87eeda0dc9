// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TRACE_LINES_H_
#define ORVANE_TIMESERIES_TRACE_LINES_H_

#include <cstddef>
#include <functional>
#include <vector>

#include "timeseries/ts_rec.h"

namespace orvane {

/// Scans from `begin` to before `end`.
struct ScanRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Calls `put` with the scans of each channel, below `channels`, that a line of so many pixels
/// needs, in their order: every scan where there is room, else those of the least and the greatest
/// value of each pixel's scans.
void ThinScans(const CTsRec& record, ScanRange scans, std::size_t channels, int pixels,
               const std::function<void(std::size_t scan, std::size_t channel)>& put);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TRACE_LINES_H_
