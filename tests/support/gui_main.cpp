// SPDX-License-Identifier: GPL-3.0-or-later
// Windows without a display, settings of their own. ORVANE_EXPECT_COMMA=1 makes sure that the run
// is under a locale with a decimal comma.
#include <gtest/gtest.h>

#include <QLocale>
#include <QTemporaryDir>
#include <cstdio>

#include "app/orvane_app.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  qputenv("XDG_DATA_HOME", settings.path().toLocal8Bit());
  orvane::COrvaneApp app(argc, argv);
#ifdef Q_OS_WIN
  // The settings are in the registry, whatever the environment says.
  QApplication::setApplicationName(QStringLiteral("Orvane tests"));
  // The tests see into Qt's own dialogs only.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  if (QApplication::platformName() == QLatin1String("offscreen")) {
    QApplication::setFont(
        QFont(QStringLiteral("Liberation Sans"), 9));  // it knows none of Windows'
  }
#endif
  if (qEnvironmentVariableIsSet("ORVANE_EXPECT_COMMA") &&
      QLocale::system().decimalPoint() != QLatin1String(",")) {
    std::fputs("this run needs a locale with a decimal comma\n", stderr);
    return 1;
  }
  if (qEnvironmentVariableIsSet("ORVANE_EXPECT_LOCALE") &&
      QLocale::system().zeroDigit() == QLatin1String("0")) {
    std::fputs("this run needs a locale with digits of its own\n", stderr);
    return 1;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
