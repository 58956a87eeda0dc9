// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_table.h"

#include <algorithm>
#include <array>
#include <climits>
#include <map>
#include <random>

#include "support/tbl_bytes.h"
#include "table/param_dictionary.h"
#include "table/param_text.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

// A key in normal form, character by character.
std::string NormalKey(const std::string& text) {
  std::string key = text.substr(0, std::min<std::size_t>(text.find('\0'), 8));
  for (char& c : key) {
    c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return key;
}

TEST(ParamKey, IsUpperCasedAndCutAtEightCharacters) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string text(i % 2 == 0 ? 8 : random() % 12, '\0');
    for (char& c : text) {
      c = static_cast<char>(i % 3 == 0 ? random() % 255 + 1 : 'Z' + random() % 40);
    }
    auto bytes = ParamKey(text).Bytes();
    ASSERT_EQ(std::string(bytes.begin(), bytes.end()), Padded(NormalKey(text), 8)) << text;
    if (text.size() == 8) {  // the key field of a record also ends at a NUL
      text[random() % 8] = '\0';
      std::copy(text.begin(), text.end(), bytes.begin());
      bytes = ParamKey(bytes).Bytes();
      ASSERT_EQ(std::string(bytes.begin(), bytes.end()), Padded(NormalKey(text), 8)) << text;
    }
  }
}

// The search of the multiplier as it is told, without any shortcut.
IndexShape ModelShape(const std::vector<std::string>& keys) {
  const auto count = static_cast<std::uint32_t>(keys.size());
  std::vector<std::uint32_t> primes;
  for (std::uint32_t number = 2; primes.size() < 55; ++number) {
    if (std::none_of(primes.begin(), primes.end(),
                     [number](std::uint32_t prime) { return number % prime == 0; })) {
      primes.push_back(number);
    }
  }
  std::uint32_t size = 4 * count;
  const auto divides = [&size](std::uint32_t prime) { return size % prime == 0; };
  while (std::any_of(primes.begin(), primes.end(), divides)) {
    ++size;
  }
  std::uint32_t target = 1;
  for (std::uint32_t power = 4; power <= count; power *= 4) {
    ++target;
  }
  IndexShape best{count, size, 0, size};
  for (std::size_t i = 1; i < primes.size() && best.longest_run > target; ++i) {
    std::vector<bool> used(size);
    for (const std::string& key : keys) {
      std::array<std::uint32_t, 2> words{};
      for (std::size_t at = 0; at < key.size(); ++at) {
        words[at / 4] += std::uint32_t{static_cast<unsigned char>(key[at])} << (8 * (at % 4));
      }
      const std::uint32_t c = ((primes[i] << 16U) % size << 16U) % size;
      std::uint32_t slot = (words[0] * primes[i] + words[1] * c) % size;
      while (used[slot]) {
        slot = (slot + 1) % size;
      }
      used[slot] = true;
    }
    std::uint32_t longest = 0;
    for (std::uint32_t start = 0; start < size; ++start) {
      std::uint32_t run = 0;
      while (run < size && used[(start + run) % size]) {
        ++run;
      }
      longest = std::max(longest, run);
    }
    if (longest < best.longest_run) {
      best.longest_run = longest;
      best.multiplier = primes[i];
    }
  }
  return best;
}

TEST(ParamIndex, SearchAndLookupsFollowTheModel) {
  std::mt19937 random(2);
  for (const std::size_t count : {1U, 2U, 3U, 4U, 5U, 15U, 16U, 17U, 63U, 64U, 65U, 200U, 719U}) {
    for (const std::size_t kinds : {std::size_t{3}, 10 * count}) {  // many duplicates, or few
      SCOPED_TRACE(std::to_string(count) + " of " + std::to_string(kinds));
      std::vector<ParamEntry> entries;
      std::vector<std::string> keys;
      std::map<std::string, std::size_t> first;
      for (std::size_t i = 0; i < count; ++i) {
        const std::string key = "Key" + std::to_string(random() % kinds);
        entries.push_back(Entry(key, IntPT, 0, IntBytes(static_cast<std::int32_t>(i))));
        keys.push_back(NormalKey(key));
        first.emplace(keys.back(), i);
      }
      const ParamTable table = Built(entries);
      EXPECT_EQ(table.Shape(), ModelShape(keys));
      for (std::size_t i = 0; i < kinds; ++i) {
        const std::string key = "KEY" + std::to_string(i);
        const auto found = first.find(key);
        EXPECT_EQ(Stored(table, key),
                  found == first.end() ? "no entry" : ValueBytes(entries[found->second].value))
            << key;
      }
    }
  }
}

TEST(ParamIndex, OfTheBuiltInDictionary) {
  std::vector<std::string> lines;
  ParamTable table;
  EXPECT_EQ(table.FindParam("TBVO"), nullptr);
  EXPECT_EQ(table.BuildParamIndex([&lines](std::string_view line) { lines.emplace_back(line); }),
            kOk);
  EXPECT_EQ(table.Shape(), (IndexShape{719, 2879, 7, 6}));
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "\nParameter table hash index allocated - Size = 0",
                       "\nParameter table hash index built - Parameters: 719  Max run: 6"}));

  std::vector<std::string> keys;
  std::map<std::string, int> visits;
  ParamKey key;
  ParamEntry entry;
  for (int i = 0; table.GetParamKey(i, &key) == kOk; ++i) {
    keys.push_back(key.Text());
    ++visits[key.Text()];
    ASSERT_EQ(table.GetParamEntry(key, &entry), kOk);
    EXPECT_EQ(entry.key, kParamDictionary[static_cast<std::size_t>(i)].key);
  }
  EXPECT_EQ(keys.size(), 719U);
  EXPECT_EQ(visits.size(), 700U);
  EXPECT_EQ(ModelShape(keys), table.Shape());
  for (const int position : {-1, 719, 720, INT_MIN, INT_MAX}) {
    EXPECT_EQ(table.GetParamKey(position, &key), kKeyNotFound) << position;
  }

  // The second copy of a key is never reached.
  const std::int32_t number = 5;
  EXPECT_EQ(table.SetParam("chex", IntPT, &number), kOk);
  ASSERT_EQ(table.GetParamKey(424, &key), kOk);
  EXPECT_EQ(Stored(table, key), Padded(IntBytes(5), 16));
  EXPECT_EQ(table.FindParam("TbVo"), table.FindParam("TBVO"));
  for (const char* miss : {"", "TBV", "TBVOX", "TBVO ", "NO SUCH KEY"}) {
    EXPECT_EQ(table.FindParam(miss), nullptr) << miss;
    EXPECT_EQ(table.GetParam(miss, IntPT, &entry), kKeyNotFound);
    EXPECT_EQ(table.SetParam(miss, IntPT, &number), kKeyNotFound);
    EXPECT_EQ(table.GetParamEntry(miss, &entry), kKeyNotFound);
    EXPECT_EQ(table.CheckModePermission(miss, 1), kKeyNotFound);
    EXPECT_EQ(table.CheckParamWritable(miss), kKeyNotFound);
  }
}

TEST(ParamIndex, WithoutMemoryNothingIsFoundUntilItIsBuiltAgain) {
  ParamTable table = Built({Entry("MODE", IntPT, 0, "\1"), Entry("ABCDEFGH", IntPT)});
  EXPECT_NE(table.FindParam("abcdefghij"), nullptr);
  const auto no_memory = [](std::vector<std::uint16_t>*, std::size_t) { return false; };
  EXPECT_EQ(table.BuildParamIndex({}, no_memory), kIndexNotAllocated);
  EXPECT_EQ(table.Shape().size, 0U);
  std::int32_t number = 0;
  EXPECT_EQ(table.GetParam("MODE", IntPT, &number), kKeyNotFound);
  EXPECT_EQ(table.CheckParamWritable("MODE"), kKeyNotFound);
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  EXPECT_EQ(table.CheckParamWritable("ABCDEFGH"), kOk);
}

TEST(ParamTable, ValuesByType) {
  const std::string full = "ABCDEFGHIJKLMNOPQRST";
  const std::string brief = std::string("ab\0cdefghijklmnopqrs", 20);
  const std::string rest(12, '\xAA');  // what the output buffers hold before
  const struct {
    std::uint8_t type;
    std::string input, stored, output;
    // clang-format off
  } cases[] = {
      {IntPT, full, "ABCD", "ABCD"}, {RawPT, full, "ABCD", "ABCD"},
      {FltPT, full, "ABCDEFGH", "ABCDEFGH"},
      {AmxPT, brief, brief.substr(0, 8), brief.substr(0, 8)},
      {IPAPT, brief, brief.substr(0, 16), brief.substr(0, 16)},
      {LStPT, full, full.substr(0, 16), full.substr(0, 16)},
      {LStPT, brief, "ab", Padded("ab", 16)},
      {StrPT, full, full.substr(0, 15), Padded(full.substr(0, 15), 16)},
      {PosPT, full, full.substr(0, 15), Padded(full.substr(0, 15), 16)},
      {StrPT, brief, "ab", Padded("ab", 3) + rest + Padded("", 1)},
      {PosPT, brief, "ab", Padded("ab", 3) + rest + Padded("", 1)}, {8, full, "", ""}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(int{c.type});
    ParamTable table = Built({Entry("KEY", c.type, 0, full)});
    std::string output(20, '\xAA');
    for (std::uint8_t asked = 0; asked < 10; ++asked) {
      if (asked != c.type ||
          asked > LStPT) {  // unknown types are refused even where entries have them
        const auto type = static_cast<ValueType>(asked);
        EXPECT_EQ(table.SetParam("KEY", type, brief.data()), kTypeMismatch);
        EXPECT_EQ(table.GetParam("KEY", type, output.data()), kTypeMismatch);
      }
    }
    EXPECT_EQ(Stored(table, "KEY"), full.substr(0, 16));
    EXPECT_EQ(output, std::string(20, '\xAA'));
    if (c.type <= LStPT) {
      const auto type = static_cast<ValueType>(c.type);
      EXPECT_EQ(table.SetParam("KEY", type, c.input.data()), kOk);
      EXPECT_EQ(Stored(table, "KEY"), Padded(c.stored, 16));
      EXPECT_EQ(table.GetParam("KEY", type, output.data()), kOk);
      EXPECT_EQ(output, c.output + std::string(20 - c.output.size(), '\xAA'));
    }
  }
}

TEST(ParamTable, WritePermissionFollowsMode) {
  const struct {
    std::int32_t mode;
    std::uint32_t mask;
    bool permitted;
    // clang-format off
  } cases[] = {
      {1, 2, true}, {2, 2, false}, {33, 2, true}, {32, 2, false}, {11, 0xD802, true},
      {13, 0xD802, false}, {15, 0x8000D802, true}, {1, 0, false}, {0, 0x7FFFF, true},
      {18, 0x7FFFF, true}, {19, 0x7FFFF, false}};
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.mode) + " in " + std::to_string(c.mask));
    const Status expected = c.permitted ? kOk : kWriteNotPermitted;
    const ParamTable original =
        Built({Entry("KEY", StrPT, c.mask, "old"), Entry("MODE", IntPT, 0)});
    ParamTable table = original;
    EXPECT_EQ(table.SetParam("MODE", IntPT, &c.mode), kOk);
    EXPECT_EQ(table.CheckWritePermission(table.FindParam("KEY")), expected);
    EXPECT_EQ(table.CheckParamWritable("key"), expected);
    EXPECT_EQ(original.CheckModePermission("KEY", c.mode), expected);
    EXPECT_EQ(original.CheckParamWritable("KEY"), (c.mask & 1U) != 0 ? kOk : kWriteNotPermitted);
    EXPECT_EQ(table.SetParam("KEY", StrPT, "new", true), expected);
    EXPECT_EQ(Stored(table, "KEY"), Padded(c.permitted ? "new" : "old", 16));
    EXPECT_EQ(table.SetParam("KEY", StrPT, "more"), kOk);
    EXPECT_EQ(table.CheckWritePermission(nullptr), kKeyNotFound);
  }
}

TEST(ParamTable, WithoutAUsableModeNothingIsPermitted) {
  const ParamEntry entry = Entry("KEY", StrPT, ~0U, "old");
  for (const ParamEntry& mode : {Entry("NONE", IntPT), Entry("MODE", StrPT)}) {
    ParamTable table = Built({entry, mode});
    const Status expected = mode.type == IntPT ? kKeyNotFound : kTypeMismatch;
    EXPECT_EQ(table.SetParam("KEY", StrPT, "new", true), expected);
    EXPECT_EQ(table.CheckParamWritable("KEY"), expected);
    EXPECT_EQ(table.CheckModePermission("KEY", 3), kOk);
    EXPECT_EQ(Stored(table, "KEY"), Padded("old", 16));
  }
  ParamTable early(std::vector<ParamEntry>{entry, Entry("MODE", IntPT)});
  EXPECT_EQ(early.CheckWritePermission(&entry), kKeyNotFound);
  EXPECT_EQ(early.BuildParamIndex(), kOk);
  EXPECT_EQ(early.CheckWritePermission(&entry), kOk);  // asking too early has spoilt nothing
}

TEST(TableDiff, TellsKeysWhoseValuesDiffer) {
  const auto table = [](const char* b, const char* c) {
    return Built({Entry("A", IntPT, 0, "1"), Entry("B", IntPT, 0, b), Entry("C", IntPT, 0, c)});
  };
  const ParamTable base = table("1", "1");
  EXPECT_TRUE(DifferingKeys(base, base).empty());
  EXPECT_EQ(DifferingKeys(base, table("2", "1")), std::vector<ParamKey>{"B"});
  EXPECT_EQ(ChangesOfBoth(base, table("2", "2"), table("3", "1")).mine, std::vector<ParamKey>{"C"});
}

}  // namespace
}  // namespace orvane
