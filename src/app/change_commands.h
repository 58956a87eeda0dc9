// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_CHANGE_COMMANDS_H_
#define ORVANE_APP_CHANGE_COMMANDS_H_

#include <QMainWindow>
#include <QObject>
#include <QToolButton>
#include <optional>

#include "app/orvane_doc.h"
#include "changes/widgets/changes_dock.h"
#include "forms/prompts.h"
#include "meaning/meanings.h"

namespace orvane {

/// What the table has that its file has not: the dock "Changes", the number of changes in the
/// status bar, values as text.
class ChangeCommands : public QObject {
  Q_OBJECT

 public:
  /// All must outlive this. The window gets the dock, hidden at first.
  ChangeCommands(COrvaneDoc* doc, Notices* notices, QMainWindow* window);

  ChangesDock* Dock() const { return dock_; }
  /// "7 changes": shows and hides the dock.
  QToolButton* Counter() const { return counter_; }

  void SaveValues();
  void ApplyValues();

 private:
  const Meanings& UsersMeanings();
  void Follow();
  void Take(const QString& step, const ChangesDock::Values& values);

  COrvaneDoc* doc_;
  Notices* notices_;
  QMainWindow* window_;
  std::optional<Meanings> meanings_;
  ChangesDock* dock_;
  QToolButton* counter_;
};

}  // namespace orvane

#endif  // ORVANE_APP_CHANGE_COMMANDS_H_
