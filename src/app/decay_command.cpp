// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/decay_command.h"

namespace orvane {

DecayCommand::DecayCommand(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : WaveformDock(displays, command, window, QStringLiteral("Decay"), Qt::RightDockWidgetArea) {}

QDockWidget* DecayCommand::NewDock(QMainWindow* window) {
  dock_ = new DecayDock(
      [this] {
        return Shown() == nullptr ? DecayDock::Shown()
                                  : DecayDock::Shown{&Shown()->View(), &Shown()->Book()->LeftOut()};
      },
      window);
  connect(dock_, &DecayDock::told, Displays(), &FieldDisplays::told);
  return dock_;
}

void DecayCommand::FollowWaveform(CWaveformDisplay* shown) {
  if (shown != nullptr) {
    connect(shown->Book(), &RecordBook::leftOutChanged, dock_, &DecayDock::Follow,
            Qt::UniqueConnection);
  }
  dock_->Follow();
}

}  // namespace orvane
