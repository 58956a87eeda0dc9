// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_SET_ROWS_H_
#define ORVANE_CHECK_SET_ROWS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "check/set_files.h"

namespace orvane {

/// A box of the spread and its start-up file, in words. UTF-8.
struct SetRow {
  std::string box;  ///< "Aux. Box 1203"
  std::string serial;
  std::string channels;
  std::string radio;                ///< "master, address 1", "slave, address 3"
  std::string target;               ///< path of the file
  std::string there;                ///< "nothing", "same", "serial 1207", "older, 3 values differ",
                                    ///< "gets no file"
  std::filesystem::path path = {};  ///< of the file
  bool is_there = false;            ///< something is
  bool is_same = false;             ///< and what would be written for the box
};

/// The boxes that get a file, then those that get none for an empty place before them; `main` is
/// the file of the table, empty where it has none. `memory` may be null.
std::vector<SetRow> SetRowsOf(const ParamTable& table, const std::filesystem::path& folder,
                              const std::filesystem::path& main, CheckMemory* memory = nullptr);

}  // namespace orvane

#endif  // ORVANE_CHECK_SET_ROWS_H_
