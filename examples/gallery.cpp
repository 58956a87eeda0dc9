// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the main window and every dialog into PNG files, in themes light, dark and sunlight; on
// Windows in that of the system.
//
//   orvane-gallery FOLDER TABLE SURVEY
//
// TABLE is any parameter table, SURVEY the folder of the example survey, whose waveforms and
// calibrations are shown.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <cstdio>
#include <utility>
#include <vector>

#include "every_window.h"
#include "modal_watch.h"
#include "ui/themes.h"

using orvane::Theme;

namespace {

// Shows a crew's folder instead of this machine's, so that the pictures are the same everywhere.
void ReplaceFolder(QWidget* window, const QString& folder) {
  const QString shown = QStringLiteral("/home/crew/survey");
  const auto replace = [&](auto* widget) {
    if (QString text = widget->text(); text.contains(folder)) {
      widget->setText(text.replace(folder, shown));
    }
  };
  for (auto* label : window->findChildren<QLabel*>()) {
    replace(label);
  }
  for (auto* line : window->findChildren<QLineEdit*>()) {
    replace(line);
    line->setPlaceholderText(line->placeholderText().replace(folder, shown));
    line->deselect();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: orvane-gallery FOLDER TABLE SURVEY\n", stderr);
    return 2;
  }
  QTemporaryDir settings;  // the pictures must not depend on the user's
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  qputenv("XDG_DATA_HOME", settings.path().toLocal8Bit());
  orvane::COrvaneApp app(argc, argv);
#ifdef Q_OS_WIN
  // There the pictures show what its users see: the system's own style, which has no dark one.
  QApplication::setApplicationName(QStringLiteral("Orvane gallery"));
  const std::vector<std::pair<Theme, const char*>> themes = {{Theme::kSystem, "light"}};
#else
  QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));  // nor on the machine's
  const std::vector<std::pair<Theme, const char*>> themes = {
      {Theme::kLight, "light"}, {Theme::kDark, "dark"}, {Theme::kSunlight, "sunlight"}};
#endif
  orvane::examples::ModalWatch watch([&settings] { settings.remove(); });
  const QString folder = QApplication::arguments().value(1);
  const QString table = QApplication::arguments().value(2);
  const QString survey = QDir::cleanPath(QDir(QApplication::arguments().value(3)).absolutePath());
  QDir().mkpath(folder);
  app.InitInstance(table);
  bool done = true;
  for (const auto& [colors, name_of_theme] : themes) {
    orvane::ApplyTheme(colors);
    const QString theme = QLatin1String(name_of_theme);
    const auto draw = [&](QWidget* window, const char* name) {
      watch.Expect(window);
      window->show();
      QApplication::processEvents();  // a new theme writes some texts anew
      ReplaceFolder(window, survey);
      ReplaceFolder(window, QFileInfo(table).absolutePath());
      QApplication::processEvents();
      const QString path = QStringLiteral("%1/%2-%3.png").arg(folder, QLatin1String(name), theme);
      const bool is_saved = window->grab().save(path);
      std::printf("%s%s\n", path.toLocal8Bit().constData(), is_saved ? "" : ": cannot be written");
      return is_saved;
    };
    done = orvane::examples::VisitEveryWindow(&app, survey, draw) && done;
  }
  return done ? 0 : 1;
}
