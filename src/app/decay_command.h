// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_DECAY_COMMAND_H_
#define ORVANE_APP_DECAY_COMMAND_H_

#include "app/waveform_dock.h"
#include "spectra/widgets/decay_dock.h"

namespace orvane {

/// The dock "Decay".
class DecayCommand : public WaveformDock {
  Q_OBJECT

 public:
  DecayCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

 protected:
  QDockWidget* NewDock(QMainWindow* window) override;
  void FollowWaveform(CWaveformDisplay* shown) override;

 private:
  DecayDock* dock_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_APP_DECAY_COMMAND_H_
