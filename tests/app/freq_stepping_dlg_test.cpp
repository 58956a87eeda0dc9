// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/freq_stepping_dlg.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "core/param_text.h"
#include "stepping/widgets/stepping_cycle_dlg.h"
#include "support/qt_print.h"
#include "support/table_help.h"

namespace orvane {
namespace {

using testing::Get;
using testing::Set;

class Silent : public Prompts, public Notices {
 public:
  Answer AskYesNo(const std::string&, const std::string&) override { return Answer::kNo; }
  Answer AskYesNoCancel(const std::string&, const std::string&) override { return Answer::kCancel; }
  void ShowWarning(const std::string&, const std::string& text) override { shown = text; }
  void ShowNotice(const std::string&) override {}
  std::string shown;
};

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
  bool IsOpen() const { return dialog_->isVisible(); }

  ParamTable table_ = testing::NewTable();
  Silent silent_;
  SteppingForm form_{&table_, &silent_, &silent_};
  std::unique_ptr<CFreqSteppingDlg> dialog_;
};

TEST_F(FreqSteppingDlg, ShowsListScheduleAndNames) {
  auto* list = Find<CGridCtrl>("frequencies");
  auto* schedule = Find<CGridCtrl>("schedule");
  EXPECT_EQ(list->GetRowCount(), 21);
  EXPECT_EQ(schedule->GetRowCount(), 201);
  EXPECT_EQ(list->GetItemText(20, 0), QStringLiteral("FREQ20"));
  EXPECT_EQ(list->GetItemText(2, 1), QString());
  EXPECT_EQ(schedule->GetItemText(0, 2), QStringLiteral("Current (A)"));
  EXPECT_EQ(schedule->GetItemText(4, 1), QStringLiteral("8"));
  EXPECT_EQ(schedule->GetItemText(5, 1), QString());
  EXPECT_LE(dialog_->sizeHint().width(), 1340);
  EXPECT_LE(dialog_->sizeHint().height(), 700);
  for (const QWidget* widget : dialog_->findChildren<QWidget*>()) {
    if (widget->focusPolicy() != Qt::NoFocus && !widget->objectName().startsWith("qt_")) {
      const auto* button = qobject_cast<const QAbstractButton*>(widget);
      EXPECT_FALSE(widget->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
          << widget->objectName().toStdString();
    }
  }
  EXPECT_FALSE(Find<SchedulePlot>("schedule-picture")->accessibleName().isEmpty());
}

TEST_F(FreqSteppingDlg, ClosesOnlyWithCellsItCanRead) {
  auto* list = Find<CGridCtrl>("frequencies");
  Edit(list, 2, 1, "32,5");
  Click("1");
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(list->GetItemText(2, 1), QString());
  EXPECT_NE(Find<QLabel>("note")->text().indexOf(QStringLiteral("32,5")), -1);
  Edit(list, 2, 1, "32.5");
  Click("calculate");
  EXPECT_EQ(Find<CGridCtrl>("schedule")->GetItemText(2, 1), QStringLiteral("32.5"));
  EXPECT_EQ(Get(table_, "FRQ1"), "0");
  Find<QLineEdit>("1505")->selectAll();
  QTest::keyClicks(Find<QLineEdit>("1505"), QStringLiteral("x"));
  Click("1");
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(silent_.shown, "Enter a number.");
  QTest::keyClicks(Find<QLineEdit>("1505"), QStringLiteral("16"));
  Click("1");
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(Get(table_, "FRQ1") + " " + Get(table_, "FEND"), "32.5 16");
}

TEST_F(FreqSteppingDlg, OffersTheWaveformsAsAList) {
  auto* schedule = Find<CGridCtrl>("schedule");
  QLineEdit* editor = Edit(schedule, 1, 4, "");
  ASSERT_TRUE(QTest::qWaitFor([&] { return editor->completer()->popup()->isVisible(); }));
  auto* popup = editor->completer()->popup();
  ASSERT_EQ(popup->model()->rowCount(), 13);
  popup->setCurrentIndex(popup->model()->index(2, 0));
  QTest::keyClick(popup, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !schedule->IsEditing(); }));
  EXPECT_EQ(schedule->GetItemText(1, 4), QStringLiteral("TD33"));
  QTest::keyClick(Edit(schedule, 2, 4, "9"), Qt::Key_Return);
  EXPECT_EQ(schedule->GetItemText(2, 4), QStringLiteral("TD50N"));
  EXPECT_EQ(form_.Schedule()[0].waveform, 2);
  EXPECT_EQ(form_.Schedule()[1].waveform, 9);
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
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(Get(table_, "TTOT") + " " + Get(table_, "CRMX"), "2400 16");
  EXPECT_FALSE(form_.EarlyChanges().empty());
}

}  // namespace
}  // namespace orvane
