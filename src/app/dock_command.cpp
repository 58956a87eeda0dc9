// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dock_command.h"

namespace orvane {

void ConnectDock(QDockWidget* dock, QAction* command) {
  command->setCheckable(true);
  command->setEnabled(true);
  QObject::connect(command, &QAction::triggered, dock, [dock](bool is_wanted) {
    dock->setVisible(is_wanted);
    if (is_wanted) {
      dock->setFocus();
    }
  });
  QObject::connect(dock->toggleViewAction(), &QAction::toggled, command, &QAction::setChecked);
}

MapDock* AddMapDock(COrvaneDoc* doc, QAction* command, QMainWindow* window) {
  auto* dock = new MapDock(&doc->Table(), window);
  dock->setFocusProxy(dock->View());
  window->addDockWidget(Qt::RightDockWidgetArea, dock);
  dock->hide();
  ConnectDock(dock, command);
  QObject::connect(doc, &COrvaneDoc::changed, dock, &MapDock::Follow);
  return dock;
}

}  // namespace orvane
