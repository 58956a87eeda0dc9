// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/comm_forms.h"

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
    EXPECT_EQ(form.HardwareText().find("is not a known radio") != std::string::npos, test.band < 0);
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

TEST_F(CommForms, PortsThatNoServerHasAreCautioned) {
  FtpForm form(&table_);
  for (const auto& [port, is_port] : {std::pair("-1", false), std::pair("0", true),
                                      std::pair("65535", true), std::pair("65536", false)}) {
    form.Model().SetText(FtpForm::kPort, port);
    EXPECT_EQ(form.Model().Caution(FtpForm::kPort).empty(), is_port) << port;
  }
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
  for (const auto& [gain, amplitude, type, caption] :
       {std::tuple("100.0005", "-0.05", 0, "x16   ( 0 - 1.56A )"),
        std::tuple("5", "-0.1009", 1, "x16   ( 0 - 31.25A )"),
        std::tuple("100.01", "-0.05", -1, "x16"), std::tuple("5", "-0.05", -1, "x16")}) {
    SCOPED_TRACE(gain);
    Set("CNOM", gain);
    Set("CAMP", amplitude);
    CurrentSensorForm form(&table_);
    form.Open();
    EXPECT_EQ(form.Model().Index(CurrentSensorForm::kType), type);
    EXPECT_EQ(form.Model().ButtonCaption(1045), caption);
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
  constexpr auto kStored = std::to_array<const char*>(
      {"100 -0.206 0 0 0 ZUMI ZUMI ZUMI", "1000 -0.206 0.2 0.4 0 TARK TARK TARK",
       "500 -0.235 0.4 0.8 0.00159 VEXA VEXA VEXA", "50 -0.206 0.25 0.5 0 QELO QELO QELO",
       "150 -0.206 0.1 0.25 0 WISP WISP WISP"});
  for (std::size_t type = 0; type < kStored.size(); ++type) {
    form.Open();
    form.Model().SetIndex(CoilForm::kType, static_cast<int>(type));
    form.OnEdited(CoilForm::kType);
    EXPECT_EQ(form.Model().Text(CoilForm::kMaxCorner) == "0.50", type == 3);
    form.Commit();
    EXPECT_EQ(testing::Values(table_, "HNOM HAMP CCMN CCMX CPHC HXSN HYSN HZSN"), kStored[type]);
  }
}

TEST_F(CommForms, TheBoxStatusShowsWhatTheBoxStored) {
  for (const auto& [control, key, stored, shown] :
       {std::tuple(1269, "CLST", "3", "Aligned to OCXO"), std::tuple(1269, "CLST", "5", "Unknown"),
        std::tuple(1269, "CLST", "-1", "Unknown"), std::tuple(1274, "DISK", "-1048576", "-1.00"),
        std::tuple(1277, "FTIM", "2026/01/01 03:00:00", "2026/01/01 03:00:00")}) {
    Set(key, stored);
    BoxStatusForm form(&table_);
    form.Open();
    EXPECT_EQ(form.Model().Text(control), shown);
  }
  Set("TMDIFF", "-5");
  BoxStatusForm form(&table_);
  form.Open();
  for (const auto& [is_local, shown] :
       {std::pair(1, "2025/12/31 22:00:00"), std::pair(0, "2026/01/01 03:00:00")}) {
    form.Model().SetIndex(BoxStatusForm::kLocalTime, is_local);
    form.OnEdited(BoxStatusForm::kLocalTime);
    EXPECT_EQ(form.Model().Text(1277), shown);
  }
}

}  // namespace
}  // namespace orvane
