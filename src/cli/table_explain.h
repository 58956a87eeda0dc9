// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters explained: the verb, and the columns that other verbs of `table` add.
#ifndef ORVANE_CLI_TABLE_EXPLAIN_H_
#define ORVANE_CLI_TABLE_EXPLAIN_H_

#include <string>
#include <vector>

#include "cli/output.h"
#include "meaning/meanings.h"

namespace orvane {

/// Name and unit of a key as two cells with a tab between them.
std::string NameAndUnit(const Meanings& meanings, ParamKey key);

/// Prints a header line and a row for each key, for all without any. 1 where a key is unknown.
ExitCode RunTableExplain(const std::vector<std::string>& keys);

}  // namespace orvane

#endif  // ORVANE_CLI_TABLE_EXPLAIN_H_
