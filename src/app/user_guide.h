// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_USER_GUIDE_H_
#define ORVANE_APP_USER_GUIDE_H_

#include <QDesktopServices>
#include <QString>
#include <QUrl>
#include <functional>

#include "forms/prompts.h"

namespace orvane {

/// The guide that belongs to a program in `program_folder`: the page that the package installs,
/// else the Markdown of the source tree; empty where there is neither. Looked for beside the
/// program, so that no path of the machine that built it is in it.
QString FindUserGuide(const QString& program_folder);

/// Opens `guide` by `open`, usually in the desktop's own program for it; says what is the matter
/// where that fails.
void ShowUserGuide(const QString& guide, Prompts* prompts,
                   const std::function<bool(const QUrl&)>& open = QDesktopServices::openUrl);

}  // namespace orvane

#endif  // ORVANE_APP_USER_GUIDE_H_
