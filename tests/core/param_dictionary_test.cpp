// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/param_dictionary.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/param_text.h"
#include "support/tbl_bytes.h"

namespace orvane {
namespace {

std::string KeyText(const ParamEntry& entry) { return entry.key.data(); }

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
  for (const ParamEntry& entry : kParamDictionary) {
    ASSERT_EQ(entry.key.back(), '\0');
    const std::int32_t number = entry.type == IntPT ? IntOf(entry.value) : 0;
    rows += KeyText(entry) + ":" + std::to_string(entry.type) + ":" +
            std::to_string(std::uint32_t{entry.write_mask}) + ":" + std::to_string(number) + "\n";
    EXPECT_EQ(testing::ValueBytes(entry.value), testing::Padded(testing::IntBytes(number), 16))
        << KeyText(entry);
    EXPECT_EQ(entry.reserved, (std::array<std::uint8_t, 3>{})) << KeyText(entry);
  }
  EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
  EXPECT_EQ(Crc32(rows), 0x7F832F01U);
}

TEST(ParamDictionary, CountsOfMasksAndTypes) {
  std::map<std::uint32_t, int> masks;
  std::map<int, int> types;
  for (const ParamEntry& entry : kParamDictionary) {
    ++masks[entry.write_mask];
    ++types[entry.type];
  }
  EXPECT_EQ(masks, (std::map<std::uint32_t, int>{{0x0007FFFF, 437},
                                                 {0x00000002, 103},
                                                 {0x0000D802, 17},
                                                 {0, 158},
                                                 {0x8000D802, 3},
                                                 {0x80000000, 1}}));
  EXPECT_EQ(types,
            (std::map<int, int>{
                {IntPT, 246}, {FltPT, 339}, {StrPT, 74}, {PosPT, 24}, {AmxPT, 10}, {LStPT, 26}}));
}

TEST(ParamDictionary, NineteenKeysStandTwice) {
  std::map<std::string, std::vector<std::size_t>> positions;
  for (std::size_t i = 0; i < kParamDictionary.size(); ++i) {
    positions[KeyText(kParamDictionary[i])].push_back(i);
  }
  std::map<std::string, std::vector<std::size_t>> twice;
  for (const auto& [key, places] : positions) {
    if (places.size() > 1) {
      twice[key] = places;
    }
  }
  EXPECT_EQ(twice, (std::map<std::string, std::vector<std::size_t>>{{"TBVO", {0, 26}},
                                                                    {"TBVI", {1, 27}},
                                                                    {"CHEX", {113, 424}},
                                                                    {"CHEY", {114, 425}},
                                                                    {"CHEZ", {115, 426}},
                                                                    {"CHHX", {116, 427}},
                                                                    {"CHHY", {117, 428}},
                                                                    {"CHHZ", {118, 429}},
                                                                    {"TCHN", {119, 430}},
                                                                    {"EXR", {141, 431}},
                                                                    {"EYR", {142, 432}},
                                                                    {"EZR", {143, 433}},
                                                                    {"DXAC", {130, 434}},
                                                                    {"DXDC", {131, 435}},
                                                                    {"DYAC", {132, 436}},
                                                                    {"DYDC", {133, 437}},
                                                                    {"EAZM", {144, 438}},
                                                                    {"EXLN", {145, 439}},
                                                                    {"EYLN", {146, 440}}}));
}

}  // namespace
}  // namespace orvane
