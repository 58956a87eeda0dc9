// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/waveform_dock.h"

#include <QSettings>

#include "app/dock_command.h"

namespace orvane {

WaveformDock::WaveformDock(FieldDisplays* displays, QAction* command, QMainWindow* window,
                           const QString& setting, Qt::DockWidgetArea area)
    : QObject(window),
      displays_(displays),
      command_(command),
      window_(window),
      setting_(setting + QStringLiteral("/Shown")),
      area_(area),
      is_wanted_(QSettings().value(setting_, false).toBool()) {
  command_->setCheckable(true);
  command_->setEnabled(false);
  connect(displays_, &FieldDisplays::changed, this, &WaveformDock::Follow);
}

CWaveformDisplay* WaveformDock::Shown() const {
  return qobject_cast<CWaveformDisplay*>(displays_->Current());
}

void WaveformDock::MakeDock() {
  dock_ = NewDock(window_);
  ConnectDock(dock_, command_);
  if (!window_->restoreDockWidget(dock_)) {  // where it was at the last start
    window_->addDockWidget(area_, dock_);
  }
  dock_->hide();
  connect(dock_->toggleViewAction(), &QAction::toggled, this, &WaveformDock::Note);
}

void WaveformDock::Follow() {
  CWaveformDisplay* display = Shown();
  if (dock_ == nullptr) {
    if (display == nullptr) {
      return;
    }
    MakeDock();
  }
  command_->setEnabled(display != nullptr);
  dock_->toggleViewAction()->setEnabled(display != nullptr);
  is_following_ = true;
  if (dock_->isHidden() == (is_wanted_ && display != nullptr)) {
    dock_->setVisible(is_wanted_ && display != nullptr);
  }
  is_following_ = false;
  if (display != nullptr) {
    LendKeys(*display, dock_);
  }
  FollowWaveform(display);
}

// The user showed or hid it. What goes with the window was not hidden by anybody.
void WaveformDock::Note(bool is_shown) {
  if (is_following_ || !window_->isVisible()) {
    return;
  }
  is_wanted_ = is_shown;
  QSettings().setValue(setting_, is_shown);
}

}  // namespace orvane
