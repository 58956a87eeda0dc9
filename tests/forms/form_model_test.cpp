// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form_model.h"

#include <gtest/gtest.h>

#include "forms/early_writes.h"
#include "table/param_access.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr std::array kRequests = {1, 2, 5};
constexpr std::array kHours = {0, 6, 12};
constexpr int kNoRequest = 1;
constexpr std::array<Choice, 3> kThree = {{{"a", 11}, {"b", 12}, {"c", 13}}};
constexpr Field kFields[] = {
    {1, Widget::kInteger, "Amount", "L2NS", IntPT, {}, {0, 4}},
    {2, Widget::kReal, "Voltage", "DXDC", FltPT, Scale(1000, 0.001)},
    {3, Widget::kText, "Serial", "HXSN", StrPT, {}, {0, 0, 8}},
    {4, Widget::kTime, "Start", "STIM", AmxPT},
    {5, Widget::kText, "Project", "SRVY", StrPT, Pieces(4)},
    {11,
     Widget::kRadios,
     "Request",
     "RQST",
     IntPT,
     Map(kRequests, Unlisted::kAsIndex, &kNoRequest),
     {},
     kThree},
    {7, Widget::kCombo, "Close", "FLEN", IntPT, Map(kHours, Unlisted::kFirst), {}, kThree},
    {8, Widget::kCombo, "North", "NREF", IntPT, Offset(2), {}, kThree},
    {9, Widget::kCombo, "Array", "ARRYTYP", IntPT, Offset(9, Unlisted::kFirst), {}, kThree},
    {10, Widget::kCheck, "Comb", "COMBON", IntPT, Flag()},
    {20, Widget::kShown, "Kind", "HW", StrPT},
};
constexpr int kAll[] = {1, 2, 3, 4, 5, 11, 7, 8, 9, 10, 20};

class Form : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(table_.BuildParamIndex(), kOk); }

  void Set(ParamKey key, std::string_view text) {
    const auto type = static_cast<ValueType>(table_.FindParam(key)->type);
    const auto value = ParseParamValueStrictly(text, type);
    ASSERT_EQ(value.Message(), "");
    ASSERT_EQ(table_.SetParam(key, type, value->data()), kOk);
  }
  std::string Get(ParamKey key) const {
    std::string text;
    const ParamEntry* entry = table_.FindParam(key);
    FormatParamValue(static_cast<ValueType>(entry->type), entry->value, &text);
    return text;
  }
  void ReadAndWrite() {
    form_.ReadAll();
    form_.Write(kAll);
  }

  ParamTable table_;
  FormModel form_{&table_, kFields};
};

TEST_F(Form, ChoicesAreMappedAsTheirCodecsSay) {
  struct Case {
    int control;
    const char* key;
    const char* stored;
    int index;
    const char* written;  // with nobody touching it
  };
  for (const Case& test : {
           Case{11, "RQST", "5", 2, "5"},
           Case{11, "RQST", "0", 0, "1"},
           Case{11, "RQST", "77", -1, "1"},
           Case{11, "RQST", "-3", -1, "1"},
           Case{7, "FLEN", "12", 2, "12"},
           Case{7, "FLEN", "5", 0, "0"},
           Case{8, "NREF", "4", 2, "4"},
           Case{8, "NREF", "9", -1, "9"},
           Case{8, "NREF", "-2147483648", -1, "-2147483648"},
           Case{9, "ARRYTYP", "10", 1, "10"},
           Case{9, "ARRYTYP", "2", 0, "9"},
           Case{10, "COMBON", "-7", 1, "1"},
           Case{10, "COMBON", "0", 0, "0"},
       }) {
    SCOPED_TRACE(std::string(test.key) + "=" + test.stored);
    Set(test.key, test.stored);
    form_.ReadAll();
    EXPECT_EQ(form_.Index(test.control), test.index);
    form_.Write(kAll);
    EXPECT_EQ(Get(test.key), test.written);
  }
  form_.SetIndex(8, 1);
  form_.SetIndex(11, kNothingChosen);
  form_.Write(kAll);
  EXPECT_EQ(Get("NREF"), "3");
  EXPECT_EQ(Get("RQST"), "1");
}

TEST_F(Form, UntouchedFieldsWriteTheirBytesBack) {
  // A double that ten digits do not tell, a weekday, an invalid time, a text beyond its limit.
  PutReal(&table_, "DXDC", 0.1 + 0.2);
  Set("HXSN", "longer than 8");
  Set("L2NS", "99");
  for (const ParamTime& time :
       {ParamTime{5, 4, 3, 21, 11, 26, 6, 20}, ParamTime{99, 0, 0, 1, 1, 1, 1, 1}}) {
    PutTime(&table_, "STIM", time);
    form_.SetHourOffset(7);
    ReadAndWrite();
    EXPECT_EQ(TimeOf(table_.FindParam("STIM")->value), time);
  }
  EXPECT_EQ(RealOf(table_.FindParam("DXDC")->value), 0.1 + 0.2);
  EXPECT_EQ(Get("HXSN"), "longer than 8");
  EXPECT_EQ(Get("L2NS"), "99");
  EXPECT_FALSE(form_.Warning(1).empty() || form_.Warning(3).empty());
  EXPECT_FALSE(form_.Validate().has_value()) << "nobody typed it";
}

TEST_F(Form, TextsAreConverted) {
  Set("DXDC", "0.0125");
  Set("SRVY1", "fifteen letters");
  Set("SRVY2", " more");
  form_.ReadAll();
  EXPECT_EQ(form_.Text(2), "12.5");
  EXPECT_EQ(form_.Text(5), "fifteen letters more");
  form_.SetText(2, "-8");
  form_.SetText(5, std::string(70, 'x'));
  form_.SetText(20, "never");
  form_.Write(kAll);
  EXPECT_EQ(Get("DXDC"), "-0.008");
  EXPECT_EQ(Get("SRVY4"), std::string(15, 'x'));
  EXPECT_EQ(Get("HW"), "");
  form_.SetText(5, "short");
  form_.Write(kAll);
  EXPECT_EQ(Get("SRVY1") + "|" + Get("SRVY2") + "|" + Get("SRVY4"), "short||");
}

TEST_F(Form, WhatIsShownIsWrittenEnabledOrNot) {
  Set("L2NS", "3");
  Set("COMBON", "-7");
  Set("STIM", "2026/11/21 10:00:00");
  form_.ReadAll();
  form_.SetIndex(10, 0);
  form_.SetText(2, " 0.5 ");
  for (const int control : {1, 2, 10}) {
    form_.Enable(control, false);
  }
  form_.Write(kAll);
  EXPECT_EQ(Get("L2NS") + Get("DXDC") + Get("COMBON"), "30.00050");
  form_.Enable(1, true);
  form_.SetText(1, "99");
  form_.Enable(1, false);
  EXPECT_EQ(form_.Text(1), "3") << "what is no amount is shown no longer";
  form_.SetText(4, "2026/11/22 10:00:00");
  form_.SetAside(4);
  EXPECT_EQ(form_.Text(4), "2026/11/21 10:00:00");
  form_.SetAside(4);
  form_.SetHourOffset(2);
  form_.Write(kAll);
  EXPECT_EQ(Get("STIM"), "2026/11/21 10:00:00");
  form_.BringBack(4);
  EXPECT_EQ(form_.Text(4), "2026/11/22 12:00:00");
  form_.EnableGroup(11, false);
  EXPECT_FALSE(form_.IsEnabled(11) || form_.IsEnabled(12) || form_.IsEnabled(13));
}

TEST_F(Form, EarlyWritesAreToldWhereTheyChangedAValue) {
  Set("NUMITEM", "4");
  Set("GFC1", "1");
  EarlyWrites early(&table_);
  early.PutInt("NUMITEM", 5);
  early.PutReal("GFC1", 1.0);
  early.PutInt("NO SUCH", 1);
  early.Remember("L2NS");
  EXPECT_EQ(early.Changes(), std::vector<std::string>{"NUMITEM"});
  Set("L2NS", "1");
  early.PutInt("NUMITEM", 6);
  early.PutInt("NUMITEM", 4);
  EXPECT_EQ(early.Changes(), std::vector<std::string>{"L2NS"});
}

TEST_F(Form, RefusesTheFirstFaultAmongEnabledEdits) {
  form_.ReadAll();
  struct Case {
    int control;
    const char* text;
    const char* message;
  };
  for (const auto& [control, text, message] : {
           Case{1, "5", "Enter an integer between 0 and 4."},
           Case{1, "x", "Enter an integer."},
           Case{2, "1,5", "Enter a number."},
           Case{3, "123456789", "Enter no more than 8 characters."},
           Case{4, "2026/02/30", "Enter a date and time such as 2026/11/21 08:00:00."},
       }) {
    form_.SetText(control, text);
    const auto fault = form_.Validate();
    ASSERT_TRUE(fault.has_value()) << text;
    EXPECT_EQ(fault->control, control);
    EXPECT_EQ(fault->message, message);
    form_.Enable(control, false);
    EXPECT_FALSE(form_.Validate().has_value()) << "disabled";
    form_.Read(control);
    form_.Enable(control, true);
  }
}

TEST_F(Form, TimesMoveWithTheHourOffset) {
  struct Case {
    const char* stored;
    int hours;
    const char* shown;
  };
  for (const auto& [stored, hours, shown] : {
           Case{"2026/12/31 20:00:00", 8, "2027/01/01 04:00:00"},
           Case{"2024/02/29 01:00:00", -12, "2024/02/28 13:00:00"},
           Case{"20:00:00", 8, "04:00:00"},
           Case{"01:00:00", -3, "22:00:00"},
           Case{"1970/01/01 02:00:00", -5, "1970/01/01 02:00:00"},
           Case{"2099/12/31 23:00:00", 1, "2099/12/31 23:00:00"},
           Case{"1950/06/01 10:00:00", 5, "1950/06/01 10:00:00"},
       }) {
    Set("STIM", stored);
    form_.SetHourOffset(hours);
    form_.ReadAll();
    EXPECT_EQ(form_.Text(4), shown) << stored;
  }
  // Typed in one zone, looked at in another: the stored instant stays.
  form_.SetHourOffset(0);
  form_.SetText(4, "2026/11/21 10:00:00");
  form_.SetHourOffset(8);
  EXPECT_EQ(form_.Text(4), "2026/11/21 18:00:00");
  form_.Write(kAll);
  EXPECT_EQ(Get("STIM"), "2026/11/21 10:00:00");
  form_.SetText(4, "soon");
  form_.SetHourOffset(3);
  EXPECT_EQ(form_.Text(4), "soon");
}

TEST_F(Form, TellsItsListenerAndSkipsMissingKeys) {
  std::vector<int> told;
  form_.SetListener([&told](int control) { told.push_back(control); });
  form_.Enable(12, false);
  form_.SetCaption(3, "Coil");
  form_.SetText(3, "7");
  EXPECT_EQ(told, (std::vector<int>{11, 3, 3}));
  EXPECT_FALSE(form_.IsEnabled(12));
  EXPECT_TRUE(form_.IsEnabled(11));

  ParamTable empty{std::span<const ParamEntry>()};
  ASSERT_EQ(empty.BuildParamIndex(), kOk);
  FormModel form(&empty, kFields);
  form.ReadAll();
  EXPECT_EQ(form.Text(1), "");
  EXPECT_EQ(form.Index(8), kNothingChosen);
  form.Write(kAll);
}

}  // namespace
}  // namespace orvane
