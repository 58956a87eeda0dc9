// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/file_type.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>

#include <shlobj.h>  // after the header that it needs
#endif

namespace orvane {
namespace {

// A key's own value has this name.
constexpr QLatin1String kExtension(".tbl/Default");
constexpr QLatin1String kCommand("Orvane.Document/shell/open/command/Default");
constexpr QLatin1String kDocument("Orvane.Document");

// Whether the program that opens the documents is where the command says: its path is between
// the first quotation marks.
bool HasProgram(const QSettings& classes) {
  const QString path = classes.value(kCommand).toString().section(QLatin1Char('"'), 1, 1);
  return QFileInfo(path).isFile();
}

}  // namespace

bool DescribeFileType(QSettings* users_classes, const QSettings& machines_classes,
                      const QString& program) {
  const auto is_anothers = [](const QSettings& classes) {
    const QString owner = classes.value(kExtension).toString();
    return !owner.isEmpty() && owner != kDocument;
  };
  if (is_anothers(*users_classes) || is_anothers(machines_classes) || HasProgram(*users_classes)) {
    return false;
  }
  if (HasProgram(machines_classes)) {
    // What a copy that is gone left for the user would hide the installed program.
    const bool was_copy = users_classes->contains(kCommand);
    if (was_copy) {
      users_classes->remove(kDocument);
      users_classes->remove(kExtension);
    }
    return was_copy;
  }
  const QString path = QDir::toNativeSeparators(program);
  users_classes->setValue(kExtension, QString(kDocument));
  users_classes->setValue(QStringLiteral("Orvane.Document/Default"),
                          QStringLiteral("Tbl Document"));
  users_classes->setValue(QStringLiteral("Orvane.Document/DefaultIcon/Default"),
                          QStringLiteral("\"%1\",0").arg(path));
  users_classes->setValue(kCommand,
                          QStringLiteral("\"%1\" \"%2\"").arg(path, QStringLiteral("%1")));
  users_classes->sync();
  return users_classes->status() == QSettings::NoError;
}

void RegisterFileType() {
#ifdef Q_OS_WIN
  QSettings user(QStringLiteral("HKEY_CURRENT_USER\\Software\\Classes"), QSettings::NativeFormat);
  const QSettings machine(QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\Classes"),
                          QSettings::NativeFormat);
  if (DescribeFileType(&user, machine, QCoreApplication::applicationFilePath())) {
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
  }
#endif
}

}  // namespace orvane
