// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_TIMELINE_BAR_H_
#define ORVANE_EDITORS_WIDGETS_TIMELINE_BAR_H_

#include <QPainter>
#include <QRectF>
#include <QWidget>

#include "editors/timeline.h"

namespace orvane {

/// When a box records what, as bars above a line of times. Its accessible name says all of it; what
/// a bar is, is said under the pointer. It never has the focus.
class TimelineBar : public QWidget {
  Q_OBJECT

 public:
  explicit TimelineBar(QWidget* parent);

  void SetTimeline(Timeline line);
  /// What is at a place of the widget, in words.
  QString TextAt(const QPointF& at) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  int Lanes() const;
  /// Where the bars are.
  QRectF Area() const;
  QRectF LaneRect(std::size_t lane) const;
  double Least() const;
  double XOf(double seconds) const;
  void PaintLane(std::size_t lane, QPainter* painter) const;
  void PaintMidnights(QPainter* painter) const;
  void PaintTimes(QPainter* painter) const;

  Timeline line_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_TIMELINE_BAR_H_
