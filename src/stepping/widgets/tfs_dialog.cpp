// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/tfs_dialog.h"

#include <QFileInfo>
#include <QSettings>

namespace orvane {
namespace {

const QString kLastFolder = QStringLiteral("Schedules/Folder");

QStringList Ask(QFileDialog* dialog, const QString& folder) {
#ifndef Q_OS_WIN
  dialog->setOption(QFileDialog::DontUseNativeDialog);  // it matches "*.TFS" in any case
#endif
  dialog->setNameFilters(
      {QStringLiteral("Schedule File (*.TFS)"), QStringLiteral("All Files (*)")});
  dialog->setDefaultSuffix(QStringLiteral("TFS"));
  QSettings settings;
  const QString last = settings.value(kLastFolder).toString();
  dialog->setDirectory(!last.isEmpty() && QFileInfo(last).isDir() ? last : folder);
  if (dialog->exec() != QDialog::Accepted) {
    return {};
  }
  settings.setValue(kLastFolder, dialog->directory().absolutePath());
  return dialog->selectedFiles();
}

}  // namespace

QString AskForSchedule(QWidget* parent, QFileDialog::AcceptMode mode, const QString& title,
                       const QString& folder) {
  QFileDialog dialog(parent, title);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                     : QFileDialog::AnyFile);
  return Ask(&dialog, folder).value(0);
}

QStringList AskForSchedules(QWidget* parent, const QString& title, const QString& folder) {
  QFileDialog dialog(parent, title);
  dialog.setFileMode(QFileDialog::ExistingFiles);
  return Ask(&dialog, folder);
}

}  // namespace orvane
