// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace orvane {
namespace {

QString SettingName(int index) { return QStringLiteral("Recent File List/File%1").arg(index + 1); }

QString FullPath(const QString& path) {
  return QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

}  // namespace

RecentFiles::RecentFiles() {
  const QSettings settings;
  for (int i = 0; i < kMost; ++i) {
    const QString path = settings.value(SettingName(i)).toString();
    if (!path.isEmpty()) {
      paths_.append(path);
    }
  }
}

void RecentFiles::Add(const QString& path) {
  const QString full = FullPath(path);
  paths_.removeAll(full);
  paths_.prepend(full);
  paths_ = paths_.mid(0, kMost);
  Store();
}

void RecentFiles::Remove(const QString& path) {
  paths_.removeAll(FullPath(path));
  Store();
}

void RecentFiles::Store() const {
  QSettings settings;
  for (int i = 0; i < kMost; ++i) {
    if (i < paths_.size()) {
      settings.setValue(SettingName(i), paths_[i]);
    } else {
      settings.remove(SettingName(i));
    }
  }
}

}  // namespace orvane
