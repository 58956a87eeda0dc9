// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_FILE_WATCH_H_
#define ORVANE_TIMESERIES_WIDGETS_FILE_WATCH_H_

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include "timeseries/ts_file.h"

namespace orvane {

/// What became of a file since its records were found.
enum class FileFate { kSame, kGrown, kShorter, kReplaced, kGone };
/// By the file that is open and the one that has its name now.
FileFate FateOf(const TsFile& file);

/// Looks at a file while it is shown: as soon as the system tells of a change, and every few
/// seconds where it does not, as on network drives.
class FileWatch : public QObject {
  Q_OBJECT

 public:
  explicit FileWatch(QObject* parent);

  /// From now on at this file, which must stay open; null: at none.
  void Follow(const TsFile* file);
  /// As it was seen last.
  FileFate Fate() const { return fate_; }
  /// Looks now.
  void Look();

 signals:
  /// Its fate is another than before, or it has grown again.
  void changed(orvane::FileFate fate);

 private:
  const TsFile* file_ = nullptr;
  FileFate fate_ = FileFate::kSame;
  QFileSystemWatcher watcher_;
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_FILE_WATCH_H_
