// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_FILE_H_
#define ORVANE_TIMESERIES_TS_FILE_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "timeseries/ts_companion.h"
#include "timeseries/ts_index.h"
#include "timeseries/ts_rec.h"

namespace orvane {

/// "Failed to open file %s!"
std::string OpenFailureText(const std::filesystem::path& path);

/// A waveform or band file that is open: its index, its companion table, its records when they are
/// asked for. Opening costs a walk over the headers, whatever the size of the file.
class TsFile {
 public:
  struct Options {
    /// Given: no companion is needed and "VER" does not count. A band file has its own all the
    /// same.
    std::optional<TsHeaderSize> header_size;
    /// False: a waveform opens without its companion too, its headers taken as `FittingHeaders()`.
    bool needs_companion = true;
  };

  /// Band files (by the digit that ends the path) have 32-byte headers, stacked files (*.TSK) full
  /// ones; both need no companion, but use one. Any other is known by its companion's "VER". Fails
  /// where the file, or a companion that it needs, cannot be opened: with the file's name and what
  /// the system said, while `FailureText()` has the text for the user.
  /// `progress`, which may be null, follows the walks, which may be stopped by it: then the file
  /// is of no use.
  Result<> Open(const std::filesystem::path& path, const Options& options,
                TsProgress* progress = nullptr);
  Result<> Open(const std::filesystem::path& path) { return Open(path, Options()); }

  const std::string& FailureText() const { return failure_text_; }
  /// Of a failure: with `Options::needs_companion` false the file may open.
  bool LacksCompanion() const { return lacks_companion_; }

  /// A file that opened: what kept its records from being found to the end, with the file's name;
  /// mostly empty.
  const std::string& ReadError() const { return read_error_; }

  const std::filesystem::path& Path() const { return path_; }
  TsHeaderSize HeaderSize() const { return header_size_; }
  bool IsBandFile() const { return header_size_ == TsHeaderSize::kBand; }
  /// Where the companion was looked for; empty where nowhere.
  const std::filesystem::path& CompanionPath() const { return companion_path_; }
  const TsCompanion& Companion() const { return companion_; }
  /// What is not known of a file that opened without its companion, and why; else empty.
  const std::string& CompanionNote() const { return companion_note_; }
  /// Of such a file: why its companion, which is there, could not be read or used; else empty.
  const std::string& CompanionFault() const { return companion_fault_; }

  std::uint64_t Count() const { return index_.Count(); }
  std::uint64_t BadCount() const { return index_.BadCount(); }
  std::uint64_t FirstBad() const { return index_.FirstBad(); }
  std::uint64_t NextBad(std::uint64_t number) const { return index_.NextBad(file_, number); }
  /// Records before the first bad one; 0: no limit. kept: also where the first record is bad.
  std::uint64_t UsableCount() const { return FirstBad() == 0 ? 0 : FirstBad() - 1; }
  /// "There are %d bad records starting at segment%d!"; empty where there are none.
  std::string BadRecordText() const;

  /// Fails without the file's name.
  Result<TsPlace> Find(std::uint64_t number) const { return index_.Find(file_, number); }
  /// Reads a record from 1 on. The file may have become shorter since it was opened.
  Result<> Read(std::uint64_t number, CTsRec* record) const;
  /// Takes over whole records that were written behind those known; see `TsIndex::Extend()`.
  TsIndex::Growth Extend(std::uint64_t most) { return index_.Extend(file_, most); }
  /// Where the next record begins, or the file ended in the last one.
  std::uint64_t End() const { return index_.End(); }
  TsStart Next() const { return index_.Next(); }
  /// Goes over all records as they are now.
  TsWalker Walk() const { return index_.WalkFrom(file_, 1); }

  const RandomFile& Bytes() const { return file_; }

 private:
  void Reset();
  Result<> LoadCompanion();
  void NoteMissing(const std::string& reason, bool guesses_headers);
  Failure Fail(const std::filesystem::path& path, const std::string& reason);

  std::filesystem::path path_;
  std::filesystem::path companion_path_;
  RandomFile file_;
  TsHeaderSize header_size_ = TsHeaderSize::kFull;
  TsCompanion companion_;
  TsIndex index_;
  std::string failure_text_;
  bool lacks_companion_ = false;
  std::string companion_note_;
  std::string companion_fault_;
  std::string read_error_;
};

/// The headers that a waveform of unknown version is taken to have: full ones, or older ones where
/// only with these the records fill the file to its very end.
TsHeaderSize FittingHeaders(const RandomFile& file, TsProgress* progress = nullptr);
/// The same; `stopped` ends the walks, and what is returned then is of no use.
TsHeaderSize FittingHeaders(const RandomFile& file, const std::function<bool()>& stopped);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_FILE_H_
