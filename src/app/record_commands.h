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
  /// All must outlive this.
  RecordCommands(FieldDisplays* displays, QAction* command, QMainWindow* window);

  RecordDock* Dock() const { return dock_; }
  /// After the window's layout was restored: whether the dock is wanted is what it says.
  void TakeLayout();

 private:
  void Follow();

  FieldDisplays* displays_;
  QAction* command_;
  RecordDock* dock_;
  bool is_wanted_ = false;
  bool has_waveform_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_RECORD_COMMANDS_H_
