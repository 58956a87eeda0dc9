// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_QT_PATH_H_
#define ORVANE_UI_QT_PATH_H_

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <filesystem>
#include <system_error>

namespace orvane {

// Neither ever throws, whatever the name.
#ifdef Q_OS_WIN
inline std::filesystem::path PathFromText(const QString& text) {
  // Qt writes '/'; what is shown and written, and the rules for names, are of the system's '\'.
  return QDir::toNativeSeparators(text).toStdWString();
}
inline QString TextFromPath(const std::filesystem::path& path) {
  return QString::fromStdWString(path.native());
}
#else
inline std::filesystem::path PathFromText(const QString& text) {
  return QFile::encodeName(text).toStdString();
}
/// Bytes that are not text become a replacement character.
inline QString TextFromPath(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.native()));
}
#endif

/// Whether the bytes of a path may not be text: a file exists whose path looks the same.
/// On Windows names are UTF-16, in which half a character may be alone.
inline bool LooksLikeNoText(const QString& path) {
  if (!path.isValidUtf16()) {
    return true;
  }
  if (!path.contains(QChar(QChar::ReplacementCharacter))) {
    return false;
  }
  std::filesystem::path folder;
  for (const auto& part : PathFromText(path)) {
    std::error_code error;
    const std::filesystem::path place = folder.empty() ? std::filesystem::path(".") : folder;
    for (const auto& entry : std::filesystem::directory_iterator(place, error)) {
      const auto name = entry.path().filename();
      if (name != part && TextFromPath(name) == TextFromPath(part)) {
        return true;
      }
    }
    folder /= part;
  }
  return !QFileInfo::exists(path);
}

/// Why a file cannot be named here: its name has bytes that are not text, or another one's has that
/// looks alike. Empty for all others.
inline QString UnknownName(const QString& path) {
  return LooksLikeNoText(path)
             ? path + QStringLiteral(
                          ": the name contains bytes that are not text; please rename the file")
             : QString();
}

}  // namespace orvane

#endif  // ORVANE_UI_QT_PATH_H_
