// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_RECORD_COMMANDS_H_
#define ORVANE_APP_RECORD_COMMANDS_H_

#include <QAction>
#include <QMainWindow>
#include <QObject>

#include "app/field_displays.h"
#include "timeseries/widgets/record_dock.h"

namespace orvane {

/// The dock "Records", which is there only while a waveform is. Once shown it comes back with the
/// next waveform.
class RecordCommands : public QObject {
  Q_OBJECT

 public:
  /// All must outlive this. The window gets the dock when it shows its first waveform.
  RecordCommands(FieldDisplays* displays, QAction* command, QMainWindow* window);

 private:
  void MakeDock();
  void Follow();

  FieldDisplays* displays_;
  QAction* command_;
  QMainWindow* window_;
  RecordDock* dock_ = nullptr;
  bool is_wanted_ = false;
  bool has_waveform_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_RECORD_COMMANDS_H_
