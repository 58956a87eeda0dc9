// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/meanings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "editors/acq_fields.h"
#include "meaning/explain.h"
#include "meaning/field_tip.h"
#include "meaning/label_parts.h"
#include "support/table_help.h"
#include "support/temp_dir.h"

namespace orvane {
namespace {

// The keys that stand as literals in our sources, but for the dictionary and the meanings.
std::set<std::string> NamedKeys(const ParamTable& table) {
  static const std::regex kLiteral("\"([A-Z0-9]{2,7})\"");
  std::set<std::string> keys;
  for (const auto& file : std::filesystem::recursive_directory_iterator(ORVANE_SOURCES)) {
    const std::string name = file.path().filename().string();
    const bool is_source = name.ends_with(".cpp") || name.ends_with(".h");
    if (!is_source || name == "param_dictionary.cpp" ||
        file.path().parent_path().filename() == "meaning") {
      continue;
    }
    const std::string text = testing::ReadAll(file.path());
    for (std::sregex_iterator at(text.begin(), text.end(), kLiteral), end; at != end; ++at) {
      if (table.FindParam((*at)[1].str()) != nullptr) {
        keys.insert((*at)[1].str());
      }
    }
  }
  keys.erase("FILE");  // what the tool's help calls an input
  return keys;
}

TEST(Meanings, KnowEveryKeyThatTheSourcesName) {
  const ParamTable table = testing::NewTable();
  const Meanings meanings;
  const std::set<std::string> named = NamedKeys(table);
  EXPECT_GT(named.size(), 150U) << "the sources were not found";
  for (const std::string& key : named) {
    EXPECT_NE(meanings.Find(key), nullptr) << key;
  }
}

TEST(Meanings, AreOfKeysOfTheTableAndHaveNames) {
  const ParamTable table = testing::NewTable();
  const Meanings meanings;
  std::set<std::string> keys;
  ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    if (const KeyMeaning* meaning = meanings.Find(key); meaning != nullptr) {
      EXPECT_NE(meaning->name, "") << key.Text();
      keys.insert(key.Text());
    }
  }
  EXPECT_EQ(keys.size(), 533U) << "the guide tells this number";
  EXPECT_EQ(meanings.Count(), keys.size()) << "a meaning is of no key";
}

TEST(Meanings, TellNameUnitRangeAndValues) {
  struct Case {
    const char* key;
    const char* expected;  // name|unit|range|values
  };
  const Meanings meanings;
  for (const auto& [key, expected] : std::to_array<Case>({
           {"TECH", "Survey method|||1: SIP; 2: TDIP; 3: TDEM; 4: CSAMT; 5: MT/AMT; 6: FDEM"},
           {"ACDC", "E coupling|||0: DC coupling; 1: AC coupling"},
           {"HGNC", "H gain|||-1: x 0.25; 0: x 1; 1: x 4; 2: x 16"},
           {"L2NS", "Band 2 records per slot||0 to 4|"},
           {"COMBON", "Enable comb filter|||0: no; 1: yes"},
           {"DXDC", "Ex DC voltage|V||"},
           {"BAT1", "Battery|mV||"},
           {"EAZM", "Ex dipole azimuth|degree||"},
           {"CCLT", "Calibration time|20 min or 12 min|1 to 1000|"},
           {"HXSN", "Hx serial number||at most 8 characters|"},
           {"CMPY3", "Company, part 3|||"},
           {"GNETAP3", "GSM Access Point Name, part 4|||"},
           {"CLST",
            "Clock status|||0: Uninitialized; 1: Based on CPU; 2: Synch in progress; "
            "3: Aligned to OCXO; 4: Locked to GPS; 5: Unknown"},
           {"TXTYPE",
            "Transmitter type|||0: Unknown; 1: Transmitter 1; 2: Transmitter 2; "
            "3: Transmitter 3; 4: Transmitter 4"},
           {"RPWR",
            "Radio power|||0: 10mW or 1mW; 1: 50mW or 10mW; 2: 100mW; 3: 250mW or 1W; 4: 500mW; "
            "5: 750mW; 6: 1W"},
           {"FTPCPRT", "FTP server port||0 to 65535|"},
           {"TXLEN", "Tx dipole length (AB)|m or m^2||"},
           {"TXAZIM", "Azimuth of the transmitter's diagonal or dipole|degree||"},
           {"FLAGN2", "Reference box, channel 2: flag|||"},
           {"SSIZ4R3", "Auxiliary box 4, channel 3: sensor size|m or m^2||"},
           {"FR19", "Requested frequency 20|Hz||"},
           {"SRL15", "Sample rate of band 15|Hz||"},
       })) {
    const KeyMeaning* meaning = meanings.Find(key);
    ASSERT_NE(meaning, nullptr) << key;
    EXPECT_EQ(meaning->name + '|' + meaning->unit + '|' + meaning->range + '|' +
                  CodedValuesText(*meaning),
              expected)
        << key;
  }
  EXPECT_EQ(meanings.Find("SITN"), nullptr);
}

TEST(Meanings, NameEveryControlOfAKey) {
  const Meanings meanings;
  EXPECT_EQ(
      PlacesText(*meanings.Find("HGNC")),
      "Acquisition Parameters: H gain; Current Sensor: Gain; Save DMUGVR  Startup File: Gain");
  EXPECT_EQ(PlacesText(*meanings.Find("NSAT")), "Box Status: GPS satellites (shown)");
  EXPECT_EQ(PlacesText(*meanings.Find("RESN1")), "IP Site Setup: Resistance (ohm)");
  EXPECT_EQ(PlacesText(*meanings.Find("LPFR")),
            "Acquisition Parameters: Low-pass filter; Acquisition Parameters: VLF trap");
  EXPECT_EQ(meanings.Find("HGNC")->places[1].control, 1046);
}

TEST(Meanings, SayWhatAValueStandsFor) {
  ParamTable table = testing::NewTable();
  const Meanings meanings({"Alder", "Birch", "Cedar", "Durum"});
  for (const auto& [setting, line] : std::to_array<std::pair<const char*, const char*>>({
           {"TECH=2", "Survey method: TDIP"},
           {"TECH=9", "Survey method: not a listed value"},
           {"TXTYPE=3", "Transmitter type: Cedar"},
           {"COMBON=7", "Enable comb filter: yes"},
           {"LPFR=81", "Low-pass filter and VLF trap: 1, VLF trap"},
           {"EXLN=30", "Ex dipole length (m)"},
           {"SITN=x", "not used by Orvane"},
       })) {
    testing::SetAll(&table, setting);
    const std::string key(setting, std::string_view(setting).find('='));
    EXPECT_EQ(meanings.Line(*table.FindParam(key)), line);
  }
}

TEST(Meanings, CautionOfWhatNoDialogAccepts) {
  ParamTable table = testing::NewTable();
  const Meanings meanings;
  for (const auto& [setting, caution] : std::to_array<std::pair<const char*, const char*>>({
           {"L2NS=4", ""},
           {"L2NS=5", "out of range (0 to 4)"},
           {"L2NS=-1", "out of range (0 to 4)"},
           {"FDRIFT=100.5", "out of range (0 to 100)"},
           {"HXSN=12345678", ""},
           {"HXSN=123456789", "out of range (at most 8 characters)"},
           {"CMPY1=fifteen_letters", ""},
           {"TECH=9", "not a listed value"},
           {"COMBON=7", ""},
           {"SITN=x", ""},
       })) {
    testing::SetAll(&table, setting);
    const std::string key(setting, std::string_view(setting).find('='));
    EXPECT_EQ(meanings.Caution(*table.FindParam(key)), caution) << setting;
  }
  const RawMeaning raw = RawMeaningOf(meanings, *table.FindParam("TECH"));
  EXPECT_EQ(raw.line, "Survey method: not a listed value");
  EXPECT_TRUE(raw.is_in_dialog);
  ASSERT_EQ(raw.choices.size(), 6U);
  EXPECT_EQ(raw.choices[4].value + raw.choices[4].meaning, "5MT/AMT");
  EXPECT_FALSE(RawMeaningOf(meanings, *table.FindParam("SITN")).is_in_dialog);
}

TEST(Meanings, MakeTipsOfFields) {
  const ParamTable table = testing::NewTable();
  const Meanings meanings;
  const auto tip = [&](const Field& field) {
    return FieldTipText(meanings, field, table) + " | " + FieldTipInBrief(meanings, field);
  };
  for (const Field& field : AcqFields()) {
    if (field.control == acq::kBand2) {
      EXPECT_EQ(tip(field),
                "Band 2 records per slot\nParameter: L2NS\nRange: 0 to 4\n"
                "A box may change it in mode 0 to 18 (Any Mode) | L2NS, 0 to 4");
    } else if (field.control == acq::kFilter) {
      EXPECT_EQ(tip(field),
                "Low-pass filter\nParameter: LPFR\n"
                "A box may change it in mode 1, 11, 12, 14, 15 (Setup, Pause and Standby) | LPFR");
    }
  }
  EXPECT_EQ(tip({1, Widget::kText, "Company", "CMPY", StrPT, Pieces(4)}),
            "Company\nParameters: CMPY1 to CMPY4\n"
            "A box may change it in mode 0 to 18 (Any Mode) | CMPY1 to CMPY4");
  EXPECT_EQ(tip({1, Widget::kReal, "Ex DC voltage (mv)", "DXDC", FltPT}),
            "Ex DC voltage\nParameter: DXDC\nUnit: mV, stored in V\n"
            "A box may change it in mode 0 to 18 (Any Mode) | DXDC");
  EXPECT_EQ(tip({1, Widget::kReal, "Setup interval (m)", "RXLEN", FltPT}),
            "Setup interval\nElsewhere: Rx dipole length (MN)\nParameter: RXLEN\nUnit: m\n"
            "A box may change it in mode 0 to 18 (Any Mode) | RXLEN");
  EXPECT_EQ(tip({1, Widget::kReal, "Zoom (s)", "", FltPT, {}, {1, 9}}),
            "Zoom\nUnit: s\nRange: 1 to 9 | ");
}

TEST(LabelParts, TakeUnitsApart) {
  for (const auto& [label, name, unit] :
       std::to_array<std::array<std::string_view, 3>>({{"Max  DC (mv)", "Max DC", "mV"},
                                                       {"Disk space ( MB )", "Disk space", "MB"},
                                                       {"Rx length (MN)", "Rx length (MN)", ""},
                                                       {"Azimuth from BL:", "Azimuth from BL", ""},
                                                       {"(s)", "", "s"},
                                                       {")", ")", ""},
                                                       {"", "", ""}})) {
    EXPECT_EQ(PartsOf(label).name, name) << label;
    EXPECT_EQ(PartsOf(label).unit, unit) << label;
  }
}

}  // namespace
}  // namespace orvane
