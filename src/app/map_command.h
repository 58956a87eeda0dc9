// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_MAP_COMMAND_H_
#define ORVANE_APP_MAP_COMMAND_H_

#include <QAction>
#include <QMainWindow>

#include "app/orvane_doc.h"

namespace orvane {

/// Gives the window the dock "Map", hidden at first, which follows the document. `command` shows
/// and hides it. All must outlive the window.
void AddMapDock(COrvaneDoc* doc, QAction* command, QMainWindow* window);

}  // namespace orvane

#endif  // ORVANE_APP_MAP_COMMAND_H_
