// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_QT_PATH_H_
#define ORVANE_UI_QT_PATH_H_

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <filesystem>

namespace orvane {

// Neither ever throws, whatever the name.
#ifdef Q_OS_WIN
inline std::filesystem::path PathFromText(const QString& text) { return text.toStdWString(); }
inline QString TextFromPath(const std::filesystem::path& path) {
  return QString::fromStdWString(path.native());
}
#else
inline std::filesystem::path PathFromText(const QString& text) {
  return QFile::encodeName(text).toStdString();
}
/// Bytes that are no text become a replacement character.
inline QString TextFromPath(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.native()));
}
#endif

/// Why a file cannot be named here although it may exist: its name has bytes that are no text.
/// Empty for all others.
inline QString UnknownName(const QString& path) {
  return path.contains(QChar(QChar::ReplacementCharacter)) && !QFileInfo::exists(path)
             ? path +
                   QStringLiteral(": the name has bytes that are no text; please rename the file")
             : QString();
}

}  // namespace orvane

#endif  // ORVANE_UI_QT_PATH_H_
