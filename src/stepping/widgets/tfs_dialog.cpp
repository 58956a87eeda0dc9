// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/tfs_dialog.h"

#include <QFileInfo>
#include <QSettings>

#include "ui/file_dialogs.h"

namespace orvane {

QString AskForSchedule(QWidget* parent, QFileDialog::AcceptMode mode, const QString& title,
                       const QString& folder) {
  const QString key = QStringLiteral("Folders/Schedules");
  QSettings settings;
  const QString last = settings.value(key).toString();
  CFileDialog dialog(title, "Schedule File (*.TFS)|*.TFS|All Files (*.*)|*.*||",
                     QFileInfo(last).isDir() ? last : folder, parent);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                     : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QStringLiteral("TFS"));
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  settings.setValue(key, dialog.directory().absolutePath());
  return dialog.selectedFiles().value(0);
}

}  // namespace orvane
