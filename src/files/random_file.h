// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_RANDOM_FILE_H_
#define ORVANE_FILES_RANDOM_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace orvane {

/// A file that is read by position, also from several threads at once. It may grow or shrink while
/// it is open: reads then give what there is. It is not mapped, because a mapping ends the program
/// when the file shrinks, and reads in pieces of 128 to 256 KiB are as fast.
class RandomFile {
 public:
  RandomFile() = default;
  RandomFile(const RandomFile&) = delete;
  RandomFile& operator=(const RandomFile&) = delete;
  ~RandomFile();

  /// An empty string, or why the file cannot be read. Only a regular file has positions: folders,
  /// devices and pipes are refused. Closes what was open before.
  [[nodiscard]] std::string Open(const std::filesystem::path& path);
  void Close();
  bool IsOpen() const { return handle_ >= 0; }

  /// The bytes in the file at this moment. Where it cannot be told 0, and `error` gets the reason.
  std::uint64_t Size(std::string* error) const;

  /// Fills `bytes` from `offset` on as far as the file goes and returns how many there were. A read
  /// error counts as the end; with `error` given it gets the reason.
  std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes,
                     std::string* error = nullptr) const;

 private:
  int handle_ = -1;
};

}  // namespace orvane

#endif  // ORVANE_FILES_RANDOM_FILE_H_
