// SPDX-License-Identifier: GPL-3.0-or-later
// Text and stack of whole files, against bytes put together here.
#include <gtest/gtest.h>

#include <limits>

#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "timeseries/restack.h"
#include "timeseries/time_series_text.h"
#include "timeseries/ts_companion.h"

namespace orvane::testing {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

struct Outcome {
  BatchResult result;
  std::string bytes;
};

// The result must not depend on the threads.
Outcome Convert(const Conversion& conversion, const char* name, const std::string& bytes) {
  Outcome outcome;
  for (const unsigned threads : {3U, 1U}) {
    const TempDir dir;
    WriteAll(dir / name, bytes);
    std::atomic<bool> stop = false;
    std::atomic<std::uint64_t> done = 0;
    BatchTask task(dir / name, {dir / "out"}, false, &stop, &done);
    task.AllowThreads(threads);
    outcome.result = conversion.job(task);
    const std::string written = outcome.result.IsDone() ? ReadAll(dir / "out") : "nothing";
    EXPECT_TRUE(threads == 3 || written == outcome.bytes);
    outcome.bytes = written;
  }
  return outcome;
}

std::string Restacked(const std::string& bytes, std::string* note = nullptr) {
  // Room for two sums at a time: the other frequencies take further passes.
  const Outcome outcome = Convert(Restack({.most_memory = 16}), "A.TSS", bytes);
  EXPECT_TRUE(outcome.result.IsDone()) << outcome.result.text;
  if (note != nullptr) {
    *note = outcome.result.text;
  }
  return outcome.bytes;
}

// What a result looks like: 3 bytes a sample, nothing trailing, bytes 25 and 51 zero.
std::string Result(TsBytes record) {
  record.width = 3;
  record.trailing = 0;
  std::string bytes = record.Bytes();
  bytes[25] = bytes[51] = 0;
  return bytes;
}

TEST(Restack, NamesOfFiles) {
  EXPECT_EQ(RestackName("C:\\Data\\site1.tss"), "C:\\DATA\\SITE1.TSK");
  EXPECT_EQ(RestackName("Data.tss/site1.Tss"), "Data.tss/SITE1.TSK");
  EXPECT_EQ(TsTextName("C:\\DATA\\SITE1.TS3"), "c:\\data\\site1_TS3.txt");
  EXPECT_EQ(TsTextName("C:\\DATA.1\\SITE"), "c:\\data.1\\site.txt");
  EXPECT_EQ(TsTextName("Data/A.B/SITE1.TSS"), "Data/A.B/site1.txt");
  EXPECT_EQ(TsTextName("SITE1.TS0"), "site1.txt");
  EXPECT_EQ(CompanionName("ab") + CompanionName("SS") + CompanionName("TSS"), "TBL");
}

TEST(Restack, MeansOfEachFrequencyInTheFilesDirection) {
  const auto one = [](double frequency, std::vector<int> samples) {
    return TsBytes{.frequency = frequency, .samples = std::move(samples)};
  };
  // 256 + 512 + 512 by 3 is 426, and -426 for the negatives: raw 1 and, of the shifted bytes, -2.
  EXPECT_EQ(Restacked(one(4, {1, -1}).Bytes() + one(4, {2, -2}).Bytes() + one(4, {2, -2}).Bytes()),
            Result(one(4, {1, -2})));
  EXPECT_EQ(Restacked(one(4, {1}).Bytes() + one(4.0000001, {3}).Bytes() + one(4, {3}).Bytes()),
            Result(one(4, {2})) + Result(one(4.0000001, {3})));
  // 8, 2 (new), 4 (new, the last): descending. -0 is 0, what is no number yields nothing.
  EXPECT_EQ(Restacked(one(8, {1}).Bytes() + one(2, {2}).Bytes() + one(8, {1}).Bytes() +
                      one(4, {3}).Bytes() + one(kNone, {9}).Bytes() + one(2, {4}).Bytes()),
            Result(one(8, {1})) + Result(one(4, {3})) + Result(one(2, {3})));
  EXPECT_EQ(Restacked(one(-0.0, {2}).Bytes() + one(0.0, {4}).Bytes()), Result(one(-0.0, {3})));
}

// Means worked out by hand: 256 x sum / records toward zero, its low byte dropped.
TEST(Restack, SumsAreExactHoweverManyRecords) {
  struct Case {
    int records;  // of the first sample, then one of the last
    int sample;
    int last;
    int mean;
  };
  for (const auto& [records, sample, last, mean] :
       {Case{1, 8388607, 8388607, 8388607}, Case{15, 900000, 900000, 900000},
        Case{15, -900000, -900000, -900000}, Case{255, -8388608, -8388608, -8388608},
        Case{255, 8388607, 8388607, 8388607}, Case{256, -8388608, -8388608, -8388608},
        Case{299, 8388607, -8388608, 8332682},  // 2508193485 - 8388608 by 300 is 8332682.92
        Case{255, 0, -1, -1},                   // -256 by 256 is -1, its low byte dropped -1
        Case{256, 0, -1, 0},                    // -256 by 257 is 0
        Case{256, -1, 0, -1}}) {
    std::string bytes;
    for (int i = 0; i < records; ++i) {
      bytes += TsBytes{.samples = {sample, 5}}.Bytes();
    }
    // One channel more, so that its scans are added one by one.
    bytes += TsBytes{.channels = 2, .samples = {last, 9, 5, 9}}.Bytes();
    EXPECT_EQ(Restacked(bytes), Result({.samples = {mean, 5}})) << records << " " << sample;
  }
}

TEST(Restack, BadRecordsAreNamedAndAddedOrLeftOut) {
  const auto record = [](double frequency, int sample, int status) {
    return TsBytes{.frequency = frequency, .samples = {sample}, .status = status}.Bytes();
  };
  const std::string bytes =
      record(1, 90, 6) + record(1, 2, 0) + record(1, 4, 0) + record(2, 7, 6) + record(4, 8, 5);
  const std::string four = Result({.frequency = 4, .samples = {8}, .status = 5});
  std::string note;
  EXPECT_EQ(Restacked(bytes, &note), Result({.frequency = 1, .samples = {32}, .status = 6}) +
                                         Result({.frequency = 2, .samples = {7}, .status = 6}) +
                                         four);
  EXPECT_EQ(note, "records 1, 4 are marked bad and were added");
  const Conversion without = Restack({.leave_out = {.kind = LeaveOutChoice::Kind::kBad}});
  Outcome outcome = Convert(without, "A.TSS", bytes);
  EXPECT_EQ(outcome.bytes, Result({.frequency = 1, .samples = {3}}) + four);
  EXPECT_EQ(outcome.result.text,
            "records 1, 4 are marked bad and were left out; no stack at 2 Hz, where every record "
            "is marked bad");
  outcome = Convert(without, "A.TSS", record(2, 7, 6));
  EXPECT_EQ(outcome.result.status, BatchStatus::kFailed);
  EXPECT_EQ(outcome.result.text,
            "nothing is left to stack: record 1 is marked bad and was left out; no stack at 2 Hz, "
            "where every record is marked bad");
  // Who is asked is asked once, and not for files without any.
  int asked = 0;
  std::string told;
  const Conversion asking =
      Restack({.ask_about_bad = [&](const std::string& question, const auto&) {
        told = question.substr(0, question.find("\n"));
        return ++asked == 1;
      }});
  Convert(asking, "A.TSS", four);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(Convert(asking, "A.TSS", bytes).bytes, Result({.frequency = 1, .samples = {3}}) + four);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(told, "A.TSS has records that the box marked as bad: records 1, 4.");
  Convert(Restack({.ask_about_bad =
                       [&told](const std::string& question, const auto&) {
                         told = question.substr(0, question.find("\n"));
                         return true;
                       }}),
          "A.TSS", record(1, 7, 6));
  EXPECT_EQ(told, "A.TSS has records that the box marked as bad: record 1.");
}

TEST(Restack, RecordsOfOtherShapes) {
  std::string note;
  const TsBytes first{.channels = 2, .samples = {1, 2, 3, 4}, .status = 6, .trailing = 1};
  const TsBytes larger{.channels = 3, .samples = {3, 4, 99, 5, 6, 99, 99, 99, 99}, .width = 4};
  const TsBytes fewer_scans{.channels = 2, .samples = {99, 99}};
  const TsBytes fewer_channels{.channels = 1, .samples = {99, 99}};
  const TsBytes cut{.channels = 2, .samples = {99, 99, 99, 99}};
  EXPECT_EQ(Restacked(first.Bytes() + larger.Bytes() + fewer_scans.Bytes() +
                          fewer_channels.Bytes() + cut.Bytes().substr(0, 252 + 11),
                      &note),
            Result({.channels = 2, .samples = {2, 3, 4, 5}, .status = 6}));
  EXPECT_EQ(note,
            "record 1 is marked bad and was added; left out, smaller than the first of their "
            "frequency: record 3, 4; dropped, the file ends within it: record 5");
  const Outcome none = Convert(Restack(), "A.TSS", TsBytes{.width = 0, .scans = 5}.Bytes());
  EXPECT_EQ(none.bytes + none.result.text.substr(0, 24), "nothingnothing is left to stack");
  EXPECT_EQ(Restacked(TsBytes{.channels = 0, .scans = 5}.Bytes()),
            Result({.channels = 0, .scans = 5}));
}

std::string HeaderLines(const char* scans, const char* channels, const char* frequency) {
  return std::string(
             " Time:                2009/06/30 03:04:05        \n"
             " Box S/N:             2417\n"
             " Number of Channels:  ") +
         channels + "\n Number of Scans:     " + scans + "\n Sampling Rate (Hz):  2400.00     \n" +
         frequency;
}

TEST(TimeSeriesText, ByteForByte) {
  constexpr const char* kFour = " Frequency (Hz):      4.000000        \n";
  const std::string two = HeaderLines("2       ", "2       ", kFour) +
                          "                1          -8388608 \n"
                          "          8388607               -10 \n";
  const TsBytes record{.channels = 2, .samples = {1, -8388608, 8388607, -10}, .trailing = 1};
  EXPECT_EQ(Convert(TimeSeriesText(), "A.TSS", record.Bytes() + record.Bytes() + "rest").bytes,
            two + two);
  TsBytes band{.samples = {}, .header_size = 32};
  EXPECT_EQ(Convert(TimeSeriesText(), "A.TS3", band.Bytes()).bytes,
            HeaderLines("0       ", "1       ", ""));
  band.channels = 0;
  band.scans = 2;
  EXPECT_EQ(Convert(TimeSeriesText(), "A.TS3", band.Bytes()).bytes,
            HeaderLines("2       ", "0       ", "") + "\n\n");
  // The cut record has the samples that are there, on a line that ends; nothing follows it.
  const std::string start = record.Bytes().substr(0, 252 + 11);
  const Outcome cut = Convert(TimeSeriesText(), "A.TSS", record.Bytes() + start);
  EXPECT_EQ(cut.bytes, two + HeaderLines("2       ", "2       ", kFour) +
                           "                1          -8388608 \n"
                           "          8388607 \n");
  EXPECT_EQ(cut.result.status, BatchStatus::kDoneWithNote);
  EXPECT_EQ(Convert(TimeSeriesText(), "A.TSS", record.Bytes() + record.Header()).bytes,
            two + HeaderLines("2       ", "2       ", kFour));
  const std::string no_width = TsBytes{.width = 0, .scans = 1}.Bytes();
  EXPECT_EQ(Convert(TimeSeriesText(), "A.TSS", record.Bytes() + no_width + two).bytes,
            two + HeaderLines("1       ", "1       ", kFour));
  for (const std::string& bytes : {std::string(), record.Header().substr(1), start, no_width}) {
    const Outcome none = Convert(TimeSeriesText(), "A.TSS", bytes);
    EXPECT_EQ(none.bytes, "nothing");
    EXPECT_TRUE(none.result.text.starts_with("no record")) << none.result.text;
  }
  EXPECT_EQ(Convert(TimeSeriesText(TsHeaderSize::kOld), "A.TSS",
                    TsBytes{.samples = {70000}, .width = 2, .header_size = 196}.Bytes())
                .bytes,
            HeaderLines("1       ", "1       ", " Frequency (Hz):      0.000000        \n") +
                "             4464 \n");
}

TEST(TimeSeriesText, LongRecordsGoThroughManyPieces) {
  TsBytes record{.channels = 3, .header_size = 32};
  std::string lines;
  for (int i = 0; i < 3 * 20000; ++i) {
    const int sample = (i % 2 == 0 ? 1 : -1) * (i * 139);
    record.samples.push_back(sample);
    const std::string digits = std::to_string(sample);
    lines.append(17 - digits.size(), ' ').append(digits).append(i % 3 == 2 ? " \n" : " ");
  }
  const std::string one = HeaderLines("20000   ", "3       ", "") + lines;
  const std::string none = HeaderLines("0       ", "3       ", "");
  const std::string empty = TsBytes{.channels = 3, .header_size = 32}.Bytes();
  EXPECT_TRUE(Convert(TimeSeriesText(), "A.TS1", record.Bytes() + empty + record.Bytes()).bytes ==
              one + none + one);
}

}  // namespace
}  // namespace orvane::testing
