// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/early_writes.h"

#include <algorithm>

#include "table/param_access.h"

namespace orvane {

void EarlyWrites::PutInt(ParamKey key, std::int32_t number) {
  Remember(key);
  orvane::PutInt(table_, key, number);
}

void EarlyWrites::PutReal(ParamKey key, double number) {
  Remember(key);
  orvane::PutReal(table_, key, number);
}

void EarlyWrites::Put(ParamKey key, ValueType type, const ParamValue& value) {
  Remember(key);
  PutValue(table_, key, type, value);
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
