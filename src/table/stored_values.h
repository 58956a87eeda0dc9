// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_STORED_VALUES_H_
#define ORVANE_TABLE_STORED_VALUES_H_

#include <vector>

#include "table/param_table.h"

namespace orvane {

/// The values of a table by `AllKeys()`, so that of a key that is there twice the one that is found
/// counts: a snapshot of half the size of a copy, for any table of the same dictionary.
std::vector<ParamValue> StoredValues(const ParamTable& table);

/// The way back.
void RestoreValues(const std::vector<ParamValue>& values, ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_TABLE_STORED_VALUES_H_
