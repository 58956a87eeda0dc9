// SPDX-License-Identifier: GPL-3.0-or-later
// What a table is compared with.
#ifndef ORVANE_CHANGES_OTHER_TABLE_H_
#define ORVANE_CHANGES_OTHER_TABLE_H_

#include <filesystem>
#include <string>
#include <vector>

#include "base/result.h"
#include "files/file_memory.h"
#include "table/left_out.h"
#include "table/param_table.h"

namespace orvane {

/// Another table, and what it lacks.
struct OtherTable {
  ParamTable table;
  std::vector<ParamKey> missing = {};  ///< keys that it has no value for
  std::string missing_text = {};       ///< what is said of those in the place of a value
  LeftOutRecords left_out = {};        ///< what it has and no table of ours can have
  bool can_take = true;                ///< whether its values can be taken over
};

/// A file as it is on disk now, of either version; fails where it is no readable table. `memory`
/// gets the file that was read.
Result<OtherTable> TableOfFile(const std::filesystem::path& path, RememberedFile* memory);

/// The built-in values.
OtherTable DefaultTable();

/// What a box that starts with built-in values would hold after it has taken this table at
/// power-up. What its mode protects it keeps.
OtherTable AfterPowerUp(const ParamTable& table);

/// What a version-1 file of this table would hold: only keys of up to four characters, of values
/// only 13 bytes.
OtherTable AsVersion1(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_CHANGES_OTHER_TABLE_H_
