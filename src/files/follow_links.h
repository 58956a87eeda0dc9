// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_FOLLOW_LINKS_H_
#define ORVANE_FILES_FOLLOW_LINKS_H_

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "files/file_system.h"

namespace orvane {

/// Lets `path` be where it leads once its symbolic links are followed; the last one need not exist.
/// False, with errno set, where that cannot be told.
[[nodiscard]] inline bool FollowLinks(std::filesystem::path* path) {
  constexpr int kMaxLinks = 40;  // as many as systems themselves follow
  for (int i = 0; i < kMaxLinks; ++i) {
    FileInfo info;
    const Existence existence = ExistenceFrom(ReadLinkInfo(*path, &info));
    if (existence != Existence::kThere || info.kind != FileKind::kLink) {
      return existence != Existence::kCannotTell;
    }
    std::error_code error;
    const auto next = std::filesystem::read_symlink(*path, error);
    if (error) {
      errno = error.value();
      return false;
    }
    *path = next.is_absolute() ? next : path->parent_path() / next;
  }
  errno = ELOOP;
  return false;
}

}  // namespace orvane

#endif  // ORVANE_FILES_FOLLOW_LINKS_H_
