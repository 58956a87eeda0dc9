// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_list.h"

#include <algorithm>
#include <numeric>

#include "base/number_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

using Kind = RecordColumn::Kind;

bool HasStatus(TsHeaderSize header_size) { return header_size != TsHeaderSize::kBand; }

double ValueOf(const ChannelStats& stats, Kind kind) {
  switch (kind) {
    case Kind::kPeakToPeak:
      return stats.PeakToPeak();
    case Kind::kMean:
      return stats.Mean();
    case Kind::kRms:
      return stats.Rms();
    default:
      return stats.saturated;
  }
}

}  // namespace

int RecordStatus(const TsHeader& header, TsHeaderSize header_size) {
  return HasStatus(header_size) ? header.status : 0;
}

std::string RecordStatusText(int status) {
  if (status == 0) {
    return {};
  }
  return status == TsHeader::kBadStatus ? "bad" : "status " + FormatInt(status);
}

std::optional<double> RecordFrequency(const TsHeader& header, TsHeaderSize header_size) {
  return header_size == TsHeaderSize::kFull ? std::optional<double>(header.frequency)
                                            : std::nullopt;
}

bool RecordList::Add(const RecordStats& record) {
  ++records_;
  channels_ = std::max(channels_, record.channels.size());
  const std::size_t cells = std::max<std::size_t>(record.channels.size(), 1);
  if (cells_ + cells > kMostCells) {
    cells_ = kMostCells;  // no gaps: what comes later finds no place either
    return false;
  }
  cells_ += cells;
  const TsHeader& header = record.place.header;
  rows_.push_back({record.place.number, header.time, RecordStatus(header, header_size_),
                   RecordFrequency(header, header_size_), stats_.size(), record.channels.size()});
  stats_.insert(stats_.end(), record.channels.begin(), record.channels.end());
  return true;
}

std::vector<RecordColumn> RecordList::Columns() const {
  std::vector<RecordColumn> columns{{Kind::kNumber}, {Kind::kTime}};
  if (header_size_ == TsHeaderSize::kFull) {
    columns.push_back({Kind::kFrequency});
  }
  if (HasStatus(header_size_)) {
    columns.push_back({Kind::kStatus});
  }
  for (std::size_t channel = 0; channel < channels_; ++channel) {
    for (const Kind kind : {Kind::kPeakToPeak, Kind::kMean, Kind::kRms, Kind::kSaturated}) {
      columns.push_back({kind, channel});
    }
  }
  return columns;
}

std::span<const ChannelStats> RecordList::Stats(std::size_t row) const {
  return std::span(stats_).subspan(rows_[row].first, rows_[row].channels);
}

bool RecordList::IsSaturated(std::size_t row) const {
  const auto stats = Stats(row);
  return std::any_of(stats.begin(), stats.end(),
                     [](const ChannelStats& channel) { return channel.saturated > 0; });
}

std::optional<double> RecordList::Value(std::size_t row, const RecordColumn& column) const {
  const Row& record = rows_[row];
  switch (column.kind) {
    case Kind::kNumber:
      return static_cast<double>(record.number);
    case Kind::kTime:
      return ParamTimeToSeconds(record.time);
    case Kind::kFrequency:
      return record.frequency;
    case Kind::kStatus:
      return IsBad(row) ? 256 : record.status;
    default:
      return column.channel < rows_[row].channels
                 ? std::optional(ValueOf(Stats(row)[column.channel], column.kind))
                 : std::nullopt;
  }
}

std::string RecordList::Text(std::size_t row, const RecordColumn& column) const {
  constexpr int kDigits = 7;
  const Row& record = rows_[row];
  if (column.kind == Kind::kTime) {
    return FormatParamTime(record.time);
  }
  if (column.kind == Kind::kStatus) {
    return RecordStatusText(record.status);
  }
  const auto value = Value(row, column);
  if (!value) {
    return {};
  }
  const bool is_rounded = column.kind == Kind::kMean || column.kind == Kind::kRms;
  return column.kind == Kind::kNumber ? FormatInt(record.number)
                                      : FormatReal(*value, is_rounded ? kDigits : 10);
}

std::vector<std::size_t> RecordList::Sorted(const RecordColumn& column, bool is_descending) const {
  std::vector<std::optional<double>> values(Size());
  for (std::size_t row = 0; row < Size(); ++row) {
    values[row] = Value(row, column);
    // What is no number has no place among numbers.
    values[row] = values[row] && *values[row] == *values[row] ? values[row] : std::nullopt;
  }
  std::vector<std::size_t> rows(Size());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  std::stable_sort(rows.begin(), rows.end(), [&](std::size_t a, std::size_t b) {
    if (!values[a] || !values[b]) {
      return values[a].has_value() && !values[b].has_value();
    }
    return is_descending ? *values[a] > *values[b] : *values[a] < *values[b];
  });
  return rows;
}

}  // namespace orvane
