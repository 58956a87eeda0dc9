// SPDX-License-Identifier: GPL-3.0-or-later
// The records of a file as rows of a list, without drawing.
#ifndef ORVANE_TIMESERIES_RECORD_LIST_H_
#define ORVANE_TIMESERIES_RECORD_LIST_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "timeseries/record_stats.h"

namespace orvane {

/// The status of a record; 0 in a band file, whose headers have none.
int RecordStatus(const TsHeader& header, TsHeaderSize header_size);
/// "bad" for 6, empty for 0, else "status n".
std::string RecordStatusText(int status);
/// In Hz; none where the headers have no such field.
std::optional<double> RecordFrequency(const TsHeader& header, TsHeaderSize header_size);

/// A column of the list: of the record itself, or of one of its channels, which count from 0.
struct RecordColumn {
  enum class Kind { kNumber, kTime, kFrequency, kStatus, kPeakToPeak, kMean, kRms, kSaturated };
  Kind kind = Kind::kNumber;
  std::size_t channel = 0;

  bool IsOfChannel() const { return kind >= Kind::kPeakToPeak; }
  bool operator==(const RecordColumn&) const = default;
};

/// Rows in the order in which they were added. Values of channels are in counts. A dead channel
/// has a peak to peak of 0 and is first when sorted by that.
class RecordList {
 public:
  explicit RecordList(TsHeaderSize header_size) : header_size_(header_size) {}

  /// False: the list is full, so that a file of very many records does not take all memory; the
  /// record is counted only.
  bool Add(const RecordStats& record);
  /// As many channels of records as are kept, 12 each of 65536 records: 24 MiB, and 56 bytes a
  /// record. A record without channels takes the place of one.
  static constexpr std::size_t kMostCells = std::size_t{65536} * 12;

  std::size_t Size() const { return rows_.size(); }
  /// Of all records that were added, also of those that found no place.
  std::uint64_t Records() const { return records_; }
  /// The most channels that a record has.
  std::size_t Channels() const { return channels_; }

  /// Number, time, frequency where the headers have one, status where they have one, then the four
  /// of each channel.
  std::vector<RecordColumn> Columns() const;

  std::uint64_t Number(std::size_t row) const { return rows_[row].number; }
  std::span<const ChannelStats> Stats(std::size_t row) const;
  bool IsBad(std::size_t row) const { return rows_[row].status == TsHeader::kBadStatus; }
  /// Whether a sample of any channel is saturated.
  bool IsSaturated(std::size_t row) const;

  /// Empty where the record has no such value.
  std::string Text(std::size_t row, const RecordColumn& column) const;
  /// What rows are sorted by; none where the record has no such value. Times are in seconds.
  std::optional<double> Value(std::size_t row, const RecordColumn& column) const;
  /// Rows in ascending or descending order of a column, equal ones as they were added, those
  /// without a value last. Any status but 0 counts as more than none, a bad one as most.
  std::vector<std::size_t> Sorted(const RecordColumn& column, bool is_descending) const;

 private:
  struct Row {
    std::uint64_t number = 0;
    ParamTime time;
    int status = 0;
    std::optional<double> frequency;
    std::size_t first = 0;  // of its channels
    std::size_t channels = 0;
  };

  TsHeaderSize header_size_;
  std::vector<Row> rows_;
  std::vector<ChannelStats> stats_;
  std::size_t cells_ = 0;
  std::uint64_t records_ = 0;
  std::size_t channels_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_LIST_H_
