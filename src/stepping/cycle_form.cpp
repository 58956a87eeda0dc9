// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/cycle_form.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/number_text.h"
#include "table/param_access.h"

namespace orvane {
namespace {

// kept: captions with their blanks.
constexpr auto kShortCycles = std::to_array<Choice>({{" 8 minutes ", 1521},
                                                     {" 15 minutes ", 1522},
                                                     {" 40 minutes ", 1523},
                                                     {" 60 minutes ", 1524}});
constexpr auto kCsamtCycles = std::to_array<Choice>(
    {{"30 minutes", 1521}, {"40 minutes", 1522}, {"45 minutes", 1523}, {"60 minutes", 1524}});

// A negative one would lead to a schedule that nobody can transmit.
constexpr Limits kAmount = {0, std::numeric_limits<double>::infinity()};

constexpr std::array<Field, 5> FieldsWith(std::span<const Choice> cycles) {
  const auto number = [](int control, std::string_view label) {
    return Field{control, Widget::kReal, label, {}, FltPT, Unbound(), kAmount};
  };
  return {{{CycleForm::kCycle, Widget::kRadios, "Stepping cycle", {}, IntPT, Unbound(), {}, cycles},
           number(CycleForm::kVoltage, "Max Tx voltage(v)"),
           number(CycleForm::kResistance, "Tx contact resistance(ohm)"),
           number(CycleForm::kWireLength, "Tx wire length(m)"),
           number(CycleForm::kCurrent, "Max current( A )")}};
}
constexpr auto kFields = FieldsWith(kShortCycles);
constexpr auto kCsamtFields = FieldsWith(kCsamtCycles);

// The button that a stored cycle without a button of its own means.
constexpr int kUsualButton = 1;
constexpr int kUsualCsamtButton = 2;

}  // namespace

CycleForm::CycleForm(ParamTable* table, EarlyWrites* early, Tech tech,
                     const TransmitterLimits& limits)
    : table_(table),
      early_(early),
      tech_(tech),
      limits_(limits),
      model_(table, tech == kCsamt ? kCsamtFields : kFields) {}

std::string_view CycleForm::Title() const {
  switch (tech_) {
    case kSip:
      return "Select SIP Default Stepping Cycle";
    case kCsamt:
      return "Select CSAMT Default Stepping Cycle";
    case kFdem:
      return "Select FDEM Default Stepping Cycle";
    default:
      return "Select Default Stepping Cycle ";
  }
}

void CycleForm::Open() {
  const auto choices = CycleChoices(tech_);
  const auto* chosen = std::find(choices.begin(), choices.end(), IntParam(*table_, "TTOT"));
  const int usual = tech_ == kCsamt ? kUsualCsamtButton : kUsualButton;
  model_.SetIndex(kCycle,
                  chosen == choices.end() ? usual : static_cast<int>(chosen - choices.begin()));
  current_ = CycleCurrent(tech_, RealParam(*table_, "CRMX"));
  model_.SetText(kVoltage, FormatReal(limits_.voltage));
  model_.SetText(kResistance, FormatReal(limits_.resistance));
  model_.SetText(kWireLength, FormatReal(limits_.wire_length));
  model_.SetText(kCurrent, FormatReal(current_));
}

// A text that still shows the number there was means all its digits.
double CycleForm::Entered(Control control, double before) const {
  const std::string& text = model_.Text(control);
  return text == FormatReal(before) ? before : ParseReal(text).value_or(before);
}

std::int32_t CycleForm::Seconds() const {
  return CycleChoices(tech_)[static_cast<std::size_t>(model_.Index(kCycle))];
}

void CycleForm::Commit() {
  limits_ = {.resistance = Entered(kResistance, limits_.resistance),
             .voltage = Entered(kVoltage, limits_.voltage),
             .wire_length = Entered(kWireLength, limits_.wire_length)};
  early_->PutInt("TTOT", Seconds());
  early_->Remember("CRMX");
  early_->Remember("FCMX");
  ApplyTransmitter(table_, tech_, limits_, Entered(kCurrent, current_));
}

}  // namespace orvane
