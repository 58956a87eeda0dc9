// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_form.h"

#include <array>

#include "base/number_text.h"

namespace orvane {
namespace {

using Form = WaveformForm;
using Limit = WaveformSettings;

constexpr auto kFields = std::to_array<Field>({
    {Form::kTimer,
     Widget::kReal,
     "Auto play timer (sec)",
     {},
     FltPT,
     Unbound(),
     {Limit::kMinTimer, Limit::kMaxTimer}},
    {Form::kZoom,
     Widget::kReal,
     "Zoom factor",
     {},
     FltPT,
     Unbound(),
     {Limit::kMinZoom, Limit::kMaxZoom}},
    {Form::kAutoScale, Widget::kCheck, "Auto scale", {}, IntPT, Unbound()},
    {Form::kSegment, Widget::kInteger, "Current  segment", {}, IntPT, Unbound()},
    {Form::kAutoPlay, Widget::kCheck, "Auto play", {}, IntPT, Unbound()},
});

}  // namespace

WaveformForm::WaveformForm(const WaveformView& view)
    : model_(&none_, kFields), count_(view.Count()) {
  const WaveformSettings& settings = view.Settings();
  model_.SetText(kTimer, FormatReal(settings.timer_seconds));
  model_.SetText(kZoom, FormatReal(settings.zoom));
  model_.SetIndex(kAutoScale, settings.auto_scale ? 1 : 0);
  model_.SetText(kSegment, FormatInt(view.Number()));
  model_.SetIndex(kAutoPlay, settings.auto_play ? 1 : 0);
  model_.Enable(kSegment, count_ > 0);
}

double WaveformForm::NumberIn(int control) const {
  return ParseReal(model_.Text(control)).value_or(0);
}

std::optional<FormModel::Fault> WaveformForm::Validate() const {
  if (auto fault = model_.Validate()) {
    return fault;
  }
  const double segment = NumberIn(kSegment);
  if (count_ > 0 && (segment < 1 || segment > static_cast<double>(count_))) {
    return FormModel::Fault{kSegment, "Enter an integer between 1 and " + FormatInt(count_) + "."};
  }
  return std::nullopt;
}

void WaveformForm::Commit(WaveformView* view) const {
  if (Validate()) {
    return;
  }
  WaveformSettings settings = view->Settings();
  settings.timer_seconds = NumberIn(kTimer);
  settings.zoom = NumberIn(kZoom);
  settings.auto_scale = model_.Index(kAutoScale) == 1;
  settings.auto_play = model_.Index(kAutoPlay) == 1;
  view->SetSettings(settings);
  const auto segment = static_cast<std::uint64_t>(NumberIn(kSegment));
  if (segment != view->Number()) {
    view->GoTo(segment);
  }
}

}  // namespace orvane
