// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_PARAM_ENTRY_H_
#define ORVANE_TABLE_PARAM_ENTRY_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/wire.h"

namespace orvane {

/// How the 16 value bytes of an entry are laid out.
enum ValueType : std::uint8_t {
  IntPT = 0,  ///< signed 32-bit integer in bytes 0-3
  FltPT = 1,  ///< 64-bit IEEE double in bytes 0-7
  StrPT = 2,  ///< NUL-terminated text, at most 15 characters
  IPAPT = 3,  ///< IPv4 address, first octet first, in bytes 0-3
  PosPT = 4,  ///< NUL-terminated text, at most 15 characters (paths, coordinates, dates)
  AmxPT = 5,  ///< `ParamTime` in bytes 0-7
  RawPT = 6,  ///< 4 bytes without interpretation
  LStPT = 7,  ///< 16 characters without a required NUL: one link of a long text
};

/// Bit n of a write mask is set: the entry may be changed while parameter "MODE" is n (0 to 30).
/// Bit 31: a box leaves the entry out when it writes a filtered table.
enum : std::uint32_t {
  kMaskAnyMode = 0x0007FFFF,
  kMaskSetupOnly = 0x00000002,
  kMaskSetupPauseStandby = 0x0000D802,
  kMaskNever = 0,
  kMaskNotFiltered = 0x80000000,
};

inline constexpr std::size_t kKeySize = 8;
inline constexpr std::size_t kValueSize = 16;
/// Longest text of a `StrPT` or `PosPT` value, without its NUL.
inline constexpr std::size_t kMaxTextLength = 15;

using ParamValue = std::array<std::uint8_t, kValueSize>;

/// One parameter, as in memory so in a version-2 TBL file.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | key, upper-case ASCII, NUL-padded |
/// | 8 | 4 | write mask |
/// | 12 | 3 | reserved; two of them travel through version-1 files |
/// | 15 | 1 | value type |
/// | 16 | 16 | value |
struct ParamEntry {
  std::array<char, kKeySize> key{};
  Le<std::uint32_t> write_mask;
  std::array<std::uint8_t, 3> reserved{};
  std::uint8_t type = 0;
  ParamValue value{};

  friend constexpr bool operator==(const ParamEntry&, const ParamEntry&) = default;
};
static_assert(sizeof(ParamEntry) == 32 && alignof(ParamEntry) == 1);
static_assert(offsetof(ParamEntry, write_mask) == 8 && offsetof(ParamEntry, reserved) == 12);
static_assert(offsetof(ParamEntry, type) == 15 && offsetof(ParamEntry, value) == 16);

/// A time as boxes store it, 8 bytes. Bytes 3 to 7 all zero: a time of day without date.
struct ParamTime {
  std::uint8_t second = 0;   ///< 0-59
  std::uint8_t minute = 0;   ///< 0-59
  std::uint8_t hour = 0;     ///< 0-23
  std::uint8_t day = 0;      ///< 1-31
  std::uint8_t month = 0;    ///< 1-12
  std::uint8_t year = 0;     ///< within the century, 0-99
  std::uint8_t weekday = 0;  ///< 1 Monday .. 7 Sunday; 1 for every date read from text
  std::uint8_t century = 0;  ///< 19-99; 0: no date

  friend constexpr bool operator==(const ParamTime&, const ParamTime&) = default;
};
static_assert(sizeof(ParamTime) == 8 && alignof(ParamTime) == 1);

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_ENTRY_H_
