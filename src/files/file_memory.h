// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_FILE_MEMORY_H_
#define ORVANE_FILES_FILE_MEMORY_H_

#include <cstdint>
#include <filesystem>

#include "files/file_system.h"

namespace orvane {

/// What has become of a file since it was remembered.
enum class FileChange {
  kUnchanged,
  kChanged,
  kGone,
};

/// What somebody knows of a file that he has read or written, so that he notices when others change
/// it. Its bytes decide, by their number and checksum, not its time: a file may be saved twice
/// within one tick of the clock, and be touched without a change.
class RememberedFile {
 public:
  /// Nothing is remembered.
  RememberedFile() = default;
  /// `info` is from before its bytes were read, or from after they were written. What has no bytes
  /// of its own, a pipe or device, is not remembered.
  RememberedFile(const FileInfo& info, std::uint64_t size, std::uint64_t sum);
  /// That there is none.
  static RememberedFile Absent();

  /// Remembers a file, or its absence, as it is now.
  Result<> Read(const std::filesystem::path& path);

  /// Reads the file and compares. Fails where it cannot be read, or nothing is remembered. A file
  /// that is unchanged is remembered with the time that it has now.
  Result<FileChange> Look(const std::filesystem::path& path);

  bool IsKnown() const { return state_ != State::kNothing; }
  /// Whether bytes are remembered, which the others describe.
  bool HasBytes() const { return state_ == State::kBytes; }
  std::uint64_t Size() const { return size_; }
  std::uint64_t Sum() const { return sum_; }
  /// When it was last changed, in ns since 1970-01-01 UTC.
  std::int64_t Written() const { return info_.written; }

 private:
  enum class State { kNothing, kAbsent, kBytes };

  State state_ = State::kNothing;
  FileInfo info_;
  std::uint64_t size_ = 0;
  std::uint64_t sum_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_FILES_FILE_MEMORY_H_
