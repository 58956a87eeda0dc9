// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_STACK_STATS_H_
#define ORVANE_TIMESERIES_STACK_STATS_H_

#include <optional>

#include "timeseries/stack_view.h"
#include "timeseries/ts_listing.h"

namespace orvane {

inline constexpr const char* kStackStatsSuffix = "_stack_stats.tsv";

struct StackStatsOptions {
  std::optional<StackDomain> domain = {};  ///< none: as the size of the items lets guess
  bool is_second = false;                  ///< of time-domain items the second float
};

/// Label, item from 1, records, median and spread of each item of a stack result file,
/// tab-separated, behind a line of titles. docs/formats/stack-results.md describes them.
TsListing StackStatsListing(StackStatsOptions options);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STACK_STATS_H_
