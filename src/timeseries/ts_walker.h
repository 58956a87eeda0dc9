// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_WALKER_H_
#define ORVANE_TIMESERIES_TS_WALKER_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "files/random_file.h"
#include "timeseries/ts_header.h"

namespace orvane {

/// A record as its header describes it and the file holds it.
struct TsPlace {
  std::uint64_t number = 0;  ///< from 1
  std::uint64_t offset = 0;  ///< of the header
  std::uint64_t data = 0;    ///< offset of the first sample
  std::uint64_t next = 0;    ///< offset after the trailing scans, perhaps beyond the file
  TsHeader header;
  std::uint32_t scans_held = 0;  ///< whole scans in the file
  bool is_cut = false;           ///< the file ends within the samples
};

/// Where a walk begins: the header of record `number`.
struct TsStart {
  std::uint64_t offset = 0;
  std::uint64_t number = 1;
};

/// Goes from header to header without reading what lies between. A record counts as soon as its
/// header is whole; after one that is cut there is none.
class TsWalker {
 public:
  /// The file is taken to end at `end`, so that one that grows is walked to an end.
  TsWalker(const RandomFile* file, TsHeaderSize header_size, std::uint64_t end, TsStart start = {})
      : file_(file),
        header_size_(header_size),
        end_(end),
        offset_(start.offset),
        number_(start.number) {}
  /// To the end that the file has now. Where the system does not say it there is no record, and
  /// `Outcome()` has the reason.
  TsWalker(const RandomFile* file, TsHeaderSize header_size, TsStart start = {})
      : file_(file), header_size_(header_size), offset_(start.offset), number_(start.number) {
    const auto size = file->Size();
    end_ = size ? *size : 0;
    outcome_ = size ? Result<>() : Failure(size.Message());
  }

  bool Next(TsPlace* place);
  /// Whether the headers could be read to the end.
  const Result<>& Outcome() const { return outcome_; }
  /// Where the file is taken to end.
  std::uint64_t End() const { return end_; }

 private:
  bool ReadHeader(TsHeader* header);

  const RandomFile* file_;
  TsHeaderSize header_size_;
  std::uint64_t end_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t number_ = 1;
  bool is_at_end_ = false;
  // Headers that are close together are read many at a time.
  std::vector<std::byte> window_;
  std::uint64_t window_offset_ = 0;
  std::uint64_t last_step_ = 0;
  Result<> outcome_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_WALKER_H_
