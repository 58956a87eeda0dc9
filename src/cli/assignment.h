// SPDX-License-Identifier: GPL-3.0-or-later
// KEY=VALUE, as on a command line.
#ifndef ORVANE_CLI_ASSIGNMENT_H_
#define ORVANE_CLI_ASSIGNMENT_H_

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "table/param_table.h"

namespace orvane {

/// Whether there is a '=' at all; the first one divides.
bool IsAssignment(std::string_view text);

/// Whether a file of that version can hold a value. A refusal names the key; `given` is what it
/// calls the value.
Result<> MayHold(const ParamEntry& changed, std::string_view given, std::uint32_t tbl_version);

/// Stores the value of an assignment, which is UTF-8, in the table as Latin-1. For version 1 it
/// must also fit a file of that version. A refusal names the key.
Result<> Assign(std::string_view assignment, std::uint32_t tbl_version, ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_CLI_ASSIGNMENT_H_
