// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_DECAY_COMMAND_H_
#define ORVANE_APP_DECAY_COMMAND_H_

#include <QAction>
#include <QMainWindow>
#include <QObject>

#include "app/field_displays.h"
#include "spectra/widgets/decay_dock.h"

namespace orvane {

/// The dock "Decay": shown beside a waveform where the user wants it, hidden beside all else.
class DecayCommand : public QObject {
  Q_OBJECT

 public:
  /// All must outlive this. The window gets the dock when it shows its first waveform.
  DecayCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

 private:
  DecayDock::Shown Shown() const;
  void MakeDock();
  void Follow();
  void Note(bool is_shown);

  FieldDisplays* displays_;
  QAction* command_;
  QMainWindow* window_;
  DecayDock* dock_ = nullptr;
  bool is_wanted_ = false;
  bool is_following_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_DECAY_COMMAND_H_
