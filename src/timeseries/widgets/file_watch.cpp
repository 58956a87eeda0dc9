// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/file_watch.h"

#include <chrono>

#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr std::chrono::seconds kEvery{2};

}  // namespace

FileFate FateOf(const TsFile& file) {
  const auto open = file.Bytes().Size();
  RandomFile now;
  const auto named = now.Open(file.Path()) ? now.Size() : Failure("gone");
  if (!open || !named) {
    return FileFate::kGone;
  }
  if (*open != *named) {
    return FileFate::kReplaced;
  }
  return *open < file.End()   ? FileFate::kShorter
         : *open > file.End() ? FileFate::kGrown
                              : FileFate::kSame;
}

FileWatch::FileWatch(QObject* parent) : QObject(parent) {
  timer_.setInterval(kEvery);
  connect(&timer_, &QTimer::timeout, this, &FileWatch::Look);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &FileWatch::Look);
}

void FileWatch::Follow(const TsFile* file) {
  file_ = file;
  fate_ = FileFate::kSame;
  if (const QStringList before = watcher_.files(); !before.isEmpty()) {
    watcher_.removePaths(before);
  }
  if (file_ != nullptr) {
    watcher_.addPath(TextFromPath(file_->Path()));
    timer_.start();
  } else {
    timer_.stop();
  }
}

void FileWatch::Look() {
  if (file_ == nullptr) {
    return;
  }
  const FileFate fate = FateOf(*file_);
  if (fate != fate_ || fate == FileFate::kGrown) {
    fate_ = fate;
    emit changed(fate);
  }
}

}  // namespace orvane
