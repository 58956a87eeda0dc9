// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "cli/assignment.h"
#include "editors/raw_table.h"
#include "support.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/table_diff.h"
#include "table/value_lines.h"
#include "table/values_text.h"

namespace orvane::fuzz {
namespace {

std::string Formatted(ValueType type, const ParamValue& value) {
  std::string text;
  FormatParamValue(type, value, &text);
  return text;
}

// One entry of each type, one of a type that there is none, and one key twice.
ParamTable SmallTable() {
  std::vector<ParamEntry> entries;
  for (std::uint8_t type = 0; type < 10; ++type) {
    ParamEntry entry;
    entry.key = {'K', static_cast<char>('0' + type % 9)};
    entry.type = type;
    entries.push_back(entry);
  }
  ParamTable table(entries);
  Require(table.BuildParamIndex() == kOk, "the table has an index");
  return table;
}

// What is told with ten digits may lie above the largest number.
bool IsTellable(ValueType type, const ParamValue& value) {
  return type != FltPT || std::abs(RealOf(value)) < 1.797693134e308;
}

// A text that is wholly right: read alike by both ways, and as it is told again.
void RequireComesBack(std::string_view text, ValueType type, const ParamValue& value) {
  ParamValue lenient{};
  ParseParamValue(text, type, &lenient);
  Require(lenient == value, "what is wholly right is read alike by boxes");
  if (!IsTellable(type, value)) {
    return;
  }
  const std::string shown = Formatted(type, value);
  const auto told = ParseParamValueStrictly(shown, type);
  Require(static_cast<bool>(told), "what is told is wholly right");
  Require(type == FltPT || told == value, "a value is read as it is told");
  Require(Formatted(type, *told) == shown, "a value is told as it was read");
}

// Any bytes in values of all types.
void StoreSome(Bytes* input, ParamTable* table) {
  constexpr std::array<const char*, 8> kKeys = {"TECH", "FDRIFT", "SITE",   "STIM",
                                                "PHNE", "TBVO",   "IPSRV0", "EKEY"};
  const std::size_t count = TakeByte(input) % (kKeys.size() + 1);
  for (std::size_t i = 0; i < count; ++i) {
    ParamValue value{};
    for (std::uint8_t& byte : value) {
      byte = static_cast<std::uint8_t>(TakeByte(input));
    }
    Require(table->SetStoredValue(kKeys[i], value) == kOk, "the dictionary has the key");
  }
}

}  // namespace

void FuzzTimeText(Bytes input) {
  const std::string_view text = TextOf(input);
  const ParamTime time = ParseParamTime(text);
  Require(ParseParamTime(FormatParamTime(time)) == time, "a time is read as it is told");
  ParamTime strict;
  if (ParseParamTimeStrictly(text, &strict)) {
    Require(strict == time, "what is wholly right is read alike by boxes");
  }
  ParamTime raw;
  std::copy_n(input.begin(), std::min(input.size(), sizeof raw),
              std::as_writable_bytes(std::span(&raw, 1)).begin());
  Require(FormatParamTime(raw).size() <= 21, "a time is a short text");
  const std::uint32_t seconds = ParamTimeToSeconds(raw);
  const ParamTime back = SecondsToParamTime(seconds);
  Require(back.century >= 21 || ParamTimeToSeconds(back) == seconds, "seconds come back");
  ParamTime end = raw;
  end.century = end.year = end.month = end.day = 0;
  CompleteEndDate(raw, &end);
}

void FuzzValueText(Bytes input) {
  const auto type = static_cast<ValueType>(TakeByte(&input) % 10);
  const std::string_view text = TextOf(input);
  if (const auto value = ParseParamValueStrictly(text, type)) {
    RequireComesBack(text, type, *value);
  }
  ParamTable table = SmallTable();
  RawTable rows(&table);
  const int ordinal = type + 1;
  static_cast<void>(rows.EndEdit(ordinal, text));
  Require(!rows.CanEdit(ordinal) || rows.Cell(ordinal, kValueColumn) == text,
          "a row keeps the text as typed");
  static_cast<void>(rows.Detail(ordinal));
  static_cast<void>(rows.Matches(ordinal, text));
  const std::string shown = RawTable(&table).Cell(ordinal, kValueColumn);
  RawTable again(&table);
  static_cast<void>(again.EndEdit(ordinal, shown));
  Require(type == FltPT || RawTable(&table).Cell(ordinal, kValueColumn) == shown,
          "a value typed as it is shown stays");
}

// Tables hold Latin-1, assignments are UTF-8.
std::string AsUtf8(std::string_view latin1) {
  std::string text;
  for (const char c : latin1) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | byte >> 6);
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

void FuzzAssignment(Bytes input) {
  static const ParamTable defaults = [] {
    ParamTable table;
    Require(table.BuildParamIndex() == kOk, "the dictionary has an index");
    return table;
  }();
  const std::uint32_t version = TakeByte(&input) % 2 + 1;
  const std::string_view text = TextOf(input);
  if (!IsAssignment(text)) {
    return;
  }
  ParamTable table = defaults;
  const std::string key(text.substr(0, text.find('=')));
  const ParamEntry* entry = table.FindParam(key);
  if (!Assign(text, version, &table)) {
    Require(entry == nullptr || *entry == *defaults.FindParam(key),
            "what is refused changes nothing");
    return;
  }
  const ParamValue value = entry->value;
  const auto type = static_cast<ValueType>(entry->type);
  if (IsTellable(type, value)) {
    const std::string shown = Formatted(type, value);
    Require(static_cast<bool>(Assign(key + "=" + AsUtf8(shown), version, &table)),
            "what is told can be given");
    Require(type == FltPT ? Formatted(type, entry->value) == shown : entry->value == value,
            "a value is read as it is told");
  }
}

void FuzzValueLines(Bytes input) {
  static const ParamTable defaults = [] {
    ParamTable table;
    Require(table.BuildParamIndex() == kOk, "the dictionary has an index");
    return table;
  }();
  ParamTable table = defaults;
  StoreSome(&input, &table);
  const std::string_view text = TextOf(input);
  const auto read = ReadValueLines(text, table);
  if (!read) {
    Require(text.find('\0') != std::string_view::npos || text.starts_with("\xFF\xFE") ||
                text.starts_with("\xFE\xFF"),
            "a short text is read unless it is UTF-16");
    return;
  }
  const auto most = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  Require(read->bad <= most && read->lines.size() <= most, "no lines from nowhere");
  for (const ValueLine& line : read->lines) {
    Require(line.IsBad() != line.reason.empty(), "a bad line has a reason, a good one none");
    Require(line.number > 0 && line.number <= most, "a line has its number");
  }
  ApplyValueLines(read->lines, &table);
  const auto keys = KeysNotDefault(table);
  const auto again = ReadValueLines(WriteValues(table, keys, {true, {}}).text, defaults);
  Require(again && again->bad == 0, "what is written can be read");
  ParamTable copy = defaults;
  ApplyValueLines(again->lines, &copy);
  Require(copy.SetStoredValue("TBVI", table.FindParam("TBVI")->value) == kOk, "TBVI is there");
  Require(DifferingKeys(copy, table).empty(), "the same bytes come back");
}

}  // namespace orvane::fuzz
