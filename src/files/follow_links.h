// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_FOLLOW_LINKS_H_
#define ORVANE_FILES_FOLLOW_LINKS_H_

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "files/file_system.h"

namespace orvane {

/// Where a path leads once its symbolic links are followed; the last one need not exist.
inline Result<std::filesystem::path> FollowLinks(std::filesystem::path path) {
  constexpr int kMaxLinks = 40;  // as many as systems themselves follow
  for (int i = 0; i < kMaxLinks; ++i) {
    FileInfo info;
    const auto existence = ExistenceFrom(ReadLinkInfo(path, &info));
    if (!existence) {
      return Failure(existence.Message());
    }
    if (existence == Existence::kNotThere || info.kind != FileKind::kLink) {
      return path;
    }
    std::error_code error;
    const auto next = std::filesystem::read_symlink(path, error);
    if (error) {
      return Failure(SystemReason(error.value()));
    }
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return Failure(SystemReason(ELOOP));
}

}  // namespace orvane

#endif  // ORVANE_FILES_FOLLOW_LINKS_H_
