// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TRACE_OUTLINE_H_
#define ORVANE_TIMESERIES_TRACE_OUTLINE_H_

#include <cstddef>
#include <filesystem>
#include <vector>

namespace orvane {

/// The least and greatest value of a channel in each column of a small picture, in counts.
struct TraceOutline {
  std::vector<double> least;
  std::vector<double> most;
};

/// Of the first channel of the first record of a waveform, with or without its companion; empty
/// where there is none or it cannot be read. Of the file only the headers and that record are read.
/// A record of fewer scans than columns has as many columns as scans. Columns touch each other.
TraceOutline OutlineOfFirstRecord(const std::filesystem::path& file, std::size_t columns);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TRACE_OUTLINE_H_
