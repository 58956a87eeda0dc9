// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/values_text.h"

#include <limits>

#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "table/value_lines.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// Bytes that no text gives, and values at the ends of their ranges, by turns.
ParamValue Awkward(std::size_t turn, std::uint8_t type) {
  using Limits = std::numeric_limits<double>;
  const double reals[] = {Limits::quiet_NaN(), Limits::denorm_min(), -0.0, 1.0 / 3,
                          Limits::infinity(),  Limits::max()};
  const std::string texts[] = {std::string("ab\0cd", 5), " blank", "blank ",   "hex:00",
                               "# \xfc\xa0\xff",         "a\tb\n", "\x85\x9f", "a=b",
                               "sixteen of them!",       "\r"};
  const std::string times[] = {"\1\2\3\4\5\6\7\24", "\0\1\2", "\xff\xff\xff\xff\xff\xff\xff\xff",
                               std::string("\1\2\3\x1e\6\x09\1\24", 8)};
  switch (type) {
    case IntPT:
      return Value(turn % 3 == 0 ? IntBytes(1) + "junk" : IntBytes(turn % 3 == 1 ? -1 : INT32_MIN));
    case FltPT:
      return Value(RealBytes(reals[turn % 6]) + (turn % 5 == 0 ? "junk" : ""));
    case AmxPT:
      return Value(times[turn % 4]);
    default:
      return Value(texts[turn % 10]);
  }
}

TEST(ValuesText, GivesTheSameBytesForEveryKey) {
  std::vector<ParamTable> tables = {NewTable(), RandomTable(1), RandomTable(2)};
  for (std::size_t turn = 0; turn < 12; ++turn) {
    tables.push_back(NewTable());
    for (const ParamKey key : AllKeys(tables[0])) {
      const std::uint8_t type = tables[0].FindParam(key)->type;
      ASSERT_EQ(tables.back().SetStoredValue(key, Awkward(turn + key.Word() % 7, type)), kOk);
    }
  }
  ASSERT_EQ(AllKeys(tables[0]).size(), 700U);
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const ParamTable& from = tables[i];
    const ValuesText all = WriteValues(from, AllKeys(from), {.with_secrets = true});
    EXPECT_EQ(all.left_out.size(), 0U);
    ParamTable onto = tables[(i + 1) % tables.size()];
    const auto read = ReadValueLines(all.text, onto);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->bad, 0U);
    EXPECT_EQ(read->lines.size(), 699U) << "all but the version of the file";
    ApplyValueLines(read->lines, &onto);
    ASSERT_EQ(onto.SetStoredValue("TBVI", from.FindParam("TBVI")->value), kOk);
    EXPECT_EQ(Changes(from, onto), std::set<std::string>()) << i;
  }
}

TEST(ValuesText, IsReadableAndKeepsSecrets) {
  ParamTable table = NewTable();
  SetAll(&table, "SITE=Z\xfcrich FDRIFT=0.1 FTPCPWD=hidden EKEY=77 STIM=2026/11/21_07:00:00");
  ParamValue monday = table.FindParam("STIM")->value;
  monday[6] = 6;
  ASSERT_EQ(table.SetStoredValue("STIM", monday), kOk);
  const ValuesText written =
      WriteValues(table, KeysNotDefault(table), {.meaning = [](const auto& e) {
                    return ParamKey(e.key) == "SITE" ? std::string("Site\nname") : std::string();
                  }});
  EXPECT_EQ(written.text,
            "# shown as 2026/11/21 07:00:00\n"
            "STIM=hex:000007150b1a06140000000000000000\n"
            "FDRIFT=0.1\n# Site\\x0Aname\nSITE=Z\xc3\xbcrich\n# left out: FTPCPWD EKEY\n");
  EXPECT_EQ(written.left_out.size(), 2U);
}

TEST(ValueLines, TellEachLineWithItsNumber) {
  ParamTable table = NewTable();
  SetAll(&table, "TECH=2 LINE=7");
  const std::string text =
      "\xEF\xBB\xBF# comment\r\n\r\n tech = 1 \r\nTECH=2\nLINE=7\nLINE=hex:37\nNOKEY=1\nTECH\n"
      "FTPCPWD=far too long for a table\nTBVI=2\nSITE=\xff\nTECHNICAL=1\n=\nSITE=hex:" +
      std::string(30, '0') + "zz";
  const auto read = ReadValueLines(text, table);
  ASSERT_TRUE(read);
  using enum LineState;
  const struct {
    std::size_t number;
    LineState state;
    const char* reason;
  } expected[] = {{3, kNew, ""},
                  {4, kNew, ""},
                  {5, kSame, ""},
                  {6, kNotParsable, "LINE: \"hex:37\" has not 32 hexadecimal digits"},
                  {7, kUnknownKey, "NOKEY: no such parameter"},
                  {8, kNotParsable, "is not of the form KEY=VALUE"},
                  {9, kNotParsable, "FTPCPWD: the value is longer than 15 characters"},
                  {10, kReadOnly, "TBVI: is the version of the file and cannot be set"},
                  {11, kNotParsable, "SITE: \"\\xFF\" is not UTF-8 at byte 1"},
                  {12, kUnknownKey, "TECHNICA"},
                  {13, kUnknownKey, ": no such parameter"},
                  {14, kNotParsable, "SITE: \"hex:"}};
  ASSERT_EQ(read->lines.size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(read->lines[i].number, expected[i].number);
    EXPECT_EQ(read->lines[i].state, expected[i].state) << expected[i].number;
    EXPECT_EQ(read->lines[i].reason.rfind(expected[i].reason, 0), 0U) << read->lines[i].reason;
  }
  EXPECT_EQ(Get(table, "TECH"), "2") << "reading changes nothing";
  ParamTable first = table;
  EXPECT_EQ(ApplyValueLines(std::span(read->lines).first(1), &first), 1U);
  EXPECT_EQ(Get(first, "TECH"), "1");
  EXPECT_EQ(ApplyValueLines(read->lines, &table), 2U);
  EXPECT_EQ(Get(table, "TECH"), "2");
}

TEST(ValueLines, ManyBadLinesAreCountedAndTooMuchIsRefused) {
  std::string text(kMostValuesBytes, '\n');
  for (std::size_t at = 0; at < text.size(); at += 2) {
    text[at] = '?';
  }
  const auto read = ReadValueLines(text, NewTable());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->bad, kMostValuesBytes / 2);
  EXPECT_EQ(read->lines.size(), ValueLines::kMostBad);
  EXPECT_FALSE(ReadValueLines(text + "\n", NewTable()));
  using namespace std::string_view_literals;
  for (const std::string_view utf16 :
       {"\xFF\xFE\x41"sv, "\xFE\xFF"sv, "A\0=\0001\0"sv, "\0A\0="sv}) {
    const auto refused = ReadValueLines(utf16, NewTable());
    ASSERT_FALSE(refused) << utf16.size();
    EXPECT_EQ(refused.Message(), "This is UTF-16 text; save it as UTF-8.");
  }
  EXPECT_TRUE(ReadValueLines("A\0\0\0"sv, NewTable())) << "no text at all: bad lines";
}

}  // namespace
}  // namespace orvane
