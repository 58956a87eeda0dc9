// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "check/check.h"
#include "check/check_memory.h"
#include "check/map_marks.h"
#include "check/rule.h"
#include "editors/startup_files.h"
#include "support/cal_bytes.h"
#include "support/example_survey.h"
#include "support/table_help.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/tbl_file.h"

namespace orvane::testing {
namespace {

const ParamTime kNow = ParseParamTime("2026/11/20 06:00");

// A line for each finding: "E serial-gap [Aux. Box 1207] SN02".
std::string Lines(const std::vector<Finding>& findings) {
  std::string lines;
  for (const Finding& finding : findings) {
    EXPECT_FALSE(finding.sentence.empty()) << finding.id;
    lines += lines.empty() ? "" : "; ";
    lines += static_cast<char>(std::toupper(SeverityName(finding.severity).front()));
    lines += " " + std::string(finding.id) + " [" + finding.box + "] " + finding.keys[0].Text();
  }
  return lines;
}

constexpr const char* kSpread =
    "SNUM=2417 NCHN=3 SNTX=3105 CSSN=CS1043 CNOM=100 SN01=1203 NCHN1R=1 DEF1R1=Ex4 FLAG1R1=1 "
    "CHDEF1=Ex1 CHDEF2=Ex2 CHDEF3=Ex3 GFC1=1 GFC2=1 GFC3=1 LFRQ=50 RXLEN=50 "
    "ENEG1=50 EPOS2=50 ENEG2=100 EPOS3=100 ENEG3=150 EPOS1R1=150 ENEG1R1=200";

const std::map<std::string, std::string> kMethods = {
    {"SIP", "TECH=1 ACDC=0 ACDH=0 RQST=13 CREQ=8"},
    {"TDIP", "TECH=2 ACDC=0 ACDH=0 RQST=13 LPFR=0 WFRM=1 NUMITEM=16 FREQ=0.125"},
    {"TDEM",
     "TECH=3 ACDC=0 ACDH=0 RQST=13 LPFR=0 WFRM=1 NUMITEM=21 FREQ=25 ARRYTYP=12 LLENGTH=9 LWIDTH=9"},
    {"MT",
     "TECH=5 RQST=2 MTSR=1 LPFR=160 L4NS=16 HSMP=300 EXLN=100 EYLN=100 HNOM=4 CHDEF3=Hz HZSN=T2057 "
     "STIM=2026/11/24_17:00:00 ETIM=2026/11/25_06:00:00"},
    {"FDEM", "TECH=6 ACDC=-1 ACDH=-1 RQST=13 CREQ=8 ARRYTYP=15 LLENGTH=9 LWIDTH=9"}};

// A table of a method of which no rule has anything to say; "" is the dictionary as it is.
ParamTable Right(const std::string& method) {
  ParamTable table = NewTable();
  if (!method.empty()) {
    SetAll(&table, kSpread);
    SetAll(&table, kMethods.at(method));
  }
  return table;
}

struct Row {
  const char* method;
  std::string changes;
  const char* findings = "";
};
const std::string kSteps = "AUTO=1 TPFR=60 CRMX=5 ";
const std::string kFull = "_23456789012345";
const std::vector<Row> kRows = {
    {"MT", "STIM=0:0:0 ETIM=0:0:0", "W times-unset [] STIM"},
    {"MT", "STIM=17:00:00 ETIM=06:00:00"},
    {"MT", "ETIM=2026/11/24_17:00:00", "E end-before-start [] ETIM"},
    {"MT", "ETIM=2026/11/24_17:00:01"},
    {"MT", "STIM=2026/11/18_17:00:00 ETIM=2026/11/20_05:59:59", "E recording-over [] ETIM"},
    {"MT", "STIM=05:59:00 ETIM=2026/11/20_06:00:00"},
    {"MT", "STIM=2026/11/20_05:00:00", "W start-past [] STIM"},
    {"MT", "STIM=05:00:00 ETIM=07:00:00"},
    {"SIP", "STIM=2026/11/21_07:00:00 ETIM=2026/11/21_07:00:00", "H times-other-method [] ETIM"},
    {"SIP", "STIM=2026/11/21_07:00:00 ETIM=07:00:00"},
    {"MT", "HTIM=2026/11/26_22:00:00 ETMH=2026/11/27_02:00:00", "E high-window-empty [] ETMH"},
    {"MT", "HTIM=2026/11/26_22:00:00 ETMH=2026/11/26_22:00:00"},
    {"MT", "MTSR=2 LPFR=16 HTIM=2026/11/26_22:00:00 ETMH=2026/11/27_02:00:00"},
    {"MT", "HTIM=2026/11/24_22:00:00 ETMH=2026/11/25_06:00:01", "W high-window-cut [] ETMH"},
    {"MT", "HTIM=2026/11/24_16:59:59 ETMH=2026/11/25_06:00:00", "W high-window-cut [] HTIM"},
    {"MT", "HTIM=2026/11/24_17:00:00 ETMH=2026/11/25_06:00:00"},
    {"MT", "HSMP=3601", "W slot-range [] HSMP"},
    {"MT", "HSMP=15", "W slot-range [] L4NS"},
    {"MT", "HSMP=16 L2NS=5"},
    {"MT", "MTSR=0 LPFR=16 L2NS=5", "W slot-range [] L2NS"},
    {"MT", "MTSR=3", "W sampling-code [] MTSR"},
    {"MT", "DISK=1000 TOTL=1", "H space-disk [Local Box 2417] ETIM"},
    {"MT", "DISK=1000 LTIM=2026/11/19_06:00:00", "H space-disk [Local Box 2417] ETIM"},
    {"MT", "DISK=1000"},
    {"SIP", "SN02=0 SN03=1207 NCHN3R=1 DEF3R1=Ex5 FLAG3R1=1", "E serial-gap [Aux. Box 1207] SN02"},
    {"SIP", "SN02=1205 SN03=1207 DEF2R1=Ex5 FLAG2R1=1 DEF3R1=Ex6 FLAG3R1=1"},
    {"SIP", "SNUM=0", "E serial-none [] SNUM"},
    {"SIP", "SNTX=1203", "E serial-twice [Aux. Box 1203] SN01"},
    {"MT", "SNTX=1203 SNNR=1203"},
    {"SIP", "SN01=65536", "W serial-size [Aux. Box 65536] SN01"},
    {"SIP", "SN01=-5", "E serial-size [Aux. Box -5] SN01"},
    {"SIP", "SN01=10000", "H serial-size [Aux. Box 10000] SN01"},
    {"SIP", "SN01=9999"},
    {"TDIP", "SNNR=1300", "H reference-no-file [Ref. Box 1300] SNNR"},
    {"TDEM", "SNNR=1300"},
    {"SIP", "TBVO=1", "W version-1 [] TBVO"},
    {"", "TBVO=1 HW=longerthan8",  // no key is too long, one text is
     "E serial-none [] SNUM; W version-1 [] TBVO; E step-fixed [] CREQ; H monitor-none [] SNTX; "
     "W channel-undefined [Local Box 0] CHDEF1; E gain-factor [Local Box 0] GFC1"},
    {"", "TBVO=1 HW=exactly8",
     "E serial-none [] SNUM; E step-fixed [] CREQ; H monitor-none [] SNTX; "
     "W channel-undefined [Local Box 0] CHDEF1; E gain-factor [Local Box 0] GFC1"},
    {"SIP", "AREA1=" + kFull + " AREA2=" + kFull + " AREA3=" + kFull + " AREA4=" + kFull,
     "H text-full [] AREA1"},
    {"SIP", "AREA1=" + kFull + " AREA2=" + kFull + " AREA3=" + kFull + " AREA4=12345678901234"},
    {"SIP", "TECH=7", "E method-code [] TECH"},
    {"SIP", "AUTO=11", "E step-code [] AUTO"},
    {"SIP", "AUTO=10"},
    {"MT", "AUTO=11"},
    {"SIP", "HGNC=3", "E gain-code [] HGNC"},
    {"SIP", "HGNC=-1 EGNC=2"},
    {"SIP", "ACDC=-1", "W coupling-code [] ACDC"},
    {"TDIP", "ACDH=1", "W coupling-code [] ACDH"},
    {"SIP", "ACDH=1"},
    {"SIP", "LPFR=160", "W filter-code [] LPFR"},
    {"MT", "LPFR=16", "W filter-code [] LPFR"},
    {"TDEM", "LPFR=16", "W filter-code [] LPFR"},
    {"MT", "MTSR=0 LPFR=84"},
    {"SIP", "LFRQ=16", "W line-code [] LFRQ"},
    {"SIP", "LFRQ=60"},
    {"SIP", "WFRM=1", "W waveform-code [] WFRM"},
    {"TDIP", "WFRM=5", "W waveform-code [] WFRM"},
    {"TDIP", "WFRM=11"},
    {"TDIP", "NUMITEM=4", "W window-count [] NUMITEM"},
    {"TDEM", "NUMITEM=22", "W window-count [] NUMITEM"},
    {"SIP", "NUMITEM=16", "W window-count [] NUMITEM"},
    {"TDIP", "NUMITEM=5"},
    {"TDEM", "FREQ=0", "E base-frequency [] FREQ"},
    {"SIP", "FREQ=0"},
    {"TDEM", "FREQ=30", "W mains-in-stack [] FREQ"},
    {"TDEM", "FREQ=50", "W mains-in-stack [] FREQ"},
    {"TDEM", "FREQ=30 LFRQ=60"},
    {"MT", "RQST=13", "W request-code [] RQST"},
    {"SIP", "RQST=2", "W request-code [] RQST"},
    {"SIP", "RQST=7"},
    {"SIP", "MODE=2", "H mode [] MODE"},
    {"SIP", "CREQ=0", "E step-fixed [] CREQ"},
    {"TDIP", "CREQ=0"},
    {"SIP", kSteps, "E step-refused [] FRQ0"},
    {"MT", kSteps},
    {"SIP", kSteps + "FRQ0=8 FEND=8 STIM=2026/11/21_07:00:00 ETIM=2026/11/21_07:00:59",
     "W step-long [] TTOT"},
    {"SIP", kSteps + "FRQ0=8 FEND=8 STIM=2026/11/21_07:00:00 ETIM=2026/11/21_07:01:00"},
    {"SIP", "CREQ=9601", "W step-frequency [] CREQ"},
    {"SIP", "CREQ=151 COMBON=1", "H step-comb [] CREQ"},
    {"TDIP", "CREQ=9601"},
    {"SIP", kSteps + "FRQ0=9601 FEND=9600", "W step-frequency [] FRQ0"},
    {"SIP", kSteps + "FRQ0=9600 FEND=9600"},
    {"SIP", kSteps + "FRQ0=151 FEND=151", "H step-comb [] FRQ0"},
    {"SIP", kSteps + "FRQ0=49 FEND=49 COMBON=0"},
    {"SIP", kSteps + "FRQ0=100 FEND=100"},
    {"SIP", kSteps + "CRMX=0 FRQ0=8 FEND=8", "W step-current [] CRMX"},
    {"SIP", "SNTX=0", "H monitor-none [] SNTX"},
    {"MT", "SNTX=0 CNOM=0"},
    {"SIP", "CNOM=0", "W monitor-sensor [Transmitter 3105] CNOM"},
    {"SIP", "CHHZ=6 HZSN=2057", "W coil-gain [Local Box 2417] HNOM"},
    {"SIP", "CHHZ=13"},
    {"MT", "HZSN=TARK", "W coil-serial [Local Box 2417] HZSN"},
    {"MT", "CHHX=4 HXSN=X02057", "E coil-serial [Local Box 2417] HZSN"},
    {"MT", "HXSN=X2057"},
    {"TDEM", "CHDEF3=bz", "E loop-area [Local Box 2417] SENSIZ3"},
    {"TDEM", "CHDEF3=bz SENSIZ3=100"},
    {"SIP", "CHDEF2=_", "W channel-undefined [Local Box 2417] CHDEF2"},
    {"SIP", "CHDEF2=_ FLAG2=0"},
    {"SIP", "FLAG1R1=0", "H channel-off [Aux. Box 1203] FLAG1R1"},
    {"SIP", "DEF1R1=_ FLAG1R1=0", "H box-empty [Aux. Box 1203] DEF1R1"},
    {"SIP", "DEF1R1=ex1", "W channel-twice [] DEF1R1"},
    {"SIP", "DEF1R1=ex1 FLAG1R1=0", "H channel-off [Aux. Box 1203] FLAG1R1"},
    {"SIP", "GFC2=0", "E gain-factor [Local Box 2417] GFC2"},
    {"SIP", "GFC4=0"},
    {"MT", "CHEX=3", "W component [Local Box 2417] CHEX"},
    {"MT", "CHEX=1 CHEY=7 CHHZ=3"},
    {"SIP", "ENEG1=0 EPOS2=0 ENEG2=0 EPOS3=0 ENEG3=0 EPOS1R1=0 ENEG1R1=0",
     "H positions-unset [] NPOS1"},
    {"SIP", "EPOS2=0 ENEG2=0"},
    {"SIP", "EPOS2=100", "E dipole-zero [Local Box 2417] NPOS2"},
    {"FDEM", "EPOS2=100"},
    {"SIP", "ENEG2=551", "W dipole-long [Local Box 2417] NPOS2"},
    {"SIP", "ENEG2=550"},
    {"SIP", "RXLEN=0", "W dipole-long [] RXLEN"},
    {"SIP", "EPOS3=100 ENEG3=50", "W dipole-twice [Local Box 2417] NPOS2"},
    {"SIP", "EPOS3=100 ENEG3=50 FLAG2=0", "H channel-off [Local Box 2417] FLAG2"},
    {"MT", "EYLN=0", "W mt-length [Local Box 2417] EYLN"},
    {"SIP", "EYLN=0"},
    {"TDEM", "LWIDTH=0", "E loop-size [] LWIDTH"},
    {"FDEM", "TXTURN=0", "E loop-size [] TXTURN"},
    {"TDEM", "LWIDTH=0 ARRYTYP=13"},
    {"SIP", "TMZONE=2", "W zone [] TMZONE"},
    {"SIP", "TMDIFF=14", "W zone [] TMDIFF"},
    {"SIP", "TMZONE=1 TMDIFF=-3 LNGG=01131.000,E", "H zone [] TMDIFF"},
    {"SIP", "TMZONE=0 TMDIFF=-3 LNGG=01131.000,E"},
    {"SIP", "TMZONE=1 TMDIFF=-3 LNGG=01131.000"},
    {"SIP", "TMZONE=1 TMDIFF=13 LNGG=17500.000,W"},
};

TEST(CheckRules, SayWhatIsWrongAndNothingElse) {
  for (const auto& [method, settings] : kMethods) {
    EXPECT_EQ(Lines(CheckTable(Right(method), kNow)), "") << method;
  }
  std::string told;
  for (const Row& row : kRows) {
    ParamTable table = Right(row.method);
    SetAll(&table, row.changes);
    const std::string lines = Lines(CheckTable(table, kNow));
    EXPECT_EQ(lines, row.findings) << row.method << " " << row.changes;
    EXPECT_EQ(Lines(CheckFiles(table, kNow, {})), "") << row.changes;
    told += lines + "; ";
  }
  std::set<std::string_view> ids;
  for (const Topic& topic : AllRules()) {
    for (const Rule& rule : topic.rules) {
      EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
      EXPECT_EQ(told.find(" " + std::string(rule.id) + " [") == std::string::npos,
                rule.needs == Needs::kFiles)
          << rule.id;
    }
  }
  EXPECT_EQ(ids.size(), 61U);
}

TEST(CheckRules, SayWhatIsWrongWithFiles) {
  const TempDir dir;
  ParamTable table = Right("SIP");
  SetAll(&table, "AUTO=3 CRMX=5");
  const auto check = [&] { return Lines(CheckFiles(table, kNow, {dir / "a.tbl", {}, {}, {}})); };
  EXPECT_EQ(check(), "W step-file [] AUTO");
  WriteAll(dir / "3.tfs", StepBytes(60, 4, 8, 5));
  EXPECT_EQ(check(), "");
  WriteAll(dir / "3.tfs", StepBytes(60, 4, 49.23, 5.1) + StepBytes(90, 4, 9601, 5));
  SetAll(&table, "STIM=2026/11/21_07:00:00 ETIM=2026/11/21_07:01:00");
  EXPECT_EQ(check(),
            "W step-long [] AUTO; W step-frequency [] AUTO; H step-comb [] AUTO; "
            "W step-current [] CRMX");
  WriteAll(dir / "3.tfs", StepBytes(60, 4, 8, 5) + StepBytes(60, 4, 8, 5));
  EXPECT_EQ(check(), "E step-file [] AUTO");
  EXPECT_NE(CheckFiles(table, kNow, {dir / "a.tbl", {}, {}, {}})[0].sentence.find("row 2"),
            std::string::npos);

  ParamTable mt = Right("MT");
  const auto card = [&](std::string_view name) {
    return Lines(CheckFiles(mt, kNow, {{}, {}, dir / name, {}}));
  };
  EXPECT_EQ(card(""), "");
  EXPECT_EQ(card("none"), "W space-card [Local Box 2417] SNUM");
  SetAll(&mt, "ETIM=2090/11/25_06:00:00 MTSR=2");  // 40 TB
  EXPECT_EQ(card(""), "W space-card [Local Box 2417] ETIM");
}

TEST(CheckRules, SayWhichCalibrationsAreMissing) {
  const TempDir dir;
  ParamTable table = Right("SIP");  // the serial number of all headers here is 65534
  SetAll(&table, "SNUM=65534 CSSN=CS1043 CHHX=4 HXSN=X65534 HNOM=4");
  const auto check = [&] { return Lines(CheckFiles(table, kNow, {{}, dir.Path(), {}, {}})); };
  EXPECT_EQ(Lines(CheckFiles(table, kNow, {{}, dir / "none", dir / "none", {}})),
            "W space-card [Local Box 65534] SNUM; W calibration [] SNUM");
  const std::string box = "W calibration [Local Box 65534] ";
  const std::string monitor = "W calibration [Transmitter 3105] CSSN";
  EXPECT_EQ(check(), box + "SNUM; " + monitor);
  WriteAll(dir / "65534.clb", CalHeaderBytes(1, 2));
  WriteAll(dir / "65534.clc", CalHeaderBytes(2, 1));
  EXPECT_EQ(check(), box + "SNUM; " + monitor);
  WriteAll(dir / "65534.clb", CalHeaderBytes(1, 3));
  EXPECT_EQ(check(), monitor);
  WriteAll(dir / "65534.clc", CalHeaderBytes(3, 1));
  WriteAll(dir / "1043.CLC", CalHeaderBytes(3, 1));  // of another serial number
  EXPECT_EQ(check(), box + "HXSN; " + monitor);
  Set(&table, "CSSN", "CS65534");
  EXPECT_EQ(check(), box + "HXSN");
}

// Files on a slow card are not read again and again, but what has changed is.
TEST(CheckRules, ReadAFileOnceForAsLongAsItStays) {
  const TempDir dir;
  ParamTable table = Right("SIP");
  Set(&table, "SNUM", "65534");
  const auto path = dir / "65534.CLB";
  const auto put = [&path](int channels, int age) {
    WriteAll(path, CalHeaderBytes(1, channels));
    const auto now = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(path, now - std::chrono::seconds(age));
  };
  static int reads = 0;
  static const ReadCalls usual = ReaderCalls();
  ReaderCalls().some = [](int handle, std::span<std::byte> bytes) {
    ++reads;
    return usual.some(handle, bytes);
  };
  const auto memory = std::make_shared<CheckMemory>();
  const auto check = [&] {
    reads = 0;
    const auto found = Lines(CheckFiles(table, kNow, {{}, dir.Path(), {}, {}, memory}));
    return found.find("[Local Box") == std::string::npos ? "good" : "bad";
  };
  put(3, 60);
  EXPECT_EQ(check(), std::string("good"));
  EXPECT_GT(reads, 0);
  EXPECT_EQ(check(), std::string("good"));
  EXPECT_EQ(reads, 0);
  put(2, 50);  // of the same size
  EXPECT_EQ(check(), std::string("bad"));
  put(2, 0);  // and may change once more within the tick
  check();
  check();
  EXPECT_GT(reads, 0);
  ReaderCalls() = usual;
}

// The set of a table as the dialogs write it, but for some changes in the file of one box.
void WriteSet(const ParamTable& table, const std::filesystem::path& folder, std::int32_t changed,
              std::string_view changes) {
  ParamTable copy = table;
  SetDefaultResistances(&copy);
  for (const StartupBox box : StartupBoxes(copy)) {
    ParamTable derived = StartupForm(&copy, box, {}).Derive();
    const std::int32_t serial = IntParam(derived, "SNUM");
    Set(&derived, "MSTR", box.number == StartupBox::kMain ? "1" : "0");
    if (serial == changed) {
      SetAll(&derived, changes);
    }
    const std::string name = std::to_string(serial) + ".TBL";
    ASSERT_EQ(SaveParamFile(&derived, folder / name, {}), kOk);
  }
}

TEST(CheckRules, SayWhatIsWrongInASet) {
  const TempDir dir;
  ParamTable table = Right("SIP");
  const auto check = [&](std::string_view folder = "") {
    return Lines(CheckFiles(table, kNow, {{}, {}, {}, dir / folder}));
  };
  EXPECT_EQ(check("none"), "E target [] SNUM");
  EXPECT_EQ(check(), "");
  struct SetRow {
    std::int32_t box;
    const char* changes;
    const char* findings;
  };
  for (const SetRow& row : std::initializer_list<SetRow>{
           {0, "", ""},
           {2417, "MSTR=0", "W set-radio [] MSTR"},
           {3105, "MSTR=1", "E set-radio [] MSTR"},
           {1203, "HZSN=7 RQST=1 GFC1=2", ""},
           {1203, "NADR=7", "E set-radio [Aux. Box 1203] NADR; W set-other [Aux. Box 1203] NADR"},
           {3105, "LINE=other", "W set-other [Transmitter 3105] LINE"},
           {1203, "SNUM=1204", "W target [Aux. Box 1203] SN01"}}) {
    WriteSet(table, dir.Path(), row.box, row.changes);
    EXPECT_EQ(check(), row.findings) << row.changes;
  }
  std::filesystem::remove(dir / "1203.TBL");
  EXPECT_EQ(check(), "W set-missing [Aux. Box 1203] SN01");
  std::filesystem::create_directory(dir / "1203");
  WriteSet(table, dir / "1203", 0, "");
  std::filesystem::rename(dir / "1203/1203.TBL", dir / "1203/STARTUP.TBL");
  EXPECT_EQ(check(), "");
  // The table beside a recording is older than the open one by right, and no start-up file.
  WriteSet(table, dir.Path(), 2417, "LINE=other");
  EXPECT_EQ(check(), "W set-other [Local Box 2417] LINE");
  WriteAll(dir / "2417.tss", "");
  EXPECT_EQ(check(), "W set-radio [] MSTR; W set-missing [Local Box 2417] SNUM")
      << "with it the master's file is missing";
  std::filesystem::remove(dir / "2417.tss");
  Set(&table, "SN03", "1207");  // after an empty place
  EXPECT_EQ(check(), "W set-other [Local Box 2417] SN03");
  WriteAll(dir / "1207.tbl", "of another day");
  EXPECT_EQ(check(), "W set-other [Local Box 2417] SN03; W set-stray [Aux. Box 1207] SN03");
  std::filesystem::remove(dir / "1207.tbl");
  Set(&table, "SN03", "0");
  Set(&table, "SN01", "2417");
  EXPECT_NE(check().find("E target [Aux. Box 2417] SN01"), std::string::npos);
}

TEST(CheckRules, FindWhatIsPlantedInTheExampleSurvey) {
  const TempDir dir;
  ASSERT_TRUE(MakeExampleSurvey(dir / "s"));
  for (const std::string day : {"SIP", "TDIP", "TDEM", "CSAMT", "MT", "FDEM"}) {
    ParamTable table = NewTable();
    const auto path = dir.Path() / "s" / day / "Startup.tbl";
    ASSERT_EQ(LoadParamFile(&table, path), kOk);
    EXPECT_EQ(Lines(CheckTable(table, kNow)),
              "H channel-off [Aux. Box 1207] FLAG2R3; H box-empty [Aux. Box 1211] DEF3R1")
        << day;
    EXPECT_EQ(Lines(CheckFiles(table, kNow, {path, dir.Path() / "s/Calibration", {}, {}})),
              day == "FDEM" ? "H step-comb [] AUTO" : "")
        << day;
  }
}

TEST(CheckRules, AreMarkedOnTheMap) {
  const auto marks = [](const char* settings) {
    ParamTable table = NewTable();
    SetAll(&table, (kMethods.at("SIP") + " " + kSpread + " " + settings).c_str());
    std::string text;
    for (const MapMark& mark : MarksOf(CheckTable(table, kNow), Spread(&table))) {
      text += std::to_string(mark.box) + "/" + std::to_string(mark.channel) + " ";
    }
    return text;
  };
  EXPECT_EQ(marks(""), "") << "2 hints mark nothing";
  EXPECT_EQ(marks("ENEG2=50"), "1/1 ") << "an error: no length";
  EXPECT_EQ(marks("ENEG1=100 EPOS1=50 RXLEN=1"), "1/0 1/1 1/2 2/0 1/0 1/1 ") << "warnings";
  EXPECT_EQ(marks("SN01=0 SN02=1203"), "2/-1 ") << "it gets no file";
}

TEST(CheckRules, StandInTheDocuments) {
  EXPECT_EQ(ReadAll(ORVANE_SOURCES "/../docs/checks.md"), RulesMarkdown())
      << "make it anew: orvane-cli table check --rules >docs/checks.md";
}

TEST(CheckRules, TakeAnyTable) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const ParamTable table = RandomTable(seed);
    for (const Finding& finding : CheckTable(table, kNow)) {
      for (const ParamKey key : finding.keys) {
        EXPECT_NE(table.FindParam(key), nullptr) << finding.id << " " << key.Text();
      }
    }
  }
}

}  // namespace
}  // namespace orvane::testing
