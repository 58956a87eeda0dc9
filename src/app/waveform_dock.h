// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_WAVEFORM_DOCK_H_
#define ORVANE_APP_WAVEFORM_DOCK_H_

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QObject>

#include "app/field_displays.h"
#include "timeseries/widgets/waveform_display.h"

namespace orvane {

/// A dock beside waveforms and the command that shows it. It is made with the first waveform and
/// there only while one is; what the user chose counts for the next waveform and the next start.
class WaveformDock : public QObject {
  Q_OBJECT

 public:
  /// All must outlive this. `setting` is the group of settings that remembers the choice.
  WaveformDock(FieldDisplays* displays, QAction* command, QMainWindow* window,
               const QString& setting, Qt::DockWidgetArea area);

 protected:
  /// The waveform shown, null where there is none.
  CWaveformDisplay* Shown() const;
  FieldDisplays* Displays() const { return displays_; }

  /// Called once; the dock becomes the window's.
  virtual QDockWidget* NewDock(QMainWindow* window) = 0;
  /// After another waveform, or none, is shown; the dock is visible by then, or hidden.
  virtual void FollowWaveform(CWaveformDisplay* shown) = 0;

 private:
  void MakeDock();
  void Follow();
  void Note(bool is_shown);

  FieldDisplays* displays_;
  QAction* command_;
  QMainWindow* window_;
  QString setting_;
  Qt::DockWidgetArea area_;
  QDockWidget* dock_ = nullptr;
  bool is_wanted_;
  bool is_following_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_WAVEFORM_DOCK_H_
