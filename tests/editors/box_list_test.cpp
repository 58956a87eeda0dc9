// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/box_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace orvane {
namespace {

class BoxList : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(table_.BuildParamIndex(), kOk); }

  void Set(std::initializer_list<std::pair<const char*, std::int32_t>> values) {
    for (const auto& [key, number] : values) {
      ASSERT_EQ(table_.SetParam(key, IntPT, &number), kOk) << key;
    }
  }
  std::int32_t Int(ParamKey key) const {
    std::int32_t number = -99;
    EXPECT_EQ(table_.GetParam(key, IntPT, &number), kOk);
    return number;
  }

  ParamTable table_;
  BoxRows rows_;
};

TEST_F(BoxList, ListsTheBoxesThatHaveASerialNumber) {
  Set({{"TECH", 1},
       {"SNTX", 9},
       {"SNUM", 5},
       {"NCHN", 4},
       {"SN02", 1234},
       {"NCHN2R", 2},
       {"2RCTL", 7},
       {"SNNR", 77},
       {"REFCTL", 3},
       {"TXCTL", 8}});
  ASSERT_EQ(LoadBoxList(table_, &rows_), 4);
  const std::array<std::array<std::uint32_t, 4>, 4> expected = {
      {{3, 9, 1, 8}, {2, 5, 4, 0}, {0, 1234, 2, 7}, {1, 77, 2, 3}}};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ((std::array{rows_[i].kind, rows_[i].serial, rows_[i].channels, rows_[i].control}),
              expected[i]);
  }
  Set({{"TECH", 4}, {"TCHN", 3}});
  ASSERT_EQ(LoadBoxList(table_, &rows_), 3) << "a reference box is for SIP and TDIP";
  EXPECT_EQ(rows_[1].channels, 3U);
  ASSERT_EQ(SaveBoxList(std::span(rows_).first(3), &table_), kOk);
  EXPECT_EQ(Int("SNNR"), 77);
  EXPECT_EQ(Int("NCHN"), 3);
  EXPECT_EQ(Int("TCHN"), 3);
}

TEST_F(BoxList, SavingClosesGapsAndDropsASixthAuxiliaryBox) {
  Set({{"TECH", 2}, {"SN02", 1234}, {"2RCTL", 7}, {"SN05", 55}, {"5RCTL", 6}, {"SNNR", 77}});
  ASSERT_EQ(LoadBoxList(table_, &rows_), 5);
  ASSERT_EQ(SaveBoxList(std::span(rows_).first(4), &table_), kOk);
  EXPECT_EQ(Int("SN01"), 1234);
  EXPECT_EQ(Int("1RCTL"), 7);
  EXPECT_EQ(Int("SN02"), 55);
  EXPECT_EQ(Int("2RCTL"), 6);
  EXPECT_EQ(Int("SN05"), 0);
  EXPECT_EQ(Int("5RCTL"), 6) << "only the serial number of an unused slot is cleared";
  EXPECT_EQ(Int("SNNR"), 0) << "the list has no reference box any more";

  rows_.fill({});
  for (std::uint32_t i = 0; i < rows_.size(); ++i) {
    rows_[i].serial = i + 1;
  }
  ASSERT_EQ(SaveBoxList(rows_, &table_), kOk);
  EXPECT_EQ(Int("SN05"), 5);
  EXPECT_EQ(Int("SNUM"), 0) << "no row for it";
}

}  // namespace
}  // namespace orvane
