// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_FOLDER_WALK_H_
#define ORVANE_SURVEY_FOLDER_WALK_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "files/file_system.h"

namespace orvane {

/// What a file is by its name alone.
enum class FileType : std::uint8_t {
  kTable,
  kWaveform,
  kBand,
  kStackedWaveform,
  kStackResult,
  kSchedule,
  kBoxCalibration,
  kSensorCalibration,
  kText,
  kOther,
};
FileType FileTypeOf(std::string_view name);

/// A file of a survey, looked at but not opened.
struct FoundFile {
  std::uint32_t folder = 0;  ///< in `FolderTree::folders`
  FileType type = FileType::kOther;
  std::string name;  ///< its bytes, as `PathText()`
  FileInfo info;
};

/// What could not be read, for the user: UTF-8, printable.
struct ScanNote {
  std::string path;  ///< relative to the survey's folder
  std::string reason;
};

/// A folder with all below it.
struct FolderTree {
  std::filesystem::path root;
  std::vector<std::filesystem::path> folders;  ///< relative to the root, which is the first: ""
  std::vector<FoundFile> files;  ///< of the types that are known, by folder and then by name
  std::size_t others = 0;        ///< files of other types
  std::size_t hidden = 0;        ///< files and folders that systems keep for themselves
  std::vector<ScanNote> notes;

  std::filesystem::path PathOfFile(const FoundFile& file) const;
  /// Relative to the root, for the user: printable, with '/' between folders.
  std::string ShownName(const FoundFile& file) const;
};

/// As many files and folders as are taken in; further ones are noted.
inline constexpr std::size_t kMostSurveyFiles = 500'000;

/// Lists a tree: every folder once, through whatever links, and links only where nothing else leads
/// there. Folders and names come in the order of their bytes. Fails where the root itself cannot be
/// listed. `stopped` is asked before each folder and every few names; what is stopped is
/// incomplete.
Result<FolderTree> WalkFolders(const std::filesystem::path& root,
                               const std::function<bool()>& stopped);

/// A path relative to a survey's folder as it is shown.
std::string ShownPath(const std::filesystem::path& path);

}  // namespace orvane

#endif  // ORVANE_SURVEY_FOLDER_WALK_H_
