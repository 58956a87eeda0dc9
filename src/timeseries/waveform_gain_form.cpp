// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_gain_form.h"

#include <array>

#include "base/number_text.h"

namespace orvane {
namespace {

using Form = WaveformGainForm;

constexpr auto kFields = std::to_array<Field>({
    {Form::kElectric,
     Widget::kReal,
     "E channels",
     {},
     FltPT,
     Unbound(),
     {Form::kMinGain, Form::kMaxGain}},
    {Form::kOther,
     Widget::kReal,
     "All other channels",
     {},
     FltPT,
     Unbound(),
     {Form::kMinGain, Form::kMaxGain}},
    {Form::kForAll, Widget::kCheck, "For all segments of the file", {}, IntPT, Unbound()},
});

}  // namespace

WaveformGainForm::WaveformGainForm(const WaveformView& view)
    : model_(&none_, kFields),
      number_(view.Number()),
      before_(view.Gains()),
      table_(GainsOf(view.File().Companion().Table())) {
  model_.SetText(kElectric, FormatReal(before_.electric));
  model_.SetText(kOther, FormatReal(before_.other));
}

std::string WaveformGainForm::Title() const { return "Gains of Segment " + FormatInt(number_); }

std::string WaveformGainForm::Hint() const {
  return "The parameter table: E x " + FormatReal(table_.electric) + ", others x " +
         FormatReal(table_.other);
}

// A text that nobody changed has fewer digits than the number.
double WaveformGainForm::GainIn(int control, double before) const {
  const std::string text(model_.Text(control));
  return text == FormatReal(before) ? before : ParseReal(text).value_or(before);
}

void WaveformGainForm::Commit(WaveformView* view) const {
  view->SetGains(number_, {GainIn(kElectric, before_.electric), GainIn(kOther, before_.other)},
                 model_.Index(kForAll) == 1);
}

}  // namespace orvane
