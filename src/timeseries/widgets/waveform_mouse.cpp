// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_mouse.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double kWheelStep = 1.25;
constexpr int kDragStart = 4;  // pixels
constexpr int kLeastBox = 6;   // pixels; a box that is flatter has no values

bool Has(Qt::KeyboardModifiers modifiers, Qt::KeyboardModifier modifier) {
  return (modifiers & modifier) != 0;
}

}  // namespace

WaveformMouse::WaveformMouse(WaveformView* view, TraceArrangement* traces,
                             const TracePlaces* places, QWidget* picture)
    : QObject(picture),
      view_(view),
      traces_(traces),
      places_(places),
      box_(new QRubberBand(QRubberBand::Rectangle, picture)) {}

bool WaveformMouse::Take(const QEvent* event) {
  switch (event->type()) {
    case QEvent::Wheel:
      return OnWheel(*dynamic_cast<const QWheelEvent*>(event));
    case QEvent::MouseButtonPress:
      return OnPress(*dynamic_cast<const QMouseEvent*>(event));
    case QEvent::MouseMove:
      return OnMove(*dynamic_cast<const QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return OnRelease(*dynamic_cast<const QMouseEvent*>(event));
    default:
      return false;
  }
}

double WaveformMouse::TimeAt(double x) const {
  const QRectF place = places_->PlaceOf({});
  const ValueRange times = view_->VisibleTimes();
  return times.low + (times.high - times.low) * (x - place.left()) / std::max(place.width(), 1.0);
}

bool WaveformMouse::OnWheel(const QWheelEvent& event) {
  constexpr double kNotch = 120;
  // With modifiers some systems turn an upright wheel into a level one.
  const QPoint turned = event.angleDelta();
  const double factor = std::pow(kWheelStep, (turned.y() != 0 ? turned.y() : turned.x()) / kNotch);
  const auto trace = places_->TraceAt(event.position().y());
  if (Has(event.modifiers(), Qt::ShiftModifier)) {
    if (trace) {
      traces_->Select(*trace);
      traces_->Zoom(*trace, factor);
    }
  } else if (Has(event.modifiers(), Qt::ControlModifier)) {
    view_->ZoomValues(factor);
  } else {
    view_->ZoomTimes(factor, TimeAt(event.position().x()));
  }
  emit changed();
  return true;
}

bool WaveformMouse::OnPress(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) {
    return false;
  }
  is_pressed_ = true;
  is_dragging_ = false;
  press_ = event.position();
  press_trace_ = places_->TraceAt(press_.y());
  panned_ = 0;
  press_times_ = view_->VisibleTimes();
  return true;
}

bool WaveformMouse::OnMove(const QMouseEvent& event) {
  if (!is_pressed_) {
    return false;
  }
  is_dragging_ = is_dragging_ || (event.position() - press_).manhattanLength() >= kDragStart;
  if (is_dragging_) {
    Drag(event);
  }
  return true;
}

void WaveformMouse::Drag(const QMouseEvent& event) {
  const QPointF moved = event.position() - press_;
  const bool has_shift = Has(event.modifiers(), Qt::ShiftModifier);
  const bool has_control = Has(event.modifiers(), Qt::ControlModifier);
  const QRectF place = places_->PlaceOf(press_trace_);
  if (box_->isVisible() || (has_shift && !has_control)) {
    box_->setGeometry(QRectF(press_, event.position()).normalized().toRect());
    box_->show();
    return;
  }
  if (has_control) {
    const double share = moved.y() / std::max(place.height(), 1.0);
    if (!has_shift) {
      view_->PanValues(share - panned_);
    } else if (press_trace_) {
      traces_->Pan(*press_trace_, panned_ - share);
    }
    panned_ = share;
  } else {
    const double seconds =
        (press_times_.high - press_times_.low) * moved.x() / std::max(place.width(), 1.0);
    view_->ShowTimes(press_times_.low - seconds, press_times_.high - seconds);
  }
  emit changed();
}

bool WaveformMouse::OnRelease(const QMouseEvent& event) {
  if (!is_pressed_ || event.button() != Qt::LeftButton) {
    return false;
  }
  is_pressed_ = false;
  if (box_->isVisible()) {
    box_->hide();
    ShowBox(QRectF(press_, event.position()).normalized());
    emit changed();
  } else if (!is_dragging_) {
    const bool is_second = Has(event.modifiers(), Qt::ShiftModifier);
    view_->SetCursor(is_second ? WaveformView::kSecondCursor : WaveformView::kFirstCursor,
                     TimeAt(event.position().x()));
    traces_->Select(press_trace_.value_or(traces_->Selected()));
    emit changed();
  }
  return true;
}

// The values as they are before the times change, which may change what the trace fits.
void WaveformMouse::ShowBox(const QRectF& box) {
  const auto trace = places_->TraceAt(box.top());
  const QRectF place = places_->PlaceOf(trace);
  const bool has_values =
      trace && places_->TraceAt(box.bottom()) == trace && box.height() >= kLeastBox;
  ValueRange values;
  if (has_values) {
    const ValueRange seen = traces_->Values(*trace, view_->ValuesOf(*trace));
    const double per_pixel = (seen.high - seen.low) / std::max(place.height(), 1.0);
    values = {seen.low + (place.bottom() - box.bottom()) * per_pixel,
              seen.low + (place.bottom() - box.top()) * per_pixel};
  }
  if (box.width() >= kLeastBox) {
    view_->ShowTimes(TimeAt(box.left()), TimeAt(box.right()));
  }
  if (has_values) {
    traces_->Select(*trace);
    traces_->ShowValues(*trace, view_->ValuesOf(*trace), values.low, values.high);
  }
}

}  // namespace orvane
