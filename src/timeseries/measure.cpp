// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/measure.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr double kRounding = 1e-6;  // of a scan: a cursor on a scan takes it

// The first scan at or after a time given in scans, at most `end`.
std::size_t FirstFrom(double time, std::size_t end) {
  const double scan = std::ceil(time - kRounding);
  return scan > 0 ? static_cast<std::size_t>(std::min(scan, static_cast<double>(end))) : 0;
}

std::string Line(const MeasuredTrace& trace) {
  const Measurement& m = trace.measurement;
  std::string line = trace.label + "\t" + FormatInt(m.scans);
  for (const double value : {m.mean, m.rms, m.min, m.max, m.slope}) {
    line.append("\t").append(FormatReal(value, 7));
  }
  return line + "\n";
}

}  // namespace

Result<Measurement> Measure(std::span<const double> values, double rate, double one, double other) {
  const double scans_per_second = rate > 0 ? rate : 1;
  const std::size_t begin = FirstFrom(std::min(one, other) * scans_per_second, values.size());
  const double last = std::floor(std::max(one, other) * scans_per_second + kRounding);
  const std::size_t end = last < 0 ? 0 : FirstFrom(last + 1, values.size());
  if (!(begin < end)) {
    return Failure("no scan lies between the two times");
  }
  const auto part = values.subspan(begin, end - begin);
  const auto count = static_cast<double>(part.size());
  Measurement m{part.size(), 0, 0, part[0], part[0], 0};
  for (const double value : part) {
    m.mean += value / count;
    m.rms += value * value / count;
    m.min = std::min(m.min, value);
    m.max = std::max(m.max, value);
  }
  m.rms = std::sqrt(m.rms);
  double product = 0;
  for (std::size_t i = 0; i < part.size(); ++i) {
    product += (static_cast<double>(i) - (count - 1) / 2) * (part[i] - m.mean);
  }
  // The squares of the times about their mean add up to n (n^2 - 1) / 12.
  const double squares = count * (count * count - 1) / 12;
  m.slope = squares > 0 ? product / squares * scans_per_second : 0;
  return m;
}

std::string MeasurementText(double one, double other, const std::vector<MeasuredTrace>& traces) {
  const double distance = std::abs(other - one);
  std::string text = "from (s)\t" + FormatReal(std::min(one, other)) + "\tto (s)\t" +
                     FormatReal(std::max(one, other)) + "\tdt (s)\t" + FormatReal(distance) +
                     "\t1/dt (Hz)\t" + (distance > 0 ? FormatReal(1 / distance) : "") +
                     "\nchannel\tscans\tmean\tRMS\tminimum\tmaximum\tslope (per s)\n";
  for (const MeasuredTrace& trace : traces) {
    text += Line(trace);
  }
  return text;
}

}  // namespace orvane
