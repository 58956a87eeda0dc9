// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_model.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "base/ascii.h"
#include "table/param_access.h"
#include "table/param_time.h"

namespace orvane {

FormModel::FormModel(ParamTable* table, std::span<const Field> fields)
    : table_(table), fields_(fields) {
  for (const Field& field : fields_) {
    State& state = states_[field.control];
    state.field = &field;
    state.caption = field.label;
    if (field.widget == Widget::kCheck) {
      state.shown.index = 0;
    }
  }
}

FormModel::State& FormModel::StateOf(int control) {
  const auto found = states_.find(control);
  assert(found != states_.end());
  return found->second;
}

const FormModel::State& FormModel::StateOf(int control) const {
  const auto found = states_.find(control);
  assert(found != states_.end());
  return found->second;
}

void FormModel::Changed(const State& state) const {
  if (listener_) {
    listener_(state.field->control);
  }
}

void FormModel::ChangedShown(const State& state) {
  Changed(state);
  if (caution_rule_) {
    caution_rule_(this);
  }
}

void FormModel::SetCautionRule(CautionRule rule) {
  caution_rule_ = std::move(rule);
  caution_rule_(this);
}

bool FormModel::IsEnabled(int control) const {
  const auto button = buttons_.find(control);
  if (button != buttons_.end() && !button->second.is_enabled) {
    return false;
  }
  const auto found = states_.find(control);
  return found == states_.end() || found->second.is_enabled;
}

std::string FormModel::NameOf(int control) const {
  const State& state = StateOf(control);
  std::string_view caption = Trimmed(state.caption);
  if (!caption.empty() && caption.back() == ':') {
    caption.remove_suffix(1);
  }
  std::string name(state.field->group);
  return name.append(name.empty() ? "" : ": ").append(caption);
}

std::string FormModel::FaultAt(int control) const {
  const State& state = StateOf(control);
  return state.is_enabled && state.is_edited ? FaultOf(*state.field, state.shown) : std::string();
}

std::string_view FormModel::Warning(int control) const {
  const State& state = StateOf(control);
  if (state.is_edited) {
    return state.caution;
  }
  if (state.is_unreadable) {
    return "The stored text is not terminated; it stays as it is until a new one is entered";
  }
  return state.stored.empty() || FaultOf(*state.field, state.shown).empty()
             ? std::string_view(state.caution)
             : "The stored value is outside its range";
}

std::size_t FormModel::CapacityOf(int control) const {
  const Field& field = FieldOf(control);
  if (field.codec.kind == CodecKind::kPieces) {
    return static_cast<std::size_t>(field.codec.base) * kMaxTextLength;
  }
  if (field.codec.kind == CodecKind::kLongText) {
    const std::size_t size = table_->LongParamCapacity(field.key);
    return size == 0 ? 0 : size - 1;  // the NUL
  }
  return kMaxTextLength;
}

std::string_view FormModel::ButtonCaption(int button) const {
  const auto changed = buttons_.find(button);
  if (changed != buttons_.end() && !changed->second.caption.empty()) {
    return changed->second.caption;
  }
  const State* group = GroupOf(button);
  assert(group != nullptr);
  const auto& choices = group->field->choices;
  return std::find_if(choices.begin(), choices.end(),
                      [button](const Choice& choice) { return choice.control == button; })
      ->label;
}

void FormModel::SetText(int control, std::string text) {
  State& state = StateOf(control);
  const bool is_number =
      state.field->widget == Widget::kInteger || state.field->widget == Widget::kReal;
  state.shown.text = is_number ? std::string(Trimmed(text)) : std::move(text);
  state.is_edited = true;
  ChangedShown(state);
}

void FormModel::SetIndex(int control, int index) {
  State& state = StateOf(control);
  state.shown.index = index;
  state.is_edited = true;
  ChangedShown(state);
}

const FormModel::State* FormModel::GroupOf(int button) const {
  for (const auto& [number, state] : states_) {
    const auto& choices = state.field->choices;
    if (state.field->widget == Widget::kRadios &&
        std::any_of(choices.begin(), choices.end(),
                    [button](const Choice& choice) { return choice.control == button; })) {
      return &state;
    }
  }
  return nullptr;
}

void FormModel::Enable(int control, bool is_enabled) {
  if (const State* group = GroupOf(control); group != nullptr) {
    buttons_[control].is_enabled = is_enabled;
    Changed(*group);
    return;
  }
  State& state = StateOf(control);
  state.is_enabled = is_enabled;
  if (!is_enabled && state.is_edited && !FaultOf(*state.field, state.shown).empty()) {
    ShowStored(&state);
  }
  ChangedShown(state);
}

void FormModel::EnableGroup(int control, bool is_enabled) {
  for (const Choice& choice : FieldOf(control).choices) {
    Enable(choice.control, is_enabled);
  }
}

void FormModel::SetCaption(int control, std::string caption) {
  State& state = StateOf(control);
  state.caption = std::move(caption);
  Changed(state);
}

void FormModel::SetCaution(int control, std::string caution) {
  State& state = StateOf(control);
  if (state.caution != caution) {
    state.caution = std::move(caution);
    Changed(state);
  }
}

void FormModel::SetButtonCaption(int button, std::string caption) {
  const State* group = GroupOf(button);
  assert(group != nullptr);
  buttons_[button].caption = std::move(caption);
  Changed(*group);
}

void FormModel::Show(State* state) const {
  if (state->field->codec.kind == CodecKind::kLongText) {
    state->shown.text = state->long_text;
    return;
  }
  state->shown = ShownOf(*state->field, state->stored, hours_);
  if (state->stored.empty() && state->field->widget == Widget::kCheck) {
    state->shown.index = 0;
  }
}

void FormModel::ShowStored(State* state) const {
  state->is_edited = false;
  Show(state);
}

void FormModel::ShowStored(int control) {
  State& state = StateOf(control);
  ShowStored(&state);
  ChangedShown(state);
}

void FormModel::SetAside(int control) {
  State& state = StateOf(control);
  if (state.is_edited) {
    state.aside = state.shown;
    ShowStored(control);
  }
}

void FormModel::BringBack(int control) {
  State& state = StateOf(control);
  if (state.aside) {
    state.shown = std::move(*state.aside);
    state.aside.reset();
    state.is_edited = true;
    ChangedShown(state);
  }
}

void FormModel::Shift(Shown* edit, std::int64_t hours) {
  ParamTime time;
  if (ParseParamTimeStrictly(edit->text, &time)) {
    edit->text = FormatParamTime(ShiftedByHours(time, hours));
  }
}

void FormModel::SetHourOffset(int hours) {
  const int before = hours_;
  hours_ = hours;
  for (auto& [control, state] : states_) {
    if (state.field->type != AmxPT) {
      continue;
    }
    if (state.aside) {
      Shift(&*state.aside, std::int64_t{hours} - before);
    }
    if (state.is_edited) {
      Shift(&state.shown, std::int64_t{hours} - before);
    } else {
      Show(&state);
    }
    ChangedShown(state);
  }
}

void FormModel::ReadLongText(State* state) const {
  std::array<char, kMaxLongText> text{};
  const Status status = table_->GetLongParam(state->field->key, text);
  state->long_text = text.data();  // empty where it could not be read
  state->is_unreadable = status == kLongTextTooLong;
}

void FormModel::Read(int control) {
  State& state = StateOf(control);
  state.stored.clear();
  auto keys = KeysOf(*state.field);
  if (state.field->codec.kind == CodecKind::kLongText) {
    ReadLongText(&state);
    keys.clear();
  }
  for (const ParamKey key : keys) {
    const ParamEntry* entry = table_->FindParam(key);
    if (entry != nullptr && entry->type == state.field->type) {
      state.stored.push_back(entry->value);
    }
  }
  if (state.stored.size() < keys.size()) {
    state.stored.clear();  // a missing key leaves the control as it is at first
  }
  ShowStored(&state);
  ChangedShown(state);
}

void FormModel::ReadAll() {
  for (const Field& field : fields_) {
    Read(field.control);
  }
}

std::optional<FormModel::Fault> FormModel::Validate() const {
  for (const Field& field : fields_) {
    if (std::string message = FaultAt(field.control); !message.empty()) {
      return Fault{field.control, std::move(message)};
    }
  }
  return std::nullopt;
}

namespace {

void WriteLongText(ParamTable* table, ParamKey key, std::string_view text) {
  text = text.substr(0, kMaxLongText);
  if (table->SetLongParam(key, text) == kLongTextTooLong) {
    const std::size_t capacity = table->LongParamCapacity(key);
    // What the chain cannot hold is lost; a key that is not a chain keeps none of it.
    static_cast<void>(table->SetLongParam(key, text.substr(0, capacity == 0 ? 0 : capacity - 1)));
  }
}

}  // namespace

void FormModel::WriteTo(ParamTable* table, std::span<const int> controls) const {
  for (const int control : controls) {
    const State& state = StateOf(control);
    if (state.field->codec.kind == CodecKind::kLongText) {
      if (state.is_edited) {
        WriteLongText(table, state.field->key, state.shown.text);
      }
      continue;
    }
    const bool is_as_read = !state.is_edited && !state.field->codec.normalizes;
    const auto values = is_as_read ? state.stored : StoredOf(*state.field, state.shown, hours_);
    const auto keys = KeysOf(*state.field);
    for (std::size_t i = 0; i < values.size(); ++i) {
      PutValue(table, keys[i], state.field->type, values[i]);
    }
  }
}

}  // namespace orvane
