// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up table as a box reads it.
#ifndef ORVANE_TABLE_STARTUP_TABLE_H_
#define ORVANE_TABLE_STARTUP_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "table/tbl_file.h"

namespace orvane {

/// What a box took of a start-up table.
struct StartupTaken {
  bool Has(ParamKey key) const { return keys.count(key.Word()) > 0; }

  std::set<std::uint64_t> keys;  ///< the words of those that the table has values for now
  LeftOutRecords left_out;
};

/// Takes a file as a box does at power-up: what the current mode protects is kept, and the
/// requested action "RQST" is stored last, unless it is 0 or 9. 0, or 173 or 174 and the table is
/// as before.
Status LoadAsBox(ParamTable* table, const std::filesystem::path& path, TblReport* report,
                 StartupTaken* taken);

/// The same of a table that is not saved yet.
StartupTaken GiveToBox(const ParamTable& table, ParamTable* box);

/// What a box does at power-up: `LoadAsBox()` with "SNUM".tbl or Startup.tbl of the folder "DPTH".
/// 0, 173 or 174; a clock unit (by "HW") has no start-up table.
Status LoadStartupTable(ParamTable* table, const LogSink& log = {});

}  // namespace orvane

#endif  // ORVANE_TABLE_STARTUP_TABLE_H_
