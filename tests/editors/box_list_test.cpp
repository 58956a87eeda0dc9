// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/box_list.h"

#include "support/table_help.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

TEST(BoxList, ListsTheBoxesThatHaveASerialNumber) {
  ParamTable table = testing::NewTable();
  BoxRows rows;
  SetAll(&table, "TECH=1 SNTX=9 SNUM=5 NCHN=4 SN02=1234 NCHN2R=2 2RCTL=7 SNNR=77 REFCTL=3 TXCTL=8");
  ASSERT_EQ(LoadBoxList(table, &rows), 4);
  EXPECT_EQ(rows[2].serial, 1234U) << "behind the transmitter and the local box";
  SetAll(&table, "TECH=4 TCHN=3");
  ASSERT_EQ(LoadBoxList(table, &rows), 3) << "a reference box is for SIP and TDIP";
  EXPECT_EQ(rows[1].channels, 3U);
  ASSERT_EQ(SaveBoxList(std::span(rows).first(3), &table), kOk);
  EXPECT_EQ(Values(table, "SNNR NCHN TCHN"), "77 3 3");
}

TEST(BoxList, SavingClosesGapsAndDropsASixthAuxiliaryBox) {
  ParamTable table = testing::NewTable();
  BoxRows rows;
  SetAll(&table, "TECH=2 SN02=1234 2RCTL=7 SN05=55 5RCTL=6 SNNR=77");
  ASSERT_EQ(LoadBoxList(table, &rows), 5);
  ASSERT_EQ(SaveBoxList(std::span(rows).first(4), &table), kOk);
  // Only the serial number of an unused slot is cleared; the list has no reference box any more.
  EXPECT_EQ(Values(table, "SN01 1RCTL SN02 2RCTL SN05 5RCTL SNNR"), "1234 7 55 6 0 6 0");

  rows.fill({});
  for (std::uint32_t i = 0; i < rows.size(); ++i) {
    rows[i].serial = i + 1;
  }
  SetAll(&table, "TECH=4");
  ASSERT_EQ(SaveBoxList(rows, &table), kOk);
  EXPECT_EQ(Values(table, "SN05 SNUM"), "5 0") << "no row for the local box";
}

}  // namespace
}  // namespace orvane
