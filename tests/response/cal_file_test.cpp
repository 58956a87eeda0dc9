// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/cal_file.h"

#include <gtest/gtest.h>

#include "support/cal_bytes.h"
#include "support/temp_dir.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class CalFileTest : public ::testing::Test {
 protected:
  Status StatusOf(const std::string& bytes, int kind = kBoxCal) {
    WriteAll(dir_ / "7.CLB", bytes);
    WriteAll(dir_ / "7.clc", bytes);
    CalReport report;
    cal_ = ReadCalFile(kind, (dir_ / "7").string(), &report);
    EXPECT_EQ(cal_ == nullptr, report.status != kOk);
    return report.status;
  }

  TempDir dir_;
  std::unique_ptr<CalData> cal_;
};

TEST_F(CalFileTest, PassesAndRecordsHaveLimits) {
  struct Case {
    std::vector<int> passes;
    Status status;
    std::vector<std::uint32_t> table;
  };
  const std::vector<std::uint32_t> hundreds = {0, 100, 200, 300, 400, 500};
  const std::vector<int> ones(29, 1);
  std::vector<int> thirty = ones;
  thirty.push_back(2);
  std::vector<int> thirty_one = thirty;
  thirty_one.push_back(1);
  std::vector<std::uint32_t> thirty_table;
  for (std::uint32_t i = 0; i < 30; ++i) {
    thirty_table.push_back(i);
  }
  thirty_table.push_back(31);
  for (const Case& c : std::vector<Case>{{{}, kCalRecordCount, {}},
                                         {{1}, kOk, {0, 1}},
                                         {{3, 2}, kOk, {0, 3, 5}},
                                         {{100}, kOk, {0, 100}},
                                         {{101}, kCalPassBounds, {}},
                                         {{101, 1}, kCalPassBounds, {}},
                                         {{100, 100, 100, 100, 100}, kOk, hundreds},
                                         {{100, 100, 100, 100, 100, 1}, kCalRecordCount, {}},
                                         {{99, 100, 100, 100, 102}, kCalRecordCount, {}},
                                         {{100, 100, 100, 101, 101}, kCalPassBounds, {}},
                                         {thirty, kOk, thirty_table},
                                         {thirty_one, kCalPassBounds, {}}}) {
    EXPECT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes(c.passes)), c.status);
    if (cal_ != nullptr) {
      EXPECT_EQ(cal_->pass_table, c.table);
    }
  }
  // Steps 0 and below begin a pass as well; from 2 on all go on with the first.
  EXPECT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes({2, 2}, 0)), kOk);
  EXPECT_EQ(cal_->PassCount(), 4U);
  EXPECT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes({2, 2}, 2)), kOk);
  EXPECT_EQ(cal_->PassCount(), 1U);
}

TEST_F(CalFileTest, WhatIsNotRightHasItsStatus) {
  const std::string records = CalPassBytes({2});
  EXPECT_EQ(StatusOf(CalHeaderBytes(2, 1) + records, kBoxCal), kCalKindMismatch);
  EXPECT_EQ(StatusOf(CalHeaderBytes(3, 1) + records, kSensorCal), kCalKindMismatch);
  EXPECT_EQ(StatusOf(CalHeaderBytes(2, 1) + records, kCurrentSensorCal), kCalKindMismatch);
  EXPECT_EQ(StatusOf(CalHeaderBytes(2, 1) + records, kSensorCal), kOk);  // 7.clc for 7.CLC
  EXPECT_EQ(StatusOf(CalHeaderBytes(1, 1) + records, 0), kCalKindMismatch);
  for (const int channels : {0, -1, 13, 32767}) {
    EXPECT_EQ(StatusOf(CalHeaderBytes(1, channels) + records), kCalHeaderUnreadable) << channels;
  }
  CalReport report;
  EXPECT_EQ(ReadCalFile(kBoxCal, (dir_ / "none").string(), &report), nullptr);
  EXPECT_EQ(report.status, kCalNotOpened);
  EXPECT_EQ(ReadCalFile(9, std::string(257, 'x'), &report), nullptr);
  EXPECT_EQ(report.status, kCalPathTooLong);
  EXPECT_EQ(ReadCalFile(9, std::string(256, 'x'), &report), nullptr);
  EXPECT_EQ(report.status, kCalKindMismatch);
}

TEST_F(CalFileTest, FieldsAreReadByKey) {
  ASSERT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes({1})), kOk);
  std::array<char, 16> text{};
  ParamTime time;
  EXPECT_EQ(GetCalField(cal_.get(), "UTC", AmxPT, &time), kOk);
  EXPECT_EQ(time, (ParamTime{0, 30, 8, 21, 11, 26, 6, 20}));
  for (const auto& [key, type, status] :
       {std::tuple("HSN", StrPT, kFieldNotFound), std::tuple("SNUM", FltPT, kFieldTypeMismatch),
        std::tuple("HW", PosPT, kFieldTypeMismatch), std::tuple("HATTX", FltPT, kFieldNotFound)}) {
    EXPECT_EQ(GetCalField(cal_.get(), key, type, text.data()), status) << key;
  }
  EXPECT_EQ(GetCalField(static_cast<CalData*>(nullptr), "HW", StrPT, text.data()), kNoCalibration);
  ASSERT_EQ(StatusOf(CalHeaderBytes(2, 1) + CalPassBytes({1}), kSensorCal), kOk);
  for (const auto& [key, expected] : {std::pair("SNUM", 65534) /* zero-extended */,
                                      {"NCHN", 1},
                                      {"STAT", 7},
                                      {"CTYP", 2},
                                      {"TCMB", 1},
                                      {"TALS", 2},
                                      {"LFRQ", 3},
                                      {"Q2SR", 4},
                                      {"LPFR", 5}}) {
    std::int32_t number = -1;
    EXPECT_EQ(GetCalField(cal_.get(), key, IntPT, &number), kOk);
    EXPECT_EQ(number, expected) << key;
  }
  for (const auto& [key, expected] :
       {std::pair("HATT", 0.5), {"HNOM", 1234.25}, {"CPHC", -2.125}}) {
    double real = 0;
    EXPECT_EQ(GetCalField(cal_.get(), key, FltPT, &real), kOk);
    EXPECT_EQ(real, expected) << key;
  }
  for (const auto& [key, expected] :
       {std::pair("hw", "ZLA5K"), {"VER", "5.0"}, {"HSN", "COIL12345678"}}) {
    EXPECT_EQ(GetCalField(cal_.get(), key, StrPT, text.data()), kOk);
    EXPECT_STREQ(text.data(), expected);
  }
}

TEST_F(CalFileTest, TheModelStartsFromTheHardwareAndTheFourthValues) {
  ASSERT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes({1, 1})), kOk);
  EXPECT_EQ(cal_->model.parameter_count, 0U);
  EXPECT_EQ(cal_->channel_flags, ChannelModelFlags{});
  ASSERT_EQ(StatusOf(CalHeaderBytes(1, 1) + CalPassBytes({1, 1, 1})), kOk);
  EXPECT_EQ(cal_->channel_flags, (ChannelModelFlags{0, 0, 1, 1, 3}));
  EXPECT_EQ(cal_->model.parameters[17], 4);    // the fourth value of pass 0
  EXPECT_EQ(cal_->model.parameters[18], 600);  // there is no pass 9
  EXPECT_EQ(cal_->model.parameters[12], 424);
  EXPECT_EQ(cal_->model.responses.size(), 1200U);
}

TEST(ChannelModelFlagsTest, TheFirstTagDecides) {
  const ChannelModelFlags none{};
  const ChannelModelFlags five{0, 0, 1, 1, 3};
  for (const auto& [hardware, flags] :
       std::vector<std::pair<const char*, ChannelModelFlags>>{{"ZLAEH5", none},
                                                              {"ZLAH5", {1, 1, 3}},
                                                              {"ZLA5", five},
                                                              {"ZLA36GV", none},
                                                              {"GVE3", none},
                                                              {"3GV", {1}},
                                                              {"QVN5", {1}},
                                                              {"653", {0, 0, 3}},
                                                              {"65", five},
                                                              {"6", {0, 0, 0, 1, 1, 3}},
                                                              {"", none}}) {
    EXPECT_EQ(ChannelModelFlagsOf(hardware), flags) << hardware;
  }
}

}  // namespace
}  // namespace orvane
