// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/tfs_dialog.h"

#include "ui/file_dialogs.h"

namespace orvane {

QString AskForSchedule(QWidget* parent, QFileDialog::AcceptMode mode, const QString& title,
                       const QString& folder, const QString& name) {
  CFileDialog dialog(title, "Schedule File (*.TFS)|*.TFS|All Files (*.*)|*.*||", folder, parent);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                     : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QStringLiteral("TFS"));
  if (!name.isEmpty()) {
    dialog.selectFile(name);
  }
  dialog.ExecRemembering(QStringLiteral("Folders/Schedules"));
  return dialog.Chosen();
}

}  // namespace orvane
