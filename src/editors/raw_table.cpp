// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/raw_table.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "table/param_access.h"

namespace orvane {
namespace {

ValueType TypeOf(const ParamEntry& entry) { return static_cast<ValueType>(entry.type); }

std::string ValueText(const ParamEntry& entry) {
  std::string text;
  FormatParamValue(TypeOf(entry), entry.value, &text);
  return text;
}

// The bytes up to the last one that is not zero, at least four: the layouts' smallest value.
std::string HexBytes(const ParamValue& value) {
  std::size_t size = value.size();
  while (size > 4 && value[size - 1] == 0) {
    --size;
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    text += i > 0 ? " " : "";
    text += kDigits[value[i] / 16U];
    text += kDigits[value[i] % 16U];
  }
  return text;
}

std::string Joined(const std::string& one, const std::string& other) {
  return one + (one.empty() || other.empty() ? "" : "; ") + other;
}

// As a reader of text would store it who refuses what is not wholly right. Blanks around a number
// say nothing.
bool IsStoredAsTyped(std::string_view text, const ParamEntry& entry) {
  const bool is_text = entry.type == StrPT || entry.type == PosPT || entry.type == LStPT;
  const auto strict = ParseParamValueStrictly(is_text ? text : Trimmed(text), TypeOf(entry));
  return strict && *strict == entry.value;
}

std::string ShownValue(const ParamEntry& entry) {
  const std::string text = ValueText(entry);
  return text.empty() ? "an empty text" : text;
}

// A line that says already what is wrong does not say it twice.
std::string MeaningText(const RawRow& row) {
  const auto& [line, caution, choices, is_in_dialog] = row.meaning;
  const bool is_said = line.find(caution) != std::string::npos;
  return Joined(is_said ? line : Joined(line, caution), row.otherwise);
}

std::string PermissionDetail(std::uint32_t mask) {
  std::string text = PermissionSentence(mask);
  if ((mask & kMaskNotFiltered) != 0) {
    text += ", boxes leave it out of their own files";
  }
  return text;
}

}  // namespace

std::string_view PermissionName(std::uint32_t write_mask) {
  switch (write_mask) {
    case kMaskAnyMode:
      return "Any Mode";
    case kMaskSetupOnly:
      return "Setup Only";
    case kMaskSetupPauseStandby:
      return "Setup, Pause and Standby";
    default:
      return "Not Changable";
  }
}

std::string ModesOf(std::uint32_t write_mask) {
  const auto has = [write_mask](int mode) { return mode < 31 && ((write_mask >> mode) & 1U) != 0; };
  std::string text;
  for (int mode = 0; mode < 31; ++mode) {
    if (!has(mode)) {
      continue;
    }
    int last = mode;
    while (has(last + 1)) {
      ++last;
    }
    text += (text.empty() ? "" : ", ") + FormatInt(mode);
    if (last > mode + 1) {
      text += " to " + FormatInt(last);
      mode = last;
    }
  }
  return text;
}

std::string PermissionSentence(std::uint32_t write_mask) {
  const std::string modes = ModesOf(write_mask);
  return modes.empty() ? "a box may not change it in any mode"
                       : "a box may change it in mode " + modes;
}

RawTable::RawTable(ParamTable* table, std::vector<ParamKey> not_in_file, Explain explain,
                   const ParamTable* file)
    : table_(table),
      file_(file),
      opened_(*table),
      not_in_file_(std::move(not_in_file)),
      explain_(std::move(explain)) {
  ParamKey key;
  std::string_view type;
  for (int position = 0; table_->GetParamKey(position, &key) == kOk; ++position) {
    const ParamEntry* entry = table_->FindParam(key);
    if (entry == nullptr) {
      break;
    }
    // kept: the one type without a name shows the name of the row before it.
    type = entry->type == RawPT ? type : ValueTypeName(entry->type);
    rows_.push_back({key, type, PermissionName(entry->write_mask), {}, {}, {}});
    Take(*entry, ValueText(*entry), &rows_.back());
  }
}

void RawTable::Take(const ParamEntry& entry, std::string value, RawRow* row) const {
  row->value = std::move(value);
  row->meaning = MeaningOf(entry);
  row->otherwise.clear();
  row->stored = entry.value;
}

std::vector<int> RawTable::ReadAgain() {
  std::vector<int> changed;
  for (int ordinal = 1; ordinal <= Count(); ++ordinal) {
    RawRow& row = rows_[static_cast<std::size_t>(ordinal) - 1];
    const ParamEntry* entry = table_->FindParam(row.key);
    if (entry != nullptr && entry->value != row.stored) {
      Take(*entry, ValueText(*entry), &row);
      changed.push_back(ordinal);
    }
  }
  return changed;
}

int RawTable::OrdinalOf(ParamKey key) const {
  const auto row =
      std::find_if(rows_.begin(), rows_.end(), [key](const RawRow& one) { return one.key == key; });
  return row == rows_.end() ? 0 : static_cast<int>(row - rows_.begin()) + 1;
}

RawMeaning RawTable::MeaningOf(const ParamEntry& entry) const {
  return explain_ ? explain_(entry) : RawMeaning();
}

std::string RawTable::Cell(int ordinal, RawColumn column) const {
  const RawRow& row = Row(ordinal);
  switch (column) {
    case kNumberColumn:
      return FormatInt(ordinal);
    case kCodeColumn:
      return row.key.Text();
    case kTypeColumn:
      return std::string(row.type);
    case kPermissionColumn:
      return std::string(row.permission);
    case kValueColumn:
      return row.value;
    case kMeaningColumn:
      return MeaningText(row);
  }
  return {};
}

bool RawTable::CanEdit(int ordinal) const {
  if (ordinal < 1 || ordinal > Count()) {
    return false;
  }
  const ParamEntry* entry = table_->FindParam(Row(ordinal).key);
  return entry != nullptr && entry->type != RawPT;
}

std::vector<int> RawTable::EndEdit(int ordinal, std::string_view text) {
  if (!CanEdit(ordinal)) {
    return {};
  }
  const ParamKey key = Row(ordinal).key;
  const ParamEntry* entry = table_->FindParam(key);
  ParamValue value{};
  ParseParamValue(text, TypeOf(*entry), &value);
  // Only a type beyond the known ones is refused; the row shows what was typed all the same.
  PutValue(table_, key, TypeOf(*entry), value);
  is_modified_ = true;
  const std::string otherwise =
      IsStoredAsTyped(text, *entry) ? std::string() : "stored as " + ShownValue(*entry);

  std::vector<int> partners;
  for (int other = 1; other <= Count(); ++other) {
    if (Row(other).key == key) {
      RawRow& row = rows_[static_cast<std::size_t>(other) - 1];
      Take(*entry, other == ordinal ? std::string(text) : ValueText(*entry), &row);
      row.otherwise = other == ordinal ? otherwise : std::string();
      if (other != ordinal) {
        partners.push_back(other);
      }
    }
  }
  return partners;
}

std::string RawTable::Caution(int ordinal) const {
  return Joined(Row(ordinal).meaning.caution, Row(ordinal).otherwise);
}

std::string RawTable::Detail(int ordinal) const {
  if (ordinal < 1 || ordinal > Count()) {
    return {};
  }
  const ParamEntry* entry = table_->FindParam(Row(ordinal).key);
  if (entry == nullptr) {
    return {};
  }
  std::string text = Row(ordinal).key.Text() + ": ";
  text += entry->type == RawPT ? "RawPT" : std::string(ValueTypeName(entry->type));
  text += ", stored as " + HexBytes(entry->value);
  if (const std::string stored = ValueText(*entry); stored != Row(ordinal).value) {
    text += " (" + stored + ")";
  }
  text += "; " + PermissionDetail(entry->write_mask);
  if (IsChanged(ordinal)) {
    text += "; was " + ValueText(*opened_.FindParam(Row(ordinal).key));
  }
  if (std::find(not_in_file_.begin(), not_in_file_.end(), Row(ordinal).key) != not_in_file_.end()) {
    text += "; it was not in the file";
  }
  return text;
}

}  // namespace orvane
