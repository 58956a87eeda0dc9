// SPDX-License-Identifier: GPL-3.0-or-later
// KEY=VALUE, as it stands on a command line.
#ifndef ORVANE_CLI_ASSIGNMENT_H_
#define ORVANE_CLI_ASSIGNMENT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "table/param_table.h"

namespace orvane {

/// Whether there is a '=' at all; the first one divides.
bool IsAssignment(std::string_view text);

/// Why a value cannot be given to a file of that version; empty: it can. `given` is how it is told.
[[nodiscard]] std::string RefusalOf(const ParamEntry& changed, std::string_view given,
                                    std::uint32_t tbl_version);

/// Stores the value of an assignment, which is UTF-8, in the table as Latin-1. Why it is refused,
/// with the key; empty once it is in the table. For version 1 it must also fit a file of that
/// version.
[[nodiscard]] std::string Assign(std::string_view assignment, std::uint32_t tbl_version,
                                 ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_CLI_ASSIGNMENT_H_
