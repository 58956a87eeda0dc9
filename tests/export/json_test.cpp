// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "export/json_reading.h"
#include "export/schedule_json.h"
#include "export/table_json.h"
#include "stepping/tfs_file.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"
#include "table/param_access.h"

namespace orvane::testing {
namespace {

// A table with a secret, odd reals, letters beyond ASCII and a text that looks like digits.
ParamTable OddTable() {
  ParamTable table;
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  PutInt(&table, "TECH", 3);
  PutReal(&table, "FREQ", 0.1);
  PutReal(&table, "FSCV", -0.0);
  PutReal(&table, "HNOM", std::numeric_limits<double>::quiet_NaN());
  PutReal(&table, "CRMX", -std::numeric_limits<double>::infinity());
  PutText(&table, "SITE", "na\xEFve\" \\");
  PutText(&table, "FTPSPWD", "hex:secret");
  EXPECT_EQ(table.SetStoredValue("EAZM", Value(std::string(6, '\1') + "\xF0\x7F")), kOk);
  return table;
}

std::string Again(const std::string& text, const std::filesystem::path& to) {
  auto read = ReadTableJson(text);
  EXPECT_TRUE(read) << read.Message();
  return read && SaveParamFile(&read->table, to, read->save) == kOk ? ReadAll(to) : "";
}

TEST(TableJson, GivesTheBytesOfTheFileAgain) {
  const TempDir dir;
  for (const TblSaveOptions& save :
       {TblSaveOptions{2, false, 2}, TblSaveOptions{1, false, 1}, TblSaveOptions{2, true, 1}}) {
    ParamTable table = OddTable();
    ASSERT_EQ(SaveParamFile(&table, dir / "t.tbl", save), kOk);
    const auto json = WriteTableJson(dir / "t.tbl", true);
    ASSERT_TRUE(json) << json.Message();
    EXPECT_TRUE(Again(json->text, dir / "u.tbl") == ReadAll(dir / "t.tbl"))
        << save.version << save.filtered;
    EXPECT_TRUE(json->left_out.empty());
  }
}

TEST(TableJson, SaysWhatUsersKnowAndKeepsSecrets) {
  const TempDir dir;
  ParamTable table = OddTable();
  ASSERT_EQ(SaveParamFile(&table, dir / "t.tbl", {}), kOk);
  const auto json = WriteTableJson(dir / "t.tbl", false);
  ASSERT_TRUE(json);
  for (const char* line :
       {"\"file_version\": 2,", "\"TECH\": 3,", "\"FREQ\": 0.1,", "\"FSCV\": -0.0,",
        "\"HNOM\": \"nan\",", "\"CRMX\": \"-inf\",", "\"SITE\": \"na\xC3\xAFve\\\" \\\\\",",
        "\"EAZM\": \"hex:010101010101f07f0000000000000000\""}) {
    EXPECT_NE(json->text.find(line), std::string::npos) << line;
  }
  EXPECT_EQ(json->text.find("secret"), std::string::npos);
  EXPECT_EQ(json->left_out.size(), 8U);
  const auto read = ReadTableJson(json->text);
  ASSERT_TRUE(read) << read.Message();
  EXPECT_EQ(ParamAsText(read->table, "FTPSPWD"), "") << "its default";
  EXPECT_EQ(read->left_out.size(), 8U);
}

TEST(TableJson, RefusesWhatDoesNotFit) {
  const std::string head = R"({"format":"orvane-table","format_version":1,)";
  const std::pair<std::string, const char*> kRefused[] = {
      {"", "not JSON"},
      {"[]", "no JSON object"},
      {std::string(1 << 20, ' ') + "{}", "larger"},
      {std::string(100000, '['), "nested"},
      {R"({"format":"orvane-schedule","format_version":1,"values":{}})", "\"format\""},
      {R"({"format":"orvane-table","format_version":2,"values":{}})", "format_version"},
      {R"({"format":"orvane-table","format_version":1.0,"values":{}})", "format_version"},
      {head + "\"filtered\":false}", "no \"values\""},
      {head + R"("values":[]})", "no object"},
      {head + R"("values":{},"more":1})", "unknown member \"more\""},
      {head + R"("values":{},"file_version":3})", "from 1 to 2"},
      {head + R"("values":{},"file_version":1,"filtered":true})", "filtered"},
      {head + R"("values":{},"left_out":["TECH"]})", "no secret"},
      {head + R"("values":{"TECH":1,"TECH":2}})", "twice"},
      {head + R"("values":{"NONE":1}})", "NONE: no such parameter"},
      {head + R"("values":{"tech":1}})", "no such parameter"},
      {head + R"("values":{"TECH\u0000":1}})", "no such parameter"},
      {head + R"("values":{"TBVI":1}})", "TBVI: is set by saving only"},
      {head + R"("values":{"TECH":2147483648}})", "TECH: is no whole number"},
      {head + R"("values":{"TECH":1.0}})", "TECH: is no whole number"},
      {head + R"("values":{"TECH":"1"}})", "TECH: is no whole number"},
      {head + R"("values":{"TECH":"hex:12"}})", "32 hexadecimal"},
      {head + R"("values":{"FREQ":"0.1"}})", "FREQ: is no real"},
      {head + R"("values":{"FREQ":9007199254740993}})", "FREQ: is no real"},
      {head + R"("values":{"FREQ":1e999}})", "too large"},
      {head + R"("values":{"SITE":5}})", "SITE: is no text"},
      {head + R"("values":{"SITE":"longer than fifteen"}})", "SITE: "},
      {head + R"("values":{"SITE":"\u20ac"}})", "SITE: "},
  };
  for (const auto& [text, reason] : kRefused) {
    const auto read = ReadTableJson(text);
    EXPECT_FALSE(read) << text;
    EXPECT_NE(read.Message().find(reason), std::string::npos) << text << ": " << read.Message();
  }
  EXPECT_TRUE(ReadTableJson(head + R"("values":{"FREQ":3}})")) << "a whole number is a real too";
}

TEST(ScheduleJson, GivesTheBytesAgainAndRefusesTheRest) {
  const TempDir dir;
  const std::string bytes = StepBytes(60, 4, 8533.33333, 0.1) + StepBytes(120, 11, 1, 5);
  const std::string text =
      R"({"format":"orvane-schedule","format_version":1,"steps":[)"
      R"({"end_time":60,"waveform":"FD","frequency":8533.33333,"current":0.1},)"
      R"({"end_time":120,"waveform":"TD25N","frequency":1.0,"current":5}]})";
  const auto rows = ReadScheduleJson(text);
  ASSERT_TRUE(rows) << rows.Message();
  ASSERT_TRUE(WriteScheduleFile(dir / "s.TFS", *rows));
  EXPECT_EQ(ReadAll(dir / "s.TFS"), bytes);
  EXPECT_EQ(*ReadJsonObject(WriteScheduleJson(*rows)), *ReadJsonObject(text));

  const std::pair<const char*, const char*> kRefused[] = {
      {"\"TD25N\"", "\"LOUD\""},
      {"\"TD25N\"", "40000"},
      {"120", "120.5"},
      {"120", "50"},
      {"\"current\":5", ""},
      {"\"current\":5", "\"current\":null"},
      {"\"current\":5", "\"current\":5,\"more\":1"}};
  for (const auto& [from, to] : kRefused) {
    std::string broken = text;
    broken.replace(broken.find(from), std::string_view(from).size(), to);
    EXPECT_FALSE(ReadScheduleJson(broken)) << broken;
  }
}

}  // namespace
}  // namespace orvane::testing
