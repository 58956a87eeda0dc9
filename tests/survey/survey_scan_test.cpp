// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_scan.h"
#include "support/example_survey.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <random>
#include <thread>

#include "support/failing_disk.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "support/ts_bytes.h"
#include "survey/survey_index.h"
#include "survey/survey_report.h"
#include "table/param_time.h"
#include "timeseries/ts_header.h"

namespace orvane::testing {
namespace {

struct Scanned {
  std::vector<SharedRow> rows;
  std::vector<SurveyFinding> findings;
  std::vector<ScanNote> notes;
  std::string index_note;
  std::string failure;
  std::size_t hidden = 0;

  std::string Page() const { return SurveyReportPage({"x", rows, findings, notes}); }
  std::string Names() const {
    std::string names;
    for (const auto& row : rows) {
      names.append(names.empty() ? "" : " ").append(row->name);
    }
    return names;
  }
};

Scanned Scan(const std::filesystem::path& root, const SurveyOptions& options = {}) {
  SurveyScan scan(root, options);
  while (!scan.IsDone()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  Scanned all{
      {}, scan.Findings(), scan.Notes(), scan.IndexNote(), scan.Outcome().Message(), scan.Hidden()};
  for (auto rows = scan.Take(3); !rows.empty(); rows = scan.Take(3)) {
    EXPECT_LE(rows.size(), 3U);
    all.rows.insert(all.rows.end(), rows.begin(), rows.end());
  }
  return all;
}

// Everything that a look could change: names, times of change, bytes.
std::map<std::string, std::string> Snapshot(const std::filesystem::path& root) {
  std::map<std::string, std::string> all;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    const auto ticks = entry.last_write_time().time_since_epoch().count();
    all[entry.path().string()] =
        std::to_string(ticks) + (entry.is_directory() ? "" : ReadAll(entry.path()));
  }
  return all;
}

std::filesystem::path EveningSurvey(const TempDir& dir) {
  EXPECT_TRUE(MakeExampleSurvey(dir / "s", "--evening"));
  return dir / "s";
}

void MakeOld(const std::filesystem::path& root) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      std::filesystem::last_write_time(entry.path(),
                                       entry.last_write_time() - std::chrono::hours(2));
    }
  }
}

TEST(SurveyScanTest, FindsEachFaultOfTheEveningOnceAndChangesNothing) {
  const TempDir dir;
  const auto root = EveningSurvey(dir);
  const std::vector<std::pair<std::string, std::string>> kPlanted = {
      {"recording-gap", "2026-11-21/1211-2.TSS"},
      {"recording-overlap", "2026-11-21/1215-2.TSS"},
      {"start-late", "2026-11-21/1203.TSS"},
      {"box-silent", ""},
      {"recording-missing", "2026-11-23/1215-2.TBL"},
      {"date-odd", "2026-11-22/1207-2.TSS"},
      {"records-bad", "2026-11-21/1207.TSS"},
      {"samples-saturated", "2026-11-22/1203.TSS"},
      {"channel-dead", "2026-11-22/1207.TSS"},
      {"channels-equal", "2026-11-22/1211.TSS"},
      {"calibration-missing", "2026-11-21/1215.TSS"},
      {"calibration-old", "2026-11-21/1203.TSS"},
      {"calibration-serial", "2026-11-21/1207.TSS"},
      {"clock-unlocked", "2026-11-22/2417.TSS"},
      {"disk-full", "2026-11-23/1203.TSS"},
      {"version-mix", ""},
      {"file-unreadable", "2026-11-23/Notes.tbl"},
      {"file-cut", "2026-11-23/1215.TSS"},
      {"file-empty", "2026-11-22/1203-2.TSS"},
      {"file-blank", "2026-11-23/1203-2.TSS"},
      {"boxes-mixed", "2026-11-22/1211-2.TSS"},
      {"table-missing", "2026-11-23/1211.TSS"},
      {"table-newer", "2026-11-21/2417.TSS"},
      {"table-differs", "2026-11-23/1207.TSS"},
      {"names-clash", "2026-11-21/STARTUP.TBL"},
      {"result-old", "2026-11-21/1207.TSS"}};
  struct Case {
    ScanDepth depth;
    bool shows_known;
    bool has_deep;
  };
  MakeOld(root);
  const auto before = Snapshot(root);
  // What was looked at once is known from then on, and only shown where it is asked for.
  for (const Case& one :
       {Case{ScanDepth::kHeaders, true, false}, Case{ScanDepth::kDeep, false, true},
        Case{ScanDepth::kHeaders, false, false}, Case{ScanDepth::kHeaders, true, true}}) {
    SurveyOptions options;
    options.depth = one.depth;
    options.shows_known_samples = one.shows_known;
    options.index = dir / "index.db";
    std::vector<std::pair<std::string, std::string>> expected;
    for (const auto& planted : kPlanted) {
      const bool is_deep =
          planted.first == "samples-saturated" || planted.first.starts_with("channel");
      if (one.has_deep || !is_deep) {
        expected.push_back(planted);
      }
    }
    const Scanned scanned = Scan(root, options);
    std::vector<std::pair<std::string, std::string>> found;
    for (const SurveyFinding& finding : scanned.findings) {
      found.emplace_back(finding.id, finding.path);
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(scanned.notes.size(), 0U);
  }
  EXPECT_EQ(Snapshot(root), before);
}

TEST(SurveyScanTest, RowsTellWhatFilesSay) {
  const TempDir dir;
  const auto rows = Scan(EveningSurvey(dir)).rows;
  const auto found = std::find_if(rows.begin(), rows.end(), [](const SharedRow& row) {
    return row->name == "2026-11-21/1207.TSS";
  });
  ASSERT_NE(found, rows.end());
  const SurveyRow& row = **found;
  EXPECT_EQ(row.box, 1207);
  EXPECT_EQ(SurveyTime(row.start) + " " + SurveyTime(row.end),
            "2026/11/21 07:00:00 2026/11/21 07:10:00");
  EXPECT_EQ(row.channels, 3);
  EXPECT_EQ(row.rate, 1);
  EXPECT_EQ(row.frequencies, std::vector<double>{0.125});
  EXPECT_EQ(row.records, 10U);
  EXPECT_EQ(row.bad, 1U);
  EXPECT_EQ(row.files.size(), 3U) << "table, waveform and text";
  EXPECT_EQ(row.table->site + " " + row.table->line + " " + row.table->firmware,
            "S0450E L1200N 5.0");
  ASSERT_TRUE(row.table->place);
  EXPECT_EQ(PlaceText(*row.table->place), "450 E, 1350 N") << "the middle of its dipoles";
  EXPECT_FALSE(row.table->geo);
  EXPECT_EQ(ClockText(*row.table), "Locked to GPS");
  EXPECT_EQ(CalibrationText(row), "1207.CLB (49 days)");
}

TEST(SurveyScanTest, IndexSparesReadingAndNeverChangesTheResult) {
  const TempDir dir;
  const auto root = EveningSurvey(dir);
  MakeOld(root);
  SurveyOptions options;
  options.index = dir / "c" / "index.db";
  const std::string page = Scan(root).Page();
  EXPECT_EQ(Scan(root, options).Page(), page) << "while it is made";
  {
    FailingDisk disk;
    disk.Fail(FailingDisk::kRead, 1);
    // Only what could not be read before, and so is not in it, is read again.
    EXPECT_EQ(Scan(root, options).findings.size(), 23U);
  }
  const auto changed = root / "2026-11-22" / "1203.TSS";
  WriteAll(changed, ReadAll(changed) + "x");
  const std::string after = Scan(root).Page();
  EXPECT_NE(after, page);
  EXPECT_EQ(Scan(root, options).Page(), after) << "another size";
  const auto size = std::filesystem::file_size(options.index);
  for (const std::string& bytes :
       {std::string("no database at all"), std::string(),
        ReadAll(options.index).substr(0, size / 2),
        ReadAll(options.index).replace(60, 4, "\0\0\0\x63", 4),
        ReadAll(options.index).replace(size / 2, 2000, std::string(2000, '\x5A'))}) {
    WriteAll(options.index, bytes);
    const Scanned anew = Scan(root, options);
    EXPECT_EQ(anew.Page(), after) << bytes.size();
    if (bytes.size() != size) {  // else it is found out only while it is used
      EXPECT_EQ(anew.index_note, "") << bytes.size();
    }
    EXPECT_EQ(Scan(root, options).index_note, "") << bytes.size();
  }
  const std::string whole = ReadAll(options.index);
  std::mt19937 random(1);
  for (int round = 0; round < 20; ++round) {
    std::string flipped = whole;
    for (int bit = 0; bit < 20; ++bit) {
      flipped[random() % flipped.size()] ^= static_cast<char>(1U << random() % 8);
    }
    WriteAll(options.index, flipped);
    EXPECT_EQ(Scan(root, options).Page(), after) << round;
  }
}

TEST(SurveyScanTest, IndexIsWholeAfterAKill) {
  const TempDir dir;
  WriteAll(dir / "a", "x");
  FileInfo info;
  ASSERT_TRUE(ReadInfo(dir / "a", &info));
  info.written = 0;
  FileFacts facts;
  facts.failure = std::string(500, 'f');
  int all = 0;
  for (int round = 0; round < 5; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      SurveyIndex index;
      static_cast<void>(index.Open(dir / "index.db"));
      for (std::uint64_t i = 0; i < 1'000'000; ++i) {
        facts.records = info.size = i;
        index.Put(dir / std::to_string(i % 3000), info, facts);
      }
      _exit(0);
    }
    // In the midst of it, however busy the machine is.
    std::error_code error;
    const auto log = dir / "index.db-wal";
    const auto before = std::filesystem::last_write_time(log, error);
    for (int wait = 0; wait < 1000; ++wait) {
      const bool is_there = std::filesystem::exists(log, error);
      if (is_there && std::filesystem::last_write_time(log, error) != before &&
          std::filesystem::file_size(log, error) > 100'000) {
        break;
      }
      usleep(5'000);
    }
    usleep(60'000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    SurveyIndex index;
    ASSERT_TRUE(index.Open(dir / "index.db"));
    FileFacts found;
    int known = 0;
    for (std::uint64_t i = 0; i < 100'000; ++i) {
      info.size = i;
      if (index.Find(dir / std::to_string(i % 3000), info, &found)) {
        ++known;
        ASSERT_EQ(found.records, i);
        ASSERT_EQ(found.failure, facts.failure);
      }
    }
    EXPECT_TRUE(index.IsUsable()) << index.Failure();
    EXPECT_EQ(known % 1000, 0) << "what is written at once is there at once";
    all += known;
  }
  EXPECT_GT(all, 0);
}

TEST(SurveyScanTest, IndexForgetsWhatIsGone) {
  const TempDir dir;
  constexpr std::int64_t kDay = 20'000;
  FileInfo info;
  FileFacts facts;
  facts.failure = std::string(1000, 'f');
  const auto known = [&](std::int64_t day, std::vector<std::string> names, int prune,
                         std::uint64_t most = SurveyIndex::kMostBytes) {
    SurveyIndex index(day);
    EXPECT_TRUE(index.Open(dir / "index.db"));
    FileFacts found;
    std::string text;
    for (const std::string& name : names) {
      text += index.Find("/" + name, info, &found) ? name + " " : "";
    }
    index.Write();
    if (prune != 0) {
      index.Prune("/a", most);
    }
    EXPECT_EQ(index.Failure(), "");
    return text;
  };
  const std::vector<std::string> all = {"a/1", "a/2", "a/b/3", "ab/4", "c/5"};
  {
    SurveyIndex index(kDay);
    ASSERT_TRUE(index.Open(dir / "index.db"));
    for (const std::string& name : all) {
      index.Put("/" + name, info, facts);
    }
    index.Write();
    index.Prune("/a");  // all of today
  }
  // Seen the next day, but for one file of the folder.
  EXPECT_EQ(known(kDay + 1, {"a/1", "a/b/3"}, 1), "a/1 a/b/3 ");
  EXPECT_EQ(known(kDay, all, 0), "a/1 a/b/3 ab/4 c/5 ") << "other folders stay";
  EXPECT_EQ(known(kDay + 1 + SurveyIndex::kLongUnseen, {"a/1"}, 1), "a/1 ");
  EXPECT_EQ(known(kDay, all, 0), "a/1 ") << "what nobody saw for long";
  {
    SurveyIndex index(kDay);
    ASSERT_TRUE(index.Open(dir / "index.db"));
    for (int i = 0; i < 2000; ++i) {
      index.Put("/c/" + std::to_string(i), info, facts);
    }
  }
  const auto size = std::filesystem::file_size(dir / "index.db");
  EXPECT_EQ(known(kDay + 2, {"c/1999"}, 1, 1U << 20U), "c/1999 ");
  EXPECT_EQ(known(kDay + 2, {"c/0", "c/1999"}, 0), "c/1999 ") << "the oldest go first";
  EXPECT_LT(std::filesystem::file_size(dir / "index.db"), size * 4 / 5);
}

TEST(SurveyScanTest, FactsComeBackFromTheirBytesOrNotAtAll) {
  FileFacts facts;
  facts.failure = "because";
  facts.frequencies = {0.5, 4};
  facts.samples = {{10, 2, -3, 8388607, 77}};
  facts.table.emplace();
  facts.table->site = "S1";
  facts.table->boxes = {{1203, 3}};
  facts.table->sensors = {{4, 2, "2041"}};
  facts.table->place = {450, 1350};
  facts.table->geo = {-12.5, 170.25};
  const std::string image = FactsImage(facts);
  FileFacts back;
  ASSERT_TRUE(FactsFrom(image, &back));
  EXPECT_EQ(back.failure, facts.failure);
  EXPECT_EQ(back.table->boxes, facts.table->boxes);
  EXPECT_EQ(back.table->sensors, facts.table->sensors);
  EXPECT_EQ(FactsImage(back), image);
  for (std::size_t size = 0; size < image.size(); ++size) {
    EXPECT_FALSE(FactsFrom(std::span(image).first(size), &back)) << size;
  }
  EXPECT_FALSE(FactsFrom(image + "x", &back));
}

TEST(SurveyScanTest, OddFoldersAreSaidAndNeverFatal) {
  const TempDir dir;
  const auto root = dir / "s";
  std::filesystem::create_directories(root / "b" / "deep");
  WriteAll(root / "b" / "\xFF\t.TBL", HeaderV2());
  WriteAll(root / "b" / "deep" / "1.TSS", TsBytes{.samples = {1, 2}}.Bytes());
  WriteAll(root / "empty.TS2", "");
  WriteAll(root / "notes.doc", "");
  WriteAll(root / "loose.txt", "");
  WriteAll(root / "._1.TSS", "left by a desktop");
  std::filesystem::create_directories(root / ".Trash");
  WriteAll(root / ".Trash" / "9.TSS", "thrown away");
  std::filesystem::create_directories(dir / "far");
  WriteAll(dir / "far" / "2.trs", "short");
  MakeLink("../..", root / "b" / "again");       // to a folder above
  MakeLink("../b", root / "b" / "aa");           // to its own
  MakeLink(dir / "far", root / "a link");        // to one outside, listed once
  MakeLink(dir / "far", root / "another link");  // not twice
  MakeLink("deep/1.TSS", root / "b" / "1.TSS");  // a file that is here anyway
  MakeLink("nowhere", root / "gone.TBL");
  ASSERT_EQ(mkfifo((root / "pipe.TSS").c_str(), 0600), 0);
  const Scanned scanned = Scan(root);
  // "b/again" leads to the folder of the test, which has "far" as well.
  EXPECT_EQ(scanned.Names(), "empty.TS2 a link/2.trs b/\\xFF\\x09.TBL b/deep/1.TSS");
  ASSERT_EQ(scanned.notes.size(), 2U);
  EXPECT_EQ(scanned.notes[0].path + ": " + scanned.notes[0].reason,
            "gone.TBL: No such file or directory");
  EXPECT_EQ(scanned.notes[1].path, "pipe.TSS");
  EXPECT_EQ(scanned.hidden, 2U);
  EXPECT_EQ(Scan(dir / "nowhere").failure, "No such file or directory");
  SurveyOptions options;
  options.calibrations = root / "notes.doc";
  EXPECT_EQ(Scan(root, options).failure,
            (root / "notes.doc").string() + ": no folder of calibrations");
  EXPECT_EQ(Scan(root / "empty.TS2").failure, "not a folder");
}

TEST(SurveyScanTest, RowsComeByNameAndSince) {
  const TempDir dir;
  const auto root = EveningSurvey(dir);
  SurveyOptions options;
  options.since = 1795330800;  // 2026-11-22 07:00
  for (const auto& row : Scan(root, options).rows) {
    EXPECT_FALSE(row->IsRecording() && row->folder == "2026-11-21") << row->name;
  }
  // What is left out is not missing.
  for (const char* since : {"2026/11/21 07:05:00", "2026/11/23 07:07:00"}) {
    options.since = ParamTimeToSeconds(ParseParamTime(since));
    const auto all = Scan(root).findings;
    for (const SurveyFinding& finding : Scan(root, options).findings) {
      const bool is_known = std::any_of(all.begin(), all.end(), [&](const SurveyFinding& one) {
        return one.id == finding.id && (finding.id == "version-mix" ||
                                        finding.id.starts_with("calibration") || one == finding);
      });
      EXPECT_TRUE(is_known) << since << " " << finding.sentence;
    }
  }
  options = {};
  options.depth = ScanDepth::kNames;
  FailingDisk disk;
  disk.Fail(FailingDisk::kRead, 1);
  const Scanned names = Scan(root, options);
  EXPECT_EQ(names.rows.size(), Scan(root).rows.size()) << "no file is read for names";
  EXPECT_EQ(names.findings.size(), 0U);
}

TEST(SurveyScanTest, StopsAtOnce) {
  const TempDir dir;
  std::filesystem::create_directory(dir / "s");
  for (int i = 0; i < 2000; ++i) {
    WriteAll(dir / ("s/" + std::to_string(i) + ".TBL"), HeaderV2());
  }
  SurveyScan scan(dir / "s", {});
  while (scan.FilesDone() == 0 && !scan.IsDone()) {
  }
  scan.Stop();
  while (!scan.IsDone()) {
  }
  EXPECT_LT(scan.FilesDone(), 2000U);
  EXPECT_TRUE(scan.Findings().empty());
}

// A file that a disk was to hold and never got, however large, is not walked through.
TEST(SurveyScanTest, ZerosAreNoRecords) {
  const TempDir dir;
  WriteAll(dir / "1.TSS", "");
  std::filesystem::resize_file(dir / "1.TSS", 1ULL << 40U);
  const Scanned scanned = Scan(dir.Path());
  ASSERT_EQ(scanned.rows.size(), 1U);
  EXPECT_EQ(scanned.rows[0]->records, 0U);
  ASSERT_EQ(scanned.rows[0]->blank.size(), 1U);
  EXPECT_EQ(scanned.rows[0]->blank[0].second, 1ULL << 40U);
}

std::string DatedRecords(const std::vector<const char*>& dates) {
  std::string file;
  for (const char* date : dates) {
    TsHeader header;
    header.time = ParseParamTime(date);
    header.box = std::uint16_t{1211};
    header.scans = std::uint16_t{60};
    header.channels = 1;
    header.sample_width = 3;
    header.rate = std::uint16_t{1};
    file.append(reinterpret_cast<const char*>(&header), sizeof header).append(180, 'x');
  }
  return file;
}

// A clock that begins anew must not make a recording of years, nor hide a pause.
TEST(SurveyScanTest, OddDatesDoNotCount) {
  struct Case {
    std::vector<const char*> dates;
    std::string times;
    std::uint64_t odd;
    std::size_t stretches;
    bool is_wrong;
  };
  const char* const seven = "2026/11/21 07:00:00";
  const char* const eight = "2026/11/21 08:00:00";
  const std::vector<Case> kCases = {
      {{seven, "2026/11/21 07:01:00"}, "2026/11/21 07:00:00 2026/11/21 07:02:00", 0, 1, false},
      {{seven, eight}, "2026/11/21 07:00:00 2026/11/21 08:01:00", 0, 2, false},
      {{"1980/01/06 00:00:00", seven, eight},
       "2026/11/21 07:00:00 2026/11/21 08:01:00",
       1,
       2,
       false},
      {{seven, "2000/01/01 00:00:00"}, "2026/11/21 07:00:00 2026/11/21 07:01:00", 1, 1, false},
      {{seven, "00:00:00", "2000/01/01 00:00:00"},
       "2026/11/21 07:00:00 2026/11/21 07:01:00",
       2,
       1,
       false},
      {{"1980/01/06 00:00:00"}, "1980/01/06 00:00:00 1980/01/06 00:01:00", 0, 1, true}};
  for (std::size_t i = 0; i < kCases.size(); ++i) {
    const TempDir dir;
    WriteAll(dir / "1.TSS", DatedRecords(kCases[i].dates));
    const Scanned scanned = Scan(dir.Path());
    ASSERT_EQ(scanned.rows.size(), 1U) << i;
    const SurveyRow& row = *scanned.rows[0];
    EXPECT_EQ(SurveyTime(row.start) + " " + SurveyTime(row.end), kCases[i].times) << i;
    EXPECT_EQ(row.odd_dates, kCases[i].odd) << i;
    EXPECT_EQ(row.stretches.size(), kCases[i].stretches) << i;
    EXPECT_EQ(row.has_wrong_clock, kCases[i].is_wrong) << i;
  }
}

// Headers are guessed without a table: what was read with one must not stay when it goes.
TEST(SurveyScanTest, IndexKnowsHowHeadersWereRead) {
  const TempDir dir;
  const auto text = [](const char* key, const char* value) {
    return RecordV2(key, kMaskAnyMode, StrPT, value);
  };
  std::filesystem::create_directory(dir / "s");
  const char* const date = "2026/11/21 07:00:00";
  WriteAll(dir / "s/1.TSS", DatedRecords({date, date, date}));
  WriteAll(dir / "s/1.TBL", HeaderV2() + text("VER", "3.2B"));
  MakeOld(dir / "s");
  SurveyOptions options;
  options.index = dir / "index.db";
  EXPECT_NE(Scan(dir / "s", options).rows.at(0)->records, 3U);
  std::filesystem::remove(dir / "s/1.TBL");
  EXPECT_EQ(Scan(dir / "s", options).rows.at(0)->records, 3U);
  options.index = dir / "s" / "index.db";
  EXPECT_NE(Scan(dir / "s", options).index_note, "");
  EXPECT_FALSE(std::filesystem::exists(options.index)) << "nothing is written into a survey";
}

}  // namespace
}  // namespace orvane::testing
