// SPDX-License-Identifier: GPL-3.0-or-later
// The records of parameter table files; docs/formats/tbl.md describes the formats.
#ifndef ORVANE_TABLE_TBL_RECORD_H_
#define ORVANE_TABLE_TBL_RECORD_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/status.h"
#include "base/wire.h"
#include "table/param_entry.h"

namespace orvane {

/// First bytes of a version-2 file. The records after it are `ParamEntry`, 32 bytes each.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | 0x03 0x00 ".TBL2%" |
/// | 8 | 24 | zero |
struct TblHeader {
  std::array<char, 8> magic = {'\x03', '\0', '.', 'T', 'B', 'L', '2', '%'};
  std::array<std::uint8_t, 24> zero{};
};
static_assert(sizeof(TblHeader) == 32 && alignof(TblHeader) == 1);

/// A record of a version-1 file, which has no header.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 4 | key, NUL-padded |
/// | 4 | 1 | 0 |
/// | 5 | 2 | write mask, low 16 bits |
/// | 7 | 2 | the first two reserved bytes of the entry |
/// | 9 | 2 | 0 |
/// | 11 | 1 | type |
/// | 12 | 13 | the first 13 bytes of the value |
struct TblRecordV1 {
  std::array<char, 4> key{};
  std::uint8_t key_end = 0;
  Le<std::uint16_t> write_mask;
  std::array<std::uint8_t, 2> reserved{};
  std::array<std::uint8_t, 2> unused{};
  std::uint8_t type = 0;
  std::array<std::uint8_t, 13> value{};
};
static_assert(sizeof(TblRecordV1) == 25 && alignof(TblRecordV1) == 1);
static_assert(offsetof(TblRecordV1, write_mask) == 5 && offsetof(TblRecordV1, reserved) == 7);
static_assert(offsetof(TblRecordV1, type) == 11 && offsetof(TblRecordV1, value) == 12);

/// Version of a file by its first 32 bytes: 1, 2, or 0 where it is not a parameter table.
int RecogniseTblVersion(std::span<const std::byte, 32> start);

/// Whether a version-1 record ends the file: its first four bytes are the number 3.
bool IsEndRecord(const TblRecordV1& record);

/// The end record: number 3 where the mask is, the other bytes those of the record before it.
TblRecordV1 EndRecordAfter(const TblRecordV1& last);

/// A key fits a version-1 record with fewer than five characters.
bool FitsTblV1Key(const ParamEntry& entry);

/// Fills the record, whose key is cut to four and value to 13 bytes. 187 where a `StrPT` value has
/// more than eight or a `PosPT` value more than twelve characters: the record is filled all the
/// same.
Status MakeTblRecordV1(const ParamEntry& entry, TblRecordV1* record);

/// The entry of a version-1 record: upper mask bits, third reserved byte and last three value bytes
/// are zero.
ParamEntry EntryFrom(const TblRecordV1& record);

}  // namespace orvane

#endif  // ORVANE_TABLE_TBL_RECORD_H_
