// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dock_command.h"

#include <QAction>
#include <QComboBox>
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

// Keys that lists, fields and the dock's own commands have uses for are left to them.
bool IsLent(const QKeySequence& key, bool has_letters) {
  if (key.isEmpty()) {
    return false;
  }
  const int code = key[0].key();
  const bool is_letter = code >= Qt::Key_A && code <= Qt::Key_Z;
  const bool is_function = code >= Qt::Key_F1 && code <= Qt::Key_F12;
  return is_function || key[0].keyboardModifiers().testFlag(Qt::ControlModifier) ||
         (is_letter && has_letters);
}

}  // namespace

void LendKeys(const QWidget& display, QDockWidget* dock) {
  const bool has_letters = dock->findChild<QComboBox*>() == nullptr;
  QList<QKeySequence> own = {QKeySequence(Qt::CTRL | Qt::Key_C), QKeySequence(Qt::CTRL | Qt::Key_A),
                             QKeySequence(Qt::CTRL | Qt::Key_Home),
                             QKeySequence(Qt::CTRL | Qt::Key_End)};
  for (const QAction* action : dock->findChildren<QAction*>()) {
    own.append(action->shortcut());
  }
  for (QAction* action : display.actions()) {
    if (IsLent(action->shortcut(), has_letters) && !own.contains(action->shortcut())) {
      dock->addAction(action);
    }
  }
}

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
