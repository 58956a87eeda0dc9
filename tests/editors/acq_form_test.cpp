// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/acq_form.h"

#include <algorithm>
#include <map>
#include <memory>
#include <random>

#include "support/table_help.h"
#include "support/told.h"
#include "table/param_text.h"

namespace orvane {
namespace {

using Settings = std::vector<std::pair<const char*, const char*>>;
using Keys = std::vector<std::string>;

void Set(ParamTable* table, const Settings& settings) {
  for (const auto& [key, text] : settings) {
    testing::Set(table, key, text);
  }
}
using testing::Get;

class Acq : public ::testing::Test {
 protected:
  void Open(const Settings& settings) {
    table_ = testing::NewTable();
    Set(&table_, settings);
    form_ = std::make_unique<AcqForm>(&table_, &now_);
    form_->Open();
  }
  void Choose(int control, int index) {
    form_->Model().SetIndex(control, index);
    form_->OnEdited(control);
  }
  void Type(int control, const char* text) { form_->Model().SetText(control, text); }
  int Index(int control) const { return form_->Model().Index(control); }
  std::string Text(int control) const { return form_->Model().Text(control); }
  bool IsOn(int control) const { return form_->Model().IsEnabled(control); }
  std::string Get(const char* key) const { return testing::Get(table_, key); }
  // The values of keys, one behind the other, after an OK.
  std::string Committed(const std::vector<const char*>& keys) {
    form_->Commit();
    std::string texts;
    for (const char* key : keys) {
      texts += texts.empty() ? "" : "|";
      texts += Get(key);
    }
    return texts;
  }

  testing::FixedClock now_;
  ParamTable table_;
  std::unique_ptr<AcqForm> form_;
};

TEST_F(Acq, FilterAndTrapShareOneCode) {
  struct Case {
    const char* tech;
    const char* sampling;
    const char* stored;
    int filter;
    int trap;
    const char* written;
  };
  for (const Case& test : {
           Case{"1", "0", "82", 3, 1, "82"},
           Case{"1", "1", "16", 1, 0, "16"},
           Case{"4", "2", "20", 5, 0, "20"},
           Case{"6", "0", "80", 1, 1, "80"},
           Case{"1", "1", "162", 1, 0, "16"},
           Case{"1", "0", "21", 1, 0, "16"},
           Case{"5", "1", "162", 3, 0, "162"},
           Case{"5", "1", "160", 1, 0, "160"},
           Case{"5", "1", "164", 5, 0, "164"},
           Case{"5", "1", "82", 1, 0, "160"},
           Case{"5", "7", "163", 4, 0, "163"},
           Case{"5", "2", "84", 5, 1, "84"},
           Case{"5", "0", "162", 1, 0, "16"},
           Case{"2", "0", "82", 0, 0, "0"},
           Case{"3", "1", "0", 0, 0, "0"},
           Case{"0", "0", "82", -1, 0, "82"},
           Case{"9", "0", "77", -1, 0, "77"},
       }) {
    SCOPED_TRACE(std::string(test.tech) + "/" + test.sampling + "/" + test.stored);
    Open({{"TECH", test.tech}, {"MTSR", test.sampling}, {"LPFR", test.stored}});
    EXPECT_EQ(Index(acq::kFilter), test.filter);
    EXPECT_EQ(Index(acq::kVlfTrap), test.trap);
    EXPECT_EQ(Committed({"LPFR"}), test.written);
    EXPECT_EQ(Get("TECH"), test.tech);
  }
}

TEST_F(Acq, MethodDecidesWhatCanBeSet) {
  struct Case {
    int function;
    const char* on;  // enabled ones of: Record, CS_Record, start, trap, drift, comb, Off, "2", E AC
    int couplings;   // chosen from AC and DC
    const char* wfrm;
    const char* numitem;  // from 30
  };
  for (const Case& test : {
           Case{0, "010101011", 0, "4", "1"},
           Case{1, "010010100", 0, "1", "16"},
           Case{2, "010010100", 0, "1", "21"},
           Case{3, "010101011", 1, "4", "1"},
           Case{4, "101101011", 0, "4", "1"},
           Case{5, "010101011", -1, "4", "1"},
       }) {
    SCOPED_TRACE(test.function);
    const std::string tech = std::to_string(test.function + 1);
    Open({{"TECH", tech.c_str()}, {"ACDC", "0"}, {"ACDH", "0"}, {"NUMITEM", "30"}});
    std::string on;
    for (const int control :
         {acq::kRequestRecord, acq::kRequestCsRecord, acq::kStart, acq::kVlfTrap, acq::kDrift,
          acq::kCombFilter, acq::kFilterOff, 1039, acq::kEAcCoupling}) {
      on += IsOn(control) ? '1' : '0';
    }
    EXPECT_EQ(on, test.on);
    EXPECT_EQ(Index(acq::kECoupling), test.couplings);
    EXPECT_EQ(Index(acq::kHCoupling), test.couplings);
    EXPECT_EQ(Get("WFRM"), test.wfrm);
    EXPECT_EQ(Get("NUMITEM"), test.numitem);
    EXPECT_EQ(form_->CouplingNote(), test.couplings == -1 ? "E/H coupling not set" : "");
  }
  EXPECT_EQ(Committed({"ACDC", "ACDH"}), "-1|-1");
}

TEST_F(Acq, NumberOfWindowsIsKeptBetweenSixAndTwenty) {
  for (const auto& [tech, stored, written] :
       {std::array{"2", "3", "16"}, std::array{"2", "5", "16"}, std::array{"2", "6", "6"},
        std::array{"3", "20", "20"}, std::array{"3", "5", "21"}, std::array{"2", "21", "16"}}) {
    Open({{"TECH", tech}, {"NUMITEM", stored}});
    EXPECT_EQ(Get("NUMITEM"), written) << tech << "/" << stored;
  }
}

TEST_F(Acq, ClickingThroughTheMethods) {
  Open({{"TECH", "2"},
        {"MTSR", "1"},
        {"NUMITEM", "10"},
        {"WFRM", "1"},
        {"FDRIFT", "2.5"},
        {"RQST", "13"},
        {"GFC1", "3"}});
  EXPECT_EQ(Get("GFC1"), "3") << "not on opening";
  EXPECT_EQ(form_->EarlyChanges(), Keys{});
  Choose(acq::kFunction, 4);
  EXPECT_EQ(Index(acq::kFilter), 3) << "from the time domain";
  EXPECT_EQ(Index(acq::kRequest), 0) << "CS_Record is not for MT/AMT";
  EXPECT_EQ(Index(acq::kSampling), 1) << "as stored: only SIP, CSAMT and FDEM choose AMT";
  EXPECT_EQ(Get("GFC1"), "3");
  Type(acq::kBand4, "3");
  EXPECT_FALSE(IsOn(acq::kVlfTrap) || IsOn(acq::kBand2));
  EXPECT_TRUE(IsOn(acq::kBand3) && IsOn(acq::kBand4));
  Choose(acq::kSampling, 2);
  EXPECT_TRUE(IsOn(acq::kBand2) && IsOn(acq::kVlfTrap));
  EXPECT_FALSE(IsOn(acq::kBand3) || IsOn(acq::kBand4));
  form_->Model().SetIndex(acq::kRequest, 1);
  Choose(acq::kFunction, 5);
  EXPECT_EQ(Index(acq::kRequest), 0) << "Record is for MT/AMT alone";
  EXPECT_EQ(Get("CHHX") + Get("CHHY") + Get("CHHZ"), "456");
  EXPECT_EQ(Index(acq::kSampling), 0);
  Choose(acq::kFunction, 2);
  EXPECT_EQ(Text(acq::kBand4), Get("L4NS")) << "what stays stored";
  EXPECT_EQ(Text(acq::kDrift), "0");
  EXPECT_EQ(Get("GFC1") + Get("GFC8"), "11");
  EXPECT_EQ(form_->EarlyChanges(), (Keys{"NUMITEM", "CHHX", "CHHY", "CHHZ", "GFC1", "GFC2", "GFC3",
                                         "GFC4", "GFC5", "GFC6", "GFC7", "GFC8"}))
      << "WFRM is again what it was";
  EXPECT_EQ(Get("TECH") + Get("FDRIFT"), "22.5") << "until OK";
  EXPECT_EQ(Index(acq::kSampling), 1);
  EXPECT_EQ(Committed({"TECH", "FDRIFT", "LPFR", "MTSR"}), "3|0|0|1");
  Choose(acq::kFunction, 4);
  EXPECT_EQ(Text(acq::kBand4), "3") << "and what was typed for MT/AMT is back";
}

TEST_F(Acq, TimesThatCannotBeMeantAreCautioned) {
  struct Case {
    const char* start;
    const char* end;
    const char* cautions;  // at 2026/11/21 08:00:00 UTC, shown two hours later
  };
  for (const auto& [start, end, cautions] :
       {Case{"2026/11/21 09:00:00", "2026/11/21 10:00:00", "|"},
        Case{"2026/11/21 07:59:59", "2026/11/21 10:00:00",
             "This is in the past (it is 2026/11/21 08:00:00 UTC)|"},
        Case{"07:00:00", "2026/11/21 06:00:00",
             "This is in the past (it is 2026/11/21 08:00:00 UTC)|This is before the start"},
        Case{"19:00:00", "01:00:00", "|"}, Case{"00:00:00", "2020/01/01", "|"}}) {
    Open({{"TECH", "5"}, {"TMZONE", "1"}, {"TMDIFF", "2"}, {"STIM", start}, {"ETIM", end}});
    const FormModel& model = form_->Model();
    EXPECT_EQ(model.Caution(acq::kStart) + "|" + model.Caution(acq::kEnd), cautions) << start;
    EXPECT_FALSE(model.Validate().has_value());
  }
  Type(acq::kStart, "2026/11/21 09:59:00");
  EXPECT_NE(form_->Model().Caution(acq::kStart), "") << "07:59 UTC";
  Choose(acq::kFunction, 0);
  EXPECT_EQ(form_->Model().Caution(acq::kStart), "") << "no schedule";
}

TEST_F(Acq, WhatADisabledFieldShowsIsStored) {
  Open({{"TECH", "1"}, {"COMBON", "1"}});
  form_->Model().SetIndex(acq::kCombFilter, 0);
  Choose(acq::kFunction, 1);
  Type(acq::kDrift, "7");
  Choose(acq::kFunction, 0);
  EXPECT_EQ(Committed({"COMBON", "FDRIFT"}), "0|7");
}

TEST_F(Acq, TimesFollowTheZone) {
  Open({{"TECH", "5"}, {"TMZONE", "7"}, {"TMDIFF", "8"}, {"STIM", "2026/11/21 00:00:00"}});
  EXPECT_EQ(Text(acq::kStart), "2026/11/21 08:00:00");
  Type(acq::kEnd, "2026/11/22 01:00:00");
  Choose(acq::kZoneKind, 0);
  EXPECT_EQ(Text(acq::kStart), "2026/11/21 00:00:00");
  EXPECT_EQ(Text(acq::kEnd), "2026/11/21 17:00:00");
  Choose(acq::kZoneKind, 1);
  Choose(acq::kZone, 9);
  EXPECT_EQ(Text(acq::kStart), "2026/11/20 21:00:00");
  EXPECT_EQ(Committed({"STIM", "ETIM", "TMZONE", "TMDIFF"}),
            "2026/11/21 00:00:00|2026/11/21 17:00:00|1|-3");

  // Hours that the list lacks are used all the same; absurd ones leave the time unshifted.
  for (const auto& [hours, shown] :
       {std::array{"14", "2026/11/21 14:00:00"}, std::array{"-2147483648", "2026/11/21 00:00:00"},
        std::array{"2147483647", "2026/11/21 00:00:00"}}) {
    Open({{"TECH", "5"}, {"TMZONE", "1"}, {"TMDIFF", hours}, {"STIM", "2026/11/21 00:00:00"}});
    EXPECT_EQ(Index(acq::kZone), kNothingChosen);
    EXPECT_EQ(Text(acq::kStart), shown);
    EXPECT_EQ(Committed({"TMDIFF", "STIM"}), std::string(hours) + "|2026/11/21 00:00:00");
    Choose(acq::kZone, 0);
    EXPECT_EQ(Text(acq::kStart), "2026/11/20 12:00:00");
  }
}

TEST_F(Acq, CalcSpaceStoresTimesAsShownAndOkPutsThemRight) {
  Open({{"TECH", "5"},
        {"TMZONE", "1"},
        {"TMDIFF", "8"},
        {"MTSR", "0"},
        {"L2NS", "2"},
        {"L3NS", "1"},
        {"L4NS", "3"},
        {"HSMP", "1"},
        {"STIM", "2026/11/21 06:00:00"},
        {"ETIM", "2026/11/21 06:00:00"},
        {"HTIM", "06:00:00"},
        {"ETMH", "06:00:00"}});
  EXPECT_EQ(Text(acq::kSpace), "0");
  Type(acq::kEnd, "2026/11/21 15:00:00");
  form_->Model().Enable(acq::kBand4, true);
  Type(acq::kBand4, "99");
  form_->Model().Enable(acq::kBand4, false);
  form_->CalculateSpace();
  EXPECT_EQ(Text(acq::kSpace), "157.8048706");
  EXPECT_EQ(form_->SpaceNote(), "");
  EXPECT_EQ(Get("STIM"), "2026/11/21 14:00:00");
  EXPECT_EQ(Get("ETIM"), "2026/11/21 15:00:00");
  EXPECT_EQ(Get("L4NS"), "3") << "nobody checked what stands in a disabled field";
  EXPECT_EQ(form_->EarlyChanges(), (Keys{"STIM", "ETIM", "HTIM", "ETMH"}));
  // 20 channels for 30 days at 2400 samples a second: 2592000 x 144032 bytes, modulo 2^32.
  Choose(acq::kSampling, 2);
  Type(acq::kChannels, "20");
  Type(acq::kEnd, "2026/12/21 14:00:00");
  form_->CalculateSpace();
  EXPECT_EQ(Text(acq::kSpace), "3780.132812");
  EXPECT_EQ(form_->SpaceNote(), "(> 4096 Mb: 356036.1328)");
  EXPECT_EQ(Committed({"STIM", "ETIM", "HTIM", "MTSR"}),
            "2026/11/21 06:00:00|2026/12/21 06:00:00|06:00:00|2");
}

TEST_F(Acq, ChecksWhatIsEnabledAndEdited) {
  Open({{"TECH", "5"}, {"HSMP", "0"}});
  EXPECT_FALSE(form_->Model().Validate().has_value());
  Type(acq::kHighStart, "25:00:00");
  ASSERT_TRUE(form_->Model().Validate().has_value());
  EXPECT_EQ(form_->Model().Validate()->control, acq::kHighStart);
  form_->CopyTimesToHighRates();
  EXPECT_FALSE(form_->Model().Validate().has_value());
  EXPECT_EQ(Text(acq::kHighStart), "00:00:00");
  Type(acq::kDrift, "101");
  EXPECT_FALSE(form_->Model().Validate().has_value()) << "no drift in the frequency domain";
  Choose(acq::kFunction, 1);
  EXPECT_EQ(form_->Model().Validate()->message, "Enter a number between 0 and 100.");
}

TEST_F(Acq, SiteSetupGetsTheMethodAndGivesSerials) {
  Open({{"TECH", "0"}, {"HXSN", "much too long"}});
  EXPECT_EQ(form_->BeginSiteSetup(), 0);
  EXPECT_EQ(Get("TECH"), "0");
  Choose(acq::kFunction, 4);
  EXPECT_EQ(form_->BeginSiteSetup(), 5);
  EXPECT_EQ(Get("TECH"), "5");
  EXPECT_EQ(form_->EarlyChanges(), (Keys{"TECH"}));
  form_->SetCoilSerials("much too long", "B", "C");
  EXPECT_FALSE(form_->Model().Validate().has_value()) << "the first is as it was stored";
  EXPECT_EQ(Committed({"HXSN", "HYSN", "HZSN"}), "much too long|B|C");
}

// What an opening and an OK make of a table, told key by key apart from the form.
void Expect(const ParamTable& before, int tech, std::map<std::string, std::int32_t>* ints) {
  const auto stored = [&before](const char* key) { return IntOf(before.FindParam(key)->value); };
  const bool is_time_domain = tech == 2 || tech == 3;
  const bool is_mt = tech == 5 && stored("MTSR") != 0 && stored("MTSR") != 2;
  auto& to = *ints;
  to["MODE"] = 1;
  for (const char* flag : {"TMZONE", "COMBON", "DFTTECH"}) {
    to[flag] = stored(flag) != 0 ? 1 : 0;
  }
  const std::map<int, int> requests = {{0, 1},  {1, 1}, {2, 2}, {3, 7},   {4, 8},   {5, 5},
                                       {6, 12}, {7, 7}, {8, 8}, {11, 11}, {12, 12}, {13, 13}};
  const auto request = requests.find(stored("RQST"));
  to["RQST"] = request == requests.end() ? 1 : request->second;
  const int asked = to["RQST"];
  if (tech == 5 ? asked >= 11 : asked == 2) {
    to["RQST"] = 1;
  }
  const std::set<int> hours = {0, 1, 2, 3, 4, 6, 8, 12, 24};
  to["FLEN"] = hours.count(stored("FLEN")) > 0 ? stored("FLEN") : 0;
  if (stored("LFRQ") == 0 || stored("LFRQ") == 1) {
    to["LFRQ"] = stored("LFRQ") == 0 ? 50 : 60;
  }
  const int code = stored("LPFR");
  const bool is_kept =
      is_mt ? code >= 160 && code <= 164 : (code >= 16 && code <= 20) || (code >= 80 && code <= 84);
  to["LPFR"] = is_time_domain ? 0 : is_kept ? code : is_mt ? 160 : 16;
  if (tech != 5) {
    to["ACDC"] = to["ACDH"] = tech == 4 ? 1 : tech == 6 ? -1 : 0;
  }
  to["WFRM"] = is_time_domain ? 1 : 4;
  to["NUMITEM"] = 1;
  if (is_time_domain) {
    const bool has_windows = stored("NUMITEM") >= 6 && stored("NUMITEM") < 21;
    to["NUMITEM"] = has_windows ? stored("NUMITEM") : tech == 2 ? 16 : 21;
  }
  if (tech == 6) {
    to["CHHX"] = 4;
    to["CHHY"] = 5;
    to["CHHZ"] = 6;
  }
}

TEST_F(Acq, OkWithoutAnEditChangesNothingButWhatIsStated) {
  std::mt19937 random(20261121);
  for (int run = 0; run < 600; ++run) {
    const int tech = run % 6 + 1;
    Open({});
    for (int at = 0; at < 719; ++at) {
      ParamKey key;
      ASSERT_EQ(table_.GetParamKey(at, &key), kOk);
      const auto type = static_cast<ValueType>(table_.FindParam(key)->type);
      ParamValue value{};
      std::generate(value.begin(), value.end(),
                    [&random] { return static_cast<std::uint8_t>(random()); });
      if (type == IntPT && random() % 4 != 0) {
        PutInt(static_cast<std::int32_t>(random() % 170), &value);
      } else if (type == IntPT && random() % 2 != 0) {
        PutInt(static_cast<std::int32_t>(random() % 4), &value);
      } else if (type == AmxPT && random() % 2 != 0) {
        PutTime({1, 2, 3, 21, 11, static_cast<std::uint8_t>(random() % 100), 6, 20}, &value);
      }
      ASSERT_EQ(table_.SetParam(key, type, value.data()), kOk);
    }
    const double no_gain = 0;
    Set(&table_, {{"TECH", std::to_string(tech).c_str()}});
    if (run % 2 == 0) {
      ASSERT_EQ(table_.SetParam("HNOM", FltPT, &no_gain), kOk);
    }
    const ParamTable before = table_;
    std::map<std::string, std::int32_t> ints;
    Expect(before, tech, &ints);
    AcqForm form(&table_, &now_);
    form.Open();
    ASSERT_FALSE(form.Model().Validate().has_value());
    form.Commit();
    for (int at = 0; at < 719; ++at) {
      ParamKey key;
      ASSERT_EQ(table_.GetParamKey(at, &key), kOk);
      ParamValue expected = before.FindParam(key)->value;
      if (const auto found = ints.find(key.Text()); found != ints.end()) {
        PutInt(found->second, &expected);
      } else if (key == ParamKey("HNOM") && run % 2 == 0 && tech == 5) {
        const int sampling = IntOf(before.FindParam("MTSR")->value);
        PutReal(sampling == 0 || sampling == 2 ? 100.0 : 1000.0, &expected);
      }
      ASSERT_EQ(table_.FindParam(key)->value, expected) << key.Text() << " in run " << run;
    }
  }
}

}  // namespace
}  // namespace orvane
