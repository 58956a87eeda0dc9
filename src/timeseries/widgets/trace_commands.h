// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_TRACE_COMMANDS_H_
#define ORVANE_TIMESERIES_WIDGETS_TRACE_COMMANDS_H_

#include <QAction>
#include <QMenu>
#include <QObject>

#include "timeseries/trace_arrangement.h"
#include "ui/display.h"

namespace orvane {

/// The commands of a waveform display that arrange its traces: which channels are hidden, which is
/// enlarged, and, of the selected one, zoom and place of its values.
class TraceCommands : public QObject {
  Q_OBJECT

 public:
  /// View and arrangement must outlive the display, which gets the commands.
  TraceCommands(const WaveformView* view, TraceArrangement* traces, CDisplay* display);

  /// Names the selected channel in the commands.
  void Follow();

 signals:
  void changed();
  /// For the status bar.
  void told(const QString& text);

 private:
  QAction* Add(const char* text, const char* name, const char* tip, const QKeySequence& key,
               void (TraceCommands::*act)());
  void ShowMenu();
  void FillMenu(QMenu* menu);
  void Hide(std::size_t trace, bool is_hidden);
  void HideSelected() { Hide(traces_->Selected(), true); }
  void EnlargeSelected();
  void EvenHeights();
  void ShowAll();
  void Select(int by);
  void SelectNext() { Select(1); }
  void SelectPrevious() { Select(-1); }
  void Zoom(double factor);
  void ZoomIn();
  void ZoomOut();
  void Pan(double share);
  void PanUp();
  void PanDown();
  QString Name(std::size_t trace) const;

  const WaveformView* view_;
  TraceArrangement* traces_;
  CDisplay* display_;
  QAction* menu_;
  QAction* hide_;
  QAction* enlarge_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_TRACE_COMMANDS_H_
