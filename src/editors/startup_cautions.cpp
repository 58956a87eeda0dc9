// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_cautions.h"

#include <cerrno>

#include "base/number_text.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/param_table.h"
#include "table/tbl_file.h"

namespace orvane {
namespace {

// A table of either version has a few kilobytes; larger files are not read at all.
constexpr std::uint64_t kLargestTable = 1U << 20U;

}  // namespace

bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  return !b.empty() && (a == b || CompareFiles(a, b) == Sameness::kSame);
}

std::string FolderFault(const std::filesystem::path& folder) {
  FileInfo info;
  const auto found = ExistenceFrom(ReadInfo(folder, &info));
  if (!found) {
    return FileMessage(folder, found.Message()) + ".";
  }
  if (found == Existence::kNotThere) {
    return "The folder " + PathText(folder) + " does not exist.";
  }
  if (info.kind != FileKind::kFolder) {
    return PathText(folder) + " is not a folder.";
  }
  return MayMakeFilesIn(folder) ? std::string()
                                : "You may not write into the folder " + PathText(folder) + ".";
}

std::string RecordingBeside(const std::filesystem::path& table) {
  std::filesystem::path waveform = table;
  const auto found = FindInAnyCase(waveform.replace_extension(PathOf(".TSS")));
  return Exists(table) == Existence::kThere && found && Exists(*found) == Existence::kThere
             ? PathText(found->filename())
             : std::string();
}

std::string ForeignFile(const std::filesystem::path& path, std::int32_t serial) {
  FileInfo info;
  if (const auto found = ExistenceFrom(ReadInfo(path, &info)); found != Existence::kThere) {
    return found == Existence::kNotThere ? std::string() : "a file that cannot be examined";
  }
  if (info.kind == FileKind::kFolder) {
    return "a folder";
  }
  ParamTable table;
  if (info.kind != FileKind::kRegular || info.size > kLargestTable ||
      table.BuildParamIndex() != kOk || LoadParamFile(&table, path) != kOk) {
    return "a file that is not a table";
  }
  const std::int32_t other = IntParam(table, "SNUM");
  return other == serial ? std::string() : "the file of serial " + FormatInt(other);
}

}  // namespace orvane
