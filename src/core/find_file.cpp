// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/find_file.h"

#include <string>
#include <system_error>

#include "core/ascii.h"
#include "core/path_text.h"

namespace orvane {

std::filesystem::path FindInAnyCase(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::exists(path, error)) {
    return path;
  }
  const std::string wanted = PathText(path.filename());
  const std::filesystem::path folder = path.parent_path();
  std::string found;
  std::filesystem::directory_iterator entries(folder.empty() ? "." : folder, error);
  for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
    const std::string name = PathText(entries->path().filename());
    if (EqualsWithoutCase(name, wanted) && (found.empty() || name < found)) {
      found = name;
    }
  }
  return found.empty() ? path : folder / PathOf(found);
}

}  // namespace orvane
