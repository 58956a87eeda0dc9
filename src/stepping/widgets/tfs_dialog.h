// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_WIDGETS_TFS_DIALOG_H_
#define ORVANE_STEPPING_WIDGETS_TFS_DIALOG_H_

#include <QFileDialog>

namespace orvane {

/// The file dialog for schedule files. It opens in the folder used last, or in `folder` where there
/// is none (any more), with `name` proposed. A name to be written gets ".TFS" where it has no
/// extension. Empty: cancelled.
QString AskForSchedule(QWidget* parent, QFileDialog::AcceptMode mode, const QString& title,
                       const QString& folder, const QString& name = {});

}  // namespace orvane

#endif  // ORVANE_STEPPING_WIDGETS_TFS_DIALOG_H_
