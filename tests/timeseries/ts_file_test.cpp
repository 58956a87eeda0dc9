// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_file.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <new>
#include <random>
#include <thread>

#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "table/param_text.h"
#include "timeseries/ts_loading.h"

namespace orvane::testing {
namespace {

std::vector<int> SamplesOf(const CTsRec& record) {
  std::vector<int> samples;
  for (std::size_t scan = 0; scan < record.Scans(); ++scan) {
    for (std::size_t channel = 0; channel < record.Channels(); ++channel) {
      samples.push_back(record.Row(scan).Sample(channel));
    }
  }
  return samples;
}

TEST(TsHeader, SampleRates) {
  struct Case {
    int rate;
    int unit;
    double expected;
  };
  for (const auto& [rate, unit, expected] : {Case{24, -2, 2400}, Case{24, -1, 240}, Case{24, 0, 24},
                                             Case{30, 1, 0.5}, Case{36, 2, 0.01}, Case{9, 3, 0}}) {
    TsHeader header;
    header.rate = static_cast<std::uint16_t>(rate);
    header.rate_unit = static_cast<std::int8_t>(unit);
    EXPECT_DOUBLE_EQ(SampleRate(header), expected) << unit;
  }
}

TEST(SampleDecoder, EveryWidthAndBothWays) {
  const std::string bytes =
      std::string("\xFF\xFF\xFF\x01\x02\x83\x04\x05\xC6\xFE\x80\x80", 12) + std::string(64, '\x7F');
  struct Case {
    int width;
    std::vector<std::int32_t> samples;
  };
  for (const auto& [width, samples] :
       {Case{1, {255, 255, 255, 1}}, Case{2, {65535, 511, 0x8302}},
        Case{3, {-1, 0x830201 - 0x1000000, 0xC60504 - 0x1000000, 0x8080FE - 0x1000000, 0x7F7F7F}},
        Case{4, {-1, 0x048302, 0x80FEC6 - 0x1000000}}, Case{6, {-1, 0xC60504 - 0x1000000}}}) {
    for (const SampleDecoder* decoder : {&kPortableDecoder, &BestDecoder()}) {
      std::vector<std::int32_t> held(samples.size());
      decoder->put(std::as_bytes(std::span(bytes)).data(), width, held);
      for (std::size_t i = 0; i < samples.size(); ++i) {
        EXPECT_EQ(held[i], samples[i] * 256) << width << " " << i;
      }
    }
  }
  // Whole blocks and what is left of them.
  std::mt19937 random(7);
  std::vector<std::byte> noise(3000 + kDecoderSlack);
  for (std::byte& byte : noise) {
    byte = static_cast<std::byte>(random());
  }
  for (const std::size_t count : {1U, 7U, 8U, 9U, 1000U}) {
    std::vector<std::int32_t> portable(count, 0x7FFFFF00);
    std::vector<std::int32_t> best = portable;
    kPortableDecoder.add(noise.data(), 3, portable);
    BestDecoder().add(noise.data(), 3, best);
    EXPECT_EQ(best, portable) << count;
  }
}

class TsFiles : public ::testing::Test {
 protected:
  std::filesystem::path Put(const char* name, const std::string& bytes) {
    WriteAll(dir_ / name, bytes);
    return dir_ / name;
  }
  void PutTable(const char* name, const std::string& version) {
    Put(name, HeaderV2() + RecordV2("TECH", 0, IntPT, IntBytes(3)) +
                  RecordV2("XOLD", 0, IntPT, IntBytes(1)) +
                  RecordV2("XOLD", 0, IntPT, IntBytes(77)) + version);
  }
  TempDir dir_;
};

TEST_F(TsFiles, HeaderSizeByNameTableAndOption) {
  const std::string old_version = RecordV2("VER", 0, StrPT, "4.2b");
  const TsBytes full{.samples = {1, 2}};
  const TsBytes old{.samples = {1, 2}, .header_size = 196};
  const TsBytes band{.samples = {1, 2}, .header_size = 32};
  struct Case {
    const char* name;
    std::string table;
    TsBytes record;
    TsFile::Options options;
  };
  for (const auto& [name, table, record, options] :
       {Case{"A.TSS", "", full, {}}, Case{"A.tss", old_version, old, {}},
        Case{"A.TSK", old_version, full, {}}, Case{"A.TS0", old_version, old, {}},
        Case{"A.TS4", old_version, band, {}}, Case{"A.TS14", "", band, {}},
        Case{"A.TSS", old_version, full, {TsHeaderSize::kFull}},
        Case{"A.TSS", RecordV2("VER", 0, IntPT, "4.2b"), full, {}},
        Case{"A.TSS", "", old, {TsHeaderSize::kOld}}}) {
    PutTable("a.tbl", table);
    TsFile file;
    ASSERT_EQ(file.Open(Put(name, record.Bytes() + record.Bytes()), options).Message(), "");
    EXPECT_EQ(BytesIn(file.HeaderSize()), record.header_size) << name;
    CTsRec read;
    EXPECT_EQ(file.Count(), 2U);
    EXPECT_EQ(file.Read(2, &read).Message(), "");
    EXPECT_EQ(SamplesOf(read), (std::vector<int>{1, 2}));
    // Only full headers have one; what stands there in others means something else.
    EXPECT_EQ(read.Header().frequency, record.header_size == 252 ? 4 : 0) << name;
    EXPECT_EQ(IntOf(file.Companion().Table().FindParam("TECH")->value), 3) << name;
    EXPECT_EQ(IntOf(file.Companion().Find("XOLD")->value), 77) << name;  // not in the dictionary
  }
}

TEST_F(TsFiles, TellsWhatCannotBeOpened) {
  TsFile file;
  const auto path = Put("NOTABLE.TSS", TsBytes{}.Bytes());
  EXPECT_NE(file.Open(path).Message().find("(173)"), std::string::npos);
  EXPECT_EQ(file.FailureText(), "Failed to open file " + (dir_ / "NOTABLE.TBL").string() + "!");
  EXPECT_TRUE(file.LacksCompanion());
  EXPECT_TRUE(file.Open(path, {TsHeaderSize::kFull}));
  EXPECT_FALSE(file.Open(dir_ / "NONE.TS1"));
  EXPECT_EQ(file.FailureText(), "Failed to open file " + (dir_ / "NONE.TS1").string() + "!");
  EXPECT_EQ(file.Count(), 0U);
  EXPECT_FALSE(file.Open(dir_.Path()));
  EXPECT_FALSE(file.Open("/dev/zero"));
}

TEST_F(TsFiles, OpensWithoutItsTable) {
  const std::string full = TsBytes{.samples = {1, 2}}.Bytes();
  const std::string old = TsBytes{.samples = {1, 2}, .header_size = 196}.Bytes();
  struct Case {
    const char* name;
    std::string bytes;
    std::size_t header_size;
    const char* guess;
  };
  const std::string cut = full + full.substr(0, 100);
  for (const auto& [name, bytes, header_size, guess] :
       {Case{"A.TSK", old, 252, ""}, Case{"A.TS3", full, 32, ""},
        Case{"A.TSS", full, 252, ", headers assumed to have 252 bytes"},
        Case{"A.TSS", old + old, 196, ", headers assumed to have 196 bytes"},
        Case{"A.TSS", old + "cut", 252, ", headers assumed to have 252 bytes"},
        Case{"A.TSS", cut, 252, ", headers assumed to have 252 bytes"}}) {
    TsFile file;
    const auto path = Put(name, bytes);
    EXPECT_EQ(static_cast<bool>(file.Open(path)), *guess == '\0') << name;
    ASSERT_TRUE(file.Open(path, {.header_size = {}, .needs_companion = false})) << name;
    EXPECT_EQ(BytesIn(file.HeaderSize()), header_size) << name;
    EXPECT_EQ(file.CompanionNote(), std::string("raw counts, no table A.TBL") + guess);
  }
  Put("A.TBL", "no table");
  TsFile file;
  EXPECT_TRUE(file.Open(Put("A.TSK", full)));
  EXPECT_TRUE(file.CompanionNote().starts_with("raw counts, table not used: "));
}

TEST_F(TsFiles, ListsBadRecordsAndStopsWhereTheFileIsCut) {
  PutTable("A.TBL", "");
  const std::string good = TsBytes{.channels = 2, .samples = {1, 2, 3, 4}, .trailing = 2}.Bytes();
  const std::string bad = TsBytes{.samples = {-1}, .status = 6}.Bytes();
  // Four bytes of two samples, one channel: one scan is whole, and no header fits after it.
  const std::string cut = TsBytes{.samples = {5}, .scans = 2}.Bytes() + "x";
  const auto path = Put("A.TSS", good + good + bad + good + bad + cut);
  TsFile file;
  ASSERT_TRUE(file.Open(path));
  EXPECT_EQ(file.Count(), 6U);
  EXPECT_EQ(file.BadRecordText(), "There are 2 bad records starting at segment3!");
  EXPECT_EQ(file.UsableCount(), 2U);
  EXPECT_EQ(file.NextBad(0), 3U);
  EXPECT_EQ(file.NextBad(3), 5U);
  EXPECT_EQ(file.NextBad(5), 0U);
  CTsRec record;
  EXPECT_EQ(file.Read(3, &record).Message(), "");
  EXPECT_EQ(SamplesOf(record), (std::vector<int>{-1}));
  EXPECT_EQ(file.Read(6, &record).Message(), "");
  EXPECT_EQ(SamplesOf(record), (std::vector<int>{5}));
  EXPECT_TRUE(record.Place().is_cut);

  // The file shrinks while it is open.
  std::filesystem::resize_file(path, good.size() + 252 + 7);
  EXPECT_EQ(file.Read(2, &record).Message(), "");
  EXPECT_EQ(SamplesOf(record), (std::vector<int>{1, 2}));
  EXPECT_NE(file.Read(3, &record).Message(), "");
}

TEST_F(TsFiles, ManyRecordsAndExtremeCountsNeedLittleMemory) {
  const std::string empty = TsBytes{.header_size = 32}.Header();
  std::string bytes;
  const std::size_t count = 3 * TsIndex::kMaxNotes + 5;  // notes are thinned twice
  for (std::size_t i = 0; i < count; ++i) {
    bytes += empty;
    bytes[32 * i + 8] = static_cast<char>(i % 251);
  }
  TsFile file;
  ASSERT_TRUE(file.Open(Put("MANY.TS1", bytes)));
  EXPECT_EQ(file.Count(), count);
  for (const std::size_t number : {std::size_t{1}, TsIndex::kMaxNotes + 2, count}) {
    EXPECT_EQ(file.Find(number)->header.box % 256, (number - 1) % 251) << number;
  }
  EXPECT_FALSE(file.Find(count + 1));

  TsLoading beside(dir_ / "MANY.TS1", TsFile::Options());
  ASSERT_TRUE(beside.WaitFor(std::chrono::minutes(1)));
  EXPECT_EQ(beside.Progress().Percent(), 100);
  EXPECT_EQ(beside.Take()->Count(), count);

  const TsBytes extreme{.channels = 255, .width = 255, .header_size = 32, .scans = 65535};
  ASSERT_TRUE(file.Open(Put("HUGE.TS1", extreme.Header() + std::string(255 * 255 + 9, 'x'))));
  CTsRec record;
  EXPECT_EQ(file.Read(1, &record).Message(), "");
  EXPECT_EQ(record.Scans(), 1U);
  EXPECT_EQ(record.Held().size(), 255U);
}

// A read for each record, and none of them quick: leaving does not wait for all.
TEST_F(TsFiles, ReadingBesideEndsSoonWhenLeft) {
  const std::string header = TsBytes{.channels = 12, .header_size = 32, .scans = 1000}.Header();
  constexpr std::size_t kRecords = 1000;
  const auto path = Put("FAR.TS1", header);
  std::filesystem::resize_file(path, kRecords * (header.size() + 36000));
  {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    for (std::size_t i = 0; i < kRecords; ++i) {
      file.seekp(static_cast<std::streamoff>(i * (header.size() + 36000)));
      file.write(header.data(), static_cast<std::streamsize>(header.size()));
    }
  }
  static std::atomic<int> reads;
  static const ReadCalls usual = ReaderCalls();
  reads = 0;
  ReaderCalls().some_at = [](int handle, std::uint64_t offset, std::span<std::byte> bytes) {
    ++reads;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return usual.some_at(handle, offset, bytes);
  };
  {
    TsLoading loading(path, TsFile::Options());
    EXPECT_FALSE(loading.WaitFor(std::chrono::milliseconds(30)));
    EXPECT_FALSE(loading.IsDone());
  }
  EXPECT_LT(reads, 500);
  ReaderCalls().some_at = [](int, std::uint64_t, std::span<std::byte>) -> std::ptrdiff_t {
    throw std::bad_alloc();
  };
  TsLoading poor(path, TsFile::Options());
  EXPECT_TRUE(poor.WaitFor(std::chrono::minutes(1)));
  EXPECT_EQ(poor.Outcome().Message(), "Cannot allocate memory");
  ReaderCalls() = usual;
}

}  // namespace
}  // namespace orvane::testing
