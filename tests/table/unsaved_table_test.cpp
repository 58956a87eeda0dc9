// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/unsaved_table.h"

#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "table/tbl_file.h"

namespace orvane::testing {
namespace {

std::vector<std::byte> Bytes(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

std::string Refusal(const std::string& image) { return ReadUnsavedImage(Bytes(image)).Message(); }

// FNV-1a as its authors write it: of "a" it is 0xaf63dc4c8601ec8c.
std::uint64_t Sum(const std::string& text) {
  std::uint64_t sum = 0xcbf29ce484222325U;
  for (const char byte : text) {
    sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  }
  return sum;
}

// A file of 7 bytes as the copy's document was read from.
const std::string kMark = Little(7, 8) + Little(Sum("content"), 8) + Little(1234567890123456789, 8);

std::string Image(const std::string& path, const std::string& table, unsigned version = 2,
                  const std::string& mark = kMark) {
  const std::string start =
      "ORVUNSAV" + Little(version, 4) + Little(path.size(), 4) + Little(table.size(), 8);
  const std::string rest = (version == 1 ? std::string() : mark) + path + table;
  return start + Little(Sum(start + rest), 8) + rest;
}

const std::string kTable = HeaderV2() + RecordV2("TECH", 0, 0, IntBytes(3));

TEST(UnsavedTable, IsLaidOutAsDescribed) {
  EXPECT_EQ(Sum("a"), 0xaf63dc4c8601ec8cU);
  for (const std::string path : {"/data/\xc3\xa4 \xff/Startup.tbl", ""}) {
    EXPECT_EQ(UnsavedImage({path, Bytes(kTable)}),
              Bytes(Image(path, kTable, 2, std::string(24, '\0'))));
    UnsavedTable unsaved;
    for (const unsigned version : {1U, 2U}) {
      const auto read = ReadUnsavedImage(Bytes(Image(path, kTable, version)));
      ASSERT_EQ(read.Message(), "");
      unsaved = *read;
      EXPECT_EQ(unsaved.path, path);
      EXPECT_EQ(unsaved.table, Bytes(kTable));
      EXPECT_EQ(unsaved.file.IsKnown(), version == 2);
    }
    EXPECT_EQ(unsaved.file.Size(), 7U);
    EXPECT_EQ(unsaved.file.Sum(), Sum("content"));
    EXPECT_EQ(unsaved.file.Written(), 1234567890123456789);
    EXPECT_EQ(UnsavedImage(unsaved), Bytes(Image(path, kTable)));
  }
}

TEST(UnsavedTable, RefusesWhatIsCutChangedOrOther) {
  const std::string whole = Image("/a.tbl", kTable);
  EXPECT_EQ(Refusal(whole), "");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(Refusal(whole.substr(0, size)), "it is cut short") << size;
  }
  EXPECT_EQ(Refusal(whole + "x"), "it is damaged");
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const char flip : {'\x01', '\x80', '\xff'}) {
      std::string changed = whole;
      changed[i] = static_cast<char>(changed[i] ^ flip);
      EXPECT_NE(Refusal(changed), "") << i;
    }
  }
  EXPECT_EQ(Refusal(Image("/a.tbl", kTable, 3)), "it is from another version of Orvane");
  EXPECT_EQ(Refusal("x" + whole.substr(1)), "it is not an emergency copy");
  for (const std::string& table : {std::string(), kTable + "x", kTable.substr(1) + "x"}) {
    EXPECT_EQ(Refusal(Image("/a.tbl", table)), "it is damaged");
  }
}

TEST(UnsavedTable, ItsTableComesBackByteForByte) {
  const ParamTable edited = RandomTable(7);
  ParamTable loaded = NewTable();
  ASSERT_TRUE(LoadTblImage(&loaded, TblImage(edited, {})));
  EXPECT_EQ(Changes(edited, loaded), std::set<std::string>()) << "versions included";
  EXPECT_FALSE(LoadTblImage(&loaded, Bytes("no table")));
}

}  // namespace
}  // namespace orvane::testing
