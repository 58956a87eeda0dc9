// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_STATS_LISTING_H_
#define ORVANE_TIMESERIES_STATS_LISTING_H_

#include "timeseries/leave_out.h"
#include "timeseries/ts_listing.h"

namespace orvane {

inline constexpr const char* kStatsSuffix = "_stats.tsv";

/// Statistics of the samples in counts, tab-separated: a line of titles, then one for each channel
/// of each record. docs/formats/stats.md describes them.
TsListing StatsListing(TsFile::Options options = {}, LeaveOutChoice leave_out = {});

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STATS_LISTING_H_
