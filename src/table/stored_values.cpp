// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/stored_values.h"

namespace orvane {

std::vector<ParamValue> StoredValues(const ParamTable& table) {
  std::vector<ParamValue> values;
  ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    const ParamEntry* entry = table.FindParam(key);
    values.push_back(entry == nullptr ? ParamValue() : entry->value);
  }
  return values;
}

void RestoreValues(const std::vector<ParamValue>& values, ParamTable* table) {
  ParamKey key;
  int position = 0;
  for (const ParamValue& value : values) {
    if (table->GetParamKey(position++, &key) == kOk) {
      static_cast<void>(table->SetStoredValue(key, value));  // what is not indexed has no value
    }
  }
}

}  // namespace orvane
