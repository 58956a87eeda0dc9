// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_COMPANION_H_
#define ORVANE_TIMESERIES_TS_COMPANION_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "table/param_table.h"
#include "table/tbl_file.h"

namespace orvane {

/// The path of a waveform file's parameter table: its last three characters replaced by "TBL".
/// Empty for a path of fewer than three characters.
std::string CompanionName(std::string_view path);

/// The parameters of a recording: the dictionary's defaults, the records of the companion table
/// over them, and beside them the records whose keys the dictionary lacks. Never the document's
/// table: to look at a waveform changes nothing that is open.
class TsCompanion {
 public:
  /// The defaults alone.
  TsCompanion();
  /// A table that is in memory, as if it had been read.
  explicit TsCompanion(const ParamTable& table);

  /// Starts again from the defaults. 0, 173 or 174; then the defaults alone stay.
  Status Load(const std::filesystem::path& path, TblReport* report);
  bool IsLoaded() const { return is_loaded_; }

  const ParamTable& Table() const { return table_; }
  /// The entry of a key in the table, else the last record with that key beside it, else null.
  const ParamEntry* Find(ParamKey key) const;

  /// The text "VER" where the companion itself holds it, else empty.
  const std::string& Version() const { return version_; }
  /// An older recording version writes shorter headers: its "VER" has an A or B, in any case.
  bool IsOldVersion() const;

  /// As many unknown keys as are kept; further ones are left out.
  static constexpr std::size_t kMaxBeside = 65536;

 private:
  void Store(const ParamEntry& entry);

  ParamTable table_;
  std::vector<ParamEntry> beside_;  // in ascending order of keys, so that no two are alike
  std::string version_;
  bool is_loaded_ = false;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_COMPANION_H_
