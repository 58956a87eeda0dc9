// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/window_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "stepping/schedule_row.h"
#include "table/tech.h"

namespace orvane {
namespace {

constexpr int kMostWindows = 199;
constexpr double kMostSamples = 65535;  // of a cycle
constexpr double kMilliseconds = 1000;

double SampleRate(double repeat) {
  for (const double rate : {24000.0, 2400.0, 150.0, 15.0}) {
    if (rate / repeat <= kMostSamples) {
      return rate;
    }
  }
  return 0;
}

}  // namespace

double OffShareOf(int waveform) {
  const std::string name = WaveformName(waveform);
  if (name.substr(0, 4) == "TD33") {
    return 1.0 / 3;
  }
  return name.substr(0, 4) == "TD25" ? 3.0 / 8 : 1.0 / 4;
}

std::vector<WindowRow> CalculateWindows(Tech tech, int waveform, double repeat, int count) {
  if (!std::isfinite(repeat) || repeat <= 0 || count <= 0) {
    return {};
  }
  const double rate = SampleRate(repeat);
  const double off = OffShareOf(waveform) / repeat;  // s
  if (rate == 0 || off * rate <= 1) {
    return {};  // not even two samples
  }
  count = std::min(count, kMostWindows);
  const auto edge = [=](int i) {
    const double share = static_cast<double>(i) / count;
    return kMilliseconds * (tech == kTdip ? off * share : std::pow(off * rate, share) / rate);
  };
  std::vector<WindowRow> rows;
  rows.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    rows.push_back({edge(i), edge(i + 1) - edge(i), repeat, rate, rate / repeat});
  }
  return rows;
}

}  // namespace orvane
