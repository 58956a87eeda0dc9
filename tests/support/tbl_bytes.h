// SPDX-License-Identifier: GPL-3.0-or-later
// Entries, values and TBL records put together byte by byte, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_TBL_BYTES_H_
#define ORVANE_TESTS_SUPPORT_TBL_BYTES_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "table/param_table.h"

namespace orvane::testing {

/// The `size` low bytes of a number, the lowest first.
inline std::string Little(std::uint64_t number, std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    bytes += static_cast<char>(number >> (8 * i) & 0xFF);
  }
  return bytes;
}
inline std::string IntBytes(std::int32_t number) {
  return Little(static_cast<std::uint32_t>(number), 4);
}
inline std::string FloatBytes(float number) {
  return Little(std::bit_cast<std::uint32_t>(number), 4);
}
inline std::string RealBytes(double number) {
  return Little(std::bit_cast<std::uint64_t>(number), 8);
}

/// `text` cut or filled with NULs to `size` bytes.
inline std::string Padded(std::string_view text, std::size_t size) {
  std::string bytes(text.substr(0, size));
  bytes.resize(size);
  return bytes;
}

inline ParamValue Value(std::string_view bytes) {
  ParamValue value{};
  std::copy_n(bytes.begin(), std::min(bytes.size(), value.size()), value.begin());
  return value;
}
inline std::string ValueBytes(const ParamValue& value) { return {value.begin(), value.end()}; }

inline ParamEntry Entry(std::string_view key, std::uint8_t type, std::uint32_t mask = kMaskAnyMode,
                        std::string_view value = {}) {
  ParamEntry entry;
  std::copy_n(key.begin(), std::min(key.size(), entry.key.size()), entry.key.begin());
  entry.write_mask = mask;
  entry.type = type;
  entry.value = Value(value);
  return entry;
}

inline ParamTable Built(const std::vector<ParamEntry>& entries) {
  ParamTable table(entries);
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  return table;
}
inline std::string Stored(const ParamTable& table, ParamKey key) {
  const ParamEntry* entry = table.FindParam(key);
  return entry == nullptr ? "no entry" : ValueBytes(entry->value);
}

inline std::string HeaderV2() { return Padded(std::string_view("\x03\0.TBL2%", 8), 32); }
inline std::string RecordV2(std::string_view key, std::uint32_t mask, std::uint8_t type,
                            std::string_view value) {
  return Padded(key, 8) + Little(mask, 4) + Little(0, 3) + Little(type, 1) + Padded(value, 16);
}
inline std::string RecordV1(std::string_view key, std::uint32_t mask, std::uint8_t type,
                            std::string_view value) {
  return Padded(key, 4) + Little(0, 1) + Little(mask, 2) + Little(0, 4) + Little(type, 1) +
         Padded(value, 13);
}
/// The end record behind the version-1 record `last`.
inline std::string EndV1(const std::string& last) {
  return Little(3, 4) + Little(0, 1) + Little(3, 2) + last.substr(7);
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TBL_BYTES_H_
