// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "support.h"
#include "table/tbl_file.h"
#include "table/unsaved_table.h"

namespace orvane::fuzz {

void FuzzUnsaved(Bytes input) {
  if (const auto read = ReadUnsavedImage(input); read && read->file.IsKnown()) {
    const std::vector<std::byte> again = UnsavedImage(*read);
    Require(std::equal(again.begin(), again.end(), input.begin(), input.end()),
            "a copy is written as it was read");
  }
  // What few inputs get to, because of the checksum: the same bytes as path and table of a copy.
  const std::size_t length = TakeByte(&input);
  const std::size_t path = std::min(length, input.size());
  const UnsavedTable kept{std::string(TextOf(input.first(path))),
                          {input.begin() + static_cast<std::ptrdiff_t>(path), input.end()}};
  const auto read = ReadUnsavedImage(UnsavedImage(kept));
  Require(!read || (read->path == kept.path && read->table == kept.table),
          "a copy that is taken is whole");
  ParamTable table;
  Require(table.BuildParamIndex() == kOk, "the table has an index");
  const std::vector<std::byte> before = TblImage(table, {});
  Require(LoadTblImage(&table, kept.table) || TblImage(table, {}) == before,
          "what is no table changes nothing");
  Require(!read || LoadTblImage(&table, kept.table), "a copy that is taken is a table");
}

}  // namespace orvane::fuzz
