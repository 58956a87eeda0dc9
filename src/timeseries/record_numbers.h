// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RECORD_NUMBERS_H_
#define ORVANE_TIMESERIES_RECORD_NUMBERS_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "base/result.h"

namespace orvane {

/// Numbers of records, which count from 1. Neighbours are kept as one range.
class RecordNumbers {
 public:
  /// `first` is at least 1 and at most `last`.
  void Add(std::uint64_t first, std::uint64_t last);
  void Add(std::uint64_t number) { Add(number, number); }
  void Remove(std::uint64_t number);

  bool Has(std::uint64_t number) const;
  bool IsEmpty() const { return ranges_.empty(); }
  std::uint64_t Count() const;
  /// Those above `count`, which a file of so many records has not.
  RecordNumbers Above(std::uint64_t count) const;
  /// "3, 7-9", of many ranges the first 20: "... and 5 more".
  std::string Text() const;
  /// The last number of each range by its first one, ascending.
  const std::map<std::uint64_t, std::uint64_t>& Ranges() const { return ranges_; }
  bool operator==(const RecordNumbers&) const = default;

 private:
  std::map<std::uint64_t, std::uint64_t> ranges_;
};

/// A number of a record: digits only, not 0, at most 64 bits. Fails with what is wrong.
Result<std::uint64_t> RecordNumberOf(std::string_view text);

/// Numbers and ranges such as "3,7-9".
Result<RecordNumbers> RecordNumbersOf(std::string_view list);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_NUMBERS_H_
