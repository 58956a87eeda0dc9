// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/tbl_record.h"

#include <algorithm>
#include <cstring>

#include "base/ascii.h"

namespace orvane {

int RecogniseTblVersion(std::span<const std::byte, 32> start) {
  const auto is_key_byte = [](std::byte byte) {
    return byte == std::byte{0} || IsAlphanumeric(static_cast<char>(byte));
  };
  if (std::all_of(start.begin(), start.begin() + 4, is_key_byte) && start[4] == std::byte{0}) {
    return 1;
  }
  return RecordFrom<TblHeader>(start).magic == TblHeader{}.magic ? 2 : 0;
}

bool IsEndRecord(const TblRecordV1& record) {
  return record.key == std::array<char, 4>{'\x03', '\0', '\0', '\0'};
}

TblRecordV1 EndRecordAfter(const TblRecordV1& last) {
  TblRecordV1 end = last;
  end.key = {'\x03', '\0', '\0', '\0'};
  end.key_end = 0;
  end.write_mask = 3;
  return end;
}

bool FitsTblV1Key(const ParamEntry& entry) { return entry.key[4] == '\0'; }

Status MakeTblRecordV1(const ParamEntry& entry, TblRecordV1* record) {
  *record = {};
  std::copy_n(entry.key.begin(), record->key.size(), record->key.begin());
  record->write_mask = static_cast<std::uint16_t>(entry.write_mask & 0xFFFFU);
  std::copy_n(entry.reserved.begin(), record->reserved.size(), record->reserved.begin());
  record->type = entry.type;
  std::copy_n(entry.value.begin(), record->value.size(), record->value.begin());
  const bool is_too_long =
      (entry.type == StrPT && entry.value[8] != 0) || (entry.type == PosPT && entry.value[12] != 0);
  return is_too_long ? kValueTooLong : kOk;
}

ParamEntry EntryFrom(const TblRecordV1& record) {
  ParamEntry entry;
  // Damaged files may have more than four characters: eight bytes are taken, up to a NUL.
  const auto* bytes = reinterpret_cast<const char*>(&record);
  std::copy_n(bytes, strnlen(bytes, kKeySize), entry.key.begin());
  entry.write_mask = std::uint32_t{record.write_mask};
  std::copy(record.reserved.begin(), record.reserved.end(), entry.reserved.begin());
  entry.type = record.type;
  std::copy(record.value.begin(), record.value.end(), entry.value.begin());
  return entry;
}

}  // namespace orvane
