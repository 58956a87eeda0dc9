// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_dictionary.h"

#include <map>

#include "support/tbl_bytes.h"
#include "table/param_text.h"

namespace orvane {
namespace {

// The usual CRC-32 of archives and pictures.
std::uint32_t Crc32(const std::string& text) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char c : text) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
  }
  return ~crc;
}

// The number was computed from the receivers' own list of parameters, so that no row, order, type,
// mask or default can drift unnoticed.
TEST(ParamDictionary, IsTheReceiversList) {
  std::string rows;
  std::map<std::uint32_t, int> masks;
  for (const ParamEntry& row : kParamDictionary) {
    const std::string key = row.key.data();
    ++masks[row.write_mask];
    const std::int32_t number = row.type == IntPT ? IntOf(row.value) : 0;
    rows += key + ":" + std::to_string(row.type) + ":" + std::to_string(row.write_mask + 0U) + ":" +
            std::to_string(number) + "\n";
    EXPECT_EQ(row, testing::Entry(key, row.type, row.write_mask, testing::IntBytes(number)));
  }
  EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
  EXPECT_EQ(Crc32(rows), 0x7F832F01U);
  const std::map<std::uint32_t, int> expected = {
      {0x0007FFFF, 437}, {2, 103}, {0xD802, 17}, {0, 158}, {0x8000D802, 3}, {0x80000000, 1}};
  EXPECT_EQ(masks, expected);
}

}  // namespace
}  // namespace orvane
