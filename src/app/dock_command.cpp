// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dock_command.h"

#include <QKeyEvent>

namespace orvane {

namespace {

// Escape that nothing in the dock wants comes up to the dock itself. No shortcut: that would also
// take the Escape of a dialog over the window.
class Leaving : public QObject {
 public:
  explicit Leaving(QDockWidget* dock) : QObject(dock), dock_(dock) {
    dock->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress ||
        dynamic_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) {
      return false;
    }
    if (dock_->isFloating()) {
      dock_->hide();
    }
    QWidget* window = dock_->parentWidget();
    window->activateWindow();
    qobject_cast<QMainWindow*>(window)->centralWidget()->setFocus();
    return true;
  }

 private:
  QDockWidget* dock_;
};

}  // namespace

void ConnectDock(QDockWidget* dock, QAction* command) {
  new Leaving(dock);
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
