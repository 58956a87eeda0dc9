// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/comm_forms.h"

#include <gtest/gtest.h>

#include "editors/box_status.h"
#include "editors/sensor_forms.h"
#include "support/table_help.h"

namespace orvane {
namespace {

class CommForms : public ::testing::Test {
 protected:
  void Set(ParamKey key, std::string_view text) { testing::Set(&table_, key, text); }
  std::string Get(ParamKey key) const { return testing::Get(table_, key); }

  ParamTable table_ = testing::NewTable();
};

TEST_F(CommForms, TheHardwareTextDecidesWhatPowersThereAre) {
  struct Case {
    const char* hardware;
    const char* power;
    int band;
    std::size_t choices;
    int index;
    const char* written;
  };
  for (const Case& test : {Case{"K36w2", "3", 0, 7, 3, "3"}, Case{"K36W2", "7", 0, 7, 6, "6"},
                           Case{"W9W2", "-1", 0, 7, 6, "6"}, Case{"w9", "5", 1, 4, 3, "3"},
                           Case{"K36", "5", -1, 0, -1, "5"}}) {
    SCOPED_TRACE(test.hardware);
    Set("HW", test.hardware);
    Set("RPWR", test.power);
    RadioForm form(&table_);
    form.Open();
    EXPECT_EQ(form.Model().Index(RadioForm::kFrequency), test.band);
    EXPECT_EQ(form.Model().FieldOf(RadioForm::kPower).choices.size(), test.choices);
    EXPECT_EQ(form.Model().Index(RadioForm::kPower), test.index);
    form.Commit();
    EXPECT_EQ(Get("RPWR"), test.written);
    EXPECT_TRUE(form.EarlyChanges().empty());
  }
  Set("HW", "");
  EXPECT_EQ(RadioForm(&table_).EarlyChanges(), std::vector<std::string>{"HW"});
  EXPECT_EQ(Get("HW"), "K36W2");
}

TEST_F(CommForms, SerialNumbersHaveRangesButTheLocalOne) {
  RadioForm form(&table_);
  form.Open();
  form.Model().SetText(RadioForm::kLocalSerial, "10000");
  EXPECT_FALSE(form.Model().Validate());
  form.Model().SetText(RadioForm::kAux5Serial, "10000");
  ASSERT_TRUE(form.Model().Validate());
  EXPECT_EQ(form.Model().Validate()->control, RadioForm::kAux5Serial);
}

TEST_F(CommForms, TextsAreCutToWhatTheirKeysHold) {
  PlainForm form(&table_, GsmFields());
  form.Open();
  ASSERT_EQ(form.Model().CapacityOf(1242), 63U);
  form.Model().SetText(1240, "a user name of 25 letters");
  form.Model().SetText(1242, std::string(400, 'n'));
  EXPECT_FALSE(form.Model().Validate());
  form.Commit();
  EXPECT_EQ(Get("PPPNAME"), "a user name of ");
  std::array<char, kMaxLongText> text{};
  ASSERT_EQ(table_.GetLongParam("GNETAP0", text), kOk);
  EXPECT_EQ(std::string(text.data()), std::string(63, 'n'));
}

TEST_F(CommForms, AChainWithoutAnEndStaysUntilANewTextIsEntered) {
  for (const char* key : {"IPSRV0", "IPSRV1", "IPSRV2", "IPSRV3"}) {
    Set(key, "0123456789ABCDEF");
  }
  PlainForm form(&table_, GsmFields());
  form.Open();
  EXPECT_EQ(form.Model().Text(1243), "");
  EXPECT_FALSE(form.Model().Warning(1243).empty());
  form.Commit();
  EXPECT_EQ(Get("IPSRV3"), "0123456789ABCDEF");
  form.Model().SetText(1243, "");
  form.Commit();
  EXPECT_EQ(Get("IPSRV0"), "");
}

TEST_F(CommForms, NominalGainAndAmplitudeTellTheCurrentSensor) {
  struct Case {
    const char* gain;
    const char* amplitude;
    int type;
    const char* caption;  // of button 1045
  };
  for (const Case& test : {Case{"100.0005", "-0.05", 0, "x16   ( 0 - 1.56A )"},
                           Case{"5", "-0.1009", 1, "x16   ( 0 - 31.25A )"},
                           Case{"100.01", "-0.05", -1, "x16"}, Case{"5", "-0.05", -1, "x16"}}) {
    SCOPED_TRACE(test.gain);
    Set("CNOM", test.gain);
    Set("CAMP", test.amplitude);
    CurrentSensorForm form(&table_);
    form.Open();
    EXPECT_EQ(form.Model().Index(CurrentSensorForm::kType), test.type);
    EXPECT_EQ(form.Model().ButtonCaption(1045), test.caption);
  }
}

TEST_F(CommForms, ASensorTypeBringsItsDefaultsAndASerialNumberLetsThemBeWritten) {
  Set("HGNC", "-1");
  CurrentSensorForm form(&table_);
  form.Open();
  EXPECT_EQ(form.Model().Index(CurrentSensorForm::kGain), 0);
  form.Model().SetIndex(CurrentSensorForm::kType, 1);
  form.OnEdited(CurrentSensorForm::kType);
  form.Commit();
  EXPECT_EQ(Get("CNOM"), "0") << "written without a serial number";
  form.Model().SetText(CurrentSensorForm::kSerial, "CS7");
  form.Model().SetIndex(CurrentSensorForm::kGain, 3);
  form.Commit();
  EXPECT_EQ(Get("CSSN") + " " + Get("CNOM") + " " + Get("CAMP") + " " + Get("CCLT"),
            "CS7 5 -0.1 20");
  EXPECT_EQ(Get("HGNC"), "2");
}

TEST_F(CommForms, CoilButtonsFillInTheirModels) {
  CoilForm form(&table_, {"A", "B", "C", "D"});
  form.Open();
  form.Model().SetIndex(CoilForm::kType, 3);
  form.OnEdited(CoilForm::kType);
  EXPECT_EQ(form.Model().Text(CoilForm::kMaxCorner), "0.50");
  form.Commit();
  EXPECT_EQ(Get("HNOM") + " " + Get("HAMP") + " " + Get("CCMN") + " " + Get("CCMX") + " " +
                Get("CPHC") + " " + Get("HZSN"),
            "50 -0.206 0.25 0.5 0 QELO");
  form.Model().SetText(CoilForm::kTime, "1001");
  EXPECT_TRUE(form.Model().Validate());
}

TEST_F(CommForms, TheBoxStatusShowsWhatTheBoxStored) {
  struct Case {
    int control;
    const char* key;
    const char* stored;
    const char* shown;
  };
  constexpr auto kCases = std::to_array<Case>({{1269, "CLST", "4", "Locked to GPS"},
                                               {1269, "CLST", "5", "Unknown"},
                                               {1269, "CLST", "-1", "Unknown"},
                                               {1276, "BAT1", "12345", "12.345"},
                                               {1274, "DISK", "1073741824", "1024.00"},
                                               {1274, "DISK", "-1048576", "-1.00"},
                                               {1272, "MSTRRNG", "12.3456", "12.35"},
                                               {1277, "FTIM", "2026/01/01 03:00:00", ""}});
  for (const Case& test : kCases) {
    Set(test.key, test.stored);
    BoxStatusForm form(&table_);
    form.Open();
    EXPECT_EQ(form.Model().Text(test.control), *test.shown == 0 ? test.stored : test.shown);
  }
  Set("TMDIFF", "-5");
  BoxStatusForm form(&table_);
  form.Open();
  for (const char* shown : {"2025/12/31 22:00:00", "2026/01/01 03:00:00"}) {
    form.Model().SetIndex(BoxStatusForm::kLocalTime, *shown == '2' && shown[3] == '5' ? 1 : 0);
    form.OnEdited(BoxStatusForm::kLocalTime);
    EXPECT_EQ(form.Model().Text(1277), shown);
  }
}

}  // namespace
}  // namespace orvane
