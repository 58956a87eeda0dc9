// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_SETTINGS_NAMES_H_
#define ORVANE_UI_SETTINGS_NAMES_H_

#include <QSettings>
#include <span>
#include <string>

namespace orvane {

/// Replaces names by those of the user's settings, "GROUP/Name1" and so on, in UTF-8; one that is
/// empty there stays.
inline void ReadNames(const char* group, std::span<std::string> names) {
  const QSettings settings;
  for (std::size_t i = 0; i < names.size(); ++i) {
    // A comma makes the value a list.
    const QString name =
        settings.value(QStringLiteral("%1/Name%2").arg(QLatin1String(group)).arg(i + 1))
            .toStringList()
            .join(QStringLiteral(", "))
            .trimmed();
    if (!name.isEmpty()) {
      names[i] = name.toStdString();
    }
  }
}

}  // namespace orvane

#endif  // ORVANE_UI_SETTINGS_NAMES_H_
