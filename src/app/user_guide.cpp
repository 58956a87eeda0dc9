// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/user_guide.h"

#include <QFileInfo>

namespace orvane {

QString FindUserGuide(const QString& program_folder) {
  // As installed, as a folder of its own on Windows, and a link that only build folders have.
  for (const QString& name :
       {QStringLiteral("/../share/orvane/guide.html"), QStringLiteral("/guide.html"),
        QStringLiteral("/../share/orvane/guide/README.md")}) {
    // Without links: the guide's own links are relative to where it really is.
    QString path = QFileInfo(program_folder + name).canonicalFilePath();
    if (!path.isEmpty()) {
      return path;
    }
  }
  return {};
}

void ShowUserGuide(const QString& guide, Prompts* prompts,
                   const std::function<bool(const QUrl&)>& open) {
  if (guide.isEmpty()) {
    prompts->ShowWarning("Orvane", "The user guide is not installed.");
  } else if (!open(QUrl::fromLocalFile(guide))) {
    prompts->ShowWarning("Orvane",
                         "No program was found to show the user guide: " + guide.toStdString());
  }
}

}  // namespace orvane
