// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_access.h"

namespace orvane {

bool PutValue(ParamTable* table, ParamKey key, ValueType type, const ParamValue& value) {
  const ParamEntry* entry = table->FindParam(key);
  if (entry == nullptr) {
    return false;
  }
  const ParamValue before = entry->value;
  return table->SetParam(key, type, value.data()) == kOk && entry->value != before;
}

bool PutInt(ParamTable* table, ParamKey key, std::int32_t number) {
  ParamValue value{};
  PutInt(number, &value);
  return PutValue(table, key, IntPT, value);
}

bool PutReal(ParamTable* table, ParamKey key, double number) {
  ParamValue value{};
  PutReal(number, &value);
  return PutValue(table, key, FltPT, value);
}

bool PutText(ParamTable* table, ParamKey key, std::string_view text) {
  const ParamEntry* entry = table->FindParam(key);
  const ValueType type = entry != nullptr && entry->type == PosPT ? PosPT : StrPT;
  ParamValue value{};
  ParseParamValue(text, type, &value);
  return PutValue(table, key, type, value);
}

bool PutTime(ParamTable* table, ParamKey key, const ParamTime& time) {
  ParamValue value{};
  PutTime(time, &value);
  return PutValue(table, key, AmxPT, value);
}

}  // namespace orvane
