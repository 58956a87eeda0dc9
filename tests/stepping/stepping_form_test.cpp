// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/stepping_form.h"

#include "stepping/cycle_form.h"
#include "support/table_help.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class Stepping : public ::testing::Test {
 protected:
  void Open(int tech, int stepping) {
    Set(&table_, "TECH", FormatInt(tech));
    Set(&table_, "AUTO", FormatInt(stepping));
    form_.Open();
  }
  std::size_t Steps() const { return WrittenRows(form_.Schedule()).size(); }

  ParamTable table_ = testing::NewTable();
  testing::Told told_;
  SteppingForm form_{&table_, &told_, &told_};
  testing::TempDir dir_;
};

TEST_F(Stepping, EnablesByMethodAndControl) {
  // CREQ, FEND, FDRIFT, calculate, open, default, picture
  const std::tuple<int, int, const char*> kCases[] = {
      {kSip, 0, "1000011"},   {kCsamt, 1, "0101011"}, {kFdem, 2, "0000111"}, {kTdip, 0, "1011010"},
      {kTdem, 10, "0011110"}, {kMtAmt, 1, "0101001"}, {9, 11, "0000001"}};
  for (const auto& [tech, stepping, expected] : kCases) {
    Open(tech, stepping);
    std::string enabled;
    for (const bool is_on :
         {form_.Model().IsEnabled(stepping::kRequested), form_.Model().IsEnabled(stepping::kLowest),
          form_.Model().IsEnabled(stepping::kDrift), form_.CanCalculate(), form_.CanOpenFile(),
          form_.HasDefaults(), form_.HasPicture()}) {
      enabled += is_on ? '1' : '0';
    }
    EXPECT_EQ(enabled, expected) << tech;
  }
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
  Set(&table_, "FRQ2", "7");  // after the first zero: not shown
  Set(&table_, "TPFR", "30");
  Set(&table_, "CRMX", "4");
  Open(kCsamt, 1);
  EXPECT_EQ(Steps(), 200U) << "no lowest frequency";
  form_.Model().SetText(stepping::kLowest, "9");
  form_.Calculate();
  EXPECT_EQ(form_.StepText(0, SteppingForm::kFrequency), "10.12345679");
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_EQ(ReadAll(dir_ / "a.TFS"), StepBytes(30, 4, 10.123456789012345, 4));
  EXPECT_EQ(Get(table_, "FEND"), "0");

  EXPECT_NE(form_.EditStep(0, SteppingForm::kCurrent, "2,5").find(" in A "), std::string::npos);
  EXPECT_NE(form_.EditStep(0, SteppingForm::kEndTime, "30.5"), "");
  EXPECT_NE(form_.EditStep(0, SteppingForm::kWaveform, "13"), "");
  EXPECT_EQ(form_.InsertStep(0), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kCurrent, "2.5"), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kWaveform, "td33n"), "");
  EXPECT_EQ(form_.EditStep(1, SteppingForm::kWaveform, "12"), "");
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_EQ(ReadAll(dir_ / "a.TFS"),
            StepBytes(0, 10, 0, 2.5) + StepBytes(30, 12, 10.123456789012345, 4));
  EXPECT_NE(told_.warning.find("cannot be read back: row 1: end time 0"), std::string::npos);
  form_.DeleteStep(0);

  form_.Model().SetText(stepping::kSeconds, "0");
  form_.Calculate();
  EXPECT_EQ(form_.StepText(0, SteppingForm::kWaveform), "EXTCLK") << "rejected: it stays";
  EXPECT_NE(form_.EditFrequency(1, "3,5").find("Hz"), std::string::npos);
  form_.Commit();
  EXPECT_EQ(Get(table_, "FRQ2"), "7");
  EXPECT_EQ(form_.EditFrequency(1, "3.5"), "");
  form_.Commit();
  EXPECT_EQ(Values(table_, "FRQ0 FRQ1 FRQ2 FEND TPFR"), "10.12345679 3.5 0 9 0");
}

TEST_F(Stepping, ACellThatIsNotEditedKeepsItsNumberAndEditsAreKnown) {
  Set(&table_, "FRQ0", "10.123456789012345");
  Set(&table_, "FEND", "9");
  Set(&table_, "TPFR", "30");
  Set(&table_, "CRMX", "3.14159");
  Open(kCsamt, 1);
  EXPECT_EQ(form_.ScheduleName(), "");
  EXPECT_EQ(form_.StepText(0, SteppingForm::kCurrent), "3.142");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kCurrent, "3.142"), "");
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kFrequency, "10.12345679"), "");
  EXPECT_EQ(form_.AskToExportSteps(), Answer::kNo);
  EXPECT_EQ(told_.asked, 0);
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_EQ(ReadAll(dir_ / "a.TFS"), StepBytes(30, 4, 10.123456789012345, 3.14159));
  EXPECT_EQ(form_.EditStep(0, SteppingForm::kCurrent, "3.1"), "");
  EXPECT_EQ(form_.AskToExportSteps(), Answer::kCancel);
  EXPECT_FALSE(form_.ExportFile("/nowhere/a.TFS"));
  EXPECT_EQ(told_.notice, "/nowhere/a.TFS: No such file or directory");
  EXPECT_TRUE(form_.HasEditedSteps()) << "no file has them";
  ASSERT_TRUE(form_.ExportFile(dir_ / "a.TFS"));
  EXPECT_FALSE(form_.HasEditedSteps());
  form_.Model().SetIndex(stepping::kAuto, 2);
  EXPECT_EQ(form_.ScheduleName(), "2.TFS");
}

TEST_F(Stepping, TellsOfFrequenciesThatAreNotShown) {
  for (const auto& [key, frequency] : {std::pair("FRQ0", "8"), std::pair("FRQ1", "0"),
                                       std::pair("FRQ2", "7"), std::pair("FR19", "1")}) {
    Set(&table_, key, frequency);
  }
  Open(kCsamt, 2);
  EXPECT_EQ(form_.Note(), "2 frequencies stored after an empty one are not shown");
}

TEST_F(Stepping, OpensFilesAndTellsOfThem) {
  Open(kSip, 2);
  testing::WriteAll(dir_ / "a.TFS", testing::ManySteps(1) + testing::ManySteps(1));
  form_.OpenFile(dir_ / "a.TFS");
  EXPECT_EQ(told_.warning, "");
  EXPECT_EQ(told_.notice.find("2 rows read, none kept: "), 0U);
  form_.OpenFile(dir_ / "missing.TFS");
  EXPECT_EQ(told_.warning, "File Read Error: Cannot open schdele file!");
  EXPECT_FALSE(form_.ExportFile("/nowhere/a.TFS"));
  EXPECT_EQ(told_.warning,
            "File Open Error: Failed to open file /nowhere/a.TFS to export schedule file!");
}

TEST_F(Stepping, DefaultsOfTheTimeDomain) {
  const std::tuple<int, const char*, const char*, const char*> kCases[] = {
      {kTdip, "60", "13", "0 1 16 0 0.125 5"},
      {kTdem, "60", "13", "0 4 21 0 0.0625 5"},
      {kTdem, "50", "1", "0 4 21 0 25 5"},
      {kTdem, "60", "1", "0 4 21 0 30 5"}};
  for (const auto& [tech, line, array, written] : kCases) {
    table_ = testing::NewTable();
    Set(&table_, "LFRQ", line);
    Set(&table_, "ARRYTYP", array);
    Set(&table_, "FDRIFT", "3");
    Open(tech, 1);
    form_.ApplyDefaults(0);
    EXPECT_EQ(Values(table_, "FDRIFT WFRM NUMITEM AUTO FREQ CREQ"), written);
    EXPECT_FALSE(form_.Windows().empty());
    EXPECT_TRUE(form_.Note().starts_with(FormatInt(form_.Windows().size()) + " windows. "));
    form_.Model().SetText(stepping::kRepeat, "0");
    form_.Calculate();
    EXPECT_TRUE(form_.Note().starts_with("No windows: ")) << form_.Note();
  }
}

TEST_F(Stepping, CyclesBeginWhereTheTableStandsAndAreWrittenAtOnce) {
  const std::tuple<Tech, const char*, int, const char*> kCases[] = {
      {kSip, "480", 0, "5"},    {kSip, "2700", 1, "5"},    {kFdem, "2400", 2, "16"},
      {kFdem, "3600", 3, "16"}, {kCsamt, "1800", 0, "16"}, {kCsamt, "2400", 1, "16"},
      {kCsamt, "0", 2, "16"},   {kCsamt, "3600", 3, "16"}};
  for (const auto& [tech, total, button, current] : kCases) {
    Set(&table_, "TTOT", total);
    CycleForm cycle(&table_, &form_.Early(), tech, WithDefaults({}, tech));
    cycle.Open();
    EXPECT_EQ(cycle.Model().Index(CycleForm::kCycle), button) << total;
    EXPECT_EQ(cycle.Model().Text(CycleForm::kCurrent), current);
  }
  Set(&table_, "CRMX", "3.14159265358979");
  Open(kCsamt, 0);
  CycleForm cycle(&table_, &form_.Early(), kCsamt, form_.Limits());
  cycle.Open();
  cycle.Model().SetIndex(CycleForm::kCycle, 1);
  cycle.Model().SetText(CycleForm::kResistance, "75");
  cycle.Commit();
  EXPECT_EQ(RealOf(table_.FindParam("CRMX")->value), 3.14159265358979) << "all its digits";
  EXPECT_EQ(cycle.Limits().resistance, 75);
  EXPECT_EQ(form_.EarlyChanges(), (std::vector<std::string>{"TTOT", "FCMX"}));
  form_.ApplyDefaults(cycle.Seconds());
  EXPECT_EQ(Steps(), 40U);
  EXPECT_EQ(form_.EarlyChanges().front(), "TTOT");
  const ParamTable before = table_;
  form_.Commit();
  EXPECT_EQ(testing::Changes(before, table_), std::set<std::string>()) << "no old values";
}

}  // namespace
}  // namespace orvane
