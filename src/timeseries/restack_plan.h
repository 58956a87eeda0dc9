// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_PLAN_H_
#define ORVANE_TIMESERIES_RESTACK_PLAN_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "timeseries/leave_out.h"
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

/// Some of many things, for a note: how many there are and the first of them by name.
class NamedFew {
 public:
  static constexpr std::size_t kMostNamed = 20;

  void Add(const std::string& name);
  std::uint64_t Count() const { return count_; }
  /// "3", "3, 4", "3, 4, ... and 5 more"
  std::string Text() const;

 private:
  std::uint64_t count_ = 0;
  std::string names_;
};

/// What a file's headers say of its stack. A record that is left out counts as if the file had
/// it not.
class RestackPlan {
 public:
  RestackPlan(TsWalker walker, const LeaveOut& leave_out);

  /// The groups in the order of writing.
  std::vector<RestackGroup*> InOrder();
  /// The group that a record is added to; null: it is not added.
  RestackGroup* GroupOf(const TsPlace& place);

  std::uint64_t Records() const { return records_; }
  const NamedFew& BadRecords() const { return bad_; }
  /// Whether nothing can be stacked: an empty file must not take the place of an older stack.
  bool LeavesNothing() const { return groups_.empty(); }
  /// What the user should know, empty if nothing.
  std::string Note() const;
  /// Of reading the headers.
  const Result<>& Outcome() const { return outcome_; }

 private:
  void Take(const TsPlace& place);
  std::string BadNote() const;
  std::string WithoutStackNote() const;

  LeaveOut leave_out_;
  // By frequency; -0 and 0 are one.
  std::map<double, RestackGroup> groups_;
  double first_met_ = 0;
  double last_new_ = 0;
  std::uint64_t records_ = 0;
  std::uint64_t cut_record_ = 0;
  NamedFew bad_;              // added or left out
  std::uint64_t chosen_ = 0;  // left out by their numbers
  NamedFew without_stack_;
  NamedFew too_small_;
  std::uint64_t without_frequency_ = 0;
  Result<> outcome_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_PLAN_H_
