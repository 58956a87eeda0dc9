// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/comparison.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "files/path_text.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "table/param_access.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

std::string RowText(const std::vector<ChangeRow>& rows, const std::string& code) {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [&code](const ChangeRow& one) { return one.code == code; });
  return row == rows.end() ? "none" : row->there + "|" + row->here + (row->can_take ? "|take" : "");
}

class ComparisonTest : public ::testing::Test {
 protected:
  std::vector<ChangeRow> Rows(Against against) {
    comparison_.CompareWith(against);
    const Result<> updated = comparison_.Update();
    EXPECT_TRUE(updated) << updated.Message();
    return comparison_.Rows();
  }

  TempDir dir_;
  Meanings meanings_;
  ParamTable table_ = NewTable();
  ParamTable start_ = table_;
  Comparison comparison_{&table_, &start_, [this]() -> const Meanings& { return meanings_; }};
};

TEST_F(ComparisonTest, BytesDecideAndTextsShowThem) {
  PutReal(&table_, "GFC1", 1.0 / 3);
  PutReal(&start_, "GFC1", 0.3333333333);
  PutText(&table_, "SITE", "ab");
  ParamValue rest = table_.FindParam("SITE")->value;
  rest[5] = 'x';  // behind the end of the text
  ASSERT_EQ(start_.SetStoredValue("SITE", rest), kOk);
  PutInt(&table_, "TECH", 4);
  PutInt(&start_, "TBVI", 1);
  const auto rows = Rows(Against::kFile);
  EXPECT_EQ(RowText(rows, "GFC1"), "0.3333333333|0.3333333333333333|take");
  EXPECT_EQ(RowText(rows, "SITE"), "hex:61620000007800000000000000000000|ab|take");
  EXPECT_EQ(RowText(rows, "TECH"), "1: SIP|4: CSAMT|take");
  EXPECT_EQ(RowText(rows, "TBVI"), "1: version 1|2: version 2") << "only a save sets it";
  EXPECT_EQ(comparison_.Text(), "4 values differ; the table has no file yet, so this is since New");
}

TEST_F(ComparisonTest, ABoxKeepsWhatItsModeProtectsAndVersion1CutsAndDrops) {
  PutInt(&table_, "RQST", 9);  // no request: the box does nothing
  PutText(&table_, "SITE", "0123456789ab");
  PutText(&table_, "FTPCUSR", "crew");
  auto rows = Rows(Against::kBox);
  EXPECT_EQ(RowText(rows, "RQST").substr(0, 11), "not taken: ");
  EXPECT_EQ(RowText(rows, "SITE"), "none") << "taken as it is";
  EXPECT_EQ(RowText(rows, "SNUM").substr(0, 11), "not taken: ");
  rows = Rows(Against::kVersion1);
  EXPECT_EQ(RowText(rows, "FTPCUSR"), "left out of the file|(not shown)");
  EXPECT_EQ(RowText(rows, "SITE"), "none") << "13 bytes are kept";
}

TEST_F(ComparisonTest, AFileIsReadAgainWhereItsBytesAreOthers) {
  const auto path = dir_ / "a.tbl";
  comparison_.SetSecond(path);
  comparison_.CompareWith(Against::kTable);
  EXPECT_FALSE(comparison_.Update());
  WriteAll(path,
           HeaderV2() + RecordV2("LFRQ", 0, IntPT, "\x32") + RecordV2("NEWKEY", 0, IntPT, "\x01"));
  EXPECT_EQ(RowText(Rows(Against::kTable), "LFRQ"), "50: 50 Hz|60: 60 Hz|take");
  EXPECT_EQ(RowText(comparison_.Rows(), "TECH").substr(0, 15), "not in the file");
  EXPECT_EQ(comparison_.Rows().back().code, "NEWKEY");
  EXPECT_EQ(comparison_.Text(), "1 value differs; 699 are only here; 1 is only there");
  WriteAll(path, HeaderV2() + RecordV2("LFRQ", 0, IntPT, "\x3C"));
  EXPECT_EQ(RowText(Rows(Against::kTable), "LFRQ"), "none");
  WriteAll(path, "rubbish");
  EXPECT_FALSE(comparison_.Update());
  EXPECT_TRUE(comparison_.Rows().empty());
}

}  // namespace
}  // namespace orvane
