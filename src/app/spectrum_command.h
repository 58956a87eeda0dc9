// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_SPECTRUM_COMMAND_H_
#define ORVANE_APP_SPECTRUM_COMMAND_H_

#include <QAction>
#include <QMainWindow>
#include <QObject>

#include "app/field_displays.h"
#include "spectra/widgets/spectrum_dock.h"

namespace orvane {

/// The dock "Spectrum": shown beside a waveform where the user wants it, hidden beside all else.
class SpectrumCommand : public QObject {
  Q_OBJECT

 public:
  /// All must outlive this. The window gets the dock.
  SpectrumCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

  SpectrumDock* Dock() const { return dock_; }

 private:
  void Follow();
  void Note(bool is_shown);

  FieldDisplays* displays_;
  QAction* command_;
  SpectrumDock* dock_;
  bool is_wanted_;
  bool is_following_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_SPECTRUM_COMMAND_H_
