// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/stepping_form.h"

#include <gtest/gtest.h>

#include "stepping/cycle_form.h"
#include "stepping/fdem_form.h"
#include "support/table_help.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"

namespace orvane {
namespace {

using testing::Get;
using testing::Set;
using testing::StepBytes;
using Keys = std::vector<std::string>;

class Listener : public Prompts, public Notices {
 public:
  Answer AskYesNo(const std::string&, const std::string&) override { return Answer::kNo; }
  Answer AskYesNoCancel(const std::string&, const std::string&) override { return Answer::kCancel; }
  void ShowWarning(const std::string& caption, const std::string& text) override {
    warning = caption + ": " + text;
  }
  void ShowNotice(const std::string& text) override { notice = text; }
  std::string warning;
  std::string notice;
};

class Stepping : public ::testing::Test {
 protected:
  void Open(int tech, int stepping) {
    Set(&table_, "TECH", FormatInt(tech));
    Set(&table_, "AUTO", FormatInt(stepping));
    form_.Open();
  }
  void Type(int control, const char* text) { form_.Model().SetText(control, text); }
  std::size_t Steps() const { return WrittenRows(form_.Schedule()).size(); }

  ParamTable table_ = testing::NewTable();
  Listener told_;
  SteppingForm form_{&table_, &told_, &told_};
  testing::TempDir dir_;
};

TEST_F(Stepping, EnablesByMethodAndControl) {
  struct Case {
    int tech;
    int stepping;
    const char* enabled;  // CREQ, FEND, FDRIFT, calculate, open, default
    const char* title;
  };
  const Case kCases[] = {
      {kSip, 0, "100001", "SIP Frequency Stepping Parameters"},
      {kCsamt, 1, "010101", "CSAMT Frequency Stepping Parameters"},
      {kFdem, 2, "000011", "FDEM Frequency Stepping Parameters"},
      {kTdip, 0, "101101", "Set TDIP Window Parameters"},
      {kTdem, 10, "001111", "Set TDEM Window Parameters"},
      {kMtAmt, 1, "010100", "Frequency Stepping Parameters"},
      {9, 11, "000000", "Frequency Stepping Parameters"},
  };
  for (const Case& c : kCases) {
    Open(c.tech, c.stepping);
    std::string enabled;
    for (const bool is_on :
         {form_.Model().IsEnabled(stepping::kRequested), form_.Model().IsEnabled(stepping::kLowest),
          form_.Model().IsEnabled(stepping::kDrift), form_.CanCalculate(), form_.CanOpenFile(),
          form_.HasDefaults()}) {
      enabled += is_on ? '1' : '0';
    }
    EXPECT_EQ(enabled, c.enabled) << c.tech;
    EXPECT_EQ(form_.Title(), c.title);
  }
  form_.Model().SetIndex(stepping::kAuto, 1);
  form_.OnEdited(stepping::kAuto);
  EXPECT_TRUE(form_.Model().IsEnabled(stepping::kTotal) && form_.CanCalculate());
}

TEST_F(Stepping, UntouchedValuesKeepTheirBytes) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    ParamTable table = testing::RandomTable(seed);
    Set(&table, "AUTO", seed % 2 == 0 ? "11" : "-1");
    const ParamTable before = table;
    SteppingForm form(&table, &told_, &told_);
    form.Open();
    form.Commit();
    EXPECT_EQ(testing::Changes(before, table), std::set<std::string>());
  }
}

TEST_F(Stepping, CalculatesFromWhatStandsInTheDialogAndExportsItsBytes) {
  Set(&table_, "FRQ0", "10.123456789012345");
  Set(&table_, "FRQ2", "7");  // behind the first zero: not shown
  Set(&table_, "TPFR", "30");
  Set(&table_, "CRMX", "4");
  Open(kCsamt, 1);
  EXPECT_EQ(Steps(), 200U) << "no lowest frequency";
  Type(stepping::kLowest, "9");
  form_.Calculate();
  EXPECT_EQ(form_.StepText(0, SteppingForm::kFrequency), "10.12345679");
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_EQ(testing::ReadAll(dir_ / "a.TFS"), StepBytes(30, 4, 10.123456789012345, 4));
  EXPECT_EQ(Get(table_, "FEND"), "0");

  EXPECT_NE(form_.EditStep(0, SteppingForm::kCurrent, "2,5"), "");
  EXPECT_NE(form_.EditStep(0, SteppingForm::kEndTime, "30.5"), "");
  EXPECT_NE(form_.EditStep(0, SteppingForm::kWaveform, "13"), "");
  EXPECT_EQ(form_.InsertStep(0), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kCurrent, "2.5"), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kEndTime, "7"), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kWaveform, "td33n"), "");
  EXPECT_EQ(form_.EditStep(1, SteppingForm::kWaveform, "12"), "");
  EXPECT_EQ(form_.StepText(1, SteppingForm::kWaveform), "EXTCLK");
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_EQ(testing::ReadAll(dir_ / "a.TFS"),
            StepBytes(7, 10, 0, 2.5) + StepBytes(30, 12, 10.123456789012345, 4));
  EXPECT_NE(told_.warning.find("cannot be read back: row 2: waveform 12"), std::string::npos);
  form_.DeleteStep(0);
  EXPECT_EQ(form_.StepText(0, SteppingForm::kEndTime), "30");

  Type(stepping::kSeconds, "0");
  form_.Calculate();
  EXPECT_EQ(Steps(), 1U) << "a rejected calculation leaves the schedule";
  EXPECT_NE(form_.Note().find("TPFR"), std::string::npos);
  EXPECT_NE(form_.EditFrequency(1, "3,5"), "");
  form_.Commit();
  EXPECT_EQ(Get(table_, "FRQ2"), "7");
  EXPECT_EQ(form_.EditFrequency(1, "3.5"), "");
  form_.Commit();
  EXPECT_EQ(Get(table_, "FRQ0") + " " + Get(table_, "FRQ1") + " " + Get(table_, "FRQ2") + " " +
                Get(table_, "FEND") + " " + Get(table_, "TPFR"),
            "10.12345679 3.5 0 9 0");
}

TEST_F(Stepping, OpensFilesAndTellsOfThem) {
  Open(kSip, 2);
  testing::WriteAll(dir_ / "a.TFS", testing::ManySteps(3));
  form_.OpenFile(dir_ / "a.TFS");
  EXPECT_EQ(Steps(), 3U);
  testing::WriteAll(dir_ / "b.TFS", StepBytes(5, 4, 1, 1) + StepBytes(5, 4, 1, 1));
  form_.OpenFile(dir_ / "b.TFS");
  EXPECT_EQ(Steps(), 0U);
  EXPECT_EQ(told_.warning, "");
  EXPECT_NE(told_.notice.find("2 rows read"), std::string::npos);
  EXPECT_NE(told_.notice.find("row 2: end time 5 s is not after 5 s"), std::string::npos);
  form_.OpenFile(dir_ / "missing.TFS");
  EXPECT_EQ(told_.warning, "File Read Error: Cannot open schdele file!");
  EXPECT_FALSE(form_.ExportFile("/nowhere/a.TFS"));
  EXPECT_EQ(told_.warning,
            "File Open Error: Failed to open file /nowhere/a.TFS to export schedule file!");
}

TEST_F(Stepping, DefaultsOfTheTimeDomain) {
  struct Case {
    int tech;
    const char* line;
    const char* array;
    const char* written;
  };
  const Case kCases[] = {{kTdip, "60", "13", "0 1 16 0 0.125 5"},
                         {kTdem, "60", "13", "0 4 21 0 0.0625 5"},
                         {kTdem, "50", "1", "0 4 21 0 25 5"},
                         {kTdem, "60", "1", "0 4 21 0 30 5"}};
  for (const Case& c : kCases) {
    table_ = testing::NewTable();
    Set(&table_, "LFRQ", c.line);
    Set(&table_, "ARRYTYP", c.array);
    Set(&table_, "FDRIFT", "3");
    Open(c.tech, 1);
    form_.ApplyDefaults(0);
    EXPECT_EQ(Get(table_, "FDRIFT") + " " + Get(table_, "WFRM") + " " + Get(table_, "NUMITEM") +
                  " " + Get(table_, "AUTO") + " " + Get(table_, "FREQ") + " " + Get(table_, "CREQ"),
              c.written);
    EXPECT_FALSE(form_.Windows().empty());
  }
}

TEST_F(Stepping, CyclesBeginWhereTheTableStandsAndAreWrittenAtOnce) {
  struct Case {
    int tech;
    const char* total;
    int button;
    const char* current;
  };
  const Case kCases[] = {{kSip, "480", 0, "5"},     {kSip, "2700", 1, "5"},
                         {kFdem, "2400", 2, "16"},  {kFdem, "3600", 3, "16"},
                         {kCsamt, "1800", 0, "16"}, {kCsamt, "2400", 1, "16"},
                         {kCsamt, "0", 2, "16"},    {kCsamt, "3600", 3, "16"}};
  for (const Case& c : kCases) {
    Set(&table_, "TTOT", c.total);
    EarlyWrites early(&table_);
    CycleForm cycle(&table_, &early, c.tech, WithDefaults({}, c.tech));
    cycle.Open();
    EXPECT_EQ(cycle.Model().Index(CycleForm::kCycle), c.button) << c.total;
    EXPECT_EQ(cycle.Model().Text(CycleForm::kCurrent), c.current);
  }
  Set(&table_, "CRMX", "3.14159265358979");
  Open(kCsamt, 0);
  CycleForm cycle(&table_, &form_.Early(), kCsamt, form_.Limits());
  cycle.Open();
  cycle.Model().SetIndex(CycleForm::kCycle, 1);
  cycle.Model().SetText(CycleForm::kResistance, "-1");
  EXPECT_TRUE(cycle.Model().Validate());
  cycle.Model().SetText(CycleForm::kResistance, "75");
  cycle.Commit();
  EXPECT_EQ(RealOf(table_.FindParam("CRMX")->value), 3.14159265358979) << "all its digits";
  EXPECT_EQ(cycle.Limits().resistance, 75);
  form_.ApplyDefaults(cycle.Seconds());
  EXPECT_EQ(Get(table_, "TTOT"), "2400");
  EXPECT_EQ(Steps(), 40U);
  const Keys changed = form_.EarlyChanges();
  EXPECT_EQ(Keys(changed.begin(), changed.begin() + 2), (Keys{"TTOT", "FCMX"}));
  const ParamTable before = table_;
  form_.Commit();
  EXPECT_EQ(testing::Changes(before, table_), std::set<std::string>()) << "no old values";
}

TEST_F(Stepping, FdemFormRefusesWhatNobodyCanTransmit) {
  FdemForm fdem(&told_);
  fdem.Open();
  EXPECT_FALSE(fdem.Save());
  EXPECT_EQ(told_.warning, "Orvane: Enter the file to be saved.");
  for (const int control : {FdemForm::kSeconds, FdemForm::kCycles, FdemForm::kCurrent}) {
    const std::string good = fdem.Model().Text(control);
    for (const char* bad : {"-1", "nan", "inf", "1,5", ""}) {
      fdem.Model().SetText(control, bad);
      EXPECT_TRUE(fdem.Model().Validate()) << bad;
    }
    fdem.Model().SetText(control, good);
  }
  fdem.Model().SetText(FdemForm::kPath, (dir_ / "f.TFS").string());
  fdem.Model().SetIndex(FdemForm::kSet, 1);
  ASSERT_TRUE(fdem.Save());
  EXPECT_EQ(testing::ReadAll(dir_ / "f.TFS").size(), 78U * 22);
  fdem.Model().SetText(FdemForm::kSeconds, "2000000000");
  EXPECT_FALSE(fdem.Save());
  EXPECT_EQ(testing::ReadAll(dir_ / "f.TFS").size(), 78U * 22) << "nothing was written";
}

}  // namespace
}  // namespace orvane
