// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_CHECK_COMMANDS_H_
#define ORVANE_APP_CHECK_COMMANDS_H_

#include <QMainWindow>
#include <QObject>
#include <QToolButton>

#include "app/orvane_doc.h"
#include "check/widgets/check_dock.h"

namespace orvane {

/// The dock "Morning Check" of the document, and its counts in the status bar.
class CheckCommands : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive this. The window gets the dock, hidden at first.
  CheckCommands(COrvaneDoc* doc, QMainWindow* window);

  CheckDock* Dock() const { return dock_; }
  /// "2 errors, 1 hint": shows and hides the dock.
  QToolButton* Counter() const { return counter_; }

 private:
  void Follow();

  COrvaneDoc* doc_;
  CheckDock* dock_;
  QToolButton* counter_;
};

}  // namespace orvane

#endif  // ORVANE_APP_CHECK_COMMANDS_H_
