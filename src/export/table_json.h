// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter tables as JSON and back; docs/formats/json.md has the format.
#ifndef ORVANE_EXPORT_TABLE_JSON_H_
#define ORVANE_EXPORT_TABLE_JSON_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "table/tbl_file.h"

namespace orvane {

struct TableJson {
  std::string text;                ///< UTF-8
  std::vector<ParamKey> left_out;  ///< secrets that were not asked for
  TblReport report;                ///< of reading the file
};

/// The values of a table file, those that it lacks as their defaults. Whether it is the filtered
/// table of a box goes with them, so that the way back gives its bytes.
Result<TableJson> WriteTableJson(const std::filesystem::path& file, bool with_secrets);

struct TableFromJson {
  ParamTable table;
  TblSaveOptions save;                ///< as which file it is to be saved
  std::vector<std::string> left_out;  ///< keys that the text says it left out
};

/// The table of a text; what the text does not name has its default. Fails with the place and the
/// reason where anything is unknown or does not fit.
Result<TableFromJson> ReadTableJson(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_EXPORT_TABLE_JSON_H_
