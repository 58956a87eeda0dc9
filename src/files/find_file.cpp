// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/find_file.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <utility>
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

Result<std::filesystem::path> FileBeside(const std::filesystem::path& path, int by,
                                         const std::function<bool(std::string_view name)>& takes) {
  const std::filesystem::path folder = path.parent_path();
  std::vector<std::filesystem::path> names;
  if (!ReaderCalls().list(folder, &names)) {
    return Failure(FileMessage(folder, SystemReason(errno)));
  }
  const auto place = [](const std::string& name) {
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperCased);
    return std::pair(upper, name);
  };
  const auto here = place(PathText(path.filename()));
  std::optional<std::pair<std::string, std::string>> nearest;
  for (const auto& entry : names) {
    const auto there = place(PathText(entry));
    const bool is_beyond = by < 0 ? there < here : here < there;
    const bool is_nearer = !nearest || (by < 0 ? *nearest < there : there < *nearest);
    if (is_beyond && is_nearer && takes(there.second)) {
      nearest = there;
    }
  }
  return nearest ? folder / PathOf(nearest->second) : std::filesystem::path();
}

Result<bool> IsInsideFolder(const std::filesystem::path& path,
                            const std::filesystem::path& folder) {
  std::error_code error;
  const auto outer = std::filesystem::weakly_canonical(folder, error);
  const auto inner = error ? outer : std::filesystem::weakly_canonical(path, error);
  if (error) {
    return Failure(error.message());
  }
  const auto [end, ignored] = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  return end == outer.end();
}

}  // namespace orvane
