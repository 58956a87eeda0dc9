// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_RECORD_COMMAND_H_
#define ORVANE_APP_RECORD_COMMAND_H_

#include "app/waveform_dock.h"
#include "timeseries/widgets/record_dock.h"

namespace orvane {

/// The dock "Records".
class RecordCommand : public WaveformDock {
  Q_OBJECT

 public:
  RecordCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

 protected:
  QDockWidget* NewDock(QMainWindow* window) override;
  void FollowWaveform(CWaveformDisplay* shown) override;

 private:
  RecordDock* dock_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_APP_RECORD_COMMAND_H_
