// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_RANDOM_FILE_H_
#define ORVANE_FILES_RANDOM_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include "base/result.h"

namespace orvane {

/// How many bytes were read, and whether a read error ended them.
struct BytesRead {
  std::size_t count = 0;
  Result<> outcome;
};

/// A file that is read by position, also from several threads at once. It may grow or shrink while
/// it is open: reads then give what there is. It is not mapped, because a mapping ends the program
/// when the file shrinks, and reads in pieces of 128 to 256 KiB are as fast.
class RandomFile {
 public:
  RandomFile() = default;
  RandomFile(const RandomFile&) = delete;
  RandomFile& operator=(const RandomFile&) = delete;
  ~RandomFile();

  /// Only a regular file has positions: folders, devices and pipes are refused. Closes what was
  /// open before.
  Result<> Open(const std::filesystem::path& path);
  void Close();
  bool IsOpen() const { return handle_ >= 0; }

  /// The bytes in the file at this moment; 0 where none is open.
  Result<std::uint64_t> Size() const;

  /// Fills `bytes` from `offset` on as far as the file goes, or to a read error.
  BytesRead ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;

 private:
  int handle_ = -1;
};

}  // namespace orvane

#endif  // ORVANE_FILES_RANDOM_FILE_H_
