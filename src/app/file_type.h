// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_FILE_TYPE_H_
#define ORVANE_APP_FILE_TYPE_H_

#include <QSettings>
#include <QString>

namespace orvane {

/// Writes into the user's classes of Windows' registry that ".tbl" files are documents of
/// `program`. Leaves all as it is, and says so, where the user or the machine has given the type
/// to another program, or to this one in a place where it still is.
bool DescribeFileType(QSettings* users_classes, const QSettings& machines_classes,
                      const QString& program);

/// The same for the running program and this machine's registry, at each start: a copy that was
/// never installed, or has moved, is found all the same. Does nothing elsewhere than on Windows.
void RegisterFileType();

}  // namespace orvane

#endif  // ORVANE_APP_FILE_TYPE_H_
