// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/raw_table.h"

#include <gtest/gtest.h>

#include "editors/table_summary.h"
#include "table/param_text.h"

namespace orvane {
namespace {

ParamEntry Entry(const char* key, std::uint8_t type, std::uint32_t mask = kMaskAnyMode) {
  ParamEntry entry;
  entry.key = ParamKey(key).Bytes();
  entry.type = type;
  entry.write_mask = mask;
  return entry;
}

// A small table: no address or raw entry is built in.
ParamTable SmallTable() {
  ParamTable table(std::array{Entry("RAW0", RawPT), Entry("NUM", IntPT), Entry("RAW1", RawPT),
                              Entry("ADDR", IPAPT, kMaskNever), Entry("NAME", StrPT, 0x7FFFE),
                              Entry("MODE", IntPT, kMaskNever), Entry("NUM", IntPT)});
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  return table;
}

TEST(RawTable, ShowsEveryEntryInTableOrder) {
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  const RawTable rows(&table);
  ASSERT_EQ(rows.Count(), 719);
  const std::array<std::array<std::string_view, 5>, 5> expected = {{
      {"1", "TBVO", "IntPT", "Any Mode", "2"},
      {"4", "EGNC", "IntPT", "Setup, Pause and Standby", "2"},
      {"28", "TBVI", "IntPT", "Not Changable", "2"},
      {"34", "MODE", "IntPT", "Not Changable", "1"},
      {"719", "KPLSMEM", "IntPT", "Not Changable", "-1"},
  }};
  for (const auto& row : expected) {
    const int ordinal = std::stoi(std::string(row[0]));
    for (int column = 0; column < 5; ++column) {
      EXPECT_EQ(rows.Cell(ordinal, static_cast<RawColumn>(column)),
                row[static_cast<std::size_t>(column)])
          << row[0] << " column " << column;
    }
  }
}

TEST(RawTable, NamesPermissionsByTheWholeMask) {
  EXPECT_EQ(PermissionName(0x7FFFF), "Any Mode");
  EXPECT_EQ(PermissionName(0x2), "Setup Only");
  EXPECT_EQ(PermissionName(0xD802), "Setup, Pause and Standby");
  for (const std::uint32_t mask : {0x0U, 0x7FFFEU, 0x8000D802U, 0x80000000U, 0x3U}) {
    EXPECT_EQ(PermissionName(mask), "Not Changable") << mask;
  }
  EXPECT_EQ(ModesOf(0x7FFFF), "0 to 18");
  EXPECT_EQ(ModesOf(0x8000D802), "1, 11, 12, 14, 15");
  EXPECT_EQ(ModesOf(0x80000000), "");
  EXPECT_EQ(ModesOf(0x40000000), "30");
}

TEST(RawTable, RawEntriesHaveNoNameAndNoText) {
  ParamTable table = SmallTable();
  RawTable rows(&table);
  EXPECT_EQ(rows.Cell(1, kTypeColumn), "");       // nothing before it to repeat
  EXPECT_EQ(rows.Cell(3, kTypeColumn), "IntPT");  // as the row before
  EXPECT_FALSE(rows.CanEdit(1));
  EXPECT_TRUE(rows.EndEdit(3, "1234").empty());
  EXPECT_FALSE(rows.IsModified());
  EXPECT_EQ(table.FindParam("RAW1")->value, ParamValue{});
}

TEST(RawTable, EditsStoreWhatTheTextMeansAndKeepItAsTyped) {
  struct Case {
    int ordinal;
    const char* typed;
    const char* stored;
  };
  // Whatever the mask: neither ADDR nor NAME may be changed in mode 0.
  for (const auto& [ordinal, typed, stored] :
       {Case{2, "12abc", "12"}, Case{2, "", "0"}, Case{4, "300.1.1.1", "0.0.0.0"},
        Case{4, "10.0.0.7", "10.0.0.7"}, Case{5, "0123456789abcdefgh", "0123456789abcde"}}) {
    ParamTable table = SmallTable();
    RawTable rows(&table);
    rows.EndEdit(ordinal, typed);
    EXPECT_EQ(rows.Cell(ordinal, kValueColumn), typed);
    EXPECT_TRUE(rows.IsModified());
    EXPECT_EQ(RawTable(&table).Cell(ordinal, kValueColumn), stored) << typed;
  }
}

TEST(RawTable, PartnersOfADuplicatedKeyShowTheStoredValue) {
  ParamTable table = SmallTable();
  RawTable rows(&table);
  EXPECT_EQ(rows.EndEdit(7, " 8x"), std::vector<int>{2});
  EXPECT_EQ(rows.Cell(7, kValueColumn), " 8x");
  EXPECT_EQ(rows.Cell(2, kValueColumn), "8");
  EXPECT_TRUE(rows.IsChanged(2) && rows.IsChanged(7));
  EXPECT_FALSE(rows.IsChanged(4));
  rows.EndEdit(2, "0");
  EXPECT_FALSE(rows.IsChanged(7)) << "the old value is back";
  EXPECT_TRUE(rows.IsModified());
}

TEST(RawTable, TellsDetailsAndFilters) {
  ParamTable table = SmallTable();
  RawTable rows(&table);
  rows.EndEdit(2, "300x");
  EXPECT_EQ(rows.Detail(2),
            "NUM: IntPT, stored as 2C 01 00 00 (300); a box may change it in mode 0 to 18; was 0");
  EXPECT_EQ(rows.Detail(4),
            "ADDR: IPAPT, stored as 00 00 00 00; a box may not change it in any mode");
  EXPECT_EQ(rows.Detail(8), "");
  EXPECT_TRUE(rows.Matches(2, "nu"));
  EXPECT_TRUE(rows.Matches(2, "0X"));
  EXPECT_TRUE(rows.Matches(4, "0.0"));
  EXPECT_FALSE(rows.Matches(5, "nu"));
  EXPECT_TRUE(rows.Matches(5, ""));
}

TEST(TableSummary, TellsWhatIsSet) {
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  const auto set = [&table](ParamKey key, const char* text) {
    const auto type = static_cast<ValueType>(table.FindParam(key)->type);
    const auto value = ParseParamValueStrictly(text, type);
    ASSERT_EQ(value.Message(), "");
    ASSERT_EQ(table.SetParam(key, type, value->data()), kOk);
  };
  const auto line = [&table](std::string_view label) {
    for (const SummaryGroup& group : SummarizeTable(table, UtcClock())) {
      for (const SummaryLine& candidate : group.lines) {
        if (candidate.label == label) {
          return candidate.value;
        }
      }
    }
    return std::string("no such line");
  };
  set("TECH", "5");
  set("SN01", "11");
  set("SN04", "44");
  set("SNNR", "77");
  set("EGNC", "-1");
  set("HGNC", "9");
  set("LPFR", "82");
  set("SRVY1", "exactly fifteen");
  set("SRVY2", " and more");
  EXPECT_EQ(line("Survey method"), "MT/AMT");
  EXPECT_EQ(line("Auxiliary boxes"), "11, 44");
  EXPECT_EQ(line("Reference box"), "") << "only the IP methods have one";
  EXPECT_EQ(line("E gain"), "x 0.25");
  EXPECT_EQ(line("H gain"), "code 9");
  EXPECT_EQ(line("Low-pass filter"), "2, VLF trap");
  EXPECT_EQ(line("Project"), "exactly fifteen and more");
  set("TECH", "2");
  EXPECT_EQ(line("Reference box"), "77");
  set("TECH", "0");
  EXPECT_EQ(line("Survey method"), "code 0");
}

}  // namespace
}  // namespace orvane
