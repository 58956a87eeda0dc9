// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/decay_command.h"

#include "app/dock_command.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {

DecayCommand::DecayCommand(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : QObject(window), displays_(displays), command_(command), window_(window) {
  command_->setCheckable(true);
  command_->setEnabled(false);
  connect(displays_, &FieldDisplays::changed, this, &DecayCommand::Follow);
}

void DecayCommand::MakeDock() {
  dock_ = new DecayDock([this] { return Shown(); }, window_);
  ConnectDock(dock_, command_);
  connect(dock_->toggleViewAction(), &QAction::toggled, this, &DecayCommand::Note);
  connect(dock_, &DecayDock::told, displays_, &FieldDisplays::told);
  AddLateDock(Qt::RightDockWidgetArea, dock_, window_);
  is_wanted_ = !dock_->isHidden();
}

DecayDock::Shown DecayCommand::Shown() const {
  auto* display = qobject_cast<CWaveformDisplay*>(displays_->Current());
  return display == nullptr ? DecayDock::Shown()
                            : DecayDock::Shown{&display->View(), &display->Book()->LeftOut()};
}

void DecayCommand::Follow() {
  auto* display = qobject_cast<CWaveformDisplay*>(displays_->Current());
  const bool has_waveform = display != nullptr;
  if (dock_ == nullptr) {
    if (!has_waveform) {
      return;
    }
    MakeDock();
  }
  command_->setEnabled(has_waveform);
  dock_->toggleViewAction()->setEnabled(has_waveform);
  is_following_ = true;
  dock_->setVisible(is_wanted_ && has_waveform);
  is_following_ = false;
  if (has_waveform) {
    LendKeys(*display, dock_);
    connect(display->Book(), &RecordBook::leftOutChanged, dock_, &DecayDock::Follow,
            Qt::UniqueConnection);
  }
  dock_->Follow();
}

// The user showed or hid it, or the window's layout was restored.
void DecayCommand::Note(bool is_shown) {
  if (is_following_) {
    return;
  }
  is_wanted_ = is_shown;
  if (is_shown && !displays_->ShowsWaveform()) {
    QMetaObject::invokeMethod(this, &DecayCommand::Follow, Qt::QueuedConnection);
  }
}

}  // namespace orvane
