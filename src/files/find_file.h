// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_FIND_FILE_H_
#define ORVANE_FILES_FIND_FILE_H_

#include <filesystem>
#include <functional>
#include <string_view>

#include "base/result.h"

namespace orvane {

/// `path` itself where it exists, else the file of the same folder whose name differs only in the
/// case of ASCII letters (of several the first in byte order), else `path`. The boxes' names are
/// upper case, those of copies often lower case. A failure names `path` too.
Result<std::filesystem::path> FindInAnyCase(const std::filesystem::path& path);

/// Of the files in the folder of `path` whose names are taken, the one after it, or before it where
/// `by` is negative, in the order of their names without regard to the case of ASCII letters; empty
/// where there is none. `path` itself need not be there. A failure names the folder.
Result<std::filesystem::path> FileBeside(const std::filesystem::path& path, int by,
                                         const std::function<bool(std::string_view name)>& takes);

/// Whether a path, which need not exist, is a folder itself or below it, by whatever links. Fails
/// where the system does not say where they are.
Result<bool> IsInsideFolder(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace orvane

#endif  // ORVANE_FILES_FIND_FILE_H_
