// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_QT_PATH_H_
#define ORVANE_UI_QT_PATH_H_

#include <QFileInfo>
#include <QString>
#include <filesystem>

namespace orvane {

inline std::filesystem::path PathFromText(const QString& text) {
  return QFileInfo(text).filesystemFilePath();
}

inline QString TextFromPath(const std::filesystem::path& path) {
  return QString::fromStdU16String(path.u16string());
}

}  // namespace orvane

#endif  // ORVANE_UI_QT_PATH_H_
