// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/form_dialog.h"

#include "support/assistive.h"
#include "support/gui.h"
#include "support/told.h"
#include "ui/field_tips.h"

namespace orvane {
namespace {

constexpr std::array<Choice, 2> kMethods = {{{"SIP", 21}, {"TDIP", 22}}};
constexpr std::array<Choice, 2> kNorths = {{{"True North"}, {"Magnetic North"}}};
constexpr Field kFields[] = {
    {1, Widget::kInteger, "Amount", "L2NS", IntPT, {}, {0, 4}},
    {2, Widget::kText, "Hx serial", "HXSN", StrPT, {}, {0, 0, 8}, {}, "Coils"},
    {21, Widget::kRadios, "Function", "TECH", IntPT, Offset(1), {}, kMethods},
    {4, Widget::kCombo, "North reference", "NREF", IntPT, Offset(2), {}, kNorths},
    {5, Widget::kCheck, "Comb filter", "COMBON", IntPT, Flag()},
};
constexpr int kOrder[] = {21, 1, 2, 4, 5};

class Dialog : public CFormDialog {
 public:
  Dialog(FormModel* model, Prompts* prompts) : CFormDialog(model, prompts, nullptr) {
    auto* form = new QFormLayout(this);
    for (const int control : {1, 2, 21, 4}) {
      AddRow(form, control);
    }
    form->addRow(Control(5));
    form->addRow(OkAndCancel());
  }
  std::vector<int> edited;

 private:
  // A rule such as dialogs have: one choice decides what else can be chosen.
  void OnEdited(int control) override {
    edited.push_back(control);
    if (control == 21) {
      Model().SetIndex(21, kNothingChosen);
      Model().Enable(22, false);
    }
  }
  void Commit() override { Model().Write(kOrder); }
};

class FormDialog : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(table_.BuildParamIndex(), kOk);
    Set("HXSN", StrPT, "much too long");
    model_.ReadAll();
    dialog_ = std::make_unique<Dialog>(&model_, &prompts_);
    dialog_->show();
  }
  void Set(ParamKey key, ValueType type, const void* value) {
    ASSERT_EQ(table_.SetParam(key, type, value), kOk);
  }
  std::int32_t Int(ParamKey key) const {
    std::int32_t number = -99;
    EXPECT_EQ(table_.GetParam(key, IntPT, &number), kOk);
    return number;
  }
  template <typename Widget>
  Widget* Find(const char* name) const {
    return dialog_->findChild<Widget*>(QString::fromLatin1(name));
  }

  ParamTable table_;
  FormModel model_{&table_, kFields};
  testing::Told prompts_;
  std::unique_ptr<Dialog> dialog_;
};

TEST_F(FormDialog, ControlsHaveNumbersAndNames) {
  EXPECT_EQ(Find<QLineEdit>("1")->accessibleName(), QStringLiteral("Amount"));
  EXPECT_EQ(Find<QLineEdit>("2")->accessibleName(), QStringLiteral("Coils: Hx serial"));
  EXPECT_EQ(Find<QAbstractButton>("22")->accessibleName(), QStringLiteral("Function: TDIP"));
  EXPECT_TRUE(Find<QAbstractButton>("21")->isChecked());
  EXPECT_EQ(Find<QComboBox>("4")->currentText(), QStringLiteral("True North"));
  EXPECT_TRUE(Find<QAbstractButton>("5")->isChecked());
}

TEST_F(FormDialog, TypingIsLimitedStoredTextsAreNot) {
  auto* serial = Find<QLineEdit>("2");
  EXPECT_EQ(serial->text(), QStringLiteral("much too long"));
  EXPECT_NE(serial->accessibleDescription(), QString()) << "marked as outside its range";
  QTest::keyClicks(serial, "er");
  EXPECT_EQ(serial->text(), QStringLiteral("much too long"));
  QTest::keyClick(serial, Qt::Key_Backspace);
  EXPECT_EQ(serial->text(), QStringLiteral("much too lon"));
  serial->selectAll();
  QTest::keyClicks(serial, "123456789");
  EXPECT_EQ(serial->text(), QStringLiteral("12345678"));
  EXPECT_EQ(serial->accessibleDescription(), OwnDescription(serial));
}

TEST_F(FormDialog, OkRefusesFaultsAndWritesInOrder) {
  auto* amount = Find<QLineEdit>("1");
  amount->selectAll();
  QTest::keyClicks(amount, "9");
  dialog_->accept();
  EXPECT_EQ(prompts_.warning, "Orvane: Amount: Enter an integer between 0 and 4.");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(Int("L2NS"), 2) << "nothing is written";
  amount->selectAll();
  QTest::keyClicks(amount, "3");
  QTest::keyClick(Find<QComboBox>("4"), Qt::Key_Down);
  Find<QAbstractButton>("5")->click();
  dialog_->accept();
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Int("L2NS"), 3);
  EXPECT_EQ(Int("NREF"), 3);
  EXPECT_EQ(Int("COMBON"), 0);
}

TEST_F(FormDialog, WhateverSetsAWidgetSetsTheForm) {
  testing::SetTextAssistively(Find<QLineEdit>("1"), " 3 ");
  testing::SetTextAssistively(Find<QLineEdit>("2"), QStringLiteral("Z\u00fcrich"));
  Find<QComboBox>("4")->setCurrentIndex(1);
  testing::ToggleAssistively(Find<QAbstractButton>("5"));
  testing::ToggleAssistively(Find<QAbstractButton>("22"));
  EXPECT_EQ(dialog_->edited, (std::vector<int>{1, 2, 4, 5, 21}));
  dialog_->accept();
  EXPECT_EQ(Int("L2NS"), 3);
  std::array<char, 16> serial{};
  EXPECT_EQ(table_.GetParam("HXSN", StrPT, serial.data()), kOk);
  EXPECT_STREQ(serial.data(), "Z\xfcrich");
  EXPECT_EQ(Int("NREF"), 3);
  EXPECT_EQ(Int("COMBON"), 0);
  EXPECT_EQ(Int("TECH"), 1) << "the rule unchecks what was chosen";
}

TEST_F(FormDialog, WhatCannotBeStoredIsNotShown) {
  auto* serial = Find<QLineEdit>("2");
  testing::SetTextAssistively(serial, QStringLiteral("\u03a9"));
  EXPECT_EQ(serial->text(), QStringLiteral("much too long"));
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Latin-1"))) << "and why";
  testing::SetTextAssistively(Find<QLineEdit>("1"), "x");
  dialog_->accept();
  EXPECT_EQ(prompts_.warning, "Orvane: Amount: Enter an integer.");
  EXPECT_TRUE(dialog_->isVisible());
  model_.Enable(1, false);
  EXPECT_EQ(Find<QLineEdit>("1")->text(), "2") << "nobody could mend it";
  testing::SetTextAssistively(Find<QLineEdit>("1"), "4");
  EXPECT_EQ(Find<QLineEdit>("1")->text(), "2") << "disabled for assistive tools too";
  EXPECT_TRUE(dialog_->edited == std::vector<int>{1});
}

TEST_F(FormDialog, TabEntersAGroupAtItsCheckedButtonAndArrowsChoose) {
  auto* first = Find<QAbstractButton>("21");
  auto* second = Find<QAbstractButton>("22");
  model_.SetIndex(21, 1);
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  Find<QLineEdit>("2")->setFocus();
  QTest::keyClick(Find<QLineEdit>("2"), Qt::Key_Tab);
  EXPECT_TRUE(second->hasFocus());
  QTest::keyClick(second, Qt::Key_Tab);
  EXPECT_TRUE(Find<QComboBox>("4")->hasFocus()) << "one stop for the group";
  QTest::keyClick(Find<QComboBox>("4"), Qt::Key_Backtab);
  EXPECT_TRUE(second->hasFocus());
  QTest::keyClick(second, Qt::Key_Up);
  EXPECT_TRUE(first->hasFocus());
  EXPECT_EQ(dialog_->edited, std::vector<int>{21}) << "chosen, once";
}

TEST_F(FormDialog, ACautionStandsBelowItsFieldAndKeepsNothingBack) {
  model_.SetCautionRule([](FormModel* form) {
    form->SetCaution(1, form->Text(1) == "4" ? "as much as there is" : "");
  });
  auto* amount = Find<QLineEdit>("1");
  amount->selectAll();
  QTest::keyClicks(amount, "4");
  ASSERT_NE(Find<QLabel>("caution1"), nullptr);
  EXPECT_TRUE(Find<QLabel>("caution1")->isVisible());
  EXPECT_EQ(amount->accessibleDescription(), "as much as there is");
  EXPECT_EQ(amount->findChild<QWidget*>("fault"), nullptr);
  QTest::keyClicks(amount, "2");  // 42: what OK would refuse stands there instead, and in a frame
  EXPECT_EQ(Find<QLabel>("caution1")->text(), "Enter an integer between 0 and 4.");
  EXPECT_EQ(amount->accessibleDescription(), "Enter an integer between 0 and 4.");
  EXPECT_TRUE(amount->findChild<QWidget*>("fault")->isVisible());
  amount->selectAll();
  QTest::keyClicks(amount, "3");
  EXPECT_FALSE(Find<QLabel>("caution1")->isVisible());
  EXPECT_FALSE(amount->findChild<QWidget*>("fault")->isVisible());
  amount->selectAll();
  QTest::keyClicks(amount, "4");
  dialog_->accept();
  EXPECT_EQ(Int("L2NS"), 4);
  Dialog next(&model_, &prompts_);  // where it is there from the beginning
  next.show();
  EXPECT_GT(next.findChild<QLabel*>("caution1")->y(), next.findChild<QLineEdit*>("1")->y());
}

TEST_F(FormDialog, RulesShowInTheWidgetsAndCancelWritesNothing) {
  Find<QAbstractButton>("21")->click();
  EXPECT_EQ(dialog_->edited, std::vector<int>{21});
  EXPECT_FALSE(Find<QAbstractButton>("21")->isChecked()) << "a group may show nothing chosen";
  EXPECT_FALSE(Find<QAbstractButton>("22")->isEnabled());
  dialog_->reject();
  EXPECT_EQ(Int("TECH"), 1);
}

}  // namespace
}  // namespace orvane
