// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/display_form.h"

#include <array>

#include "base/number_text.h"

namespace orvane {
namespace {

using Form = CalDisplayForm;

constexpr Limits kPositive = {1e-10, 1e10};
constexpr Limits kTurn = {-360, 360};
constexpr Limits kLines = {2, 10000};

constexpr Field Real(int control, std::string_view label, Limits limits) {
  return {control, Widget::kReal, label, {}, FltPT, Unbound(), limits};
}

// kept: uneven blanks, as users know them.
constexpr auto kFields = std::to_array<Field>({
    Real(Form::kMaxAmplitude, "Max.  amplitude", kPositive),
    Real(Form::kMaxFrequency, "Max. frequency (Hz) ", kPositive),
    Real(Form::kMaxPhase, "Max phase (degree)", kTurn),
    Real(Form::kMinAmplitude, "Min. amplitude", kPositive),
    Real(Form::kMinFrequency, "Min. frequency (Hz)", kPositive),
    Real(Form::kMinPhase, "Min phase (degree )", kTurn),
    {Form::kPhaseGridLines, Widget::kInteger, "Phase grid lines", {}, IntPT, Unbound(), kLines},
});

// Short, but as exact as the number is.
std::string ExactText(double value) {
  const std::string text = FormatReal(value);
  return ParseReal(text) == value ? text : FormatRealExactly(value);
}

// Which member each number belongs to.
struct Bound {
  int control;
  double CalDisplay::*member;
};
constexpr auto kBounds = std::to_array<Bound>({
    {Form::kMaxAmplitude, &CalDisplay::max_amplitude},
    {Form::kMaxFrequency, &CalDisplay::max_frequency},
    {Form::kMaxPhase, &CalDisplay::max_phase},
    {Form::kMinAmplitude, &CalDisplay::min_amplitude},
    {Form::kMinFrequency, &CalDisplay::min_frequency},
    {Form::kMinPhase, &CalDisplay::min_phase},
});

}  // namespace

std::string WhyEmpty(const CalDisplay& display) {
  std::string axes;
  const auto check = [&axes](double low, double high, std::string_view axis) {
    if (!(low < high)) {
      axes.append(axes.empty() ? "" : ", ").append(axis);
    }
  };
  check(display.min_frequency, display.max_frequency, "frequency");
  check(display.min_amplitude, display.max_amplitude, "amplitude");
  check(display.min_phase, display.max_phase, "phase");
  return axes.empty() ? "" : "Nothing to draw: the minimum is not below the maximum of " + axes;
}

CalDisplayForm::CalDisplayForm(const CalDisplay& display) : model_(&none_, kFields) {
  for (const Bound& bound : kBounds) {
    model_.SetText(bound.control, ExactText(display.*bound.member));
  }
  model_.SetText(kPhaseGridLines, FormatInt(display.phase_grid_lines));
}

CalDisplay CalDisplayForm::Display() const {
  CalDisplay display;
  for (const Bound& bound : kBounds) {
    display.*bound.member = ParseReal(model_.Text(bound.control)).value_or(0);
  }
  display.phase_grid_lines = ParseInt(model_.Text(kPhaseGridLines)).value_or(0);
  return display;
}

}  // namespace orvane
