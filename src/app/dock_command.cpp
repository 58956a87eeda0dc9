// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dock_command.h"

#include <QShortcut>

#include "editors/widgets/map_dock.h"

namespace orvane {

namespace {

void Leave(QDockWidget* dock) {
  if (dock->isFloating()) {
    dock->hide();
  }
  QWidget* window = dock->parentWidget();
  window->activateWindow();
  qobject_cast<QMainWindow*>(window)->centralWidget()->setFocus();
}

}  // namespace

void ConnectDock(QDockWidget* dock, QAction* command) {
  auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), dock);
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(escape, &QShortcut::activated, dock, [dock] { Leave(dock); });
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

void AddMapDock(COrvaneDoc* doc, QAction* command, QMainWindow* window) {
  auto* dock = new MapDock(&doc->Table(), window);
  dock->setFocusProxy(dock->View());
  window->addDockWidget(Qt::RightDockWidgetArea, dock);
  dock->hide();
  ConnectDock(dock, command);
  QObject::connect(doc, &COrvaneDoc::changed, dock, &MapDock::Follow);
}

}  // namespace orvane
