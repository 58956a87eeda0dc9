// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dock_command.h"

#include <QKeyEvent>

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

// Of what the widgets in the dock do not want themselves. A shortcut would be heard before them,
// and before a dialog that is just opening.
class EscapeLeaves : public QObject {
 public:
  explicit EscapeLeaves(QDockWidget* dock) : QObject(dock), dock_(dock) {
    dock->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == dock_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
      Leave(dock_);
      return true;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QDockWidget* dock_;
};

}  // namespace

void ConnectDock(QDockWidget* dock, QAction* command) {
  new EscapeLeaves(dock);
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
