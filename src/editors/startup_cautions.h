// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the place of a box's file before it is written.
#ifndef ORVANE_EDITORS_STARTUP_CAUTIONS_H_
#define ORVANE_EDITORS_STARTUP_CAUTIONS_H_

#include <cstdint>
#include <filesystem>
#include <string>

namespace orvane {

/// Whether two paths are known to be one file.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

/// Why no file can be made there: the folder is missing, none, or not the user's; else empty.
std::string FolderFault(const std::filesystem::path& folder);

/// The name of the waveform whose table is at the path: a box gives that the same name as a
/// start-up file. Empty where nothing is there, or no waveform beside it.
std::string RecordingBeside(const std::filesystem::path& table);

/// What is at the path where that is not a file of the same box: "the file of serial 1207", "a
/// file that is no table"; empty where nothing is there or the box's own file.
std::string ForeignFile(const std::filesystem::path& path, std::int32_t serial);

}  // namespace orvane

#endif  // ORVANE_EDITORS_STARTUP_CAUTIONS_H_
