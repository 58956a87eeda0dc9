// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/tbl_bytes.h"
#include "table/param_table.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

std::string Letters(std::size_t size) {
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    text += static_cast<char>('a' + i % 26);
  }
  return text;
}

TEST(LongParam, ChainOfTwentyLinks) {
  std::vector<ParamEntry> entries;
  for (int i = 91; i <= 111; ++i) {  // the key is stepped with carries, "LN099" to "LN100"
    entries.push_back(Entry((i < 100 ? "LN0" : "LN") + std::to_string(i), LStPT));
  }
  ParamTable table = Built(entries);
  EXPECT_EQ(table.LongParamCapacity("LN091"), 320U);
  EXPECT_EQ(table.SetParam("LN111", LStPT, "beyond"), kOk);
  for (const std::size_t size : {319U, 0U, 1U, 15U, 16U, 17U, 159U, 160U, 318U, 319U}) {
    SCOPED_TRACE(size);
    const std::string text = Letters(size);
    ASSERT_EQ(table.SetLongParam("ln091", text), kOk);
    for (std::size_t link = 0; 16 * link <= size; ++link) {
      EXPECT_EQ(Stored(table, entries[link].key.data()).substr(0, size - 16 * link + 1),
                Padded(text, size + 1).substr(16 * link, 16));
    }
    std::vector<char> out(400, '*');
    EXPECT_EQ(table.GetLongParam("LN091", out), kOk);
    EXPECT_EQ(std::string(out.begin(), out.end()), Padded(text, 400));
    out.assign(size + 1, '*');
    EXPECT_EQ(table.GetLongParam("LN091", out), kOk);
    EXPECT_EQ(std::string(out.begin(), out.end()), Padded(text, size + 1));
    out.assign(size, '*');
    EXPECT_EQ(table.GetLongParam("LN091", out), kLongTextTooLong);
    EXPECT_EQ(std::string(out.begin(), out.end()), std::string(size, '\0'));
  }
  EXPECT_EQ(table.SetLongParam("LN091", Letters(320)), kLongTextTooLong);
  EXPECT_EQ(Stored(table, "LN091"), Letters(16));
  EXPECT_EQ(Stored(table, "LN111"), Padded("beyond", 16));
}

TEST(LongParam, RefusesWhatIsNoHeadOfAChain) {
  ParamTable table = Built({Entry("L9", LStPT), Entry("M0", LStPT), Entry("T9", StrPT),
                            Entry("U0", LStPT), Entry("N1", IntPT)});
  std::vector<char> out(40, '*');
  const struct {
    const char* key;
    Status status;
    // clang-format off
  } cases[] = {
      {"L9", kOk}, {"M0", kTypeMismatch}, {"U0", kOk}, {"T9", kTypeMismatch},
      {"N1", kTypeMismatch}, {"N2", kKeyNotFound}, {"", kKeyNotFound}};
  // clang-format on
  for (const auto& c : cases) {
    EXPECT_EQ(table.GetLongParam(c.key, out), c.status) << c.key;
    EXPECT_EQ(table.SetLongParam(c.key, "text"), c.status) << c.key;
    EXPECT_EQ(table.LongParamCapacity(c.key) > 0, c.status == kOk) << c.key;
    EXPECT_EQ(table.GetLongParam(c.key, {}), kLongTextTooLong) << c.key;
  }
  ParamTable built_in;
  EXPECT_EQ(built_in.BuildParamIndex(), kOk);
  EXPECT_EQ(built_in.GetLongParam("IPSRV1", out), kTypeMismatch);
  EXPECT_EQ(built_in.LongParamCapacity("IPSRV0"), 64U);
}

TEST(LongParam, JoinsLinksAndTellsAFullChain) {
  ParamTable table = Built({Entry("T0", LStPT, 0, "one "), Entry("T1", LStPT, 4, Letters(16)),
                            Entry("T2", LStPT, 0, "end"), Entry("F0", LStPT, 0, Letters(16))});
  std::vector<char> out(100, '*');
  EXPECT_EQ(table.GetLongParam("T0", out), kOk);
  EXPECT_EQ(std::string(out.data()), "one " + Letters(16) + "end");
  EXPECT_EQ(table.GetLongParam("F0", out), kLongTextTooLong);
  EXPECT_EQ(std::string(out.begin(), out.end()), std::string(100, '\0'));
}

TEST(LongParam, StoringClearsNeighboursAndRespectsMasks) {
  const std::string old(16, '#');
  std::vector<ParamEntry> entries = {Entry("MODE", IntPT, 0, "\2")};
  for (const char* key : {"K1", "K2", "K3", "K4", "K5", "K7"}) {
    entries.push_back(Entry(key, LStPT, 2, old));
  }
  entries[3].write_mask = 6;  // K3
  entries[4].type = StrPT;    // K4
  entries[5].type = IntPT;    // K5
  ParamTable table = Built(entries);
  EXPECT_EQ(table.LongParamCapacity("K1"), 32U);
  EXPECT_EQ(table.SetLongParam("K1", Letters(32)), kLongTextTooLong);
  EXPECT_EQ(table.SetLongParam("K1", "short", true), kWriteNotPermitted);
  for (std::size_t i = 1; i < entries.size(); ++i) {
    EXPECT_EQ(Stored(table, entries[i].key.data()), old) << entries[i].key.data();
  }
  EXPECT_EQ(table.SetLongParam("K1", "short"), kOk);
  const std::string cleared = Padded("", 1) + old.substr(1);
  EXPECT_EQ(Stored(table, "K1"), Padded("short", 6) + old.substr(6));
  for (const char* key : {"K2", "K3", "K4", "K5"}) {
    EXPECT_EQ(Stored(table, key), cleared) << key;
  }
  EXPECT_EQ(Stored(table, "K7"), old);  // behind the first key that does not exist
  const std::int32_t setup = 1;
  EXPECT_EQ(table.SetParam("MODE", IntPT, &setup), kOk);
  EXPECT_EQ(table.SetLongParam("K1", "", true), kOk);
}

TEST(LongParam, KeysStepWithCarries) {
  const struct {
    const char *key, *next;
  } steps[] = {{"IPSRV0", "IPSRV1"}, {"A9", "B0"}, {"A8", "A9"}, {"AZ9", "BA0"},
               {"a9z", "b0a"},       {"y", "z"},   {"Y", "Z"},   {"_0", "_1"}};
  for (const auto& step : steps) {
    std::string key = step.key;
    EXPECT_EQ(NextParamKey(&key), 0) << step.key;
    EXPECT_EQ(key, step.next);
    EXPECT_EQ(PrevParamKey(&key), 0) << step.next;
    EXPECT_EQ(key, step.key);
  }
  for (const char* stuck : {"", "9", "zzz", "A_", "_9", "A\xE9", "A["}) {
    std::string key = stuck;
    EXPECT_EQ(NextParamKey(&key), 1) << stuck;
    EXPECT_EQ(key, stuck);
  }
  for (const char* stuck : {"", "0", "aaa", "A_", "_0", "A\xE9", "A@"}) {
    std::string key = stuck;
    EXPECT_EQ(PrevParamKey(&key), 1) << stuck;
    EXPECT_EQ(key, stuck);
  }
}

}  // namespace
}  // namespace orvane
