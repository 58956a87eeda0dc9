// SPDX-License-Identifier: GPL-3.0-or-later
// The meanings of all keys while they are put together.
#ifndef ORVANE_MEANING_MEANING_LIST_H_
#define ORVANE_MEANING_MEANING_LIST_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "forms/form_field.h"
#include "meaning/key_meaning.h"
#include "table/param_key.h"

namespace orvane {

/// What a field accepts, "0 to 100": empty where it takes anything.
std::string RangeOf(const Field& field);

/// Collects what several dialogs say of a key: the first names it and gives its range, units and
/// coded values that differ are joined by "or", and each control is a place of its own.
class MeaningList {
 public:
  /// What a field of a dialog says of its keys. A field without a key adds nothing.
  void AddField(std::string_view dialog, const Field& field);
  /// The name and unit of a key unless it has them already.
  void Name(ParamKey key, std::string_view name, std::string_view unit = {});
  void AddUnit(ParamKey key, std::string_view unit);
  void AddValue(ParamKey key, std::int32_t stored, std::string_view text);
  void AddPlace(ParamKey key, EditPlace place);

  const KeyMeaning* Find(ParamKey key) const;
  std::size_t Count() const { return meanings_.size(); }

 private:
  void AddTo(ParamKey key, std::string_view dialog, const Field& field, const std::string& name);
  void AddValues(ParamKey key, const Field& field);

  std::map<std::uint64_t, KeyMeaning> meanings_;
};

}  // namespace orvane

#endif  // ORVANE_MEANING_MEANING_LIST_H_
