// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/freq_stepping_dlg.h"

#include <QCompleter>

#include "stepping/widgets/stepping_cycle_dlg.h"
#include "support/gui.h"
#include "support/table_help.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class FreqSteppingDlg : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto& [key, text] : std::initializer_list<std::pair<const char*, const char*>>{
             {"TECH", "4"}, {"AUTO", "1"}, {"FRQ0", "64"}, {"FEND", "8"}, {"TPFR", "30"}}) {
      Set(&table_, key, text);
    }
    form_.Open();
    dialog_ = std::make_unique<CFreqSteppingDlg>(&form_, &silent_, QString());
    dialog_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }
  template <typename Widget>
  Widget* Find(const char* name) const {
    return dialog_->findChild<Widget*>(QString::fromLatin1(name));
  }
  void Click(const char* name) const { Find<QPushButton>(name)->click(); }
  QLineEdit* Edit(CGridCtrl* grid, int row, int column, const char* text) const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the editor before
    grid->setFocus();
    grid->SetFocusCell(row, column);
    QTest::keyClick(grid, Qt::Key_F2);
    auto* editor = grid->findChild<QLineEdit*>(QStringLiteral("cellEditor"));
    editor->selectAll();
    QTest::keyClicks(editor, QString::fromLatin1(text));
    return editor;
  }

  ParamTable table_ = testing::NewTable();
  testing::Told silent_;
  SteppingForm form_{&table_, &silent_, &silent_};
  std::unique_ptr<CFreqSteppingDlg> dialog_;
};

TEST_F(FreqSteppingDlg, FitsALaptopAndClosesOnlyWithCellsItCanRead) {
  EXPECT_LE(dialog_->sizeHint().width(), 1340);
  EXPECT_LE(dialog_->sizeHint().height(), 700);
  auto* list = Find<CGridCtrl>("frequencies");
  Edit(list, 2, 1, "32,5");
  QTest::mouseClick(Find<QPushButton>("1"), Qt::LeftButton);  // moves the focus first
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(list->GetItemText(2, 1), QString());
  EXPECT_NE(Find<QLabel>("note")->text().indexOf(QStringLiteral("32,5")), -1);
  QTest::keyClick(Edit(list, 2, 1, "32,5"), Qt::Key_Return);
  EXPECT_EQ(list->GetFocusCell(), std::make_pair(2, 1));
  EXPECT_NE(Find<QLabel>("note")->text(), QString());
  Click("calculate");  // what was refused before it stops no button
  EXPECT_EQ(Find<QLabel>("note")->text().indexOf(QStringLiteral("32,5")), -1);
  Edit(list, 2, 1, " 32.5 ");
  Click("calculate");
  EXPECT_EQ(Find<CGridCtrl>("schedule")->GetItemText(2, 1), QStringLiteral("32.5"));
  EXPECT_EQ(Get(table_, "FRQ1"), "0");
  Find<QLineEdit>("1505")->selectAll();
  QTest::keyClicks(Find<QLineEdit>("1505"), QStringLiteral("x"));
  Click("1");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(silent_.warning, "Orvane: Lowest frequency (Hz): Enter a number.");
  QTest::keyClicks(Find<QLineEdit>("1505"), QStringLiteral("16"));
  Click("1");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Get(table_, "FRQ1") + " " + Get(table_, "FEND"), "32.5 16");
}

TEST_F(FreqSteppingDlg, OffersTheWaveformsAsAList) {
  auto* schedule = Find<CGridCtrl>("schedule");
  QLineEdit* editor = Edit(schedule, 1, 4, "");
  ASSERT_TRUE(QTest::qWaitFor([&] { return editor->completer()->popup()->isVisible(); }));
  auto* popup = editor->completer()->popup();
  popup->setCurrentIndex(popup->model()->index(2, 0));
  QTest::keyClick(popup, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !schedule->IsEditing(); }));
  EXPECT_EQ(schedule->GetItemText(1, 4), QStringLiteral("TD33"));
  QTest::keyClick(Edit(schedule, 2, 4, "9"), Qt::Key_Return);
  EXPECT_EQ(schedule->GetItemText(2, 4), QStringLiteral("TD50N"));
  // Nothing else keeps these rows: whatever replaces them asks.
  for (const char* button : {"calculate", "default", "open-file", "1"}) {
    const int asked = silent_.asked;
    Find<QComboBox>("1501")->setCurrentIndex(button == std::string_view("open-file") ? 2 : 1);
    Click(button);
    EXPECT_EQ(silent_.asked, asked + 1) << button;
    EXPECT_EQ(schedule->GetItemText(1, 4), QStringLiteral("TD33")) << button;
  }
  for (const Answer answer : {Answer::kCancel, Answer::kNo}) {
    silent_.answer = answer;
    Click("1");
    EXPECT_EQ(dialog_->isVisible(), answer == Answer::kCancel);
  }
}

TEST_F(FreqSteppingDlg, EscapeKeepsTheTableButForTheDefaults) {
  Find<QComboBox>("1501")->setFocus();
  QTest::keyClick(Find<QComboBox>("1501"), Qt::Key_Up);
  EXPECT_FALSE(Find<QPushButton>("calculate")->isEnabled());
  QTimer::singleShot(0, dialog_.get(), [this] {
    auto* cycles = dialog_->findChild<CSteppingCycleDlg*>();
    cycles->findChild<QAbstractButton*>(QStringLiteral("1522"))->click();
    cycles->accept();
  });
  Click("default");
  EXPECT_EQ(Find<CGridCtrl>("frequencies")->GetItemText(1, 1), QStringLiteral("9600"));
  EXPECT_EQ(Find<QComboBox>("1501")->currentText(), QStringLiteral("Auto Step"));
  QTest::keyClick(dialog_.get(), Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Get(table_, "TTOT") + " " + Get(table_, "CRMX"), "2400 16");
  EXPECT_FALSE(form_.EarlyChanges().empty());
}

}  // namespace
}  // namespace orvane
