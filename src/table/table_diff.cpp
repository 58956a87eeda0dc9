// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/table_diff.h"

#include <algorithm>

namespace orvane {

std::vector<ParamKey> DifferingKeys(const ParamTable& a, const ParamTable& b) {
  std::vector<ParamKey> keys;
  ParamKey key;
  for (int position = 0; a.GetParamKey(position, &key) == kOk; ++position) {
    const ParamEntry* in_a = a.FindParam(key);
    const ParamEntry* in_b = b.FindParam(key);
    if (in_a != nullptr && in_b != nullptr && in_a->value != in_b->value &&
        std::find(keys.begin(), keys.end(), key) == keys.end()) {
      keys.push_back(key);
    }
  }
  return keys;
}

TwoChanges ChangesOfBoth(const ParamTable& base, const ParamTable& mine, const ParamTable& theirs) {
  const std::vector<ParamKey> here = DifferingKeys(base, mine);
  const std::vector<ParamKey> there = DifferingKeys(base, theirs);
  const auto has = [](const std::vector<ParamKey>& keys, ParamKey key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
  };
  TwoChanges changes;
  for (const ParamKey key : DifferingKeys(mine, theirs)) {
    const bool is_here = has(here, key);
    std::vector<ParamKey>& group = !is_here          ? changes.theirs
                                   : has(there, key) ? changes.both
                                                     : changes.mine;
    group.push_back(key);
  }
  return changes;
}

}  // namespace orvane
