// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "export/schedule_json.h"
#include "export/table_json.h"
#include "support.h"

namespace orvane::fuzz {
namespace {

std::string ScheduleBytes(std::span<const ScheduleRow> rows) {
  const auto bytes = std::as_bytes(rows);
  std::string text(bytes.size(), '\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [](std::byte byte) { return static_cast<char>(byte); });
  return text;
}

}  // namespace

void FuzzJson(Bytes input) {
  std::string text(input.size(), '\0');
  std::transform(input.begin(), input.end(), text.begin(),
                 [](std::byte byte) { return static_cast<char>(byte); });
  if (const auto rows = ReadScheduleJson(text)) {
    const auto again = ReadScheduleJson(WriteScheduleJson(*rows));
    Require(static_cast<bool>(again), "what is written is read");
    Require(ScheduleBytes(*again) == ScheduleBytes(*rows), "a schedule comes back");
  } else {
    Require(!rows.Message().empty(), "a refusal has its reason");
  }
  if (const auto table = ReadTableJson(text)) {
    Require(TblImage(table->table, table->save).size() > sizeof(ParamEntry), "a table is whole");
  }
}

}  // namespace orvane::fuzz
