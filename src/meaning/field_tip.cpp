// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/field_tip.h"

#include <vector>

#include "base/ascii.h"
#include "editors/raw_table.h"
#include "meaning/label_parts.h"

namespace orvane {
namespace {

// A choice that a rule turns into a value has no key of its own.
std::vector<ParamKey> KeysBehind(const Meanings& meanings, const Field& field) {
  std::vector<ParamKey> keys = AllKeysOf(field);
  return keys.empty() ? meanings.List().FindPlaces(field.control, field.label) : keys;
}

// The parts of a text follow each other.
std::string KeysText(const Field& field, const std::vector<ParamKey>& keys) {
  if (keys.size() > 1 && !field.key.empty()) {
    return keys.front().Text() + " to " + keys.back().Text();
  }
  std::string text;
  for (const ParamKey key : keys) {
    text.append(text.empty() ? "" : ", ").append(key.Text());
  }
  return text;
}

bool IsCell(const Field& field) { return field.control == 0; }

// As the dialog itself has it; the cell of a grid is named by its key alone.
std::string TitleOf(const Field& field, const KeyMeaning* meaning) {
  return meaning != nullptr && IsCell(field) ? meaning->name : NameOf(field);
}

// What others call the key.
std::string OtherName(const Field& field, const KeyMeaning* meaning) {
  const bool has_other = meaning != nullptr && !field.key.empty() && !IsCell(field) &&
                         !EqualsWithoutCase(meaning->name, NameOf(field));
  return has_other ? meaning->name : std::string();
}

std::string UnitText(const Field& field, const KeyMeaning* meaning) {
  std::string shown(PartsOf(field.label).unit);
  std::string stored(field.unit.empty() ? shown : field.unit);
  const bool is_one = meaning != nullptr && meaning->unit.find(" or ") == std::string::npos;
  if (is_one && field.unit.empty()) {
    stored = meaning->unit;
  }
  if (stored.empty() || stored == shown) {
    return shown;
  }
  return shown.empty() ? stored : shown + ", stored in " + stored;
}

std::string RangeText(const Field& field, const KeyMeaning* meaning) {
  const std::string own = RangeOf(field);
  return own.empty() && meaning != nullptr ? meaning->range : own;
}

std::string PermissionText(const ParamTable& table, ParamKey key) {
  const ParamEntry* entry = table.FindParam(key);
  if (entry == nullptr) {
    return {};
  }
  std::string text = PermissionSentence(entry->write_mask);
  text.front() = 'A';
  const std::string_view name = PermissionName(entry->write_mask);
  return name == PermissionName(kMaskNever) ? text : text + " (" + std::string(name) + ")";
}

void AddLine(std::string_view head, const std::string& text, std::string* lines) {
  if (!text.empty()) {
    lines->append(lines->empty() ? "" : "\n").append(head).append(text);
  }
}

// What is known of the one key of a field; null for a text in several.
const KeyMeaning* MeaningOf(const Meanings& meanings, const std::vector<ParamKey>& keys) {
  return keys.size() == 1 ? meanings.Find(keys.front()) : nullptr;
}

}  // namespace

std::string FieldTipText(const Meanings& meanings, const Field& field, const ParamTable& table) {
  const std::vector<ParamKey> keys = KeysBehind(meanings, field);
  const KeyMeaning* meaning = MeaningOf(meanings, keys);
  std::string lines;
  AddLine("", TitleOf(field, meaning), &lines);
  AddLine("Elsewhere: ", OtherName(field, meaning), &lines);
  AddLine(keys.size() > 1 ? "Parameters: " : "Parameter: ", KeysText(field, keys), &lines);
  AddLine("Unit: ", UnitText(field, meaning), &lines);
  AddLine("Range: ", RangeText(field, meaning), &lines);
  if (!keys.empty()) {
    AddLine("", PermissionText(table, keys.front()), &lines);
  }
  return lines;
}

std::string FieldTipInBrief(const Meanings& meanings, const Field& field) {
  const std::vector<ParamKey> keys = KeysBehind(meanings, field);
  const std::string range = RangeText(field, MeaningOf(meanings, keys));
  std::string text = KeysText(field, keys);
  return text.empty() || range.empty() ? text : text + ", " + range;
}

}  // namespace orvane
