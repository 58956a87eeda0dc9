// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_TABLE_DIFF_H_
#define ORVANE_TABLE_TABLE_DIFF_H_

#include <vector>

#include "table/param_table.h"

namespace orvane {

/// The keys, in the order of `a`, whose stored bytes differ between two tables of the same
/// dictionary. A key that is there twice is named once; what is never found by its key does not
/// count.
std::vector<ParamKey> DifferingKeys(const ParamTable& a, const ParamTable& b);

/// What two made of one table, as `DifferingKeys()` finds it. What both changed alike is in none.
struct TwoChanges {
  std::vector<ParamKey> mine;
  std::vector<ParamKey> theirs;
  std::vector<ParamKey> both;
};
TwoChanges ChangesOfBoth(const ParamTable& base, const ParamTable& mine, const ParamTable& theirs);

}  // namespace orvane

#endif  // ORVANE_TABLE_TABLE_DIFF_H_
