// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/batch_help.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "table/table_text.h"
#include "table/table_to_v1.h"
#include "table/tbl_file.h"

namespace orvane::testing {
namespace {

TEST(TableText, ListsEveryTypeOfBothVersions) {
  const TempDir dir;
  const std::string time("\x05\x04\x03\x1E\x06\x09\x01\x14", 8);
  WriteAll(dir / "two.tbl",
           HeaderV2() + RecordV2("TECH", 0, 0, IntBytes(-3)) +
               RecordV2("EXACTLY8", 0, 1, RealBytes(0.5)) + RecordV2("A", 0, 2, "text, \"x\"") +
               RecordV2("B", 0, 3, "\x01\x02\xFF\x10") + RecordV2("C", 0, 4, "0123456789abcdef") +
               RecordV2("D", 0, 5, time) + RecordV2("E", 0, 6, "raw") +
               RecordV2("F", 0, 7, "0123456789abcdef") + RecordV2("G", 0, 8, "x") +
               RecordV2("\x03", 0, 0, "") + "cut");
  const BatchResult result = RunOne(TableText(), dir / "two");  // ".tbl" is added
  EXPECT_EQ(result.status, BatchStatus::kDoneWithNote);
  EXPECT_NE(result.text.find("offset 352 "), std::string::npos) << result.text;
  EXPECT_EQ(ReadAll(dir / "two.txt"),
            "TECH    ,     ,    ,    ,    ,  Int,  -3,\n"
            "EXACTLY8,     ,    ,    ,    ,  Flt,  0.5,\n"
            "A       ,     ,    ,    ,    ,  Str,  text, \"x\",\n"
            "B       ,     ,    ,    ,    ,  IPA,  1.2.255.16,\n"
            "C       ,     ,    ,    ,    ,  Pos,  0123456789abcde,\n"
            "D       ,     ,    ,    ,    ,  UTC,  2009/06/30 03:04:05,\n"
            "E       ,     ,    ,    ,    ,  StP,  ,\n"
            "F       ,     ,    ,    ,    ,  LSt,  0123456789abcdef,\n"
            "G       ,     ,    ,    ,    ,  NONE,  ,\n");
  // Records behind the end record count; the end record itself and padding do not.
  const std::string first = RecordV1("TECH", 2, 0, IntBytes(4));
  WriteAll(dir / "one.tbl", first + EndV1(first) + RecordV1("SITN", 2, 2, "x"));
  EXPECT_EQ(RunOne(TableText(), dir / "one.tbl").text, "holds 2 of 719 parameters")
      << "TECH stands twice in a table";
  EXPECT_EQ(ReadAll(dir / "one.txt"),
            "TECH    ,     ,    ,    ,    ,  Int,  4,\n"
            "SITN    ,     ,    ,    ,    ,  Str,  x,\n");
}

TEST(TableText, WritesNothingForWhatIsNoTable) {
  const TempDir dir;
  WriteAll(dir / "a.txt", "old");
  for (const auto& [bytes, code] :
       {std::pair<std::string, int>{"", 3}, {HeaderV2().substr(1), 3}, {std::string(32, '!'), 6}}) {
    WriteAll(dir / "a.tbl", bytes);
    EXPECT_EQ(RunOne(TableText(), dir / "a.tbl").code, code);
    EXPECT_EQ(ReadAll(dir / "a.txt"), "old");
  }
  WriteAll(dir / "a.tbl", HeaderV2());
  EXPECT_EQ(RunOne(TableText(), dir / "a.tbl").text, "no record");
  EXPECT_EQ(ReadAll(dir / "a.txt"), "old");
}

class TblToV1 : public ::testing::Test {
 protected:
  // Files of 23040 bytes are version 2, of 7150 bytes version 1.
  std::string Version(std::string_view name) const {
    const std::size_t size = ReadAll(dir_ / name).size();
    return size == 23040 ? "2" : size == 7150 ? "1" : ReadAll(dir_ / name);
  }
  std::string Value(std::string_view name, ParamKey key) const {
    ParamTable table = NewTable();
    EXPECT_EQ(LoadParamFile(&table, dir_ / name), kOk);
    return Get(table, key);
  }

  TempDir dir_;
  std::string file_ = HeaderV2() + RecordV2("TECH", 0, 0, IntBytes(3)) +
                      RecordV2("CMPY1", 0, 2, "a company") + RecordV2("LOUT1", 0, 2, "operator") +
                      RecordV2("CLIENT1", 0, 2, "client") + RecordV2("SRVY1", 0, 2, "survey");
};

TEST_F(TblToV1, LeavesBothVersions) {
  WriteAll(dir_ / "BOX.TBL", file_);
  EXPECT_EQ(RunOne(TableToV1(ParamTable()), dir_ / "BOX.TBL").text,
            "only 5 of 719 records are taken from it, the other values from the table before it");
  EXPECT_EQ(Version("BOX.TB2") + Version("BOX.TBL"), "21");
  EXPECT_EQ(Value("BOX.TB2", "TBVO") + Value("BOX.TBL", "TBVO"), "21");
  EXPECT_EQ(Value("BOX.TB2", "CMPY"), "");
  EXPECT_EQ(Value("BOX.TBL", "CMPY") + Value("BOX.TBL", "LOUT") + Value("BOX.TBL", "PMIT") +
                Value("BOX.TBL", "SRVY"),
            "a companyoperatorclientsurvey");
  EXPECT_EQ(dir_.Count(), 2U);
}

TEST_F(TblToV1, KeepsWhatItWouldWriteOver) {
  for (const char* name : {"low.tbl", "BOX.TBL", "OLD.TB2"}) {
    WriteAll(dir_ / name, file_);
  }
  for (const char* name : {"low.tbl.bak", "BOX.TB2", "OLD.TBL"}) {
    WriteAll(dir_ / name, name);
  }
  Batch batch(
      {TableToV1(ParamTable()), {dir_ / "low.tbl", dir_ / "BOX.TBL", dir_ / "OLD.TB2"}, {}, 4});
  batch.Start();
  batch.Wait();
  EXPECT_EQ(batch.CountForMessage(), 3U);
  for (const auto& [name, content] : {std::pair<const char*, std::string>{"low.tbl", "1"},
                                      {"low.tbl.bak", "low.tbl.bak"},
                                      {"low.tbl.bak1", file_},
                                      {"BOX.TBL", "1"},
                                      {"BOX.TB2", "2"},
                                      {"BOX.TB2.bak", "BOX.TB2"},
                                      {"OLD.TBL", "1"},
                                      {"OLD.TBL.bak", "OLD.TBL"},
                                      {"OLD.TB2", "2"},
                                      {"OLD.TB2.bak", file_}}) {
    EXPECT_EQ(Version(name), content) << name;
  }
  EXPECT_EQ(dir_.Count(), 10U);
}

TEST_F(TblToV1, CarriesTheTableFromFileToFile) {
  const std::string record = RecordV1("SITN", 0, 2, "old box");
  WriteAll(dir_ / "A.TBL", file_);
  WriteAll(dir_ / "B.TBL", "no table");
  WriteAll(dir_ / "Z.TBL", HeaderV2() + std::string(std::size_t{40} * 64, '\0'));
  WriteAll(dir_ / "C.TBL", record + EndV1(record));
  std::filesystem::create_directory(dir_ / "out");
  Batch batch({TableToV1(ParamTable()),
               {dir_ / "A.TBL", dir_ / "B.TBL", dir_ / "C.TBL", dir_ / "Z.TBL"},
               dir_ / "out",
               4});
  batch.Start();
  batch.Wait();
  EXPECT_EQ(batch.Result(1)->status, BatchStatus::kLeftAlone);
  EXPECT_EQ(batch.Result(1)->text, "too short for a TBL file (173)");
  EXPECT_EQ(batch.Result(2)->text,
            "already version 1: longer keys come from the table before it; only 1 of 285 records "
            "are taken from it, the other values from the table before it");
  EXPECT_EQ(batch.Result(3)->text, "no parameter is taken from it; it is left as it was");
  EXPECT_EQ(Value("out/C.TB2", "TECH") + Value("out/C.TB2", "CMPY1"), "3a company");
  EXPECT_EQ(Value("out/C.TBL", "SITN") + Value("out/C.TBL", "TBVI"), "old box1");
  EXPECT_EQ(ReadAll(dir_ / "A.TBL"), file_);
  EXPECT_EQ(dir_.Count(), 5U);
}

TEST_F(TblToV1, CarriesInTheOrderOfTheListWhateverSharesAnOutput) {
  for (const char* name : {"a", "b", "out"}) {
    std::filesystem::create_directory(dir_ / name);
  }
  WriteAll(dir_ / "a/BOX.TBL", HeaderV2() + RecordV2("SITE", 0, StrPT, "first"));
  WriteAll(dir_ / "X.TBL", HeaderV2() + RecordV2("LINE", 0, StrPT, "second"));
  WriteAll(dir_ / "b/BOX.TBL", HeaderV2() + RecordV2("SITE", 0, StrPT, "third"));
  const auto first = dir_ / "a/BOX.TBL";
  Batch batch({TableToV1(ParamTable()),
               {first, dir_ / "X.TBL", first, dir_ / "b/BOX.TBL"},
               dir_ / "out",
               4});
  batch.Start();
  batch.Wait();
  EXPECT_EQ(Value("out/X.TB2", "SITE") + Value("out/X.TB2", "LINE"), "firstsecond");
  EXPECT_EQ(Value("out/BOX.TB2", "SITE") + Value("out/BOX.TB2", "LINE"), "firstsecond");
  EXPECT_EQ(batch.Result(3)->status, BatchStatus::kFailed) << "another file of the same name";
}

}  // namespace
}  // namespace orvane::testing
