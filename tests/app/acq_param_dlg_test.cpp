// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/acq_param_dlg.h"

#include <QScrollBar>

#include "support/gui.h"
#include "support/told.h"
#include "ui/content_scroll_area.h"

namespace orvane {
namespace {

class AcqParamDlg : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(table_.BuildParamIndex(), kOk);
    form_.Open();
    dialog_ = std::make_unique<CAcqParamDlg>(&form_, &warnings_);
    dialog_->show();
  }
  template <typename Widget = QAbstractButton>
  Widget* Find(int number) const {
    return dialog_->findChild<Widget*>(QString::number(number));
  }
  QString Note(const char* name) const {
    return dialog_->findChild<QLabel*>(QLatin1String(name))->text();
  }
  void Type(int number, const char* text) const {
    auto* line = Find<QLineEdit>(number);
    line->selectAll();
    QTest::keyClicks(line, QString::fromLatin1(text));
  }
  std::int32_t Int(ParamKey key) const {
    std::int32_t number = -99;
    EXPECT_EQ(table_.GetParam(key, IntPT, &number), kOk);
    return number;
  }

  testing::FixedClock now_;
  ParamTable table_;
  AcqForm form_{&table_, &now_};
  testing::Told warnings_;
  std::unique_ptr<CAcqParamDlg> dialog_;
};

TEST_F(AcqParamDlg, ShowsItsChoices) {
  EXPECT_EQ(Find(acq::kEGainOf16)->text(), QStringLiteral("x 16 "));
  EXPECT_EQ(Find<QComboBox>(acq::kZone)->itemText(14),
            QStringLiteral("(GMT+02) Athens, Istambal, Cario"));
  EXPECT_EQ(Find<QComboBox>(acq::kZone)->count(), 26);
}

TEST_F(AcqParamDlg, TabGoesColumnByColumn) {
  dialog_->SetSiteSetup([] {});
  Find(acq::kMtAmtFunction)->click();
  Find(acq::kMtAmtFunction)->setFocus();
  std::string order;
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  for (int i = 0; i < 31; ++i) {
    order += dialog_->focusWidget()->objectName().toStdString() + " ";
    QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order,  // groups at their checked button
            "1059 1131 1049 1090 1091 1092 1044 1254 1035 1063 1047 1070 1037 1042 1046 1202 1103 "
            "1094 1095 1096 1097 1273 1098 1099 1101 1105 1262 1274 1265 1263 1 ");
}

// Each function sets others anew: who only passes by with the arrow keys must not lose anything.
TEST_F(AcqParamDlg, ArrowKeysPassFunctionsWithoutChoosing) {
  const auto functions =
      Find<QRadioButton>(acq::kMtAmtFunction)->parentWidget()->findChildren<QRadioButton*>();
  ASSERT_EQ(functions.size(), 6);
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  functions[0]->click();
  functions[0]->setFocus();
  for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down}) {
    QTest::keyClick(dialog_->focusWidget(), key);
  }
  EXPECT_TRUE(functions[0]->isChecked());
  EXPECT_EQ(dialog_->focusWidget(), functions[5]);
  QTest::keyClick(dialog_->focusWidget(), Qt::Key_Space);
  EXPECT_TRUE(functions[5]->isChecked());
  // FDEM leaves the couplings open; there, and everywhere else, arrow keys choose.
  Find(acq::kECoupling)->setFocus();
  QTest::keyClick(dialog_->focusWidget(), Qt::Key_Right);
  EXPECT_TRUE(Find(acq::kEAcCoupling)->isChecked() && Find(acq::kEAcCoupling)->hasFocus());
  QTest::keyClick(dialog_->focusWidget(), Qt::Key_Left);
  EXPECT_TRUE(Find(acq::kECoupling)->isChecked() && Find(acq::kECoupling)->hasFocus());
}

TEST_F(AcqParamDlg, MorningOfAnMtCrew) {
  EXPECT_FALSE(Find(acq::kSiteSetup)->isEnabled());
  int sites = 0;
  dialog_->SetSiteSetup([&sites] { ++sites; });
  Find(acq::kSiteSetup)->click();
  EXPECT_EQ(sites, 1);
  Find(acq::kFdemFunction)->click();
  EXPECT_EQ(Note("coupling-note"), QStringLiteral("E/H coupling not set"));
  EXPECT_FALSE(Find(acq::kHCoupling)->isChecked() || Find(acq::kHAcCoupling)->isChecked());
  EXPECT_FALSE(Find(acq::kCalcSpace)->isEnabled() || Find(acq::kSameTimes)->isEnabled() ||
               Find(acq::kDamtSampling)->isEnabled());
  Find(acq::kMtAmtFunction)->click();
  Find(acq::kECoupling)->click();
  EXPECT_EQ(Note("coupling-note"), QStringLiteral("H coupling not set"));
  Type(acq::kStart, "2026/11/21 00:00:00");
  Type(acq::kEnd, "2027/11/21 00:00:00");
  Find(acq::kSameTimes)->click();
  EXPECT_EQ(Find<QLineEdit>(acq::kHighEnd)->text(), QStringLiteral("2027/11/21 00:00:00"));
  Type(acq::kChannels, "21");
  Find(acq::kCalcSpace)->click();
  EXPECT_EQ(warnings_.warning, "Orvane: Channels: Enter an integer between 1 and 20.");
  EXPECT_EQ(form_.EarlyChanges(),
            (std::vector<std::string>{"CHHX", "CHHY", "CHHZ", "GFC1", "GFC2", "GFC3", "GFC4",
                                      "GFC5", "GFC6", "GFC7", "GFC8"}))
      << "nothing of the schedule";
  Type(acq::kChannels, "20");
  Find(acq::kDamtSampling)->click();
  Find(acq::kCalcSpace)->click();
  EXPECT_TRUE(Note("space-note").startsWith(QStringLiteral("(> 4096 Mb: ")));
  dialog_->accept();
  EXPECT_EQ(Int("TECH"), 5);
  EXPECT_EQ(Int("ACDC"), 0);
  EXPECT_EQ(Int("ACDH"), -1);
  EXPECT_EQ(Int("MTSR"), 2);
}

TEST_F(AcqParamDlg, FitsAFieldLaptop) {
  EXPECT_LE(dialog_->sizeHint().width(), 1340);
  EXPECT_LE(dialog_->sizeHint().height(), 700);
  dialog_->resize(640, 350);
  QTest::qWait(0);
  Find(acq::kMtAmtFunction)->click();
  Type(acq::kSlotLength, "0");
  dialog_->accept();
  EXPECT_EQ(warnings_.warning,
            "Orvane: Time slot length (s): Enter an integer between 1 and 3600.");
  EXPECT_FALSE(Find<QWidget>(acq::kSlotLength)->visibleRegion().isEmpty()) << "scrolled to";
}

}  // namespace
}  // namespace orvane
