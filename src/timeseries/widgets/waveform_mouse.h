// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_MOUSE_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_MOUSE_H_

#include <QMouseEvent>
#include <QObject>
#include <QPointF>
#include <QRubberBand>
#include <QWheelEvent>
#include <optional>

#include "timeseries/trace_arrangement.h"

namespace orvane {

/// Where the traces of a picture are, in its pixels.
class TracePlaces {
 public:
  virtual ~TracePlaces() = default;
  /// The trace that is drawn at this height; none between and beyond them.
  virtual std::optional<std::size_t> TraceAt(double y) const = 0;
  /// Of a trace that is drawn; without one of any of them.
  virtual QRectF PlaceOf(std::optional<std::size_t> trace) const = 0;
};

/// What the mouse does to a picture of waveforms. The wheel zooms the time where the mouse is, with
/// Ctrl the values, with Shift those of the trace below it. Dragging pans the time, with Ctrl the
/// values, with Ctrl and Shift those of the trace where it began; with Shift it draws a box, which
/// is then shown: its times, and, where it is within one trace, its values. A click sets the first
/// cursor, with Shift the second, and selects the trace.
class WaveformMouse : public QObject {
  Q_OBJECT

 public:
  /// All must outlive it; `picture` is what the events are of.
  WaveformMouse(WaveformView* view, TraceArrangement* traces, const TracePlaces* places,
                QWidget* picture);

  /// Whether the event was taken.
  bool Take(const QEvent* event);

 signals:
  /// The user changed what is seen of the view, a cursor, or the arrangement.
  void changed();

 private:
  bool OnWheel(const QWheelEvent& event);
  bool OnPress(const QMouseEvent& event);
  bool OnMove(const QMouseEvent& event);
  bool OnRelease(const QMouseEvent& event);
  void Drag(const QMouseEvent& event);
  void ShowBox(const QRectF& box);
  double TimeAt(double x) const;

  WaveformView* view_;
  TraceArrangement* traces_;
  const TracePlaces* places_;
  QRubberBand* box_;
  // While a button is held: where it went down, what was visible then, and whether it was a drag.
  QPointF press_;
  ValueRange press_times_;
  std::optional<std::size_t> press_trace_;
  double panned_ = 0;  // so far, in heights of a trace
  bool is_pressed_ = false;
  bool is_dragging_ = false;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_MOUSE_H_
