// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/other_table.h"

#include "table/startup_table.h"
#include "table/tbl_file.h"
#include "table/tbl_record.h"
#include "table/values_text.h"

namespace orvane {
namespace {

ParamTable BuiltIn() {
  ParamTable table;
  static_cast<void>(table.BuildParamIndex());  // without it all keys are unknown: nothing differs
  return table;
}

}  // namespace

Result<OtherTable> TableOfFile(const std::filesystem::path& path, RememberedFile* memory) {
  OtherTable other{BuiltIn()};
  TblReport report;
  if (LoadParamFile(&other.table, path, &report, memory) != kOk) {
    return Failure(report.message);
  }
  other.missing = std::move(report.missing);
  other.missing_text = "not in the file";
  other.left_out = std::move(report.left_out);
  return other;
}

OtherTable DefaultTable() { return {BuiltIn()}; }

OtherTable AfterPowerUp(const ParamTable& table) {
  OtherTable other{BuiltIn()};
  const StartupTaken taken = GiveToBox(table, &other.table);
  for (const ParamKey key : AllKeys(table)) {
    if (!taken.Has(key)) {
      other.missing.push_back(key);
    }
  }
  other.missing_text = "not taken: the box keeps its own";
  other.can_take = false;
  return other;
}

OtherTable AsVersion1(const ParamTable& table) {
  OtherTable other{table};
  TblRecordV1 record;
  for (const ParamKey key : AllKeys(table)) {
    const ParamEntry& entry = *table.FindParam(key);
    if (!FitsTblV1Key(entry)) {
      other.missing.push_back(key);
      continue;
    }
    static_cast<void>(MakeTblRecordV1(entry, &record));  // what is too long is cut
    static_cast<void>(other.table.SetStoredValue(key, EntryFrom(record).value));
  }
  other.missing_text = "left out of the file";
  other.can_take = false;
  return other;
}

}  // namespace orvane
