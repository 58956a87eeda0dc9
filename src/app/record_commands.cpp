// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/record_commands.h"

#include "app/dock_command.h"

namespace orvane {

RecordCommands::RecordCommands(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : QObject(window), displays_(displays), command_(command), window_(window) {
  command_->setCheckable(true);
  command_->setEnabled(false);
  connect(displays_, &FieldDisplays::changed, this, &RecordCommands::Follow);
}

void RecordCommands::MakeDock() {
  dock_ = new RecordDock(window_);
  ConnectDock(dock_, command_);
  AddLateDock(Qt::BottomDockWidgetArea, dock_, window_);
  is_wanted_ = !dock_->isHidden();
  connect(dock_->toggleViewAction(), &QAction::toggled, this,
          [this](bool is_shown) { is_wanted_ = has_waveform_ ? is_shown : is_wanted_; });
}

void RecordCommands::Follow() {
  auto* display = qobject_cast<CWaveformDisplay*>(displays_->Current());
  if (dock_ == nullptr) {
    if (display == nullptr) {
      return;
    }
    MakeDock();
  }
  dock_->Follow(display);
  if (display != nullptr) {
    LendKeys(*display, dock_);
  }
  if (has_waveform_ == (display != nullptr)) {
    return;
  }
  has_waveform_ = false;  // what is hidden here is still wanted
  command_->setEnabled(display != nullptr);
  dock_->setVisible(display != nullptr && is_wanted_);
  has_waveform_ = display != nullptr;
}

}  // namespace orvane
