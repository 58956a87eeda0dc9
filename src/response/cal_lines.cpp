// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/cal_lines.h"

#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "base/number_text.h"
#include "response/verdict.h"

namespace orvane {
namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
constexpr double kHalfTurn = 180;

void Put(double frequency, double amplitude, double phase, CalLine* line) {
  if (!line->phases.empty() && std::abs(phase - line->phases.back()) > kHalfTurn) {
    line->frequencies.push_back(frequency);
    line->amplitudes.push_back(amplitude);
    line->phases.push_back(kNothing);
  }
  line->frequencies.push_back(frequency);
  line->amplitudes.push_back(amplitude);
  line->phases.push_back(phase);
}

// By pass.
std::map<int, CalLine> LinesOf(const CalCurve& curve) {
  std::map<int, CalLine> lines;
  for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
    const double frequency = curve.frequency[i];
    if (frequency > 0 && std::isfinite(frequency)) {
      const double amplitude = curve.amplitude[i];
      Put(frequency, amplitude > 0 ? amplitude : kNothing, curve.phase[i], &lines[curve.sweep[i]]);
    }
  }
  return lines;
}

std::string PassText(int sweep, bool is_box) {
  const auto pass = static_cast<std::size_t>(sweep);
  std::string text = "Pass " + FormatInt(std::int64_t{sweep} + 1);
  if (is_box && IsModelPass(pass)) {
    text.append(": ").append(PassSettingText(pass));
  }
  return text;
}

}  // namespace

std::vector<CalLine> LinesOf(const CalView& view) {
  const bool has_one_channel = view.Shown().size() == 1;
  std::vector<CalLine> all;
  for (const CalTrace& trace : view.Traces()) {
    for (auto& [sweep, line] : LinesOf(trace.curve)) {
      line.kind = trace.kind;
      line.sweep = sweep;
      line.color = has_one_channel ? sweep : static_cast<int>(trace.channel);
      line.mark = sweep;
      all.push_back(std::move(line));
    }
  }
  return all;
}

std::vector<CalLegendRow> LegendOf(const CalView& view) {
  std::vector<CalLegendRow> rows;
  std::set<int> sweeps;
  const auto& traces = view.Traces();
  for (const CalTrace& trace : traces) {
    const bool is_named_already = trace.kind == CalTrace::kBand && &trace == &traces.back();
    if (traces.size() > 1 && !is_named_already) {
      const int channel = static_cast<int>(trace.channel);
      rows.push_back({trace.Label(), trace.kind, view.Shown().size() > 1 ? channel : -1, -1});
    }
    sweeps.insert(trace.curve.sweep.begin(), trace.curve.sweep.end());
  }
  const bool is_box = view.Curves().header.ctyp == kBoxCal;
  for (const int sweep : sweeps) {
    if (sweeps.size() > 1) {
      const int color = view.Shown().size() > 1 ? -1 : sweep;
      rows.push_back({PassText(sweep, is_box), CalTrace::kMeasured, color, sweep});
    }
  }
  return rows;
}

}  // namespace orvane
