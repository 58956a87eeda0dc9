// SPDX-License-Identifier: GPL-3.0-or-later
// All records of a file as one picture, without drawing.
#ifndef ORVANE_TIMESERIES_RECORD_STRIP_MODEL_H_
#define ORVANE_TIMESERIES_RECORD_STRIP_MODEL_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "timeseries/record_list.h"
#include "timeseries/record_numbers.h"

namespace orvane {

/// Peak to peak of a channel, in counts, of the records that share a column.
struct StripPeaks {
  std::int32_t least = 0;
  std::int32_t most = 0;
};

/// What a column of the picture says of its records, one or more.
struct StripColumn {
  std::size_t first = 0;  ///< row of the list
  std::size_t rows = 0;
  bool has_bad = false;
  bool has_saturated = false;
  bool is_left_out = false;           ///< all of them
  std::optional<double> frequency{};  ///< of the first that has one, in Hz
  std::vector<std::optional<StripPeaks>> channels{};
};

/// At most so many columns for `places` records, each with the least and the greatest of its
/// records: one record that differs is seen at every width. Of places without a row yet there are
/// no columns; columns are as wide as each other.
class RecordStripModel {
 public:
  /// `places`: how many records the whole picture stands for, at least the list's.
  RecordStripModel(const RecordList& list, const RecordNumbers& left_out, std::uint64_t places,
                   int width);

  const std::vector<StripColumn>& Columns() const { return columns_; }
  /// Columns of the whole picture.
  std::size_t Count() const { return count_; }
  /// Where a channel's values lie between its least and its greatest above 0, logarithmically: 0
  /// to 1. A range of less than a factor of 2 is widened to that, so that noise is not drawn large.
  /// 0 also for a peak to peak of 0.
  double HeightOf(std::size_t channel, std::int32_t peak_to_peak) const;
  /// The same for frequencies; none where all records have the same, or none above 0.
  std::optional<double> HeightOf(const std::optional<double>& frequency) const;

 private:
  struct Range {
    double low = 0;  // binary logarithms
    double high = 0;
    bool is_known = false;
    void Add(double value);
    double Share(double value) const;
  };

  StripColumn ColumnOf(const RecordList& list, const RecordNumbers& left_out, std::size_t first,
                       std::size_t end);
  void AddRow(const RecordList& list, std::size_t row, StripColumn* column);

  std::size_t count_ = 0;
  std::vector<StripColumn> columns_;
  std::vector<Range> ranges_;
  Range frequencies_;
};

/// The record under a place from 0 (left) to 1 of a picture of `records`; 0: there is none.
std::uint64_t RecordAtShare(double share, std::uint64_t records);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_STRIP_MODEL_H_
