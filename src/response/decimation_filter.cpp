// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/decimation_filter.h"

#include <algorithm>
#include <numbers>

namespace orvane {
namespace {

constexpr double kBaseRate = 24000;
constexpr int kMostStages = 8;
constexpr int kMostSharpness = 15;

double Averages(const DecimationFilter& filter, double frequency) {
  if (filter.stages < 1 || filter.stages > kMostStages || !(filter.sample_rate > 0)) {
    return 1;
  }
  const double base = filter.older_base_rate > 0 ? filter.older_base_rate : kBaseRate;
  const double ratio = std::max(1.0, std::floor(base / filter.sample_rate + 0.5));
  if (ratio <= 1) {
    return 1;
  }
  const double x = std::numbers::pi * frequency / (ratio * filter.sample_rate);
  const double sine = std::sin(x);
  if (std::abs(sine) < 1e-15) {
    return 1;
  }
  return std::pow(std::sin(ratio * x) / (ratio * sine), filter.stages);
}

double LineFrequency(int code) {
  return code == 50 || code == 0 ? 50 : code == 60 || code == 1 ? 60 : 0;
}

Complex Comb(const DecimationFilter& filter, double frequency) {
  const double line = LineFrequency(filter.line_frequency);
  if (filter.sharpness < 1 || filter.sharpness > kMostSharpness || line == 0) {
    return 1;
  }
  const double rho = 1 - std::ldexp(1.0, -filter.sharpness);
  const Complex z = UnitAt(-std::numbers::pi * frequency / line);
  return (1 + rho) / 2 * Times(1.0 + z, Inverse(1.0 + rho * z));
}

}  // namespace

Complex DecimationFilter::Response(double frequency) const {
  return Averages(*this, frequency) * Comb(*this, frequency);
}

}  // namespace orvane
