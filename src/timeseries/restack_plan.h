// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_PLAN_H_
#define ORVANE_TIMESERIES_RESTACK_PLAN_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "timeseries/ts_walker.h"

namespace orvane {

/// The records of one frequency.
struct RestackGroup {
  std::uint64_t first_record = 0;
  TsHeader header;          ///< of the first record
  std::uint64_t count = 0;  ///< of records that are added

  std::uint64_t Samples() const { return std::uint64_t{header.scans} * header.channels; }
  /// Whether a record of this frequency has all that the first one has.
  bool Takes(const TsHeader& record) const {
    return record.scans >= header.scans && record.channels >= header.channels;
  }
};

/// What a file's headers tell of its stack.
class RestackPlan {
 public:
  explicit RestackPlan(TsWalker walker);

  /// The groups in the order of writing.
  std::vector<RestackGroup*> InOrder();
  /// The group of a record; null where it has none.
  RestackGroup* GroupOf(const TsHeader& header);

  std::uint64_t Records() const { return records_; }
  /// What the user should know, empty if nothing.
  std::string Note() const;
  const std::string& Error() const { return error_; }

 private:
  // By frequency; -0 and 0 are one.
  std::map<double, RestackGroup> groups_;
  bool is_ascending_ = true;
  std::uint64_t records_ = 0;
  std::uint64_t cut_record_ = 0;
  std::uint64_t too_small_ = 0;
  std::vector<std::uint64_t> first_too_small_;
  std::uint64_t without_frequency_ = 0;
  std::string error_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_PLAN_H_
