// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/site_forms.h"

#include "base/number_text.h"
#include "editors/line_layout.h"
#include "editors/spread.h"
#include "support/table_help.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

const std::array<std::string, 4> kModels = {"A", "B", "C", "D"};

TEST(SiteForm, ListsMapAsTheMethodSays) {
  struct Case {
    Tech tech;
    const char* key;
    const char* stored;
    int control;
    int index;
    const char* written;
  };
  for (const Case& test : {
           Case{kMtAmt, "NREF", "0", SiteForm::kNorthReference, 0, "2"},
           Case{kCsamt, "NREF", "0", SiteForm::kNorthReference, -1, "0"},
           Case{kCsamt, "ARRYTYP", "11", SiteForm::kArrayType, 0, "9"},
           Case{kTdip, "ARRYTYP", "9", SiteForm::kArrayType, 1, "1"},
           Case{kTdem, "ARRYTYP", "1", SiteForm::kArrayType, 0, "12"},
           Case{kTdem, "TXTYPE", "5", SiteForm::kTransmitterType, -1, "5"},
           Case{kMtAmt, "ATYP", "3", SiteForm::kSiteConfiguration, -1, "3"},
       }) {
    SCOPED_TRACE(FormatInt(test.tech) + " " + test.key + "=" + test.stored);
    ParamTable table = NewTable();
    Set(&table, test.key, test.stored);
    SiteForm form(&table, test.tech, kModels);
    const bool is_replaced = !form.Open().empty();
    EXPECT_EQ(is_replaced, test.tech == kTdip);
    EXPECT_EQ(form.HasLine(), test.tech == kCsamt || test.tech == kSip || test.tech == kTdip);
    EXPECT_EQ(form.Model().Index(test.control), test.index);
    form.Commit();
    form.CommitAfterGrids();
    EXPECT_EQ(Get(table, test.key), test.written);
  }
}

TEST(SiteForm, TheCoilLiesAcrossTheProfile) {
  ParamTable table = NewTable();
  SiteForm form(&table, kCsamt, kModels);
  static_cast<void>(form.Open());
  for (const auto& [azimuth, across] : {std::pair("0", "90"), std::pair("270.5", "0.5"),
                                        std::pair("-100.5", "349.5"), std::pair("x", "")}) {
    form.Model().SetText(SiteForm::kAzimuth, azimuth);
    form.OnEdited(SiteForm::kAzimuth);
    EXPECT_EQ(form.Model().Text(SiteForm::kHyAzimuth), across);
  }
}

TEST(SiteForm, CutsLongTexts) {
  ParamTable table = NewTable();
  SiteForm form(&table, kMtAmt, kModels);
  EXPECT_TRUE(form.Open().empty());
  form.Model().SetText(SiteForm::kProject, std::string(70, 'p'));
  form.Model().SetText(SiteForm::kComment, "twenty characters of");
  EXPECT_EQ(form.Model().CapacityOf(SiteForm::kProject), 60U);
  form.Commit();
  EXPECT_EQ(Get(table, "SRVY4"), std::string(15, 'p'));
  EXPECT_EQ(Get(table, "CMMNT1") + "|" + Get(table, "CMMNT2") + "|" + Get(table, "CMMNT3"),
            "twenty characte|rs of|");
}

TEST(SiteForm, ALoopWithoutASizeBecomesASquare) {
  struct Case {
    const char* array_type;
    const char* area;
    const char* turns;
    const char* length;
    const char* side;
  };
  for (const auto& [array_type, area, turns, length, side] : {
           Case{"12", "400", "1", "0", "20"},
           Case{"12", "800", "2", "5", "20"},
           Case{"13", "400", "1", "0", "0"},
           Case{"12", "400", "0", "0", "0"},
           Case{"12", "-4", "1", "0", "0"},
       }) {
    ParamTable table = NewTable();
    testing::SetAll(&table, std::string("ARRYTYP=") + array_type + " TXLEN=" + area +
                                " TXTURN=" + turns + " LLENGTH=" + length);
    SiteForm form(&table, kTdem, kModels);
    EXPECT_TRUE(form.Open().empty());
    EXPECT_EQ(form.Model().IsEnabled(SiteForm::kLoopWidth), std::string(array_type) != "13");
    Set(&table, "TXLEN", "1");
    form.Commit();
    Set(&table, "TXLEN", area);  // as the grid has it now
    form.CommitAfterGrids();
    EXPECT_EQ(Get(table, "LWIDTH"), side) << area;
  }
}

TEST(SiteForm, WhatAGroundedDipoleDisablesIsShownAndWrittenAlike) {
  ParamTable table = NewTable();
  Set(&table, "ARRYTYP", "12");
  Set(&table, "TXTURN", "7");
  SiteForm form(&table, kTdem, kModels);
  EXPECT_TRUE(form.Open().empty());
  form.Model().SetText(SiteForm::kLoopTurns, "abc");
  form.Model().SetIndex(SiteForm::kArrayType, 1);
  form.OnEdited(SiteForm::kArrayType);
  EXPECT_FALSE(form.Model().Validate().has_value());
  EXPECT_EQ(form.Model().Text(SiteForm::kLoopTurns), "7");
  form.Commit();
  EXPECT_EQ(Get(table, "TXTURN") + " " + Get(table, "ARRYTYP"), "7 13");
}

TEST(SiteForm, OkWithoutAnEditChangesOnlyWhatItMust) {
  for (const Tech tech : {kSip, kTdip, kTdem, kCsamt, kMtAmt, kFdem}) {
    std::set<std::string> allowed = {"ARRYTYP"};
    if (tech == kMtAmt) {
      allowed = {"NREF"};
    } else if (tech == kTdem || tech == kFdem) {
      allowed.insert({"LLENGTH", "LWIDTH"});
    }
    for (unsigned seed = 1; seed <= 40; ++seed) {
      ParamTable table = RandomTable(seed);
      const ParamTable before = table;
      BoxSerialForm serials(&table);
      serials.Open();
      serials.Commit();
      SiteForm form(&table, tech, kModels);
      static_cast<void>(form.Open());
      form.Commit();
      form.CommitAfterGrids();
      for (const std::string& key : Changes(before, table)) {
        EXPECT_EQ(allowed.count(key), 1U) << key << " method " << tech << " seed " << seed;
      }
    }
  }
}

TEST(SiteForm, SerialNumbersAreCautionedNotRefused) {
  ParamTable table = NewTable();
  BoxSerialForm form(&table);
  form.Open();
  FormModel& model = form.Model();
  EXPECT_EQ(model.Caution(1255), "") << "no auxiliary boxes at all";
  model.SetText(1258, "1203");
  EXPECT_EQ(model.Caution(1255), "No box here: the boxes after it get no start-up file");
  EXPECT_EQ(model.Caution(1259), "");
  model.SetText(1255, " 1203");
  model.SetText(1256, "7");
  EXPECT_EQ(model.Caution(1258), "The same number as \"Aux1 Box SN\"");
  EXPECT_FALSE(model.Validate().has_value());
  form.Commit();
  EXPECT_EQ(Get(table, "SN01") + " " + Get(table, "SN03"), "1203 1203");
}

TEST(Spread, WithoutAnEditOnlyTheListIsWritten) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    ParamTable table = RandomTable(seed);
    testing::SetAll(&table, "SN01=7 SN02=7 SN03=7 SN04=7 SN05=7");  // no gap to close
    const ParamTable before = table;
    Spread(&table).Save();
    for (const std::string& key : Changes(before, table)) {
      EXPECT_TRUE(key == "NCHN" || key == "SNNR") << key;
    }
  }
}

TEST(Spread, ChannelsGoWithTheirBox) {
  ParamTable table = NewTable();
  testing::SetAll(&table, "TECH=1 SN02=22 SN04=44 NPOS4R1=4.5 DEF2R3=Ex DCV2R1=0.5");
  Spread spread(&table);
  EXPECT_EQ(spread.ChannelsTitle(-1), "Channels");
  EXPECT_EQ(spread.ChannelsTitle(1), "Channels of the box in row 2 (Local Box)");
  EXPECT_EQ(spread.BoxName(2), "Aux. Box 22");
  EXPECT_EQ(spread.ChannelCountNote(), "");
  Set(&table, "TCHN", "4");
  EXPECT_NE(spread.ChannelCountNote(), "");
  Set(&table, "TCHN", "0");
  ASSERT_EQ(spread.BoxCount(), 4);
  EXPECT_FALSE(spread.CanDeleteBox(0) || spread.CanDeleteBox(1));
  EXPECT_EQ(spread.ChannelCell(2, 0, kDcVoltage), "500");
  EXPECT_EQ(spread.EditChannel(3, 1, kAcVoltage, "12.5"), "");
  EXPECT_EQ(spread.EditChannel(3, 1, kAcVoltage, "1,5"), "Enter a number.");
  EXPECT_FALSE(spread.CanEditChannel(3, kGainFactor));
  spread.DeleteBox(2);
  EXPECT_EQ(spread.EditBox(2, kBoxChannels, "4"), "Enter an integer between 0 and 3.");
  spread.Save();
  EXPECT_EQ(Get(table, "SN01") + Get(table, "SN02") + Get(table, "SN04"), "4400");
  EXPECT_EQ(Get(table, "NPOS1R1"), "4.5") << "box 44 keeps its channels under its new number";
  EXPECT_EQ(Get(table, "ACV1R2"), "0.0125");

  const int added = spread.InsertBox(kAuxiliaryBox);
  EXPECT_EQ(added, 3);
  EXPECT_EQ(spread.EditBox(added, kBoxSerial, "55"), "");
  spread.Save();
  EXPECT_EQ(Get(table, "SN02"), "55");
  EXPECT_EQ(Get(table, "DEF2R3"), "") << "a new box has none of an old one's channels";
}

TEST(Spread, InsertsAndDeletesWithinTheLimits) {
  ParamTable table = NewTable();
  testing::SetAll(&table, "NCHN=2 CHDEF1=Ex CHDEF2=Ey");
  Spread inserting(&table);
  inserting.InsertChannel(1, 0);
  inserting.Save();
  EXPECT_EQ(Values(table, "NCHN CHDEF1 CHDEF2 CHDEF3"), "3  Ex Ey");
  Spread deleting(&table);
  deleting.DeleteChannel(1, 0);
  deleting.Save();
  EXPECT_EQ(Values(table, "NCHN CHDEF1 CHDEF2"), "2 Ex Ey");
  Spread spread(&table);
  spread.InsertChannel(1, 1);
  EXPECT_EQ(spread.ChannelCell(1, 2, kDefinition), "Ey");
  EXPECT_EQ(spread.ChannelCell(1, 1, kGainFactor) + spread.ChannelCell(1, 1, kFlagColumn), "11")
      << "to be recorded";
  spread.DeleteChannel(1, 0);
  spread.Save();
  EXPECT_EQ(Get(table, "NCHN") + Get(table, "CHDEF1") + Get(table, "CHDEF2"), "2Ey");
  for (int i = 0; i < 8; ++i) {
    spread.InsertChannel(1, 0);
    spread.InsertBox(kAuxiliaryBox);
  }
  EXPECT_EQ(spread.ChannelCount(1), 8);
  ASSERT_EQ(spread.InsertChoices().size(), 2U);
  EXPECT_FALSE(spread.InsertChoices()[0].is_enabled) << "five there are";
  EXPECT_EQ(spread.InsertChoices()[1].kind, kReferenceBox);
  spread.InsertBox(kReferenceBox);
  EXPECT_TRUE(spread.InsertChoices().empty());
  EXPECT_FALSE(spread.CanInsertChannel(0));
}

// A line to the east from (100, 50), dipoles of 25 m, over three boxes; the transmitter is west of
// it.
TEST(LineLayout, RunsOverTheBoxesAndPlacesTheTransmitter) {
  struct Case {
    Tech tech;
    const char* array_type;
    const char* transmitter;  // its NPOS, EPOS, NNEG and ENEG, which were all 7
    int count;
  };
  for (const auto& [tech, array_type, transmitter, count] :
       {Case{kSip, "1", "100 -50 100 -90", 12}, Case{kTdip, "2", "100 -50 7 7", 11},
        Case{kSip, "3", "100 -50 7 7", 11}, Case{kSip, "5", "7 7 7 7", 10},
        Case{kCsamt, "9", "7 7 7 7", 10}}) {
    SCOPED_TRACE(FormatInt(tech) + " " + array_type);
    ParamTable table = NewTable();
    testing::SetAll(&table,
                    "NRXPOS=100 ERXPOS=50 NTXCSRX=100 ETXCSRX=-50 RXLEN=25 TXLEN=40 EAZM=90 TCHN=0 "
                    "NCHN=3 CHDEF1=Ex1 CHDEF2=Hy CHDEF3=e2 SN01=11 NCHN1R=2 DEF1R1= DEF1R2=Ex "
                    "SN02=22 NCHN2R=1 DEF2R1=Ex SNNR=99 EPOS2=1 EPOSN1=8 NPOSTX=7 EPOSTX=7 "
                    "NNEGTX=7 ENEGTX=7");
    Set(&table, "TECH", FormatInt(tech));
    Set(&table, "ARRYTYP", array_type);
    SiteForm form(&table, tech, kModels);
    static_cast<void>(form.Open());
    Spread spread(&table);
    const std::string told = CalculateCoordinates(form, &spread);
    EXPECT_EQ(told.find(FormatInt(count) + " electrode positions set"), 0U) << told;
    spread.Save();
    EXPECT_EQ(
        Values(table,
               "EPOS1 ENEG1 EPOS2 EPOS3 ENEG3 EPOS1R1 ENEG1R1 EPOS1R2 EPOS2R1 ENEG2R1 EPOSN1"),
        "50 75 1 75 100 100 125 125 150 175 8")
        << "the coil and the reference stay";
    EXPECT_EQ(Values(table, "NPOSTX EPOSTX NNEGTX ENEGTX"), transmitter);
  }
  ParamTable table = NewTable();
  SiteForm form(&table, kSip, kModels);
  static_cast<void>(form.Open());
  Spread spread(&table);
  EXPECT_EQ(CalculateCoordinates(form, &spread).find("No positions set"), 0U);
}

}  // namespace
}  // namespace orvane
