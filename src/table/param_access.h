// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a table for rules that take a missing key as an empty one and write around it.
#ifndef ORVANE_TABLE_PARAM_ACCESS_H_
#define ORVANE_TABLE_PARAM_ACCESS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "table/param_table.h"
#include "table/param_text.h"

namespace orvane {

/// `fallback` where the key is missing or of another type.
inline std::int32_t IntParam(const ParamTable& table, ParamKey key, std::int32_t fallback = 0) {
  const ParamEntry* entry = table.FindParam(key);
  return entry != nullptr && entry->type == IntPT ? IntOf(entry->value) : fallback;
}

inline double RealParam(const ParamTable& table, ParamKey key) {
  const ParamEntry* entry = table.FindParam(key);
  return entry != nullptr && entry->type == FltPT ? RealOf(entry->value) : 0;
}

inline ParamTime TimeParam(const ParamTable& table, ParamKey key) {
  const ParamEntry* entry = table.FindParam(key);
  return entry != nullptr && entry->type == AmxPT ? TimeOf(entry->value) : ParamTime{};
}

/// The value as text, whatever its type; empty where the key is missing.
inline std::string ParamAsText(const ParamTable& table, ParamKey key) {
  std::string text;
  if (const ParamEntry* entry = table.FindParam(key); entry != nullptr) {
    FormatParamValue(static_cast<ValueType>(entry->type), entry->value, &text);
  }
  return text;
}

/// The writers skip a key that is missing or of another type: it has nowhere to keep the value.
/// Each returns whether the stored bytes changed.
bool PutValue(ParamTable* table, ParamKey key, ValueType type, const ParamValue& value);
bool PutInt(ParamTable* table, ParamKey key, std::int32_t number);
bool PutReal(ParamTable* table, ParamKey key, double number);
/// For a `StrPT` or a `PosPT` key; the text is cut to 15 characters.
bool PutText(ParamTable* table, ParamKey key, std::string_view text);
bool PutTime(ParamTable* table, ParamKey key, const ParamTime& time);

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_ACCESS_H_
