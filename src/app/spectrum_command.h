// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_SPECTRUM_COMMAND_H_
#define ORVANE_APP_SPECTRUM_COMMAND_H_

#include "app/waveform_dock.h"
#include "spectra/widgets/spectrum_dock.h"

namespace orvane {

/// The dock "Spectrum".
class SpectrumCommand : public WaveformDock {
  Q_OBJECT

 public:
  SpectrumCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

 protected:
  QDockWidget* NewDock(QMainWindow* window) override;
  void FollowWaveform(CWaveformDisplay* shown) override;

 private:
  SpectrumDock* dock_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_APP_SPECTRUM_COMMAND_H_
