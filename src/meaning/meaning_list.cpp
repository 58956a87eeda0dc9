// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/meaning_list.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "forms/codecs.h"
#include "meaning/explain.h"
#include "meaning/label_parts.h"
#include "table/param_table.h"
#include "table/param_text.h"

namespace orvane {
namespace {

// Dialogs write the same choice with and without blanks: "x 16 ", "x16".
std::string WithoutBlanks(std::string_view text) {
  std::string rest(text);
  std::erase(rest, ' ');
  return rest;
}

constexpr std::string_view kOr = " or ";

// "a or b" has "a" and "b".
bool Has(std::string_view joined, std::string_view text) {
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = joined.find(kOr);
    if (WithoutBlanks(joined.substr(0, end)) == WithoutBlanks(text)) {
      return true;
    }
    joined.remove_prefix(end == std::string_view::npos ? joined.size() : end + kOr.size());
  }
  return false;
}

// What comes joined already is taken part by part.
void Join(std::string_view text, std::string* joined) {
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(kOr));
    if (!Has(*joined, part)) {
      joined->append(joined->empty() ? "" : kOr).append(part);
    }
    text.remove_prefix(std::min(part.size() + kOr.size(), text.size()));
  }
}

// A text in several entries has room for more than one of them.
bool IsOneText(const Field& field) {
  return field.type == StrPT && field.codec.kind == CodecKind::kPlain;
}

std::string RangeText(const Limits& limits) {
  return std::isinf(limits.max) ? "not below " + FormatReal(limits.min)
                                : FormatReal(limits.min) + " to " + FormatReal(limits.max);
}

// Links of the chain that holds a long text.
std::size_t LinksOf(ParamKey head) {
  static const ParamTable kBuiltIn = [] {
    ParamTable table;
    static_cast<void>(table.BuildParamIndex());  // without it no chain has links
    return table;
  }();
  return kBuiltIn.LongParamCapacity(head) / kValueSize;
}

}  // namespace

std::string RangeOf(const Field& field) {
  const int max_length = field.limits.max_length;
  if (field.limits.min < field.limits.max) {
    return RangeText(field.limits);
  }
  return IsOneText(field) && max_length > 0 ? "at most " + FormatInt(max_length) + " characters"
                                            : "";
}

std::vector<ParamKey> AllKeysOf(const Field& field) {
  std::vector<ParamKey> keys = KeysOf(field);
  if (field.codec.kind != CodecKind::kLongText) {
    return keys;
  }
  std::string link(field.key);
  for (std::size_t links = LinksOf(field.key); keys.size() < links;) {
    static_cast<void>(NextParamKey(&link));
    keys.emplace_back(link);
  }
  return keys;
}

std::string NameOf(const Field& field) {
  if (!field.meaning.empty()) {
    return std::string(field.meaning);
  }
  std::string name(field.group);
  return name.append(name.empty() ? "" : ": ").append(PartsOf(field.label).name);
}

void MeaningList::AddField(std::string_view dialog, const Field& field) {
  const std::vector<ParamKey> keys = AllKeysOf(field);
  const std::string name = NameOf(field);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    AddTo(keys[i], dialog, field,
          keys.size() == 1 ? name : name + ", part " + FormatInt(static_cast<int>(i) + 1));
  }
}

void MeaningList::AddTo(ParamKey key, std::string_view dialog, const Field& field,
                        const std::string& name) {
  Name(key, name);
  AddUnit(key, field.unit.empty() ? PartsOf(field.label).unit : field.unit);
  KeyMeaning& meaning = meanings_[key.Word()];
  if (meaning.range.empty()) {
    meaning.range = RangeOf(field);
    meaning.limits = meaning.range.empty() ? Limits() : field.limits;
    meaning.to_shown = field.codec.to_shown;
  }
  AddValues(key, field);
  AddPlace(key, {std::string(dialog), std::string(Trimmed(field.label)), field.control,
                 field.widget == Widget::kShown});
}

void MeaningList::AddValues(ParamKey key, const Field& field) {
  if (field.widget == Widget::kCheck) {
    AddValue(key, 0, kNo);
    AddValue(key, 1, kYes);
  }
  Field choosing = field;
  choosing.widget = Widget::kCombo;  // one that is only shown stores nothing
  for (int i = 0; i < static_cast<int>(field.choices.size()); ++i) {
    const std::vector<ParamValue> stored = StoredOf(choosing, {{}, i}, 0);
    if (!stored.empty()) {
      AddValue(key, IntOf(stored.front()), field.choices[static_cast<std::size_t>(i)].label);
    }
  }
}

void MeaningList::Name(ParamKey key, std::string_view name, std::string_view unit) {
  KeyMeaning& meaning = meanings_[key.Word()];
  meaning.key = key;
  if (meaning.name.empty()) {
    meaning.name = name;
  }
  Join(unit, &meaning.unit);
}

void MeaningList::AddUnit(ParamKey key, std::string_view unit) {
  Join(unit, &meanings_[key.Word()].unit);
}

void MeaningList::AddRange(ParamKey key, const Limits& limits) {
  meanings_[key.Word()].limits = limits;
  meanings_[key.Word()].range = RangeText(limits);
}

void MeaningList::AddValue(ParamKey key, std::int32_t stored, std::string_view text) {
  std::vector<CodedValue>& values = meanings_[key.Word()].values;
  const auto place = std::find_if(values.begin(), values.end(), [stored](const CodedValue& value) {
    return value.stored >= stored;
  });
  if (place != values.end() && place->stored == stored) {
    Join(Trimmed(text), &place->text);
  } else {
    values.insert(place, {stored, std::string(Trimmed(text))});
  }
}

void MeaningList::AddPlace(ParamKey key, EditPlace place) {
  KeyMeaning& meaning = meanings_[key.Word()];
  meaning.key = key;
  std::vector<EditPlace>& places = meaning.places;
  const auto is_same = [&place](const EditPlace& other) {
    return other.dialog == place.dialog && other.label == place.label;
  };
  if (std::none_of(places.begin(), places.end(), is_same)) {
    places.push_back(std::move(place));
  }
}

const KeyMeaning* MeaningList::Find(ParamKey key) const {
  const auto found = meanings_.find(key.Word());
  return found == meanings_.end() ? nullptr : &found->second;
}

std::vector<ParamKey> MeaningList::FindPlaces(int control, std::string_view label) const {
  std::vector<ParamKey> keys;
  for (const auto& [word, meaning] : meanings_) {
    for (const EditPlace& place : meaning.places) {
      if (place.control == control && place.label == Trimmed(label)) {
        keys.push_back(meaning.key);
        break;
      }
    }
  }
  return keys;
}

}  // namespace orvane
