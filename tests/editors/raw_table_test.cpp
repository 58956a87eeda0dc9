// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/raw_table.h"

#include "editors/table_summary.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "support/told.h"

namespace orvane {
namespace {

using testing::Entry;

// A small table: no address or raw entry is built in.
ParamTable SmallTable() {
  return testing::Built({Entry("RAW0", RawPT), Entry("NUM", IntPT), Entry("RAW1", RawPT),
                         Entry("ADDR", IPAPT, kMaskNever), Entry("NAME", StrPT, 0x7FFFE),
                         Entry("MODE", IntPT, kMaskNever), Entry("NUM", IntPT)});
}

TEST(RawTable, ShowsEveryEntryInTableOrder) {
  ParamTable table;
  ASSERT_EQ(table.BuildParamIndex(), kOk);
  const RawTable rows(&table);
  ASSERT_EQ(rows.Count(), 719);
  EXPECT_TRUE(rows.CanEdit(1) && rows.CanEdit(719));
  EXPECT_FALSE(rows.CanEdit(0) || rows.CanEdit(720));
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

RawMeaning ExplainFirstByte(const ParamEntry& entry) {
  const int number = entry.value[0];
  RawMeaning meaning{"Is " + std::to_string(number)};
  meaning.caution = number == 8 ? "too many" : "";
  meaning.is_in_dialog = ParamKey(entry.key) == ParamKey("NUM");
  return meaning;
}

TEST(RawTable, SaysWhatWasStoredOtherThanTyped) {
  for (const auto& [ordinal, typed, said] :
       std::to_array<std::tuple<int, const char*, const char*>>({
           {2, "12abc", "stored as 12"},
           {2, "12.7", "stored as 12"},
           {2, "99999999999", "stored as 2147483647"},
           {2, "", "stored as 0"},
           {2, " +12 ", ""},
           {4, "300.1.1.1", "stored as 0.0.0.0"},
           {4, "10.0.0.7", ""},
           {5, "0123456789abcdefgh", "stored as 0123456789abcde"},
           {5, " 7 ", ""},
           {5, "", ""},
       })) {
    ParamTable table = SmallTable();
    RawTable rows(&table);
    rows.EndEdit(ordinal, typed);
    EXPECT_EQ(rows.Caution(ordinal), said) << typed;
  }
  ParamTable reals = testing::Built({Entry("THIRD", FltPT)});
  const double third = 1.0 / 3;
  ASSERT_EQ(reals.SetParam("THIRD", FltPT, &third), kOk);
  RawTable rows(&reals);
  EXPECT_EQ(rows.Caution(1), "") << "ten digits are shown, nobody typed them";
  rows.EndEdit(1, "0.33333333333333331");
  EXPECT_EQ(rows.Caution(1), "");
  rows.EndEdit(1, "1e999");
  EXPECT_NE(rows.Caution(1), "");
}

int OrdinalOf(const RawTable& rows, ParamKey key) {
  int ordinal = 1;
  while (ordinal < rows.Count() && rows.Row(ordinal).key != key) {
    ++ordinal;
  }
  return ordinal;
}

TEST(RawTable, SwitchesLeaveRowsOver) {
  ParamTable file = testing::NewTable();
  testing::SetAll(&file, "SNUM=7 LINE=L1");
  ParamTable table = file;
  testing::SetAll(&table, "LFRQ=50");
  RawTable rows(
      &table, {},
      [](const ParamEntry& entry) {
        RawMeaning meaning{"x"};
        meaning.is_in_dialog = entry.key[0] != 'S';
        return meaning;
      },
      &file);
  const auto shown = [&rows](std::string_view filter, unsigned switches) {
    std::string keys;
    for (int ordinal = 1; ordinal <= rows.Count(); ++ordinal) {
      const bool is_shown = rows.Matches(ordinal, filter, switches);
      keys += is_shown ? rows.Cell(ordinal, kCodeColumn) + " " : "";
    }
    return keys;
  };
  const int line = OrdinalOf(rows, "LINE");
  rows.EndEdit(line, "L2");
  rows.SetFavourites({"SNUM", "OTHER"});
  rows.SetFavourite(line, true);
  EXPECT_EQ(shown("", kChangedSinceFile), "LFRQ LINE ");
  EXPECT_EQ(shown("l2", kChangedSinceFile), "LINE ");
  EXPECT_EQ(shown("", kOwnChanges), "LINE ");
  EXPECT_EQ(shown("", kNotDefault), "LFRQ SNUM LINE ");
  EXPECT_EQ(shown("", kNotDefault | kInNoDialog), "SNUM ");
  EXPECT_EQ(shown("", kFavourites), "SNUM LINE ");
  EXPECT_EQ(shown("", kFavourites | kOwnChanges | kInNoDialog), "");
  rows.SetFavourite(line, false);
  EXPECT_EQ(rows.Favourites(), (std::set<std::string>{"OTHER", "SNUM"}));
  EXPECT_EQ(RawTable(&table).HasFile(), false);
}

TEST(RawTable, MeaningsFollowTheStoredValueAndAreSearched) {
  ParamTable table = SmallTable();
  RawTable rows(&table, {}, ExplainFirstByte);
  rows.EndEdit(7, "8x");
  EXPECT_EQ(rows.Cell(2, kMeaningColumn), "Is 8; too many");
  EXPECT_EQ(rows.Cell(7, kMeaningColumn), "Is 8; too many; stored as 8");
  EXPECT_EQ(rows.Caution(7), "too many; stored as 8");
  EXPECT_TRUE(rows.Matches(7, "is 8"));
  EXPECT_TRUE(rows.Matches(2, "TOO many"));
  EXPECT_FALSE(rows.Matches(4, "is 8"));
  EXPECT_TRUE(rows.HasMeanings());
  EXPECT_FALSE(RawTable(&table).HasMeanings());
}

// The lines that have a value, "label: value", and what is wrong with it.
std::string Summary(const ParamTable& table) {
  std::string lines;
  for (const SummaryGroup& group : SummarizeTable(table, testing::FixedClock())) {
    for (const auto& [label, value, keys, caution] : group.lines) {
      if (!value.empty()) {
        lines.append(label).append(": ").append(value);
        lines.append(caution.empty() ? "" : " is ").append(caution).append("\n");
      }
    }
  }
  return lines;
}

TEST(TableSummary, TellsWhatIsSet) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table,
                  "TECH=5 RQST=13 LFRQ=50 SNUM=7 TCHN=0 NCHN=6 SNTX=8 SN01=11 SN02=0 SN03=33 "
                  "SN04=44 SN05=55 SNNR=77 CHDEF1=Hx CHDEF2=Ex1 CHDEF3=Ex2 CHDEF4=Ex3 CHDEF6=Ex5 "
                  "NCHN1R=2 DEF1R1=Ex08 "
                  "DEF1R2=Ex09 STIM=2026/11/21_07:00:00 ETIM=2026/11/21_06:00:00 "
                  "HTIM=09:00:00 ETMH=10:00:00 EGNC=-1 HGNC=2 ACDC=0 ACDH=1 LPFR=82 "
                  "SRVY1=exactly_fifteen SRVY4=_end CMPY1=c CLIENT1=d AREA1=e LOUT1=f LINE=L7 "
                  "SITE=S9 CMMNT1=g CMMNT8=h");
  EXPECT_EQ(Summary(table),
            "Survey method: MT/AMT\nMode request: CS_Record\nLine frequency: 50 Hz\n"
            "Main box: 7\nChannels: 6: Hx, Ex1 to Ex3, Ex5\nTransmitter box: 8\n"
            "Auxiliary box: 11, channels 2: Ex08, Ex09\n"
            "Auxiliary box: 33, channels 3, none defined\n"
            "Auxiliary box: 44, channels 3, none defined\n"
            "Auxiliary box: 55, channels 3, none defined\n"
            "Record start: 2026/11/21 07:00:00 is in the past (it is 2026/11/21 08:00:00 UTC)\n"
            "Record end: 2026/11/21 06:00:00 is before the start\n"
            "High frequency start: 09:00:00\nHigh frequency end: 10:00:00\nE gain: x 0.25\n"
            "H gain: x 16\nE coupling: DC coupling\nH coupling: AC coupling\n"
            "Low-pass filter: 2, VLF trap\nProject: exactly fifteen end\nCompany: c\nClient: d\n"
            "Survey area: e\nOperator: f\nLine: L7\nSite: S9\nComment: gh\n");
  for (const auto& [setting, line] : {std::pair{"TECH=2", "Reference box: 77\n"},
                                      {"TECH=1", "Survey method: SIP\n"},
                                      {"TECH=6", "Survey method: FDEM\n"},
                                      {"TECH=0", "Survey method: code 0\n"},
                                      {"TECH=7", "Survey method: code 7\n"},
                                      {"RQST=3", "Mode request: code 3\n"},
                                      {"RQST=14", "Mode request: code 14\n"},
                                      {"HGNC=3", "H gain: code 3\n"},
                                      {"EGNC=-2", "E gain: code -2\n"},
                                      {"LPFR=0", "filter: Off\n"},
                                      {"LPFR=16", "filter: 0 (Weakest)\n"},
                                      {"LPFR=164", "filter: 4\n"},
                                      {"LPFR=165", "filter: code 165\n"},
                                      {"LPFR=15", "filter: code 15\n"},
                                      {"TCHN=5", "Channels: 5: Hx, Ex1 to Ex3\n"},
                                      {"NCHN1R=0 TCHN=0", "box: 11, channels 0\n"}}) {
    testing::SetAll(&table, setting);
    EXPECT_NE(Summary(table).find(line), std::string::npos) << setting << "\n" << Summary(table);
  }
}

TEST(TableSummary, NamesTheKeysOfEachLine) {
  for (std::size_t group = 0; group < 5; ++group) {
    const auto lines = [group](const ParamTable& table) {
      return SummarizeTable(table, testing::FixedClock())[group].lines;
    };
    ParamTable table = testing::NewTable();
    testing::SetAll(&table, "TECH=1");
    const auto before = lines(table);
    for (std::size_t line = 0; line < before.size(); ++line) {
      for (const ParamKey key : before[line].keys) {
        ParamTable changed = table;
        testing::Set(&changed, key, table.FindParam(key)->type == AmxPT ? "09:00:00" : "3");
        EXPECT_NE(lines(changed)[line].value, before[line].value) << key.Text();
      }
    }
  }
}

}  // namespace
}  // namespace orvane
