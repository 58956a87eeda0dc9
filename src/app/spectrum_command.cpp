// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/spectrum_command.h"

#include <QSettings>

#include "app/dock_command.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {
namespace {

const QString kWanted = QStringLiteral("Spectrum/Shown");

CWaveformDisplay* ShownBy(const FieldDisplays* displays) {
  return qobject_cast<CWaveformDisplay*>(displays->Current());
}

}  // namespace

SpectrumCommand::SpectrumCommand(FieldDisplays* displays, QAction* command, QMainWindow* window)
    : QObject(window),
      displays_(displays),
      command_(command),
      window_(window),
      is_wanted_(QSettings().value(kWanted, false).toBool()) {
  command_->setCheckable(true);
  command_->setEnabled(false);
  connect(displays_, &FieldDisplays::changed, this, &SpectrumCommand::Follow);
}

void SpectrumCommand::MakeDock() {
  dock_ = new SpectrumDock(
      [this]() -> const WaveformView* {
        CWaveformDisplay* display = ShownBy(displays_);
        return display == nullptr ? nullptr : &display->View();
      },
      [this]() -> const RecordNumbers* {
        CWaveformDisplay* display = ShownBy(displays_);
        return display == nullptr ? nullptr : &display->Book()->LeftOut();
      },
      window_);
  ConnectDock(dock_, command_);
  AddLateDock(Qt::RightDockWidgetArea, dock_, window_);
  connect(dock_->toggleViewAction(), &QAction::toggled, this, &SpectrumCommand::Note);
  connect(dock_, &SpectrumDock::told, displays_, &FieldDisplays::told);
  connect(dock_, &SpectrumDock::pageWanted, this, [this](int by) {
    if (CDisplay* display = displays_->Current(); display != nullptr) {
      by < 0 ? display->ScrollBack() : display->ScrollForward();
    }
  });
}

void SpectrumCommand::Follow() {
  const bool has_waveform = displays_->ShowsWaveform();
  if (dock_ == nullptr) {
    if (!has_waveform) {
      return;
    }
    MakeDock();
  }
  command_->setEnabled(has_waveform);
  dock_->toggleViewAction()->setEnabled(has_waveform);
  is_following_ = true;
  if (dock_->isHidden() == (is_wanted_ && has_waveform)) {
    dock_->setVisible(is_wanted_ && has_waveform);
  }
  is_following_ = false;
  if (CWaveformDisplay* display = ShownBy(displays_); display != nullptr) {
    LendKeys(*display, dock_);
    for (const auto& changed : {&RecordBook::restarted, &RecordBook::leftOutChanged}) {
      connect(display->Book(), changed, dock_, &SpectrumDock::Follow, Qt::UniqueConnection);
    }
  }
  dock_->Follow();
}

// The user showed or hid it, or the window's layout was restored.
void SpectrumCommand::Note(bool is_shown) {
  if (is_following_) {
    return;
  }
  is_wanted_ = is_shown;
  QSettings().setValue(kWanted, is_shown);
  if (is_shown && !displays_->ShowsWaveform()) {
    QMetaObject::invokeMethod(this, &SpectrumCommand::Follow, Qt::QueuedConnection);
  }
}

}  // namespace orvane
