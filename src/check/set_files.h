// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up files of a spread: where they belong and what is there.
#ifndef ORVANE_CHECK_SET_FILES_H_
#define ORVANE_CHECK_SET_FILES_H_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "table/param_table.h"

namespace orvane {

struct CheckMemory;

/// The file of one box.
struct SetFile {
  std::string box_name;  ///< "Aux. Box 1203"
  ParamKey serial_key;
  std::int32_t serial = 0;
  std::filesystem::path target;  ///< what is there in any case of letters, else SERIAL.tbl
  bool is_there = false;
  std::string recording;  ///< name of the waveform whose table is there instead of the box's file
  std::optional<ParamTable> table;  ///< what is there, if that is a table
  std::vector<ParamKey> missing;    ///< keys that the file has no values for
  bool is_version_1 = false;
  ParamTable meant;               ///< what would be written
  std::vector<ParamKey> offered;  ///< keys that the box's dialog may have changed in it
};

/// The files of all boxes that get one, in their order; none without a folder. `memory` may be
/// null.
std::vector<SetFile> SetFilesOf(const ParamTable& table, const std::filesystem::path& folder,
                                CheckMemory* memory = nullptr);

/// What is there for boxes that get no file, as they come after an empty place; likewise.
std::vector<SetFile> LeftOutFilesOf(const ParamTable& table, const std::filesystem::path& folder,
                                    CheckMemory* memory = nullptr);

/// The keys in which the file there differs from what is meant, but for those that the box's dialog
/// offers and those that are of the file itself; none where no table of the box is there.
std::vector<ParamKey> OtherDifferences(const SetFile& file);

}  // namespace orvane

#endif  // ORVANE_CHECK_SET_FILES_H_
