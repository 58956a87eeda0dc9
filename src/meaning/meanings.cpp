// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/meanings.h"

#include <algorithm>

#include "editors/site_forms.h"
#include "meaning/explain.h"
#include "meaning/other_keys.h"
#include "table/param_text.h"

namespace orvane {
namespace {

TransmitterNames UsualTransmitters() {
  TransmitterNames names;
  std::copy(kTransmitterModels.begin(), kTransmitterModels.end(), names.begin());
  return names;
}

bool IsYesOrNo(const std::vector<CodedValue>& values) {
  return values.size() == 2 && values.back().text == kYes;
}

bool IsNumberWithin(const KeyMeaning& meaning, double stored) {
  const double shown = stored * meaning.to_shown;
  return shown >= meaning.limits.min && shown <= meaning.limits.max;
}

bool IsWithin(const KeyMeaning& meaning, const ParamEntry& entry) {
  switch (entry.type) {
    case IntPT:
      return IsNumberWithin(meaning, IntOf(entry.value));
    case FltPT:
      return IsNumberWithin(meaning, RealOf(entry.value));
    case StrPT:
      return CharactersOf(entry.value, kMaxTextLength).size() <=
             static_cast<std::size_t>(meaning.limits.max_length);
    default:
      return true;
  }
}

}  // namespace

Meanings::Meanings() : Meanings(UsualTransmitters()) {}

Meanings::Meanings(const TransmitterNames& transmitters) {
  AddDialogs(transmitters, &list_);
  AddGrids(&list_);
  AddOtherKeys(&list_);
}

std::string Meanings::ValueText(const ParamEntry& entry) const {
  const KeyMeaning* meaning = Find(ParamKey(entry.key));
  if (meaning == nullptr || meaning->values.empty()) {
    return {};
  }
  const std::int32_t stored = IntOf(entry.value);
  const auto value = std::find_if(meaning->values.begin(), meaning->values.end(),
                                  [stored](const CodedValue& one) { return one.stored == stored; });
  if (value != meaning->values.end()) {
    return value->text;
  }
  return IsYesOrNo(meaning->values) ? std::string(kYes) : std::string(kNotListed);
}

std::string Meanings::Caution(const ParamEntry& entry) const {
  const KeyMeaning* meaning = Find(ParamKey(entry.key));
  if (ValueText(entry) == kNotListed) {
    return std::string(kNotListed);
  }
  const bool is_right = meaning == nullptr || meaning->range.empty() || IsWithin(*meaning, entry);
  return is_right ? std::string() : "out of range (" + meaning->range + ")";
}

std::string Meanings::Remark(const ParamEntry& entry) const {
  const std::string meaning = ValueText(entry);
  const std::string caution = Caution(entry);
  const bool is_said = meaning == caution || caution.empty();
  return is_said ? meaning : meaning + (meaning.empty() ? "" : "; ") + caution;
}

std::string Meanings::Line(const ParamEntry& entry) const {
  const KeyMeaning* meaning = Find(ParamKey(entry.key));
  if (meaning == nullptr) {
    return std::string(kNotUsed);
  }
  std::string line = meaning->name;
  if (const std::string value = ValueText(entry); !value.empty()) {
    line.append(": ").append(value);
  }
  return meaning->unit.empty() ? line : line + " (" + meaning->unit + ")";
}

}  // namespace orvane
