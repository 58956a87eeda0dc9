// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/explain.h"

#include "base/number_text.h"

namespace orvane {

std::string CodedValuesText(const KeyMeaning& meaning) {
  std::string text;
  for (const CodedValue& value : meaning.values) {
    text.append(text.empty() ? "" : "; ").append(FormatInt(value.stored));
    text.append(": ").append(value.text);
  }
  return text;
}

RawMeaning RawMeaningOf(const Meanings& meanings, const ParamEntry& entry) {
  RawMeaning raw{meanings.Line(entry), meanings.Caution(entry)};
  if (const KeyMeaning* meaning = meanings.Find(ParamKey(entry.key)); meaning != nullptr) {
    raw.is_in_dialog = !meaning->places.empty();
    for (const CodedValue& value : meaning->values) {
      raw.choices.push_back({FormatInt(value.stored), value.text});
    }
  }
  return raw;
}

std::string PlacesText(const KeyMeaning& meaning) {
  std::string text;
  for (const EditPlace& place : meaning.places) {
    text.append(text.empty() ? "" : "; ").append(place.dialog).append(": ").append(place.label);
    text.append(place.is_only_shown ? " (shown)" : "");
  }
  return text;
}

}  // namespace orvane
