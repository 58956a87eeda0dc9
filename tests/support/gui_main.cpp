// SPDX-License-Identifier: GPL-3.0-or-later
// Windows without a display, settings of their own. ORVANE_EXPECT_COMMA=1 makes sure that the run
// is under a locale with a decimal comma.
#include <gtest/gtest.h>

#include <QLocale>
#include <QTemporaryDir>
#include <cstdio>

#include "app/orvane_app.h"
#include "support/qt_warnings.h"

namespace {

// What Wine lacks and Windows has: icons of messages, frames that follow the screen's scale; and
// what Qt says of Windows itself.
bool IsOfWine(const QString& message) {
#ifdef Q_OS_WIN
  return message ==
             QLatin1String(
                 "QPixmap::fromWinHICON(), failed to GetIconInfo() (Invalid cursor handle.)") ||
         (message.startsWith(QLatin1String("EnableNonClientDpiScaling() failed")) &&
          message.endsWith(QLatin1String("(Call not implemented.)"))) ||
         // A window that grows while it is shown, because its texts need more lines.
         message.startsWith(QLatin1String("setGeometry: Unable to set geometry"));
#else
  static_cast<void>(message);
  return false;
#endif
}

// What Qt warns of is a fault of ours that users would find on their terminals; but for what the
// platform without a display cannot do.
void FailOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  const bool is_platforms = message.contains(QLatin1String("plugin does not support")) ||
                            message.contains(QLatin1String("XDG_RUNTIME_DIR")) ||
                            message == QLatin1String("Unimplemented code.") || IsOfWine(message);
  const bool is_expected = is_platforms || orvane::testing::ExpectedQtWarning::IsExpected(message);
  if (type != QtDebugMsg && type != QtInfoMsg && !is_expected) {
    ADD_FAILURE() << "Qt warns: " << message.toStdString();
  }
}

}  // namespace

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
  qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
