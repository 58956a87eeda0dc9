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

std::string PlacesText(const KeyMeaning& meaning) {
  std::string text;
  for (const EditPlace& place : meaning.places) {
    text.append(text.empty() ? "" : "; ").append(place.dialog).append(": ").append(place.label);
    text.append(place.is_only_shown ? " (shown)" : "");
  }
  return text;
}

}  // namespace orvane
