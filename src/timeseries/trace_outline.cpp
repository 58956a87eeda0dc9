// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/trace_outline.h"

#include <algorithm>

#include "timeseries/ts_file.h"

namespace orvane {

TraceOutline OutlineOfFirstRecord(const std::filesystem::path& file, std::size_t columns) {
  TraceOutline outline;
  TsFile series;
  CTsRec record;
  if (!series.Open(file, {.header_size = {}, .needs_companion = false}) || series.Count() == 0 ||
      !series.Read(1, &record) || record.Channels() == 0) {
    return outline;
  }
  const std::size_t scans = record.Scans();
  const std::size_t width = std::min(columns, scans);
  for (std::size_t column = 0; column < width; ++column) {
    const std::size_t begin = column * scans / width;
    const std::size_t end = (column + 1) * scans / width;
    // From the last scan before it, so that what is drawn is one line.
    double least = record.Row(begin == 0 ? 0 : begin - 1).Sample(0);
    double most = least;
    for (std::size_t scan = begin; scan < end; ++scan) {
      const double value = record.Row(scan).Sample(0);
      least = std::min(least, value);
      most = std::max(most, value);
    }
    outline.least.push_back(least);
    outline.most.push_back(most);
  }
  return outline;
}

}  // namespace orvane
