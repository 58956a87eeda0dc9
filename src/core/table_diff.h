// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CORE_TABLE_DIFF_H_
#define ORVANE_CORE_TABLE_DIFF_H_

#include <vector>

#include "core/param_table.h"

namespace orvane {

/// The keys, in the order of `a`, whose stored bytes differ between two tables of the same
/// dictionary. A key that stands twice is told once; what is never found by its key does not count.
std::vector<ParamKey> DifferingKeys(const ParamTable& a, const ParamTable& b);

}  // namespace orvane

#endif  // ORVANE_CORE_TABLE_DIFF_H_
