// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/find_file.h"

#include <cerrno>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "files/file_io.h"
#include "files/path_text.h"

namespace orvane {

Result<std::filesystem::path> FindInAnyCase(const std::filesystem::path& path) {
  const auto exists = Exists(path);
  if (!exists) {
    return Failure(FileMessage(path, exists.Message()));
  }
  if (exists == Existence::kThere) {
    return path;
  }
  const std::string wanted = PathText(path.filename());
  const std::filesystem::path folder = path.parent_path();
  std::vector<std::filesystem::path> names;
  if (!ReaderCalls().list(folder, &names) && !MeansNotThere(errno)) {
    return Failure(FileMessage(path, SystemReason(errno)));
  }
  std::string found;
  for (const auto& entry : names) {
    const std::string name = PathText(entry);
    if (EqualsWithoutCase(name, wanted) && (found.empty() || name < found)) {
      found = name;
    }
  }
  return found.empty() ? path : folder / PathOf(found);
}

}  // namespace orvane
