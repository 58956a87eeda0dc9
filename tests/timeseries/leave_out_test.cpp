// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/leave_out.h"

#include <gtest/gtest.h>

#include "support/batch_help.h"
#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "timeseries/leave_out_file.h"
#include "timeseries/restack.h"
#include "timeseries/time_series_text.h"

namespace orvane::testing {
namespace {

TEST(RecordNumbers, JoinNeighboursAndComeApart) {
  RecordNumbers numbers;
  for (const std::uint64_t number : {9U, 3U, 7U, 8U, 3U}) {
    numbers.Add(number);
  }
  EXPECT_EQ(numbers.Text(), "3, 7-9");
  numbers.Add(1, 7);
  EXPECT_EQ(numbers.Text(), "1-9");
  numbers.Remove(4);
  numbers.Remove(1);
  numbers.Remove(20);
  EXPECT_EQ(numbers.Text(), "2-3, 5-9");
  EXPECT_EQ(numbers.Count(), 7U);
  EXPECT_TRUE(numbers.Has(2) && numbers.Has(9) && !numbers.Has(4) && !numbers.Has(10));
  EXPECT_EQ(numbers.Above(7).Text(), "8-9");
  EXPECT_TRUE(numbers.Above(9).IsEmpty());
}

TEST(LeaveOut, ChoicesAreReadOrRefused) {
  using Kind = LeaveOutChoice::Kind;
  struct Case {
    const char* text;
    Kind kind;
    const char* numbers;
  };
  for (const auto& [text, kind, numbers] :
       {Case{"bad", Kind::kBad, ""}, Case{"beside", Kind::kBeside, ""},
        Case{"3,7-9,8", Kind::kNumbers, "3, 7-9"},
        Case{"18446744073709551615", Kind::kNumbers, "18446744073709551615"},
        Case{"Bad", Kind::kList, ""}, Case{"./3", Kind::kList, ""},
        Case{"3.txt", Kind::kList, ""}}) {
    const auto choice = LeaveOutChoiceOf(text);
    ASSERT_TRUE(choice) << text;
    EXPECT_EQ(choice->kind, kind) << text;
    EXPECT_EQ(choice->numbers.Text(), numbers);
  }
  for (const char* wrong : {"0", "3,", "3,,4", "9-7", "3-", "1-2-3", "18446744073709551616"}) {
    EXPECT_FALSE(LeaveOutChoiceOf(wrong)) << wrong;
  }
}

TEST(LeaveOut, ListsAreReadOrSayWhichLineIsWrong) {
  const auto list = ReadLeaveOutText("\xEF\xBB\xBF\n# ours\n 512 300 # of 22 Nov\r\n7\n\n3\t\n8");
  ASSERT_TRUE(list) << list.Message();
  EXPECT_EQ(list->size, 512U);
  EXPECT_EQ(list->records, 300U);
  EXPECT_EQ(list->numbers.Text(), "3, 7-8");
  EXPECT_EQ(LeaveOutText(*list), "512 300\n3\n7\n8\n");
  const std::string head = "is not the size of a data file in bytes and the count of its records";
  for (const auto& [text, message] : {std::pair<std::string, std::string>{"", "has no line"},
                                      {"# 5 6\n", "has no line"},
                                      {"5\n", "line 1: " + head},
                                      {"-5 6\n", "line 1: " + head},
                                      {"5 6 7", "line 1: " + head},
                                      {std::string("\0 6", 3), "line 1: " + head},
                                      {"5 6\n\n3-4\n", "line 3: \"3-4\" is not the number"},
                                      {"5 6\n0", "line 2: \"0\" is not the number of a record"},
                                      {"5 6\n\xFF", "line 2: \"\xFF\" is not the number"}}) {
    EXPECT_NE(ReadLeaveOutText(text).Message().find(message), std::string::npos)
        << text << ": " << ReadLeaveOutText(text).Message();
  }
}

// Three records of 252 + 3 bytes, the second marked bad.
class LeaveOutOfAFile : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const int status : {0, 6, 0}) {
      bytes_ += TsBytes{.samples = {10 + static_cast<int>(bytes_.size()) / 255}, .status = status}
                    .Bytes();
    }
    WriteAll(dir_ / "A.TSS", bytes_);
  }
  BatchResult Text(const std::string& choice) {
    const auto chosen = choice.empty() ? LeaveOutChoice() : *LeaveOutChoiceOf(choice);
    return RunJob(TimeSeriesText(TsHeaderSize::kFull, chosen), dir_ / "A.TSS", dir_ / "a.txt");
  }
  // The sample of each record of the text.
  std::string Samples() const {
    std::string samples;
    const std::string text = ReadAll(dir_ / "a.txt");
    for (const char* sample : {" 10 ", " 11 ", " 12 "}) {
      samples += text.find(sample) == std::string::npos ? "" : sample;
    }
    return samples;
  }

  // The note and then the samples.
  std::string Told(const std::string& choice) {
    const std::string note = Text(choice).text;
    return note + Samples();
  }

  TempDir dir_;
  std::string bytes_;
};

TEST_F(LeaveOutOfAFile, IsWhatWasChosenAndIsSaid) {
  const auto beside = LeaveOutPath(dir_ / "A.TSS");
  EXPECT_EQ(beside.filename(), "A.TSS.leave-out.txt");
  EXPECT_EQ(Told(""), " 10  11  12 ");
  EXPECT_EQ(Told("beside"), " 10  11  12 ") << "none is there";
  EXPECT_EQ(Told("bad"), "1 record left out 10  12 ");
  EXPECT_EQ(Told("1,3-4,9"), "2 records left out; there are no records 4, 9 11 ");
  EXPECT_EQ(Text("1-3").text, "no record: 3 records left out");

  LeaveOutList list{765, 3, {}};
  list.numbers.Add(1);
  list.numbers.Add(7);
  ASSERT_TRUE(SaveLeaveOut(dir_ / "A.TSS", list));
  EXPECT_EQ(ReadAll(beside), "765 3\n1\n7\n");
  EXPECT_EQ(Told("beside"), "1 record left out; there is no record 7 11  12 ");
  EXPECT_EQ(Told(""), "A.TSS.leave-out.txt is there and not used (--leave-out beside) 10  11  12 ");
  EXPECT_EQ(Text(beside.string()).text, Text("beside").text) << "chosen by its name";

  // The data file has changed since.
  WriteAll(dir_ / "A.TSS", bytes_ + bytes_);
  EXPECT_EQ(Text("beside").text,
            "A.TSS.leave-out.txt is not used: it is for a file of 765 bytes and 3 records, this "
            "one has 1530 and 6");
  EXPECT_EQ(Text(beside.string()).status, BatchStatus::kFailed);
  WriteAll(beside, "765 3\nx\n");
  EXPECT_NE(Text("beside").text.find("A.TSS.leave-out.txt: line 2: \"x\" is not the number"),
            std::string::npos);
  ASSERT_TRUE(SaveLeaveOut(dir_ / "A.TSS", {765, 3, {}}));
  EXPECT_FALSE(std::filesystem::exists(beside));
  list.numbers.Add(1, 1U << 30U);
  EXPECT_FALSE(SaveLeaveOut(dir_ / "A.TSS", list)) << "would be too large";
}

TEST_F(LeaveOutOfAFile, StacksAreWithoutIt) {
  const auto stack = [this](const std::string& choice) {
    const BatchResult result =
        RunJob(Restack({.leave_out = *LeaveOutChoiceOf(choice)}), dir_ / "A.TSS", dir_ / "A.TSK");
    return result.text + "|" + (result.IsDone() ? ReadAll(dir_ / "A.TSK").substr(252) : "");
  };
  // (10 + 12) / 2, and (11 + 12) / 2 without its fraction.
  EXPECT_EQ(stack("2"), "1 record left out|" + Little(11, 3));
  EXPECT_EQ(stack("1"), "1 record left out; record 2 is marked bad and was added|" + Little(11, 3));
  EXPECT_EQ(stack("1-3"),
            "nothing is left to stack: 3 records left out; no stack at 4 Hz, where every record is "
            "left out|");
}

}  // namespace
}  // namespace orvane::testing
