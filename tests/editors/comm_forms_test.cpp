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

// What is entered into one control, and the one key that it goes to.
struct Entry {
  int control;
  const char* key;
  const char* entered;  // text, or for a choice its index
  const char* stored;
};

template <typename Form>
void ExpectKeys(ParamTable* table, Form* form, std::initializer_list<Entry> entries) {
  for (const Entry& entry : entries) {
    SCOPED_TRACE(entry.key);
    form->Open();
    FormModel& model = form->Model();
    if (HasIndex(model.FieldOf(entry.control).widget)) {
      model.SetIndex(entry.control, *entry.entered - '0');
    } else {
      model.SetText(entry.control, entry.entered);
    }
    const ParamTable before = *table;
    form->Commit();
    EXPECT_EQ(testing::Changes(before, *table), std::set<std::string>{entry.key});
    EXPECT_EQ(testing::Get(*table, entry.key), entry.stored);
  }
}

TEST_F(CommForms, EveryControlWritesItsOwnKey) {
  RadioForm radio(&table_);
  ExpectKeys(&table_, &radio,
             {{1002, "MSTR", "1", "1"},
              {1006, "RPWR", "2", "2"},
              {1007, "NADR", "7", "7"},
              {1008, "EKEY", "8", "8"},
              {1266, "SNUM", "10000", "10000"},
              {1010, "SNNR", "10", "10"},
              {1011, "SN01", "11", "11"},
              {1012, "SN02", "12", "12"},
              {1013, "SN03", "13", "13"},
              {1014, "SN04", "14", "14"},
              {1015, "SN05", "15", "15"},
              {1009, "SNTX", "9", "9"}});
  PlainForm gsm(&table_, GsmFields());
  ExpectKeys(&table_, &gsm,
             {{1239, "PHNE", "*99#", "*99#"},
              {1240, "PPPNAME", "u", "u"},
              {1241, "PPPPSWD", "p", "p"},
              {1242, "GNETAP0", "net", "net"},
              {1243, "IPSRV0", "ip", "ip"},
              {1289, "FTPSUSR", "fu", "fu"},
              {1290, "FTPSPWD", "fp", "fp"}});
  FtpForm ftp(&table_);
  ExpectKeys(&table_, &ftp,
             {{1281, "FTPCTIM", "1", "1"},
              {1283, "FTPCMIN", "30", "30"},
              {1284, "FTPCSR0", "host", "host"},
              {1290, "FTPCPRT", "-1", "-1"},
              {1291, "FTPCUSR", "u", "u"},
              {1292, "FTPCPWD", "p", "p"},
              {1285, "FTPC1EN", "1", "1"},
              {1286, "FTPC1DL", "1", "1"},
              {1287, "FTPC1P0", "/data", "/data"},
              {1288, "FTPC2EN", "1", "1"},
              {1289, "FTPC2P0", "/cal", "/cal"}});
  CoilForm coil(&table_, {"A", "B", "C", "D"});
  ExpectKeys(&table_, &coil, {{1016, "CCLT", "9", "9"}, {1091, "HYSN", "H2", "H2"}});
}

TEST_F(CommForms, RangesEndWhereTheyShould) {
  RadioForm radio(&table_);
  FtpForm ftp(&table_);
  CoilForm coil(&table_, {"A", "B", "C", "D"});
  struct Case {
    FormModel* model;
    int control;
    const char* first;
    const char* last;
    const char* below;
    const char* above;
  };
  for (const Case& test : {Case{&radio.Model(), 1007, "0", "65535", "-1", "65536"},
                           Case{&radio.Model(), 1008, "0", "65535", "-1", "65536"},
                           Case{&radio.Model(), 1015, "0", "9999", "-1", "10000"},
                           Case{&ftp.Model(), 1283, "0", "10000000", "-1", "10000001"},
                           Case{&coil.Model(), 1016, "1", "1000", "0", "1001"}}) {
    SCOPED_TRACE(test.control);
    for (const auto& [text, is_right] :
         {std::pair(test.first, true), std::pair(test.last, true), std::pair(test.below, false),
          std::pair(test.above, false)}) {
      test.model->SetText(test.control, text);
      EXPECT_EQ(!test.model->Validate(), is_right) << text;
    }
    test.model->ReadAll();
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
    std::string stored = Get("HNOM");
    for (const char* key : {"HAMP", "CCMN", "CCMX", "CPHC", "HXSN", "HYSN", "HZSN"}) {
      stored.append(" ").append(Get(key));
    }
    EXPECT_EQ(stored, kStored[type]);
  }
}

TEST_F(CommForms, TheBoxStatusShowsWhatTheBoxStored) {
  struct Case {
    int control;
    const char* key;
    const char* stored;
    const char* shown;
  };
  constexpr auto kCases = std::to_array<Case>({{1269, "CLST", "4", "Locked to GPS"},
                                               {1269, "CLST", "3", "Aligned to OCXO"},
                                               {1269, "CLST", "5", "Unknown"},
                                               {1271, "MSTRBRG", "-0.5", "-0.50"},
                                               {1278, "LTIM", "2026/01/01 04:00:00", ""},
                                               {1268, "LFIX", "2026/01/01 05:00:00", ""},
                                               {1256, "GFPG", "17", ""},
                                               {1257, "FFPG", "18", ""},
                                               {1258, "DSP", "19", ""},
                                               {1259, "BADR", "20", ""},
                                               {1260, "SATR", "21", ""},
                                               {1261, "STBADR", "22", ""},
                                               {1273, "TOTL", "23", ""},
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
