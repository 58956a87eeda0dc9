// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/cal_compare.h"

#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "response/cal_view.h"
#include "response/verdict.h"

namespace orvane {
namespace {

// A value that is no number stays the worst.
void Worsen(double value, double frequency, double* worst, double* at) {
  if (*at == 0 || std::isnan(value) || std::abs(value) > std::abs(*worst)) {
    *worst = std::isnan(*worst) ? *worst : value;
    *at = frequency;
  }
}

void Add(double ratio, double degrees, double frequency, WorstDeviation* worst) {
  Worsen(ratio - 1, frequency, &worst->amplitude, &worst->amplitude_at);
  Worsen(std::remainder(degrees, 360), frequency, &worst->phase, &worst->phase_at);
}

std::set<int> SweepsOf(const CalCurve& curve) { return {curve.sweep.begin(), curve.sweep.end()}; }

std::string OnlyIn(const std::set<int>& sweeps, const std::set<int>& others) {
  std::string numbers;
  for (const int sweep : sweeps) {
    if (!others.contains(sweep)) {
      numbers.append(" ").append(FormatInt(std::int64_t{sweep} + 1));
    }
  }
  return numbers;
}

void CompareModels(const CalData& one, const CalData& other, CalDeviation* row) {
  const auto pass = static_cast<std::size_t>(row->sweep);
  if (!IsModelPass(pass)) {
    return;
  }
  const FrontEndParameters parts = ParametersOf(one, row->channel);
  const FrontEndParameters others = ParametersOf(other, row->channel);
  // Both driven alike: by how much the resistors of the calibrations differ says nothing of a box.
  const FrontEndSetting setting = PassSetting(pass, others[kDrive]);
  const FrontEnd front_end(parts, setting);
  const FrontEnd reference(others, setting);
  row->model.emplace();
  for (const CalFileRecord& record : other.Pass(pass)) {
    const double frequency = record.frequency;
    if (frequency > 0 && std::isfinite(frequency)) {
      const Complex ratio =
          Times(front_end.Response(frequency), Inverse(reference.Response(frequency)));
      Add(std::abs(ratio), std::arg(ratio) * 180 / std::numbers::pi, frequency, &*row->model);
    }
  }
}

}  // namespace

Result<ComparedCal> ReadComparedCal(const std::filesystem::path& path) {
  auto curves = LoadCalCurves(path);
  if (!curves) {
    return Failure(curves.Message());
  }
  ComparedCal cal{std::move(*curves), nullptr};
  if (cal.curves.header.ctyp == kBoxCal) {
    cal.model = ReadCalFileAt(kBoxCal, path);
    if (cal.model != nullptr && cal.model->model.parameter_count == 0) {
      cal.model = nullptr;
    }
  }
  return cal;
}

Result<CalComparison> Compare(const ComparedCal& one, const ComparedCal& other) {
  if (one.curves.header.ctyp != other.curves.header.ctyp) {
    return Failure("the calibrations are of different kinds");
  }
  if (one.curves.channels.size() != other.curves.channels.size()) {
    return Failure("the calibrations differ in their number of channels");
  }
  CalComparison comparison;
  for (std::size_t c = 0; c < one.curves.channels.size(); ++c) {
    const CalCurve& curve = one.curves.channels[c];
    const CalCurve& reference = other.curves.channels[c];
    const CalCurve ratio = RatioOf(curve, reference);
    std::map<int, CalDeviation> rows;
    for (std::size_t i = 0; i < ratio.frequency.size(); ++i) {
      CalDeviation& row = rows[ratio.sweep[i]];
      Add(ratio.amplitude[i], ratio.phase[i] - curve.turn + reference.turn, ratio.frequency[i],
          &row.measured);
    }
    for (auto& [sweep, row] : rows) {
      row.channel = c;
      row.sweep = sweep;
      if (one.curves.header.ctyp == kBoxCal && IsModelPass(static_cast<std::size_t>(sweep))) {
        row.setting = PassSettingText(static_cast<std::size_t>(sweep));
      }
      if (one.model != nullptr && other.model != nullptr) {
        CompareModels(*one.model, *other.model, &row);
      }
      comparison.rows.push_back(std::move(row));
    }
    const std::string missing = OnlyIn(SweepsOf(reference), SweepsOf(curve));
    const std::string added = OnlyIn(SweepsOf(curve), SweepsOf(reference));
    if (c == 0 && !(missing + added).empty()) {
      comparison.note = "passes that only one of both has:" + missing + added;
    }
  }
  if (comparison.rows.empty()) {
    return Failure("the calibrations have no pass and frequencies in common");
  }
  return comparison;
}

bool IsWithin(const CalDeviation& deviation, const CalTolerance& tolerance) {
  constexpr double kRounding = 1e-12;  // of models: one with itself is within 0
  const auto is_within = [&tolerance](const WorstDeviation& worst) {
    return std::abs(worst.amplitude) <= tolerance.amplitude + kRounding &&
           std::abs(worst.phase) <= tolerance.phase + kRounding;
  };
  return is_within(deviation.measured) && (!deviation.model || is_within(*deviation.model));
}

}  // namespace orvane
