// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/result_list_dlg.h"

#include "support/gui.h"

namespace orvane {
namespace {

const QString kReason =
    QStringLiteral("failed (1): ") + QStringLiteral("a reason of many words ").repeated(12);

class ResultList : public ::testing::Test {
 protected:
  void SetUp() override {
    dialog_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog_));
  }
  QStringList Names() const {
    QStringList names;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
      names << list_->topLevelItem(row)->text(0);
    }
    return names;
  }
  void ClickHeader(int column) const {
    QHeaderView* header = list_->header();
    const QPoint at(header->sectionViewportPosition(column) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
  }

  CResultListDlg dialog_{{"3 of 5", "1 failed", "File"},
                         {{"c", "/in/c", ResultRow::kGood, "done", {"/z/c.txt"}},
                          {"b", "/in/b", ResultRow::kProblem, kReason, {}},
                          {"d", "/in/d", ResultRow::kNote, "done: but", {"/y/d.csk", "/y/d.txt"}},
                          {"a", "/in/a", ResultRow::kGood, "done", {"/x/a.txt"}},
                          {"e", {}, ResultRow::kNote, "skipped", {}}},
                         nullptr,
                         nullptr};
  QTreeWidget* list_ = dialog_.findChild<QTreeWidget*>();
};

TEST_F(ResultList, SortsByAnyColumnAndShowsProblemsFirst) {
  EXPECT_EQ(Names(), (QStringList{"b", "d", "e", "c", "a"}));
  ClickHeader(0);
  EXPECT_EQ(Names(), (QStringList{"a", "b", "c", "d", "e"}));
  ClickHeader(0);
  EXPECT_EQ(Names(), (QStringList{"e", "d", "c", "b", "a"}));
  ClickHeader(3);
  EXPECT_EQ(Names(), (QStringList{"e", "b", "a", "d", "c"})) << "by folder";
  ClickHeader(1);
  EXPECT_EQ(Names(), (QStringList{"b", "d", "e", "c", "a"}));
}

TEST_F(ResultList, ShowsReasonsWholeInAnyWidth) {
  const auto height = [this](int row) {
    return list_->visualItemRect(list_->topLevelItem(row)).height();
  };
  const int line = list_->fontMetrics().height();
  const int text = list_->fontMetrics().horizontalAdvance(kReason);
  for (const int width : {380, 200, 700}) {
    list_->setColumnWidth(1, width);
    EXPECT_GE(height(0), (text / width + 1) * line) << width;
    EXPECT_LT(height(0), (text * 3 / (2 * width) + 3) * line) << width;
    EXPECT_LT(height(4), 2 * line) << "a short one";
  }
}

TEST_F(ResultList, OpensTheFolderOfTheOutputElseOfTheInput) {
  QStringList opened;
  dialog_.open_folder = [&opened](const QUrl& url) {
    opened << url.toLocalFile();
    return true;
  };
  for (const int row : {0, 1, 2, 3}) {
    list_->setCurrentItem(list_->topLevelItem(row));
    dialog_.findChild<QPushButton*>("open-folder")->click();
  }
  // With the drive where there are drives.
  const auto whole = [](const char* folder) {
    return QString::fromStdString(std::filesystem::absolute(folder).generic_string());
  };
  EXPECT_EQ(opened, (QStringList{whole("/in"), whole("/y"), whole("/z")}))
      << "a box without a file";
}

}  // namespace
}  // namespace orvane
