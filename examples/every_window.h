// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXAMPLES_EVERY_WINDOW_H_
#define ORVANE_EXAMPLES_EVERY_WINDOW_H_

#include <QString>
#include <QWidget>
#include <functional>

#include "app/orvane_app.h"

namespace orvane::examples {

/// What is done with a window that stands as a user would see it; its name is unique. False where
/// that failed.
using Visit = std::function<bool(QWidget* window, const char* name)>;

/// Brings up the main window with all that it shows, and every dialog, one after the other.
/// `survey` is the folder of the example survey. False where a visit was.
bool VisitEveryWindow(COrvaneApp* app, const QString& survey, const Visit& visit);

}  // namespace orvane::examples

#endif  // ORVANE_EXAMPLES_EVERY_WINDOW_H_
