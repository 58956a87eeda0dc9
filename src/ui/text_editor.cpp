// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/text_editor.h"

#include <QDir>
#include <QProcess>
#include <QSettings>

namespace orvane {

TextEditor::TextEditor()
    : start_([](const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
      }) {}

QString TextEditor::Program() {
  QString chosen = QSettings().value(QStringLiteral("Text Editor/Program")).toString().trimmed();
  if (!chosen.isEmpty()) {
    return chosen;
  }
#ifdef Q_OS_WIN
  return qEnvironmentVariable("SystemRoot") + QStringLiteral("\\notepad.exe");
#else
  return QStringLiteral("xdg-open");
#endif
}

Result<> TextEditor::Show(const QString& path) const {
  const QString program = Program();
  return start_(program, {QDir::toNativeSeparators(path)})
             ? Result<>()
             : Failure("The text editor " + program.toStdString() + " could not be started.");
}

}  // namespace orvane
