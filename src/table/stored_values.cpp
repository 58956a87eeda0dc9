// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/stored_values.h"

#include "table/values_text.h"

namespace orvane {

std::vector<ParamValue> StoredValues(const ParamTable& table) {
  std::vector<ParamValue> values;
  for (const ParamKey key : AllKeys(table)) {
    values.push_back(table.FindParam(key)->value);
  }
  return values;
}

void RestoreValues(const std::vector<ParamValue>& values, ParamTable* table) {
  auto value = values.begin();
  for (const ParamKey key : AllKeys(*table)) {
    static_cast<void>(table->SetStoredValue(key, *value++));  // the key was found a moment ago
  }
}

}  // namespace orvane
