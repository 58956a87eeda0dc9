// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/tbl_file.h"

#include <cerrno>
#include <cstring>
#include <map>

#include "files/file_system.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "table/param_dictionary.h"
#include "table/param_text.h"
#include "table/startup_table.h"
#include "table/tbl_record.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

ParamTable Defaults() { return Built({kParamDictionary.begin(), kParamDictionary.end()}); }

std::int32_t Int(const ParamTable& table, ParamKey key) {
  return IntOf(table.FindParam(key)->value);
}
void SetInt(ParamTable* table, ParamKey key, std::int32_t number) {
  EXPECT_EQ(table->SetParam(key, IntPT, &number), kOk) << key.Text();
}

std::string Message(const std::filesystem::path& path, const std::string& reason, int status) {
  return path.string() + ": " + reason + " (" + std::to_string(status) + ")";
}

TEST(TblFile, RecognisedByItsFirstRecord) {
  const TempDir dir;
  const struct {
    std::string start;
    std::size_t size;
    Status status;
    int version;
    // clang-format off
  } cases[] = {
      {"TECH", 50, kOk, 1}, {"LPFR", 32, kOk, 1}, {"a1", 32, kOk, 1}, {"", 32, kOk, 1},
      {HeaderV2(), 32, kOk, 2}, {HeaderV2(), 31, kTblUnreadable, 0},
      {"TECH", 25, kTblUnreadable, 0}, {"", 0, kTblUnreadable, 0},
      {"ABCDEFGH", 64, kTblNotRecognised, 0}, {"TECH ", 64, kTblNotRecognised, 0},
      {"AB_D", 64, kTblNotRecognised, 0}, {"AB\xC4", 64, kTblNotRecognised, 0},
      {"\x03", 64, kTblNotRecognised, 0},
      {std::string("\x03\0.TBL1%", 8), 64, kTblNotRecognised, 0},
      {std::string("\x03\0.TBL2$", 8), 64, kTblNotRecognised, 0}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(c.start + " " + std::to_string(c.size));
    WriteAll(dir / "a.tbl", Padded(c.start, c.size));
    ParamTable table = Defaults();
    SetInt(&table, "TBVI", 7);
    TblReport report;
    EXPECT_EQ(LoadParamFile(&table, dir / "a.tbl", &report), c.status);
    EXPECT_EQ(report.version, c.version);
    EXPECT_EQ(Int(table, "TBVI"), c.status == kOk ? c.version : 7);
    const char* reason = c.status == kTblUnreadable ? "too short for a TBL file" : "not a TBL file";
    EXPECT_EQ(report.message, c.status == kOk ? "" : Message(dir / "a.tbl", reason, c.status));
  }
  ParamTable table = Defaults();
  EXPECT_EQ(LoadParamFile(&table, "/dev/zero"), kTblUnreadable);
  const std::pair<std::filesystem::path, int> unreadable[] = {{dir / "none", ENOENT},
                                                              {dir.Path(), EISDIR}};
  for (const auto& [path, error] : unreadable) {
    TblReport report;
    EXPECT_EQ(LoadParamFile(&table, path, &report), kTblUnreadable);
    EXPECT_EQ(report.message, Message(path, SystemReason(error), 173));
  }
}

// The same records in both versions: values travel, masks do not; unknown keys, other types and
// what follows the end record are skipped.
TEST(TblFile, LoadsTheRecordsOfBothVersions) {
  const TempDir dir;
  for (const int version : {1, 2}) {
    SCOPED_TRACE(version);
    const auto record = version == 1 ? RecordV1 : RecordV2;
    const std::string last = record("SITN", 0x80000000, StrPT, "ABCDEFGHIJKLM");
    std::string file = (version == 1 ? "" : HeaderV2()) + record("TECH", 0, IntPT, IntBytes(-3));
    for (int i = 0; i < 6000; ++i) {  // more than is read at once
      file += record("ZZZZ", ~0U, IntPT, IntBytes(i));
    }
    file += record("FREQ", ~0U, IntPT, IntBytes(1)) + record("SNUM", 0, FltPT, RealBytes(1)) +
            record("NREF", 0, 9, "") + record("preq", 1, FltPT, RealBytes(0.1)) + last;
    if (version == 1) {
      file += EndV1(last) + record("TECH", 0, IntPT, IntBytes(6));
    }
    WriteAll(dir / "a.tbl", file);
    ParamTable table = Defaults();
    TblReport report;
    EXPECT_EQ(LoadParamFile(&table, dir / "a.tbl", &report), kOk);
    EXPECT_EQ(report.records, 6006U);
    EXPECT_EQ(report.loaded, 3U);
    std::map<std::string, ParamEntry> expected;
    expected["TBVI"] = Entry("TBVI", IntPT, 0, IntBytes(version));
    expected["TECH"] = Entry("TECH", IntPT, 2, IntBytes(-3));
    expected["PREQ"] = Entry("PREQ", FltPT, 0x7FFFF, RealBytes(0.1));
    expected["SITN"] = Entry("SITN", StrPT, 0x7FFFF, "ABCDEFGHIJKLM");
    for (const ParamEntry& row : kParamDictionary) {
      const auto changed = expected.find(row.key.data());
      EXPECT_EQ(*table.FindParam(row.key.data()), changed == expected.end() ? row : changed->second)
          << row.key.data();
    }
  }
}

TEST(TblFile, OfACutRecordNothingIsUsed) {
  const TempDir dir;
  TblReport report;  // used again
  for (const int version : {1, 2}) {
    const auto record = version == 1 ? RecordV1 : RecordV2;
    const std::size_t size = version == 1 ? 25 : 32;
    const std::string whole =
        (version == 1 ? "" : HeaderV2()) + record("SITN", 0, StrPT, "ABCDEFGHIJKL") +
        record("SITF", 0, StrPT, "MNOPQRSTUVWX") + record("LINE", 0, StrPT, "abcdefghijkl");
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
      SCOPED_TRACE("version " + std::to_string(version) + " cut at " + std::to_string(cut));
      WriteAll(dir / "a.tbl", whole.substr(0, cut));
      ParamTable table = Defaults();
      EXPECT_EQ(LoadParamFile(&table, dir / "a.tbl", &report), cut < 32 ? kTblUnreadable : kOk);
      const std::size_t records = cut < 32 ? 0 : cut / size - (version == 1 ? 0 : 1);
      EXPECT_EQ(report.loaded, records);
      EXPECT_EQ(Stored(table, "SITN") + Stored(table, "SITF") + Stored(table, "LINE"),
                Padded(records > 0 ? "ABCDEFGHIJKL" : "", 16) +
                    Padded(records > 1 ? "MNOPQRSTUVWX" : "", 16) +
                    Padded(records > 2 ? "abcdefghijkl" : "", 16));
    }
  }
}

TEST(TblFile, NamesLeftOutRecordsOnce) {
  LeftOutRecords left;
  EXPECT_EQ(left.Summary(), "");
  for (const auto& [key, summary] : {std::pair('A', "1 record is left out: A"),
                                     {'A', "2 records are left out: A"},
                                     {'B', "3 records are left out: A, B"}}) {
    ParamEntry entry{};
    entry.key[0] = key;
    left.Add(entry, 32, "for a reason");
    EXPECT_EQ(left.Summary(), summary);
  }
  EXPECT_EQ(left.Names(2) + "; " + left.Names(1), "A, B; A and more");
}

// A value of its own for every key, as bytes.
std::string SampleValue(const ParamEntry& row) {
  const std::string key = row.key.data();
  const auto number = static_cast<std::int32_t>(std::hash<std::string>{}(key));
  switch (row.type) {
    case IntPT:
      return IntBytes(number);
    case FltPT:
      return RealBytes(number / 7.0);
    case AmxPT:
      return "\1\2\3\4\5\6\7\24";
    default:
      return (key + "-abcdefghijklmnop").substr(0, row.type == LStPT ? 16 : 15);
  }
}

TEST(TblFile, SavesEveryByteAndLoadsItBack) {
  const TempDir dir;
  for (const int version : {1, 2}) {
    SCOPED_TRACE(version);
    ParamTable table = Defaults();
    std::map<std::string, std::string> values;
    for (const ParamEntry& row : kParamDictionary) {
      const std::string key = row.key.data();
      values[key] = SampleValue(row);
      EXPECT_EQ(
          table.SetParam(key, static_cast<ValueType>(row.type), Padded(values[key], 16).data()),
          kOk);
    }
    values["TBVI"] = IntBytes(version);
    values["TBVO"] = IntBytes(7);
    std::string expected = version == 1 ? "" : HeaderV2();
    std::string last;
    for (const ParamEntry& row : kParamDictionary) {
      const std::string key = row.key.data();
      if (version == 2 || key.size() <= 4) {
        last = (version == 1 ? RecordV1 : RecordV2)(key, row.write_mask, row.type, values[key]);
        expected += last;
      }
    }
    expected += version == 1 ? EndV1(last) : "";
    TblSaveOptions options;
    options.version = static_cast<std::uint32_t>(version);
    options.output_version = 7;
    EXPECT_EQ(SaveParamFile(&table, dir / "a.tbl", options), kOk);
    EXPECT_EQ(expected.size(), version == 1 ? 7150U : 23040U);
    EXPECT_TRUE(ReadAll(dir / "a.tbl") == expected);

    ParamTable loaded = Defaults();
    RememberedFile memory;
    EXPECT_EQ(LoadParamFile(&loaded, dir / "a.tbl", nullptr, &memory), kOk);
    EXPECT_EQ(memory.Size(), std::filesystem::file_size(dir / "a.tbl"));
    for (const ParamEntry& row : kParamDictionary) {
      const std::string key = row.key.data();
      std::string value = values[key];
      if (version == 1) {
        value = key.size() <= 4 ? value.substr(0, 13) : testing::ValueBytes(row.value);
      }
      EXPECT_EQ(*loaded.FindParam(key), Entry(key, row.type, row.write_mask, value)) << key;
    }
  }
}

TEST(TblFile, FilteredSaveLeavesOutWhatBoxesKeepToThemselves) {
  const TempDir dir;
  const std::string start = "\1\2\3\4\5\6\7\24";
  ParamTable table = Built({Entry("NONE", IntPT, 0, "\1"), Entry("STIM", AmxPT, 2, start),
                            Entry("FILR", StrPT, 0x8000D802, "x"), Entry("ETIM", AmxPT, 1, start),
                            Entry("STIM", AmxPT, 2), Entry("FLST", StrPT, 0x80000000, "x")});
  TblSaveOptions options;
  options.filtered = true;
  EXPECT_EQ(SaveParamFile(&table, dir / "a.tbl", options), kOk);
  EXPECT_EQ(ReadAll(dir / "a.tbl"), HeaderV2() + RecordV2("STIM", 2, AmxPT, "\1\2\3") +
                                        RecordV2("ETIM", 1, AmxPT, start) +
                                        RecordV2("STIM", 2, AmxPT, start));
  EXPECT_EQ(Stored(table, "STIM"), Padded(start, 16));
}

TEST(TblRecord, VersionOneCarriesReservedBytesAndTellsCutValues) {
  const struct {
    ValueType type;
    std::size_t length;
    bool fits;
  } cases[] = {{StrPT, 8, true},
               {StrPT, 9, false},
               {PosPT, 12, true},
               {PosPT, 13, false},
               {LStPT, 16, true}};
  for (const auto& c : cases) {
    const std::string value = std::string("ABCDEFGHIJKLMNOP").substr(0, c.length);
    ParamEntry entry = Entry("AB", c.type, 0x8000D802, value);
    entry.reserved = {7, 8, 9};
    TblRecordV1 record;
    EXPECT_EQ(MakeTblRecordV1(entry, &record), c.fits ? kOk : kValueTooLong) << c.length;
    std::string expected = RecordV1("AB", 0xD802, c.type, value);
    expected.replace(7, 2, "\7\10");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&record), sizeof record), expected);
  }
}

TEST(TblFile, VersionsAreStoredOnlyWhenTheFileIsWritten) {
  const TempDir dir;
  const FileCalls calls = WriterCalls();
  for (const std::uint32_t version : {1U, 2U}) {
    TblSaveOptions options;
    options.version = version;
    options.output_version = 1;
    ParamTable table = Defaults();
    SetInt(&table, "TBVI", 5);
    SetInt(&table, "TBVO", 6);
    WriteAll(dir / "old.tbl", "old");
    const std::pair<std::filesystem::path, int> cases[] = {{dir / "none/a.tbl", ENOENT},
                                                           {dir.Path(), EISDIR},
                                                           {"/dev/full", ENOSPC},
                                                           {dir / "old.tbl", EIO},
                                                           {dir / "new.tbl", EIO}};
    WriterCalls().rename = [](const auto&, const auto&) { return errno = EIO, -1; };
    for (const auto& [path, error] : cases) {
      TblReport report;
      EXPECT_EQ(SaveParamFile(&table, path, options, &report), kTblWriteFailed);
      EXPECT_EQ(report.message, Message(path, SystemReason(error), 172));
      EXPECT_EQ(Int(table, "TBVI"), 5);
      EXPECT_EQ(Int(table, "TBVO"), 6);
    }
    WriterCalls() = calls;
    EXPECT_EQ(ReadAll(dir / "old.tbl"), "old");
    EXPECT_EQ(dir.Count(), 1U);
    EXPECT_EQ(SaveParamFile(&table, dir / "old.tbl", options), kOk);
    EXPECT_EQ(Int(table, "TBVI"), static_cast<int>(version));
    EXPECT_EQ(Int(table, "TBVO"), 1);
  }
}

/// A box: its files stand in "box/" of a folder of the test's own, which is the current one because
/// the parameter "DPTH" holds 15 characters at most.
class StartupTable : public ::testing::Test {
 protected:
  StartupTable() {
    std::filesystem::create_directory(dir_ / "box");
    std::filesystem::current_path(dir_.Path());
    EXPECT_EQ(box_.SetParam("DPTH", PosPT, "box/"), kOk);
  }
  ~StartupTable() override { std::filesystem::current_path(old_path_); }

  const std::filesystem::path old_path_ = std::filesystem::current_path();
  TempDir dir_;
  ParamTable box_ = Defaults();
};

TEST_F(StartupTable, IsFoundBySerialNumberThenByName) {
  const auto file = [](int technique) {
    return HeaderV2() + RecordV2("TECH", 0, IntPT, IntBytes(technique));
  };
  const std::string junk(64, '?');
  const struct {
    std::int32_t serial;
    const char* hardware;
    std::string numbered, common;  // "SNUM".tbl and Startup.tbl; empty: there is none
    Status status;
    std::int32_t technique;
    const char* log;
    // clang-format off
  } cases[] = {
      {42, "", file(3), file(4), kOk, 3, "\nReading startup.tbl..."},
      {42, "V8", "", file(4), kOk, 4, "\nReading startup.tbl..."},
      {0, "", file(3), file(4), kOk, 4, "\nReading startup.tbl..."},
      {42, "zlaclk2", file(3), "", kOk, 3, "\nReading startup.tbl..."},
      {42, "", junk, file(4), kTblNotRecognised, 1,
       "\nReading startup.tbl...\nError loading startup.tbl"},
      {0, "", "", "junk", kTblUnreadable, 1, "\nReading startup.tbl...\nError loading startup.tbl"},
      {42, "", "", "", kTblUnreadable, 1, "\nNo startup.tbl"},
      {0, "", file(3), "", kTblUnreadable, 1, "\nNo startup.tbl"},
      {42, "zlaCLK", file(3), file(4), kTblUnreadable, 1, "\nNo startup.tbl"},
      {42, "ZLACL4", file(3), file(4), kTblUnreadable, 1, "\nNo startup.tbl"}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    std::filesystem::remove_all("box");
    std::filesystem::create_directory("box");
    if (!c.numbered.empty()) {
      WriteAll("box/" + std::to_string(c.serial) + ".tbl", c.numbered);
    }
    if (!c.common.empty()) {
      WriteAll("box/Startup.tbl", c.common);
    }
    SetInt(&box_, "SNUM", c.serial);
    SetInt(&box_, "TECH", 1);
    EXPECT_EQ(box_.SetParam("HW", StrPT, c.hardware), kOk);
    std::string log;
    EXPECT_EQ(LoadStartupTable(&box_, [&log](std::string_view line) { log += line; }), c.status);
    EXPECT_EQ(Int(box_, "TECH"), c.technique);
    EXPECT_EQ(log, c.log);
  }
}

TEST_F(StartupTable, KeepsWhatTheModeProtectsAndTheRequest) {
  const struct {
    std::int32_t mode;
    std::string request;  // bytes of the record's value; none: no record
    std::int32_t stored, technique, lines;
    // clang-format off
  } cases[] = {
      {1, IntBytes(2), 2, 3, 5}, {1, IntBytes(0), 1, 3, 5}, {1, IntBytes(9), 1, 3, 5},
      {1, IntBytes(-1), -1, 3, 5}, {1, "", 1, 3, 5}, {2, IntBytes(2), 2, 1, 5},
      {19, IntBytes(2), 1, 1, 2}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.mode) + " " + std::to_string(c.stored));
    std::string file =
        RecordV1("TECH", ~0U, IntPT, IntBytes(3)) + RecordV1("L2NS", ~0U, IntPT, IntBytes(5)) +
        RecordV1("MODE", ~0U, IntPT, IntBytes(1)) + RecordV1("SNUM", ~0U, IntPT, IntBytes(77));
    if (!c.request.empty()) {
      file += RecordV1("RQST", ~0U, IntPT, c.request);
    }
    WriteAll("box/Startup.tbl", file);
    box_ = Defaults();
    EXPECT_EQ(box_.SetParam("DPTH", PosPT, "box/"), kOk);
    SetInt(&box_, "MODE", c.mode);
    EXPECT_EQ(LoadStartupTable(&box_), kOk);
    EXPECT_EQ(Int(box_, "RQST"), c.stored);
    EXPECT_EQ(Int(box_, "TECH"), c.technique);
    EXPECT_EQ(Int(box_, "L2NS"), c.lines);
    EXPECT_EQ(Int(box_, "MODE"), c.mode);
    EXPECT_EQ(Int(box_, "SNUM"), 0);
    EXPECT_EQ(Int(box_, "TBVI"), 1);
  }
}

}  // namespace
}  // namespace orvane
