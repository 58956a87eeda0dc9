// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_SEEN_FILES_H_
#define ORVANE_FILES_SEEN_FILES_H_

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <utility>

#include "files/file_system.h"

namespace orvane {

/// What was made of files, kept as long as path, size and time of change stay: files on a slow card
/// are read once. For one thread.
template <typename T>
class SeenFiles {
 public:
  /// What `read()` makes of the file, or made of it before.
  template <typename Read>
  T Get(const std::filesystem::path& path, const Read& read) {
    FileInfo info;
    if (!ReadInfo(path, &info) || IsFresh(info)) {
      seen_.erase(path);
      return read();
    }
    const auto known = seen_.find(path);
    if (known != seen_.end() && known->second.first.size == info.size &&
        known->second.first.written == info.written && known->second.first.IsSameFileAs(info)) {
      return known->second.second;
    }
    if (seen_.size() >= kMost) {
      seen_.clear();
    }
    return seen_.insert_or_assign(path, std::pair(info, read())).first->second.second;
  }

 private:
  static constexpr std::size_t kMost = 64;

  // Within one tick of a disk's clock, on some cards two seconds, a file may change once more.
  static bool IsFresh(const FileInfo& info) {
    constexpr std::chrono::seconds kTick{2};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::nanoseconds(info.written) > now - kTick;
  }

  std::map<std::filesystem::path, std::pair<FileInfo, T>> seen_;
};

}  // namespace orvane

#endif  // ORVANE_FILES_SEEN_FILES_H_
