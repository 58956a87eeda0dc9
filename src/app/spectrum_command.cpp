// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/spectrum_command.h"

namespace orvane {

SpectrumCommand::SpectrumCommand(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : WaveformDock(displays, command, window, QStringLiteral("Spectrum"), Qt::RightDockWidgetArea) {
}

QDockWidget* SpectrumCommand::NewDock(QMainWindow* window) {
  dock_ = new SpectrumDock(
      [this]() -> const WaveformView* { return Shown() == nullptr ? nullptr : &Shown()->View(); },
      [this]() -> const RecordNumbers* {
        return Shown() == nullptr ? nullptr : &Shown()->Book()->LeftOut();
      },
      window);
  connect(dock_, &SpectrumDock::told, Displays(), &FieldDisplays::told);
  connect(dock_, &SpectrumDock::pageWanted, this, [this](int by) {
    if (CDisplay* display = Displays()->Current(); display != nullptr) {
      by < 0 ? display->ScrollBack() : display->ScrollForward();
    }
  });
  return dock_;
}

void SpectrumCommand::FollowWaveform(CWaveformDisplay* shown) {
  if (shown != nullptr) {
    for (const auto& changed : {&RecordBook::restarted, &RecordBook::leftOutChanged}) {
      connect(shown->Book(), changed, dock_, &SpectrumDock::Follow, Qt::UniqueConnection);
    }
  }
  dock_->Follow();
}

}  // namespace orvane
