// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_FIND_FILE_H_
#define ORVANE_FILES_FIND_FILE_H_

#include <filesystem>

#include "base/result.h"

namespace orvane {

/// `path` itself where it exists, else the file of the same folder whose name differs only in the
/// case of ASCII letters (of several the first in byte order), else `path`. The boxes' names are
/// upper case, those of copies often lower case. A failure names `path` too.
Result<std::filesystem::path> FindInAnyCase(const std::filesystem::path& path);

}  // namespace orvane

#endif  // ORVANE_FILES_FIND_FILE_H_
