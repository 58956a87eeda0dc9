// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folder_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>

#include "ui/qt_path.h"

namespace orvane {
namespace {

QString NearestFolder(const QString& start) {
  QString path = QDir::cleanPath(QDir().absoluteFilePath(start));
  while (!QFileInfo(path).isDir() && !QFileInfo(path).isRoot()) {
    path = QFileInfo(path).path();
  }
  return path;
}

}  // namespace

void NameFileLists(QFileDialog* dialog) {
  for (const auto& [label, list] :
       {std::pair("lookInLabel", "lookInCombo"), {"fileTypeLabel", "fileTypeCombo"}}) {
    if (auto* text = dialog->findChild<QLabel*>(QLatin1String(label))) {
      text->setBuddy(dialog->findChild<QWidget*>(QLatin1String(list)));
    }
  }
}

CFolderDialog::CFolderDialog(const QString& prompt, const QString& start, QWidget* parent)
    : QFileDialog(parent, prompt) {
#ifndef Q_OS_WIN
  setOption(DontUseNativeDialog);
#endif
  setFileMode(Directory);
  setOption(ShowDirsOnly);
  setDirectory(NearestFolder(start));
  setAccessibleDescription(prompt);
  NameFileLists(this);
  // The system's own dialog has no layout and shows the prompt as its title alone.
  if (layout()) {
    auto* label = new QLabel(prompt, this);
    label->setObjectName(QStringLiteral("prompt"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    const QMargins margins = layout()->contentsMargins();
    label->setContentsMargins(margins.left(), margins.top(), margins.right(), 0);
    layout()->setMenuBar(label);  // above what is in the layout already
  }
}

QString CFolderDialog::Folder() const {
  if (result() != Accepted) {
    return {};
  }
  const QString folder = selectedFiles().value(0);
  return folder.isEmpty()
             ? folder
             : QDir::toNativeSeparators(QDir::cleanPath(QDir().absoluteFilePath(folder)));
}

void CFolderDialog::accept() {
  if (const QString fault = UnknownName(selectedFiles().value(0)); !fault.isEmpty()) {
    QMessageBox::warning(this, windowTitle(), fault);
    return;
  }
  QFileDialog::accept();
}

QString CFolderDialog::AskForFolder(QWidget* parent, const QString& prompt, const QString& start) {
  CFolderDialog dialog(prompt, start, parent);
  dialog.exec();
  return dialog.Folder();
}

}  // namespace orvane
