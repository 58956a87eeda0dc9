// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_INDEX_H_
#define ORVANE_TIMESERIES_TS_INDEX_H_

#include <atomic>
#include <cstdint>
#include <vector>

#include "timeseries/ts_walker.h"

namespace orvane {

/// How far walks over a file's headers are, for another thread, which may also stop them.
struct TsProgress {
  std::atomic<std::uint64_t> done = 0;   ///< bytes gone over, of all walks
  std::atomic<std::uint64_t> total = 0;  ///< of them; 0: not known yet
  std::atomic<bool> stop = false;

  int Percent() const;
  /// A walk has come to a byte of the file; false: it is to end.
  bool Note(std::uint64_t byte) {
    done = before_ + byte;
    return !stop;
  }
  /// That many walks begin over a file of that size.
  void Begin(std::uint64_t walks, std::uint64_t size) {
    total = walks * size;
    before_ = 0;
  }
  void NextWalk(std::uint64_t size) { before_ += size; }

 private:
  std::uint64_t before_ = 0;  // of the walks that ended
};

/// Where the records of a file are, made by one walk over their headers. Every record is noted, or
/// in a file of very many every 2nd, 4th ..., so that the memory does not grow with the file; a
/// record between two notes is found by a short walk.
class TsIndex {
 public:
  /// Walks the file as it is now. Fails with what ended the walk before the file's end; the records
  /// up to there are noted. `progress` may be null.
  Result<> Build(const RandomFile& file, TsHeaderSize header_size, TsProgress* progress = nullptr);

  /// Notes records that came behind those known, as long as they are whole, at most `most`. A last
  /// record that was cut, and is whole now, is no new one but makes the answer's flag true.
  struct Growth {
    std::uint64_t more = 0;
    bool is_last_whole_now = false;
  };
  Growth Extend(const RandomFile& file, std::uint64_t most);
  /// Offset behind the last record that is noted: where the next one begins, or, where the last is
  /// cut, where the file ended.
  std::uint64_t End() const { return end_; }
  /// The first record that is not noted, or the last one where it was cut.
  TsStart Next() const { return next_; }

  std::uint64_t Count() const { return count_; }
  /// Records of status 6; none in a band file, whose headers have no status.
  std::uint64_t BadCount() const { return bad_count_; }
  /// Number of the first bad record, 0: none.
  std::uint64_t FirstBad() const { return first_bad_; }
  /// The first bad record after record `number`, which may be 0; none: 0.
  std::uint64_t NextBad(const RandomFile& file, std::uint64_t number) const;

  /// The place of a record from 1 on, its header read again. Fails where there is no such record
  /// any more, and where a read failed.
  Result<TsPlace> Find(const RandomFile& file, std::uint64_t number) const;

  /// Starts a walk at a record that is noted, at or before `number`.
  TsWalker WalkFrom(const RandomFile& file, std::uint64_t number) const;

  static constexpr std::size_t kMaxNotes = 65536;

 private:
  struct Note {
    std::uint64_t offset;
    bool has_bad;  // among the records from here to the next note
  };
  void Thin();
  void Add(const TsPlace& place);
  void NoteEnd(const TsPlace& place, std::uint64_t file_end);
  std::size_t NoteOf(std::uint64_t number) const {
    return static_cast<std::size_t>((number - 1) / stride_);
  }

  TsHeaderSize header_size_ = TsHeaderSize::kFull;
  std::vector<Note> notes_;
  std::uint64_t stride_ = 1;  // records from one note to the next
  std::uint64_t count_ = 0;
  std::uint64_t bad_count_ = 0;
  std::uint64_t first_bad_ = 0;
  std::uint64_t end_ = 0;
  TsStart next_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_INDEX_H_
