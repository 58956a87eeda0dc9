// SPDX-License-Identifier: GPL-3.0-or-later
// Copies, moves and deletes files without ever writing over another.
#ifndef ORVANE_UI_FILE_OPS_H_
#define ORVANE_UI_FILE_OPS_H_

#include <filesystem>
#include <string>
#include <vector>

namespace orvane {

/// What became of one file.
struct FileOpResult {
  std::filesystem::path input;
  std::filesystem::path output;  ///< where it is now; empty after a failure and a deletion
  std::string fault;             ///< why it failed; empty where it did not
};

/// Copies files into a folder. Where the name is taken the copy is "Copy of NAME", then
/// "Copy (1) of NAME" and so on.
std::vector<FileOpResult> CopyFiles(const std::vector<std::filesystem::path>& files,
                                    const std::filesystem::path& folder);

/// The same, but the originals go once the copies are whole. A file that is in the folder already
/// stays as it is.
std::vector<FileOpResult> MoveFiles(const std::vector<std::filesystem::path>& files,
                                    const std::filesystem::path& folder);

/// Puts files into the system's wastebasket. Where there is none they stay and a fault says so.
std::vector<FileOpResult> DeleteFiles(const std::vector<std::filesystem::path>& files);

}  // namespace orvane

#endif  // ORVANE_UI_FILE_OPS_H_
