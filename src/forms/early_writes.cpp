// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/early_writes.h"

#include <algorithm>

#include "table/param_text.h"

namespace orvane {

void EarlyWrites::PutInt(ParamKey key, std::int32_t number) {
  ParamValue value{};
  orvane::PutInt(number, &value);
  Put(key, IntPT, value);
}

void EarlyWrites::PutReal(ParamKey key, double number) {
  ParamValue value{};
  orvane::PutReal(number, &value);
  Put(key, FltPT, value);
}

void EarlyWrites::Put(ParamKey key, ValueType type, const ParamValue& value) {
  Remember(key);
  static_cast<void>(table_->SetParam(key, type, value.data()));
}

void EarlyWrites::Remember(ParamKey key) {
  const bool is_known = std::any_of(before_.begin(), before_.end(),
                                    [key](const auto& before) { return before.first == key; });
  if (const ParamEntry* entry = table_->FindParam(key); entry != nullptr && !is_known) {
    before_.emplace_back(key, entry->value);
  }
}

std::vector<std::string> EarlyWrites::Changes() const {
  std::vector<std::string> keys;
  for (const auto& [key, value] : before_) {
    if (table_->FindParam(key)->value != value) {
      keys.push_back(key.Text());
    }
  }
  return keys;
}

}  // namespace orvane
