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
  /// All must outlive this. The window gets the dock when it shows its first waveform.
  SpectrumCommand(FieldDisplays* displays, QAction* command, QMainWindow* window);

 private:
  void MakeDock();
  void Follow();
  void Note(bool is_shown);

  FieldDisplays* displays_;
  QAction* command_;
  QMainWindow* window_;
  SpectrumDock* dock_ = nullptr;
  bool is_wanted_;
  bool is_following_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_SPECTRUM_COMMAND_H_
