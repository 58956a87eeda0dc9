// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <vector>

#include "support.h"
#include "table/tbl_file.h"
#include "table/unsaved_table.h"

namespace orvane::fuzz {

void FuzzUnsaved(Bytes input) {
  UnsavedTable unsaved;
  if (ReadUnsavedImage(input, &unsaved).empty() && unsaved.file.IsKnown()) {
    const std::vector<std::byte> again = UnsavedImage(unsaved);
    Require(std::equal(again.begin(), again.end(), input.begin(), input.end()),
            "a copy is written as it was read");
  }
  // What few inputs get to, because of the checksum: the same bytes as path and table of a copy.
  const std::size_t length = TakeByte(&input);
  const std::size_t path = std::min(length, input.size());
  const UnsavedTable kept{std::string(TextOf(input.first(path))),
                          {input.begin() + static_cast<std::ptrdiff_t>(path), input.end()}};
  const std::string reason = ReadUnsavedImage(UnsavedImage(kept), &unsaved);
  Require(!reason.empty() || (unsaved.path == kept.path && unsaved.table == kept.table),
          "a copy that is taken is whole");
  ParamTable table;
  Require(table.BuildParamIndex() == kOk, "the table has an index");
  const std::vector<std::byte> before = TblImage(table, {});
  Require(LoadTblImage(&table, kept.table) || TblImage(table, {}) == before,
          "what is no table changes nothing");
  Require(!reason.empty() || LoadTblImage(&table, kept.table), "a copy that is taken is a table");
}

}  // namespace orvane::fuzz
