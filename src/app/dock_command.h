// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_DOCK_COMMAND_H_
#define ORVANE_APP_DOCK_COMMAND_H_

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>

#include "app/orvane_doc.h"
#include "editors/widgets/map_dock.h"

namespace orvane {

/// Lets a command show and hide a dock. Shown by it, the dock gets the focus (its focus proxy).
/// Escape gives the focus back to the window's main part; a dock that floats it hides.
void ConnectDock(QDockWidget* dock, QAction* command);
/// Lets a display's keys work in a dock beside it too: function keys, those with Ctrl, and, where
/// nothing in the dock is chosen by letters, letters.
void LendKeys(const QWidget& display, QDockWidget* dock);

/// Gives the window the dock "Map", hidden at first, which follows the document. All must outlive
/// the window.
MapDock* AddMapDock(COrvaneDoc* doc, QAction* command, QMainWindow* window);

}  // namespace orvane

#endif  // ORVANE_APP_DOCK_COMMAND_H_
