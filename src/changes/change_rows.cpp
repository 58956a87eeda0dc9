// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/change_rows.h"

#include <algorithm>
#include <set>

#include "base/latin1.h"
#include "base/number_text.h"
#include "meaning/explain.h"
#include "table/param_text.h"
#include "table/table_diff.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr char kNotShown[] = "(not shown)";

// Others may read along.
std::string ShownValue(const ParamEntry& entry) {
  if (IsSecretKey(ParamKey(entry.key))) {
    return entry.value[0] == 0 ? "" : kNotShown;
  }
  if (entry.type == FltPT) {
    return ValueAsText(entry);  // all digits that count
  }
  std::string text;
  FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &text);
  return PrintableLatin1(text);
}

std::string WithMeaning(std::string value, const ParamEntry& entry, const Meanings& meanings) {
  if (const std::string remark = meanings.Remark(entry); !remark.empty()) {
    value.append(": ").append(remark);
  }
  return value;
}

std::string NameAndUnit(ParamKey key, const Meanings& meanings) {
  const KeyMeaning* meaning = meanings.Find(key);
  if (meaning == nullptr) {
    return std::string(kNotUsed);
  }
  return meaning->unit.empty() ? meaning->name : meaning->name + " (" + meaning->unit + ")";
}

ChangeRow RowOf(const ParamEntry& here, const Meanings& meanings) {
  ChangeRow row;
  row.key = ParamKey(here.key);
  row.code = row.key.Text();
  row.meaning = NameAndUnit(row.key, meanings);
  row.here = ShownValue(here);
  return row;
}

ChangeRow Differing(const ParamEntry& here, const ParamEntry& there, const Meanings& meanings) {
  ChangeRow row = RowOf(here, meanings);
  row.there = ShownValue(there);
  if (row.there == row.here && row.here != kNotShown) {  // bytes that no text shows
    row.there = ValueAsText(there);
    row.here = ValueAsText(here);
  }
  row.there = WithMeaning(std::move(row.there), there, meanings);
  row.here = WithMeaning(std::move(row.here), here, meanings);
  row.value = there.value;
  return row;
}

std::string Count(std::size_t count, const char* one, const char* several) {
  return FormatInt(count) + (count == 1 ? one : several);
}

}  // namespace

std::vector<ChangeRow> ListChanges(const ParamTable& here, const OtherTable& there,
                                   const Meanings& meanings) {
  std::vector<ChangeRow> rows;
  const auto is_missing = [&there](ParamKey key) {
    return std::find(there.missing.begin(), there.missing.end(), key) != there.missing.end();
  };
  for (const ParamKey key : DifferingKeys(here, there.table)) {
    if (!is_missing(key)) {
      rows.push_back(Differing(*here.FindParam(key), *there.table.FindParam(key), meanings));
      rows.back().can_take = there.can_take && !IsReadOnlyKey(key);
    }
  }
  std::set<std::uint64_t> listed;  // a key may be in a table twice
  for (const ParamKey key : there.missing) {
    if (!listed.insert(key.Word()).second) {
      continue;
    }
    const ParamEntry& entry = *here.FindParam(key);
    ChangeRow row = RowOf(entry, meanings);
    row.here = WithMeaning(std::move(row.here), entry, meanings);
    row.there = there.missing_text;
    row.has_both = false;
    rows.push_back(std::move(row));
  }
  for (const LeftOutRecord& record : there.left_out.first) {
    ChangeRow row;
    row.code = NameOf(record);
    row.meaning = NameAndUnit(record.key, meanings);
    row.there = record.reason;
    row.has_both = false;
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string Summary(const std::vector<ChangeRow>& rows) {
  std::size_t differing = 0;
  std::size_t only_here = 0;
  for (const ChangeRow& row : rows) {
    differing += row.has_both ? 1U : 0U;
    only_here += !row.has_both && !row.key.IsEmpty() ? 1U : 0U;
  }
  const std::size_t only_there = rows.size() - differing - only_here;
  std::string text;
  const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
  if (differing > 0) {
    add(Count(differing, " value differs", " values differ"));
  }
  if (only_here > 0) {
    add(Count(only_here, " is only here", " are only here"));
  }
  if (only_there > 0) {
    add(Count(only_there, " is only there", " are only there"));
  }
  return text.empty() ? "No differences" : text;
}

std::string ChangeCount(std::size_t count) {
  return count == 0 ? "No changes" : Count(count, " change", " changes");
}

std::string AsText(const std::vector<ChangeRow>& rows) {
  std::string text;
  for (const ChangeRow& row : rows) {
    text += row.code;
    for (const std::string& cell : {row.meaning, row.there, row.here}) {
      text.append("\t").append(cell);
    }
    text += '\n';
  }
  return text;
}

}  // namespace orvane
