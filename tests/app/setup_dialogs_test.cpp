// SPDX-License-Identifier: GPL-3.0-or-later

#include <QToolButton>

#include "app/qt_prompts.h"
#include "editors/widgets/coil_dlg.h"
#include "editors/widgets/current_sensor_dlg.h"
#include "editors/widgets/ftp_dlg.h"
#include "editors/widgets/gsm_dlg.h"
#include "editors/widgets/radio_dlg.h"
#include "support/gui.h"
#include "support/table_help.h"

namespace orvane {
namespace {

template <typename Widget>
Widget* Find(QDialog& dialog, const char* number) {
  return dialog.findChild<Widget*>(QString::fromLatin1(number));
}

TEST(SetupDialogs, TheCurrentSensorNeedsATypeAndASerialNumber) {
  ParamTable table = testing::NewTable();
  testing::Set(&table, "CSSN", "");
  QtPrompts prompts;
  CurrentSensorForm form(&table);
  form.Open();
  CCurrentSensorDlg dialog(&form, &prompts, nullptr);
  dialog.show();
  auto* missing = Find<QLabel>(dialog, "missing");
  Find<QRadioButton>(dialog, "1022")->click();
  EXPECT_EQ(Find<QRadioButton>(dialog, "1046")->text(), "x0.25 ( 0 - 2000A )");
  EXPECT_EQ(Find<QLineEdit>(dialog, "1016")->text(), "20");
  QTest::mouseClick(Find<QPushButton>(dialog, "1"), Qt::LeftButton);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(missing->text(), "OK needs a serial number.");
  QTest::keyClicks(Find<QLineEdit>(dialog, "1012"), QStringLiteral("123456789"));
  EXPECT_EQ(missing->text(), "");
  QTest::mouseClick(Find<QPushButton>(dialog, "1"), Qt::LeftButton);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(testing::Get(table, "CSSN"), "12345678");
}

TEST(SetupDialogs, PasswordsShowOnDemandAndTextsAreCounted) {
  ParamTable table = testing::NewTable();
  QtPrompts prompts;
  PlainForm form(&table, GsmFields());
  form.Open();
  CGsmDlg dialog(&form, &prompts, nullptr);
  dialog.show();
  auto* password = Find<QLineEdit>(dialog, "1241");
  EXPECT_EQ(password->echoMode(), QLineEdit::Password);
  Find<QToolButton>(dialog, "show1241")->click();
  EXPECT_EQ(password->echoMode(), QLineEdit::Normal);
  auto* name = Find<QLineEdit>(dialog, "1242");
  name->clear();
  QTest::keyClicks(name, QString(330, QLatin1Char('a')));
  EXPECT_EQ(name->text().size(), 320);
  EXPECT_EQ(Find<QLabel>(dialog, "count1242")->text(), "320 of 63, will be cut");
}

}  // namespace
}  // namespace orvane
