// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_MEASURE_H_
#define ORVANE_TIMESERIES_MEASURE_H_

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"

namespace orvane {

/// What a trace does between two times, in the trace's unit.
struct Measurement {
  std::size_t scans = 0;  ///< whose times are within both, these included
  double mean = 0;
  double rms = 0;  ///< root of the mean square about zero, not about the mean
  double min = 0;
  double max = 0;
  double slope = 0;  ///< of a straight line by least squares, per second; 0 of a single scan
};

/// Two times in seconds from the first scan, in either order; with `rate` not above 0 a scan counts
/// as a second. Fails, with a reason for the user, where no scan lies between them.
Result<Measurement> Measure(std::span<const double> values, double rate, double one, double other);

/// A trace and what was measured of it.
struct MeasuredTrace {
  std::string label;  ///< with its unit
  Measurement measurement;
};

/// For copying: a line with both times, their distance and 1 / distance, then one of titles and one
/// for each trace; tabs between.
std::string MeasurementText(double one, double other, const std::vector<MeasuredTrace>& traces);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_MEASURE_H_
