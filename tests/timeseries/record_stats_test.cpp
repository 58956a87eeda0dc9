// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_stats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "timeseries/record_list.h"
#include "timeseries/sample_decoder.h"
#include "timeseries/stats_listing.h"

namespace orvane::testing {
namespace {

// Every number of channels falls in another way into vectors of eight; 255 needs so many of them
// that few turns are left. Samples at the limits, which sums of 32 bits would not hold for long.
TEST(SampleStats, AgreeWithTheirDefinitionOnEveryProcessor) {
  std::mt19937 random(3);
  for (const std::size_t channels : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 11U, 12U, 13U, 255U}) {
    const std::size_t scans = channels > 100 ? 100 : 4100;
    std::vector<int> samples(scans * channels);
    std::string bytes;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const auto any = static_cast<int>(random() >> 8U) - 8388608;
      samples[i] = i % channels == 0 ? (i % 3 == 0 ? -8388608 : 8388607) : any;
      bytes += Little(static_cast<std::uint64_t>(samples[i]), 3);
    }
    bytes += std::string(kDecoderSlack, 'x');
    std::vector<ChannelStats> expected(channels);
    for (std::size_t i = 0; i < samples.size(); ++i) {
      ChannelStats& channel = expected[i % channels];
      channel.least = std::min(channel.least, samples[i]);
      channel.most = std::max(channel.most, samples[i]);
      channel.sum += samples[i];
      channel.squares += std::int64_t{samples[i]} * samples[i];
      channel.count += 1;
      channel.saturated += samples[i] >= 8388607 || samples[i] <= -8388607 ? 1 : 0;
    }
    for (const AddThreeByteScans add : {kPortableStats, BestStats()}) {
      std::vector<ChannelStats> stats(channels);
      add(std::as_bytes(std::span(bytes)).data(), scans, stats);
      EXPECT_EQ(stats, expected) << channels;
    }
  }
}

// 3, -1, 4: mean 2, mean square 26 / 3. The third record has 2-byte samples, which are never
// saturated; the fourth no scan; the fifth is cut after its first scan.
std::string SomeRecords() {
  return TsBytes{.frequency = 8, .channels = 2, .samples = {3, 8388607, -1, -8388607, 4, -8388608}}
             .Bytes() +
         TsBytes{.frequency = 2, .channels = 2, .samples = {7, 0, 7, 8388606}, .status = 6}
             .Bytes() +
         TsBytes{.channels = 1, .samples = {65535, 1}, .width = 2, .status = 5}.Bytes() +
         TsBytes{.channels = 1}.Bytes() +
         TsBytes{.channels = 1, .samples = {-5, 9}}.Bytes().substr(0, 252 + 5);
}

TEST(RecordStats, OfAFileInOrderOnAnyThreads) {
  const TempDir dir;
  std::string many;
  for (int i = 0; i < 2000; ++i) {
    many += TsBytes{.samples = {i, i + 2}}.Bytes();
  }
  WriteAll(dir / "A.TSS", SomeRecords());
  WriteAll(dir / "B.TSS", many);
  for (const unsigned threads : {1U, 3U}) {
    RandomFile file;
    std::vector<RecordStats> records;
    const auto take = [&](const RecordStats& record) { records.push_back(record); };
    ASSERT_TRUE(file.Open(dir / "A.TSS"));
    const TsWalker walker(&file, TsHeaderSize::kFull);
    ASSERT_TRUE(StatsOfRecords(file, walker, {threads}, take));
    ASSERT_EQ(records.size(), 5U);
    const ChannelStats& first = records[0].channels[0];
    EXPECT_EQ(first.PeakToPeak(), 5);
    EXPECT_EQ(first.Mean(), 2);
    EXPECT_DOUBLE_EQ(first.Rms(), std::sqrt(26.0 / 3));
    EXPECT_EQ(records[0].channels[1].saturated, 3U);
    EXPECT_EQ(records[1].channels[1].saturated, 0U);
    EXPECT_EQ(records[2].channels[0].Max(), 65535);
    EXPECT_TRUE(records[3].channels.empty());
    EXPECT_EQ(records[4].channels[0].Min() + records[4].channels[0].Max(), -10);
    for (const RecordStats& record : records) {
      CTsRec in_memory;
      ASSERT_TRUE(in_memory.Read(file, record.place));
      EXPECT_EQ(StatsOf(in_memory).channels, record.channels);
    }
    ASSERT_TRUE(file.Open(dir / "B.TSS"));
    records.clear();
    ASSERT_TRUE(StatsOfRecords(file, {&file, TsHeaderSize::kFull}, {threads}, take));
    ASSERT_EQ(records.size(), 2000U);
    for (int i = 0; i < 2000; ++i) {
      EXPECT_EQ(records[static_cast<std::size_t>(i)].channels[0].Mean(), i + 1);
    }
    std::atomic<int> looks = 0;
    records.clear();
    EXPECT_TRUE(StatsOfRecords(file, {&file, TsHeaderSize::kFull},
                               {threads, [&] { return ++looks > 100; }}, take));
    EXPECT_LT(records.size(), 2000U) << "stopped";
  }
}

TEST(RecordStats, RunInTheBackgroundUntilLeft) {
  const TempDir dir;
  WriteAll(dir / "A.TSS", SomeRecords());
  RecordStatsRun run(dir / "A.TSS", TsHeaderSize::kFull);
  std::vector<std::uint64_t> numbers;
  for (bool was_done = false; !was_done;) {
    was_done = run.IsDone();
    for (const RecordStats& record : run.Take()) {
      numbers.push_back(record.place.number);
    }
  }
  EXPECT_EQ(numbers, (std::vector<std::uint64_t>{1, 2, 3, 4, 5}));
  EXPECT_TRUE(run.Outcome());
  EXPECT_EQ(run.Percent(), 100);
  RecordStatsRun missing(dir / "B.TSS", TsHeaderSize::kFull);
  while (!missing.IsDone()) {
    std::this_thread::yield();
  }
  EXPECT_NE(missing.Outcome().Message().find("B.TSS"), std::string::npos);
}

TEST(RecordList, FaultsAreFirstWhenSortedByTheirColumn) {
  using Kind = RecordColumn::Kind;
  RecordList list(TsHeaderSize::kFull);
  RecordList band(TsHeaderSize::kBand);
  // By record: status, frequency, least, most and saturated samples of the one channel.
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    std::uint8_t status;
    double frequency;
    int least;
    int most;
    std::uint32_t saturated;
  };
  for (const Row& row : {Row{0, 4, -1, 2, 0},
                         {6, kNone, -2, 1, 0},
                         {7, 1, -1, 1, 4},
                         {0, 2, 5, 5, 0},
                         {0, 8, -9, 900, 0}}) {
    RecordStats record;
    record.place.number = list.Size() + 1;
    record.place.header.status = row.status;
    record.place.header.frequency = row.frequency;
    record.channels.push_back({row.least, row.most, 3, 9, 2, row.saturated});
    EXPECT_TRUE(list.Add(record) && band.Add(record));
  }
  EXPECT_EQ(list.Columns().size(), 8U);
  EXPECT_EQ(band.Columns().size(), 6U) << "neither frequency nor status";
  const auto order = [&list](Kind kind, bool is_descending) {
    std::string numbers;
    for (const std::size_t row : list.Sorted({kind, 0}, is_descending)) {
      numbers += list.Text(row, {Kind::kNumber});
    }
    return numbers;
  };
  EXPECT_EQ(order(Kind::kPeakToPeak, false), "43125") << "a dead channel";
  EXPECT_EQ(order(Kind::kPeakToPeak, true), "51234") << "a spike; equal ones as they were";
  EXPECT_EQ(order(Kind::kSaturated, true), "31245");
  EXPECT_EQ(order(Kind::kStatus, true), "23145");
  EXPECT_EQ(order(Kind::kFrequency, true), "51432") << "no number is last";
  EXPECT_EQ(list.Text(1, {Kind::kStatus}) + list.Text(0, {Kind::kStatus}), "bad");
  EXPECT_EQ(list.Text(2, {Kind::kStatus}), "status 7");
  EXPECT_EQ(band.Text(1, {Kind::kStatus}), "");
  EXPECT_EQ(list.Text(0, {Kind::kMean, 0}) + " " + list.Text(0, {Kind::kRms, 0}), "1.5 2.12132");
  EXPECT_EQ(list.Text(0, {Kind::kMean, 1}), "") << "no such channel";
  EXPECT_TRUE(list.IsBad(1) && !band.IsBad(1) && list.IsSaturated(2) && !list.IsSaturated(0));
}

TEST(RecordList, KeepsNoMoreThanItsPlaces) {
  RecordList list(TsHeaderSize::kFull);
  RecordStats record;
  record.channels.resize(255);
  const std::size_t places = RecordList::kMostCells / 255;
  for (std::size_t i = 0; i < places; ++i) {
    ASSERT_TRUE(list.Add(record));
  }
  EXPECT_FALSE(list.Add(record));
  record.channels.clear();
  EXPECT_FALSE(list.Add(record)) << "none after one that found no place";
  EXPECT_EQ(list.Size(), places);
  EXPECT_EQ(list.Records(), places + 2);
}

TEST(StatsListing, HasALineForEachChannel) {
  const TempDir dir;
  WriteAll(dir / "A.TSS", SomeRecords());
  std::string text;
  ListingWork work;
  work.put = [&text](std::string_view piece) { text += piece; };
  const auto note = StatsListing({}, *LeaveOutChoiceOf("3"))(dir / "A.TSS", work);
  ASSERT_TRUE(note) << note.Message();
  EXPECT_EQ(*note,
            "raw counts, no table A.TBL, headers assumed to have 252 bytes; 1 record left out; the "
            "file ends within record 5, whose whole scans count");
  const std::string time = "\t2009/06/30 03:04:05\t";
  EXPECT_EQ(text.substr(text.find('\n') + 1),
            "1" + time + "8\t\t1\tCh 1\t-1\t4\t5\t2\t2.943920289\t0\n" +  //
                "1" + time +
                "8\t\t2\tCh 2\t-8388608\t8388607\t16777215\t-2796202.667\t8388607.333\t3\n" + "2" +
                time + "2\tbad\t1\tCh 1\t7\t7\t0\t7\t7\t0\n" + "2" + time +
                "2\tbad\t2\tCh 2\t0\t8388606\t8388606\t4194303\t5931640.187\t0\n" + "4" + time +
                "4\t\t\t\t\t\t\t\t\t\n" +  //
                "5" + time + "4\t\t1\tCh 1\t-5\t-5\t0\t-5\t5\t0\n");
}

}  // namespace
}  // namespace orvane::testing
