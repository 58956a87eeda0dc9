// SPDX-License-Identifier: GPL-3.0-or-later
// Every form of the program: what its fields say of themselves, and under which key each control
// keeps what is entered. The lists are written by hand, one line a control.

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <sstream>

#include "base/number_text.h"
#include "editors/acq_form.h"
#include "editors/box_status.h"
#include "editors/comm_forms.h"
#include "editors/sensor_forms.h"
#include "editors/site_forms.h"
#include "editors/spread.h"
#include "editors/startup_files.h"
#include "export/export_forms.h"
#include "response/display_form.h"
#include "spectra/spectra_form.h"
#include "stepping/cycle_form.h"
#include "stepping/fdem_form.h"
#include "stepping/stepping_form.h"
#include "support/table_help.h"
#include "support/told.h"
#include "timeseries/waveform_form.h"
#include "timeseries/waveform_gain_form.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// What is entered into a control (of a choice its index), and what its key holds then.
struct Entry {
  int control;
  std::string key;  // "SRVY*4": SRVY1 to SRVY4, with "|" between what they hold
  std::string entered;
  std::string stored;
  std::set<std::string> also;  // another key that follows
};

// "CONTROL KEY ENTERED -> STORED + ALSO; ...": without an arrow it is stored as entered.
std::vector<Entry> EntriesIn(std::string_view text) {
  std::vector<Entry> entries;
  const auto cut = [](std::string_view* rest, std::string_view end) {
    const std::size_t at = rest->find(end);
    const std::string piece(rest->substr(0, at));
    rest->remove_prefix(at == std::string_view::npos ? rest->size() : at + end.size());
    return piece;
  };
  while (!text.empty()) {
    const std::string line = cut(&text, "; ");
    std::string_view rest = line;
    Entry entry;
    entry.control = std::stoi(cut(&rest, " "));
    entry.key = cut(&rest, " ");
    std::string_view stored = rest;
    entry.entered = cut(&stored, " -> ");
    entry.stored = stored.empty() ? entry.entered : cut(&stored, " + ");
    if (!stored.empty()) {
      entry.also.emplace(stored);
    }
    entries.push_back(entry);
  }
  return entries;
}

// An open form over a table. `table` is where its OK writes.
struct Opened {
  std::shared_ptr<void> form;
  FormModel* model;
  std::function<ParamTable()> ok;  // nothing: the form only shows
};

template <typename Form>
Opened OpenedOf(ParamTable* table, std::shared_ptr<Form> form) {
  return {form, &form->Model(), [table, form] {
            form->Commit();
            return *table;
          }};
}

template <typename Form, typename... Arguments>
Opened Open(ParamTable* table, Arguments&&... arguments) {
  auto form = std::make_shared<Form>(table, std::forward<Arguments>(arguments)...);
  static_cast<void>(form->Open());
  return OpenedOf(table, form);
}

const std::array<std::string, 4> kModels = {"A", "B", "C", "D"};

Opened OpenSite(ParamTable* table, Tech tech) {
  auto form = std::make_shared<SiteForm>(table, tech, kModels);
  static_cast<void>(form->Open());
  return {form, &form->Model(), [table, form] {
            form->Commit();
            form->CommitAfterGrids();
            return *table;
          }};
}

Opened OpenStartup(ParamTable* table, int box) {
  auto form = std::make_shared<StartupForm>(table, StartupBox{box}, StartupChoices());
  return {form, &form->Model(), [form] { return form->Derive(); }};
}

// A form that belongs to no table.
template <typename Form, typename... Arguments>
Opened Unbound(Arguments&&... arguments) {
  auto form = std::make_shared<Form>(std::forward<Arguments>(arguments)...);
  return {form, &form->Model(), nullptr};
}

struct Case {
  const char* name;
  std::function<Opened(ParamTable*)> open;
  std::string entries;
  const char* settings = "";
};

const std::string kSurvey =
    "1132 SRVY*4 fifteen letters and more -> fifteen letters| and more||; "
    "1133 CMPY*4 c -> c|||; 1134 CLIENT*4 d -> d|||; 1135 AREA*4 e -> e|||; 1136 LOUT*4 f -> f|||; "
    "1137 CMMNT*8 g -> g|||||||; 1147 LINE L7; 1148 SITE S0500E; 1140 DECL -3.5; ";
const std::string kCoils = "1090 HXSN X1; 1091 HYSN Y2; 1092 HZSN Z3; ";
const std::string kCoilCalibration =
    "1113 HNOM 1.5; 1112 HAMP 2.5; 1109 CCMN 3.5; 1110 CCMX 4.5; 1111 CPHC 5.5; 1016 CCLT 9; ";
const std::string kLoop =
    "1149 SITEINC 25; 1168 TXTURN 3; 1166 LLENGTH 40.5; 1167 LWIDTH 20.5; 1178 PAZM 45; "
    "1165 RAMPLEN 12.5; 1142 RXLEN 50; 1272 TXAZIM 90; 1155 NREF 1 -> 3; 1164 TXTYPE 4; ";
const std::string kStartup = "1226 MSTR 1; 1044 FLEN 7 -> 12; ";

std::vector<Case> Cases() {
  static const testing::FixedClock now;
  static testing::Told told;
  using Table = ParamTable*;
  return {
      {"box serials", [](Table table) { return Open<BoxSerialForm>(table); },
       "1235 SNUM 21; 1234 SNTX 22; 1255 SN01 23; 1256 SN02 24; 1258 SN03 25; 1259 SN04 26; "
       "1257 SN05 27; "},
      {"MT/AMT site", [](Table table) { return OpenSite(table, kMtAmt); },
       kSurvey + kCoils +
           "1178 EAZM 10.5; 1179 EXLN 11.5; 1175 EYLN 12.5; 1141 HAZM 13.5; 1180 EXR 14; "
           "1174 EYR 15; 1181 DXDC 16.5 -> 0.0165; 1173 DXAC 17.5 -> 0.0175; "
           "1176 DYDC 18.5 -> 0.0185; 1177 DYAC 19.5 -> 0.0195; 1155 NREF 2 -> 4; 1267 ATYP 2; "},
      {"CSAMT site", [](Table table) { return OpenSite(table, kCsamt); },
       kSurvey + "1145 ERXPOS 1.5; 1144 NRXPOS 2.5; 1178 EAZM 3.5; 1142 RXLEN 4.5; 1149 SITEINC 5; "
                 "1155 NREF 0 -> 2; 1154 ARRYTYP 1 -> 10; "},
      {"IP site", [](Table table) { return OpenSite(table, kSip); },
       kSurvey +
           "1145 ERXPOS 1.5; 1144 NRXPOS 2.5; 1146 ETXCSRX 3.5; 1143 NTXCSRX 4.5; 1142 RXLEN 5.5; "
           "1139 TXLEN 6.5; 1149 SITEINC 7; 1155 NREF 1 -> 3; 1154 ARRYTYP 8; "},
      {"TDEM site", [](Table table) { return OpenSite(table, kTdem); },
       kSurvey + kLoop + "1154 ARRYTYP 1 -> 13; ", "LLENGTH=1 LWIDTH=1"},
      {"FDEM site", [](Table table) { return OpenSite(table, kFdem); },
       kSurvey + kLoop + "1154 ARRYTYP 1 -> 16; ", "LLENGTH=1 LWIDTH=1"},
      {"radio", [](Table table) { return Open<RadioForm>(table); },
       "1002 MSTR 1; 1006 RPWR 6; 1007 NADR 7; 1008 EKEY 8; 1266 SNUM 10000; 1010 SNNR 10; "
       "1011 SN01 11; 1012 SN02 12; 1013 SN03 13; 1014 SN04 14; 1015 SN05 15; 1009 SNTX 9; ",
       "HW=K36W2"},
      {"GSM", [](Table table) { return Open<PlainForm>(table, GsmFields()); },
       "1239 PHNE *99#; 1240 PPPNAME u; 1241 PPPPSWD p; 1242 GNETAP0 net; 1243 IPSRV0 ip; "
       "1289 FTPSUSR fu; 1290 FTPSPWD fp; "},
      {"FTP", [](Table table) { return Open<FtpForm>(table); },
       "1281 FTPCTIM 1; 1283 FTPCMIN 30; 1284 FTPCSR0 host; 1290 FTPCPRT -1; 1291 FTPCUSR u; "
       "1292 FTPCPWD p; 1285 FTPC1EN 1; 1286 FTPC1DL 1; 1287 FTPC1P0 /data; 1288 FTPC2EN 1; "
       "1289 FTPC2P0 /cal; "},
      {"current sensor", [](Table table) { return Open<CurrentSensorForm>(table); },
       "1012 CSSN C8; 1016 CCLT 7; 1046 HGNC 3 -> 2; 1114 CNOM 99.9999; 1115 CAMP -0.0501; ",
       "CNOM=100 CAMP=-0.05 CSSN=C7"},
      {"coils", [](Table table) { return Open<CoilForm>(table, CoilForm::Names{kModels}); },
       kCoils + kCoilCalibration},
      {"box status",
       [](Table table) {
         Opened opened = Unbound<BoxStatusForm>(table);  // nothing is written back
         opened.model->ReadAll();
         return opened;
       },
       "1260 SATR 1; 1259 BADR 2; 1261 STBADR 3; 1257 FFPG 4; 1256 GFPG 5; 1258 DSP 6; "
       "1263 LATG 40:01.2,N; 1264 LNGG 116:19.5,E; 1266 ELEV 7; 1270 TERR -8; 1262 NSAT 9; "
       "1268 LFIX 2026/01/01 05:00:00; 1269 CLST Locked to GPS -> 4; 1267 MSTRLAT 41:01.2,N; "
       "1265 MSTRLNG 117:19.5,E; 1272 MSTRRNG 12.35 -> 12.3456; 1271 MSTRBRG -0.50 -> -0.5; "
       "1275 TEMP -10; 1276 BAT1 12.345 -> 12345; 1274 DISK 1024.00 -> 1073741824; 1273 TOTL 11; "
       "1277 FTIM 2026/01/01 03:00:00; 1278 LTIM 2026/01/01 04:00:00; "},
      {"acquisition", [](Table table) { return Open<AcqForm>(table, &now); },
       kCoils + "1055 TECH 3 -> 4; 1049 RQST 2 -> 5; 1035 ACDC 0; 1060 EGNC 0 -> -1; 1047 ACDH 0; "
                "1067 HGNC 1 -> 0; 1045 LFRQ 0 -> 50; 1202 COMBON 0; 1203 FDRIFT 2.5; 1103 MTSR 2; "
                "1094 STIM 2026/12/01 01:00:00; 1095 ETIM 2026/12/02 02:00:00; 1096 HTIM 03:00:00; "
                "1097 ETMH 04:00:00; 1098 L2NS 4; 1099 L3NS 2; 1100 L4NS 16; 1101 HSMP 3600; "
                "1265 TMZONE 1; 1263 TMDIFF 9 -> -3; 1044 FLEN 5 -> 6; 1254 DFTTECH 1; ",
       "TECH=5 HNOM=100"},
      {"stepping", [](Table table) { return Open<SteppingForm>(table, &told, &told); },
       "1501 AUTO 10; 1502 CREQ 1.5; 1503 CRMX 2.5; 1504 FCMX 3.5; 1505 FEND 4.5; 1506 FREQ 5.5; "
       "1507 CPFR 6; 1508 FPOC 7; 1509 TPFR 8; 1510 TTOT 9; 1511 NUMITEM 10; 1512 FDRIFT 11.5; "
       "1513 WFRM 12; "},
      {"start-up of a receiver", [](Table table) { return OpenStartup(table, 0); },
       kStartup + kCoils + kCoilCalibration + "1207 SNUM 77; "},
      {"start-up of a monitor",
       [](Table table) { return OpenStartup(table, StartupBox::kTransmitter); },
       kStartup + "1208 HGNC 0 -> -1; 1009 SNTX 77 -> 77 + SNUM; 1012 CSSN C8; 1114 CNOM 5.5; "
                  "1115 CAMP -0.5; 1016 CCLT 9; ",
       "SNTX=5"},
      {"cycle",
       [](Table table) {
         static std::unique_ptr<EarlyWrites> early;
         early = std::make_unique<EarlyWrites>(table);
         const auto form =
             std::make_shared<CycleForm>(table, early.get(), kCsamt, TransmitterLimits());
         form->Open();
         return Opened{form, &form->Model(), nullptr};
       },
       ""},
      {"FDEM schedule", [](Table) { return Unbound<FdemForm>(&told, "/"); }, ""},
      {"waveform", [](Table) { return Unbound<WaveformForm>(WaveformView()); }, ""},
      {"gains", [](Table) { return Unbound<WaveformGainForm>(WaveformView()); }, ""},
      {"calibration plot", [](Table) { return Unbound<CalDisplayForm>(CalDisplay()); }, ""},
      {"spectra", [](Table) { return Unbound<SpectraForm>(""); }, ""},
      {"NetCDF", [](Table) { return Unbound<NetcdfForm>(); }, ""},
      {"MiniSEED", [](Table) { return Unbound<MseedForm>("", ""); }, ""},
  };
}

ParamTable TableOf(const Case& test) {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table, test.settings);
  return table;
}

// The keys of "SRVY*4", or the one key.
std::vector<std::string> KeysIn(const std::string& keys) {
  const std::size_t star = keys.find('*');
  if (star == std::string::npos) {
    return {keys};
  }
  std::vector<std::string> all;
  for (int i = 1; i <= keys[star + 1] - '0'; ++i) {
    all.push_back(keys.substr(0, star) + std::to_string(i));
  }
  return all;
}

std::string Shown(const FormModel& model, int control) {
  return HasIndex(model.FieldOf(control).widget) ? std::to_string(model.Index(control))
                                                 : model.Text(control);
}

void Enter(FormModel* model, const Entry& entry) {
  if (HasIndex(model->FieldOf(entry.control).widget)) {
    model->SetIndex(entry.control, std::stoi(entry.entered));
  } else {
    model->SetText(entry.control, entry.entered);
  }
}

// What stands under the keys, which shall be of a field's control alone.
void ExpectStored(const Case& test, const Entry& entry) {
  ParamTable table = TableOf(test);
  const ParamTable before = test.open(&table).ok();
  table = TableOf(test);
  const Opened opened = test.open(&table);
  Enter(opened.model, entry);
  EXPECT_EQ(opened.model->FaultAt(entry.control), "");
  ParamTable after = opened.ok();
  std::string stored;
  std::set<std::string> changed = Changes(before, after);
  for (const std::string& key : KeysIn(entry.key)) {
    stored.append(Get(after, key)).append("|");
    changed.erase(key);
  }
  stored.pop_back();
  EXPECT_EQ(stored, entry.stored);
  EXPECT_EQ(changed, entry.also);
  EXPECT_EQ(Shown(*test.open(&after).model, entry.control), entry.entered) << "read back";
}

TEST(EveryForm, KeepsEachControlUnderItsOwnKey) {
  for (const Case& test : Cases()) {
    ParamTable table = TableOf(test);
    const Opened opened = test.open(&table);
    std::set<int> listed;
    for (const Entry& entry : EntriesIn(test.entries)) {
      SCOPED_TRACE(std::string(test.name) + " " + std::to_string(entry.control));
      EXPECT_TRUE(listed.insert(entry.control).second);
      if (opened.ok) {
        ExpectStored(test, entry);
      } else {
        Set(&table, entry.key, entry.stored);
        EXPECT_EQ(Shown(*test.open(&table).model, entry.control), entry.entered);
      }
    }
    for (const Field& field : opened.model->Fields()) {
      EXPECT_EQ(listed.count(field.control) > 0, !KeysOf(field).empty())
          << test.name << " " << field.control;
    }
  }
}

TEST(EveryForm, HasFieldsThatFitTheirKeysAndChoices) {
  for (const Case& test : Cases()) {
    ParamTable table = TableOf(test);
    const Opened opened = test.open(&table);
    std::set<int> numbers;
    for (const Field& field : opened.model->Fields()) {
      SCOPED_TRACE(std::string(test.name) + " " + std::to_string(field.control));
      for (const ParamKey key : KeysOf(field)) {
        ASSERT_NE(table.FindParam(key), nullptr) << key.Text();
        EXPECT_EQ(table.FindParam(key)->type, field.type) << key.Text();
      }
      EXPECT_EQ(std::string(field.key), ParamKey(field.key).Text()) << "as it is stored";
      EXPECT_FALSE(field.label.empty());
      EXPECT_EQ(HasIndex(field.widget) && field.choices.empty(), field.widget == Widget::kCheck);
      for (const Choice& choice : field.choices) {
        EXPECT_NE(std::string_view(choice.label), "");
      }
      if (field.codec.kind == CodecKind::kMap) {
        EXPECT_EQ(field.codec.map.size(), field.choices.size());
      }
      if (field.widget != Widget::kRadios) {
        EXPECT_TRUE(numbers.insert(field.control).second);
        continue;
      }
      EXPECT_EQ(field.choices.front().control, field.control);
      for (const Choice& choice : field.choices) {
        EXPECT_TRUE(numbers.insert(choice.control).second) << choice.control;
      }
    }
  }
}

// "CONTROL LEAST MOST" of numbers that have a range, "CONTROL MOST" of texts.
const std::map<std::string, std::string> kRanges = {
    {"radio",
     "1007 0 65535; 1008 0 65535; 1010 0 9999; 1011 0 9999; 1012 0 9999; 1013 0 9999; 1014 0 9999; "
     "1015 0 9999; 1009 0 9999"},
    {"FTP", "1283 0 10000000"},
    {"current sensor", "1016 1 1000; 1012 8"},
    {"coils", "1016 1 1000; 1090 8; 1091 8; 1092 8"},
    {"acquisition",
     "1203 0 100; 1098 0 4; 1099 0 2; 1100 0 16; 1101 1 3600; 1105 1 20; 1090 8; 1091 8; 1092 8"},
    {"MT/AMT site", "1147 15; 1148 15; 1090 8; 1091 8; 1092 8"},
    {"CSAMT site", "1147 15; 1148 15"},
    {"IP site", "1147 15; 1148 15"},
    {"TDEM site", "1147 15; 1148 15"},
    {"FDEM site", "1147 15; 1148 15"},
    {"start-up of a receiver", "1090 8; 1091 8; 1092 8"},
    {"start-up of a monitor", "1012 8"},
    {"cycle", "1525 0 -; 1526 0 -; 1527 0 -; 1528 0 -"},
    {"FDEM schedule", "1531 0 -; 1532 0 -; 1533 0 -"},
    {"waveform", "1001 0.1 3600; 1002 0.01 1000000"},
    {"gains", "1011 1e-6 1e6; 1012 1e-6 1e6"},
    {"calibration plot",
     "1001 1e-10 1e10; 1002 1e-10 1e10; 1004 1e-10 1e10; 1005 1e-10 1e10; 1003 -360 360; "
     "1006 -360 360; 1007 2 10000"},
    {"spectra", "1702 0 1000000; 1703 1 65535"},
    {"NetCDF", "1711 0 9"},
};

bool Takes(const Field& field, const std::string& text) {
  return FaultOf(field, {text, kNothingChosen}).empty();
}

// That a field takes its end and nothing beyond: texts one character, numbers the least step.
void ExpectEnd(const Field& field, const std::string& end, int direction) {
  SCOPED_TRACE(std::to_string(field.control) + " " + end);
  if (field.widget == Widget::kText) {
    const auto length = static_cast<std::size_t>(std::stoi(end));
    EXPECT_TRUE(Takes(field, std::string(length, 'x')));
    EXPECT_FALSE(Takes(field, std::string(length + 1, 'x')));
  } else if (end != "-") {
    const double number = std::stod(end);
    const double beyond = field.widget == Widget::kInteger
                              ? number + direction
                              : std::nextafter(number, direction * HUGE_VAL);
    EXPECT_TRUE(Takes(field, end));
    EXPECT_FALSE(Takes(field, FormatRealExactly(beyond)));
  }
}

TEST(EveryForm, TakesWhatIsInItsRanges) {
  for (const Case& test : Cases()) {
    SCOPED_TRACE(test.name);
    ParamTable table = TableOf(test);
    const Opened opened = test.open(&table);
    std::set<int> listed;
    const auto ranges = kRanges.find(test.name);
    std::istringstream lines(ranges == kRanges.end() ? "" : ranges->second);
    for (std::string line; std::getline(lines, line, ';');) {
      std::istringstream words(line);
      int control = 0;
      std::string least, most;
      words >> control >> least >> most;
      ExpectEnd(opened.model->FieldOf(control), least, -1);
      ExpectEnd(opened.model->FieldOf(control), most.empty() ? least : most, 1);
      listed.insert(control);
    }
    for (const Field& field : opened.model->Fields()) {
      const bool has_length = field.widget == Widget::kText && field.limits.max_length > 0 &&
                              field.codec.kind != CodecKind::kLongText;
      const bool has_range = field.limits.min < field.limits.max;
      EXPECT_EQ(listed.count(field.control) > 0, has_length || has_range) << field.control;
    }
  }
}

// What a form shows, of all its fields.
std::vector<std::string> Shown(const Opened& opened) {
  std::vector<std::string> shown;
  for (const Field& field : opened.model->Fields()) {
    shown.push_back(Shown(*opened.model, field.control));
  }
  return shown;
}

// The keys of which another value makes the form look otherwise.
std::set<std::string> ReadBy(const Case& test) {
  std::set<std::string> read;
  ParamTable table = TableOf(test);
  const ParamTable usual = table;
  const std::vector<std::string> shown = Shown(test.open(&table));
  ParamKey key;
  for (int position = 0; usual.GetParamKey(position, &key) == kOk; ++position) {
    const auto type = static_cast<ValueType>(usual.FindParam(key)->type);
    for (const char* text :
         {"0", "1", "3", "10", "13", "16", "18", "1800", "2026/11/30 01:02:03"}) {
      const auto value = ParseParamValueStrictly(text, type);
      if (value && read.count(key.Text()) == 0) {
        table = usual;
        EXPECT_EQ(table.SetParam(key, type, value->data()), kOk);
        if (Shown(test.open(&table)) != shown) {
          read.insert(key.Text());
        }
      }
    }
  }
  return read;
}

// Keys that a form reads beside those of its controls, and why none of its controls writes them.
const std::map<std::string, std::set<std::string>> kReadOnly = {
    {"acquisition", {"LPFR"}},             // two controls make one code
    {"radio", {"HW"}},                     // what there is, not what is wanted
    {"start-up of a receiver", {"RQST"}},  // by the method
    {"start-up of a monitor", {"RQST"}},
    // The links of long texts, which are written with the first.
    {"GSM", {"GNETAP1", "GNETAP2", "GNETAP3", "IPSRV1", "IPSRV2", "IPSRV3"}},
    {"FTP",
     {"FTPCSR1", "FTPCSR2", "FTPCSR3", "FTPC1P1", "FTPC1P2", "FTPC1P3", "FTPC2P1", "FTPC2P2",
      "FTPC2P3"}},
    {"cycle", {"TTOT", "CRMX"}},  // written at once, with what follows from them
};

TEST(EveryForm, ReadsNoKeyThatItDoesNotWrite) {
  for (const Case& test : Cases()) {
    std::set<std::string> expected;
    for (const Entry& entry : EntriesIn(test.entries)) {
      for (const std::string& key : KeysIn(entry.key)) {
        expected.insert(key);
      }
    }
    if (const auto found = kReadOnly.find(test.name); found != kReadOnly.end()) {
      expected.insert(found->second.begin(), found->second.end());
    }
    EXPECT_EQ(ReadBy(test), expected) << test.name;
  }
}

// The keys of a box: serial number, count of channels and control word, then those of a channel by
// the grid's columns. "@" is the auxiliary box, "#" the channel, "-" no key.
struct BoxKeys {
  int row, slot, channels;
  std::string own, columns;
};

std::vector<BoxKeys> Boxes() {
  std::vector<BoxKeys> boxes = {
      {0, 0, 1, "- SNTX - TXCTL",
       "CHDEFTX NPOSTX EPOSTX ZPOSTX NNEGTX ENEGTX TXLEN TXRES - - FLAGTX -"},
      {1, 0, 8, "- SNUM NCHN -",
       "CHDEF# NPOS# EPOS# ZPOS# NNEG# ENEG# SENSIZ# RES# DCV# ACV# FLAG# GFC#"},
      {7, 0, 2, "- SNNR - REFCTL",
       "CHDEFN# NPOSN# EPOSN# - NNEGN# ENEGN# - RESN# DCVN# ACVN# FLAGN# -"}};
  for (int slot = 1; slot <= 5; ++slot) {
    boxes.push_back({slot + 1, slot, 3, "- SN0@ NCHN@R @RCTL",
                     "DEF@R# NPOS@R# EPOS@R# ZPOS@R# NNEG@R# ENEG@R# SSIZ@R# RES@R# DCV@R# ACV@R# "
                     "FLAG@R# -"});
  }
  return boxes;
}

// The key of a column.
std::string KeyAt(const std::string& keys, int column, int slot, int channel) {
  std::istringstream words(keys);
  std::string key;
  for (int i = 0; i <= column; ++i) {
    words >> key;
  }
  std::replace(key.begin(), key.end(), '@', static_cast<char>('0' + slot));
  std::replace(key.begin(), key.end(), '#', static_cast<char>('0' + channel));
  return key;
}

// SIP, with every box there can be.
ParamTable FullSpread() {
  ParamTable table = testing::NewTable();
  testing::SetAll(&table, "TECH=1 SN01=11 SN02=12 SN03=13 SN04=14 SN05=15 SNNR=6 NCHN=8");
  return table;
}

// What one edit of a spread stores, "KEY=value", and what a new spread shows of it.
template <typename Edit, typename Cell>
std::string Edited(Edit edit, Cell cell) {
  ParamTable table = FullSpread();
  const ParamTable before = table;
  Spread spread(&table);
  EXPECT_EQ(edit(&spread), "");
  spread.Save();
  std::string text;
  for (const std::string& key : Changes(before, table)) {
    text.append(key).append("=").append(Get(table, key)).append(" ");
  }
  return text + cell(Spread(&table));
}

void ExpectRow(const BoxKeys& box) {
  for (int at = kBoxType; at < kBoxColumns; ++at) {
    const auto column = static_cast<BoxColumn>(at);
    const std::string key = KeyAt(box.own, at, box.slot, 0);
    SCOPED_TRACE(key);
    ParamTable table = FullSpread();
    const bool has_key = Spread(&table).CanEditBox(box.row, column);
    EXPECT_EQ(has_key, key != "-");
    if (has_key) {
      EXPECT_EQ(Edited([&](Spread* spread) { return spread->EditBox(box.row, column, "2"); },
                       [&](const Spread& spread) { return spread.BoxCell(box.row, column); }),
                key + "=2 2");
    }
  }
}

void ExpectChannel(const BoxKeys& box, int channel) {
  for (int at = 0; at < kChannelColumns; ++at) {
    const auto column = static_cast<ChannelColumn>(at);
    const std::string key = KeyAt(box.columns, at, box.slot, channel);
    SCOPED_TRACE(key);
    ParamTable table = FullSpread();
    const bool has_key = Spread(&table).CanEditChannel(box.row, column);
    EXPECT_EQ(has_key, key != "-");
    if (has_key) {
      const bool is_voltage = column == kDcVoltage || column == kAcVoltage;
      EXPECT_EQ(Edited(
                    [&](Spread* spread) {
                      return spread->EditChannel(box.row, channel - 1, column, "7");
                    },
                    [&](const Spread& spread) {
                      return spread.ChannelCell(box.row, channel - 1, column);
                    }),
                key + (is_voltage ? "=0.007 7" : "=7 7"));
    }
  }
}

TEST(EveryForm, KeepsTheBoxesOfASpreadUnderTheirKeys) {
  for (const BoxKeys& box : Boxes()) {
    SCOPED_TRACE(box.row);
    ExpectRow(box);
    for (int channel = 1; channel <= box.channels; ++channel) {
      ExpectChannel(box, channel);
    }
  }
}

}  // namespace
}  // namespace orvane
