// SPDX-License-Identifier: GPL-3.0-or-later
// The meanings of all keys while they are put together.
#ifndef ORVANE_MEANING_MEANING_LIST_H_
#define ORVANE_MEANING_MEANING_LIST_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form_field.h"
#include "meaning/key_meaning.h"
#include "table/param_key.h"

namespace orvane {

/// What a field accepts, "0 to 100": empty where it takes anything.
std::string RangeOf(const Field& field);

/// The keys that a field is kept under: of a text of several parts one for each.
std::vector<ParamKey> AllKeysOf(const Field& field);

/// The name of a field: its meaning, else its label with its group in front.
std::string NameOf(const Field& field);

/// Collects what several dialogs say of a key: the first names it and gives its range, units and
/// coded values that differ are joined by "or", and each control is a place of its own.
class MeaningList {
 public:
  /// What a field of a dialog says of its keys. A field without a key adds nothing.
  void AddField(std::string_view dialog, const Field& field);
  /// The name and unit of a key unless it has them already.
  void Name(ParamKey key, std::string_view name, std::string_view unit = {});
  void AddUnit(ParamKey key, std::string_view unit);
  /// A range that no dialog checks.
  void AddRange(ParamKey key, const Limits& limits);
  void AddValue(ParamKey key, std::int32_t stored, std::string_view text);
  void AddPlace(ParamKey key, EditPlace place);

  const KeyMeaning* Find(ParamKey key) const;
  /// The keys that a control writes by a rule, told by its number and label.
  std::vector<ParamKey> FindPlaces(int control, std::string_view label) const;
  std::size_t Count() const { return meanings_.size(); }

 private:
  void AddTo(ParamKey key, std::string_view dialog, const Field& field, const std::string& name);
  void AddValues(ParamKey key, const Field& field);

  std::map<std::uint64_t, KeyMeaning> meanings_;
};

}  // namespace orvane

#endif  // ORVANE_MEANING_MEANING_LIST_H_
