// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_HANDLE_PLACE_H_
#define ORVANE_FILES_HANDLE_PLACE_H_

#include <filesystem>

#include "files/file_system.h"

namespace orvane {

/// Whether an open file is the one of a name: another program may have put another file there, or
/// removed it. `kCannotTell` comes with errno set.
enum class HandlePlace { kAtName, kElsewhere, kCannotTell };
[[nodiscard]] inline HandlePlace PlaceOf(int handle, const std::filesystem::path& path) {
  FileInfo opened;
  FileInfo found;
  if (!ReadInfo(handle, &opened)) {
    return HandlePlace::kCannotTell;
  }
  if (!ReadLinkInfo(path, &found)) {
    return MeansNotThere(errno) ? HandlePlace::kElsewhere : HandlePlace::kCannotTell;
  }
  return opened.IsSameFileAs(found) ? HandlePlace::kAtName : HandlePlace::kElsewhere;
}

}  // namespace orvane

#endif  // ORVANE_FILES_HANDLE_PLACE_H_
