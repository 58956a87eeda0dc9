// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_ADDING_H_
#define ORVANE_TIMESERIES_RESTACK_ADDING_H_

#include <cstdint>
#include <map>

#include "files/batch.h"
#include "timeseries/restack_plan.h"
#include "timeseries/restack_sums.h"

namespace orvane {

using GroupSums = std::map<const RestackGroup*, RestackSums>;

/// Adds the records of those groups that have sums, in one pass over a file that is taken to end at
/// `end`, on as many threads as the task allows. A stopped task leaves it half done.
Result<> AddRecords(BatchTask* task, const RandomFile& in, std::uint64_t end, RestackPlan* plan,
                    GroupSums* sums, bool tells_progress);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_ADDING_H_
