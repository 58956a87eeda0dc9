// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_MEANING_FIELD_TIP_H_
#define ORVANE_MEANING_FIELD_TIP_H_

#include <string>

#include "forms/form_field.h"
#include "meaning/meanings.h"
#include "table/param_table.h"

namespace orvane {

/// What a tool tip says of a field, a line each: its meaning, the keys that it is kept under, the
/// unit shown and stored, the range, and in which modes a box may change it.
std::string FieldTipText(const Meanings& meanings, const Field& field, const ParamTable& table);

/// The keys and the range alone, for who hears it with every field: "L2NS, 0 to 4". Empty for a
/// field without a key.
std::string FieldTipInBrief(const Meanings& meanings, const Field& field);

}  // namespace orvane

#endif  // ORVANE_MEANING_FIELD_TIP_H_
