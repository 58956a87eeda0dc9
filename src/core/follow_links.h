// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CORE_FOLLOW_LINKS_H_
#define ORVANE_CORE_FOLLOW_LINKS_H_

#include <filesystem>
#include <system_error>

namespace orvane {

/// Where a path leads once its symbolic links are followed; the last one need not exist.
inline std::filesystem::path FollowLinks(std::filesystem::path path) {
  constexpr int kMaxLinks = 40;  // as many as systems themselves follow
  std::error_code error;
  for (int i = 0; i < kMaxLinks && std::filesystem::is_symlink(path, error); ++i) {
    const auto next = std::filesystem::read_symlink(path, error);
    if (error) {
      break;
    }
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return path;
}

}  // namespace orvane

#endif  // ORVANE_CORE_FOLLOW_LINKS_H_
