// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/record_command.h"

namespace orvane {

RecordCommand::RecordCommand(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : WaveformDock(displays, command, window, QStringLiteral("Records"), Qt::BottomDockWidgetArea) {
}

QDockWidget* RecordCommand::NewDock(QMainWindow* window) {
  dock_ = new RecordDock(window);
  return dock_;
}

void RecordCommand::FollowWaveform(CWaveformDisplay* shown) { dock_->Follow(shown); }

}  // namespace orvane
