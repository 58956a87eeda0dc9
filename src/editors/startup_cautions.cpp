// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_cautions.h"

#include <system_error>

#include "core/file_system.h"
#include "core/number_text.h"
#include "core/param_access.h"
#include "core/param_table.h"
#include "core/path_text.h"
#include "core/tbl_file.h"

namespace orvane {
namespace {

// A table of either version has a few kilobytes; nobody waits for the reading of what is none.
constexpr std::uint64_t kLargestTable = 1U << 20U;

}  // namespace

bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  std::error_code error;
  return !b.empty() &&
         (a.lexically_normal() == b.lexically_normal() || std::filesystem::equivalent(a, b, error));
}

std::string FolderFault(const std::filesystem::path& folder) {
  FileInfo info;
  if (!ReadInfo(folder, &info)) {
    return "The folder " + PathText(folder) + " does not exist.";
  }
  if (info.kind != FileKind::kFolder) {
    return PathText(folder) + " is no folder.";
  }
  return MayMakeFilesIn(folder) ? std::string()
                                : "You may not write into the folder " + PathText(folder) + ".";
}

std::string ForeignFile(const std::filesystem::path& path, std::int32_t serial) {
  FileInfo info;
  if (!ReadInfo(path, &info)) {
    return {};
  }
  if (info.kind == FileKind::kFolder) {
    return "a folder";
  }
  ParamTable table;
  if (info.kind != FileKind::kRegular || info.size > kLargestTable ||
      table.BuildParamIndex() != kOk || LoadParamFile(&table, path) != kOk) {
    return "a file that is no table";
  }
  const std::int32_t other = IntParam(table, "SNUM");
  return other == serial ? std::string() : "the file of serial " + FormatInt(other);
}

}  // namespace orvane
