// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/table_explain.h"

#include "editors/raw_table.h"
#include "meaning/explain.h"
#include "table/param_table.h"
#include "table/param_text.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr std::string_view kExplainHeader =
    "Code\tType\tWrite Permission\tName\tUnit\tRange\tCoded Values\tWhere\n";

// One row of cells with tabs between them.
std::string ExplainedRow(const Meanings& meanings, const ParamEntry& entry) {
  const KeyMeaning unknown{.name = std::string(kNotUsed)};
  const KeyMeaning* found = meanings.Find(ParamKey(entry.key));
  const KeyMeaning& meaning = found == nullptr ? unknown : *found;
  return ParamKey(entry.key).Text() + '\t' + std::string(ValueTypeName(entry.type)) + '\t' +
         std::string(PermissionName(entry.write_mask)) + '\t' + meaning.name + '\t' + meaning.unit +
         '\t' + meaning.range + '\t' + CodedValuesText(meaning) + '\t' + PlacesText(meaning) + '\n';
}

}  // namespace

std::string ExplainingCells(const Meanings& meanings, const ParamEntry& entry) {
  const KeyMeaning* meaning = meanings.Find(ParamKey(entry.key));
  return '\t' +
         (meaning == nullptr ? std::string(kNotUsed) + '\t'
                             : meaning->name + '\t' + meaning->unit) +
         '\t' + meanings.ValueText(entry);
}

ExitCode RunTableExplain(const std::vector<std::string>& keys) {
  ParamTable table;
  if (const Status status = table.BuildParamIndex(); status != kOk) {
    PrintMessage(StatusText(status));
    return kSomeFailed;
  }
  const Meanings meanings;
  ExitCode result = kAllDone;
  std::string text(kExplainHeader);
  if (keys.empty()) {
    for (const ParamKey key : AllKeys(table)) {
      text += ExplainedRow(meanings, *table.FindParam(key));
    }
  }
  for (const std::string& key : keys) {
    const ParamEntry* entry = FindOrTell(table, key);
    if (entry == nullptr) {
      result = kSomeFailed;
      continue;
    }
    text += ExplainedRow(meanings, *entry);
  }
  return PrintResult(text) ? result : kSomeFailed;
}

}  // namespace orvane
