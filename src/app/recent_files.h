// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_RECENT_FILES_H_
#define ORVANE_APP_RECENT_FILES_H_

#include <QStringList>

namespace orvane {

/// The last files opened or saved, newest first, kept in the user's settings.
class RecentFiles {
 public:
  static constexpr int kMost = 4;

  RecentFiles();

  const QStringList& Paths() const { return paths_; }
  void Add(const QString& path);
  void Remove(const QString& path);

 private:
  void Store() const;

  QStringList paths_;
};

}  // namespace orvane

#endif  // ORVANE_APP_RECENT_FILES_H_
