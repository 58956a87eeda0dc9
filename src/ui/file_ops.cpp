// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/file_ops.h"

#include <QFile>
#include <system_error>

#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

// The file's own name in the folder, or that of a copy where it is taken.
fs::path FreePlace(const fs::path& file, const fs::path& folder) {
  const fs::path place = folder / file.filename();
  const auto exists = [](const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(PathOf(path), ignored));
  };
  return exists(PathText(place)) ? PathOf(FirstFreeName(PathText(place), CopyName, exists)) : place;
}

FileOpResult CopyFile(const fs::path& file, const fs::path& folder) {
  const fs::path place = FreePlace(file, folder);
  const Result<> copied = CopyBytes(file, place);
  return {file, copied ? place : fs::path(), copied.Message()};
}

FileOpResult MoveFile(const fs::path& file, const fs::path& folder) {
  std::error_code error;
  if (!fs::is_regular_file(file, error)) {
    return {file, {}, error ? error.message() : "not a regular file"};
  }
  const fs::path from = file.has_parent_path() ? file.parent_path() : fs::path(".");
  if (CompareFiles(from, folder) == Sameness::kSame) {
    return {file, file, {}};
  }
  const fs::path place = FreePlace(file, folder);
  fs::rename(file, place, error);
  if (!error) {
    return {file, place, {}};
  }
  FileOpResult copied = CopyFile(file, folder);  // another disk
  if (copied.fault.empty() && !fs::remove(file, error)) {
    copied.fault = "copied, but the original cannot be removed: ";
    copied.fault.append(error.message());
  }
  return copied;
}

template <typename Operation>
std::vector<FileOpResult> ForEach(const std::vector<fs::path>& files, Operation operation) {
  std::vector<FileOpResult> results;
  results.reserve(files.size());
  for (const fs::path& file : files) {
    results.push_back(operation(file));
  }
  return results;
}

}  // namespace

std::vector<FileOpResult> CopyFiles(const std::vector<fs::path>& files, const fs::path& folder) {
  return ForEach(files, [&folder](const fs::path& file) { return CopyFile(file, folder); });
}

std::vector<FileOpResult> MoveFiles(const std::vector<fs::path>& files, const fs::path& folder) {
  return ForEach(files, [&folder](const fs::path& file) { return MoveFile(file, folder); });
}

std::vector<FileOpResult> DeleteFiles(const std::vector<fs::path>& files) {
  return ForEach(files, [](const fs::path& file) -> FileOpResult {
    QFile trashed(TextFromPath(file));
    const bool is_done = trashed.moveToTrash();
    return {file, {}, is_done ? std::string() : trashed.errorString().toStdString()};
  });
}

}  // namespace orvane
