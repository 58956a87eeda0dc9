// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/check_commands.h"

#include "app/field_folders.h"

namespace orvane {

CheckCommands::CheckCommands(COrvaneDoc* doc, QMainWindow* window)
    : QObject(window),
      doc_(doc),
      dock_(new CheckDock(&doc->Table(), window)),
      counter_(new QToolButton(window)) {
  window->addDockWidget(Qt::RightDockWidgetArea, dock_);
  dock_->hide();
  counter_->setObjectName(QStringLiteral("finding-counter"));
  counter_->setAutoRaise(true);
  counter_->setFocusPolicy(Qt::NoFocus);  // by keyboard there is F7
  counter_->setToolTip(QStringLiteral("What the morning check has found; shows it (F7)"));
  counter_->setAccessibleDescription(counter_->toolTip());
  connect(counter_, &QToolButton::clicked, dock_->toggleViewAction(), &QAction::trigger);
  connect(dock_, &CheckDock::countChanged, counter_, &QToolButton::setText);
  connect(doc_, &COrvaneDoc::changed, this, &CheckCommands::Follow);
  Follow();
}

void CheckCommands::Follow() {
  const FieldFolders folders(doc_);
  // The document's own folder is no place of calibrations unless the user says so.
  const QString calibrations = folders.Calibrations();
  dock_->SetUsualFolders(calibrations == folders.Document() ? QString() : calibrations,
                         folders.Document());
  dock_->SetFile(doc_->Path());
  dock_->Follow();
}

}  // namespace orvane
