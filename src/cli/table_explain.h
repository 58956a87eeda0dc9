// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters explained: the verb, and the columns that other verbs of `table` add.
#ifndef ORVANE_CLI_TABLE_EXPLAIN_H_
#define ORVANE_CLI_TABLE_EXPLAIN_H_

#include <string>
#include <vector>

#include "cli/output.h"
#include "meaning/meanings.h"

namespace orvane {

/// The cells that explain a value, each after a tab: name, unit, what a coded value means.
std::string ExplainingCells(const Meanings& meanings, const ParamEntry& entry);

/// Prints a header line and a row for each key, for all without any. 1 where a key is unknown.
ExitCode RunTableExplain(const std::vector<std::string>& keys);

}  // namespace orvane

#endif  // ORVANE_CLI_TABLE_EXPLAIN_H_
