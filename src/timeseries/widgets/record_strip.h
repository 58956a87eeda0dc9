// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_RECORD_STRIP_H_
#define ORVANE_TIMESERIES_WIDGETS_RECORD_STRIP_H_

#include <QSlider>
#include <algorithm>
#include <optional>

#include "timeseries/record_strip_model.h"
#include "timeseries/widgets/record_book.h"

namespace orvane {

/// All records of a file as one picture: a lane for each channel with its peak to peak, which rises
/// with the logarithm; bad records in the colour of warnings, saturated ones with a triangle, dead
/// channels with a mark at the lane's foot, those that are left out pale; a line of steps where the
/// frequency changes; a frame around the record shown. Its value is that record's number: a click,
/// dragging and the keys of sliders choose another, and so do assistive tools.
class RecordStrip : public QSlider {
  Q_OBJECT

 public:
  /// The book must outlive the strip.
  RecordStrip(const RecordBook* book, QWidget* parent);

  /// Frames a record; 0: none. Does not emit `chosen()`.
  void SetShown(std::uint64_t number);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {100, std::min(sizeHint().height(), 36)}; }

 signals:
  /// The user goes to a record.
  void chosen(std::uint64_t number);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Forget();
  void Restart();
  void SayRecord();
  void GoTo(double x);
  const RecordStripModel& Model() const;
  QRectF Inside() const;
  QRectF PlaceOf(std::size_t column) const;
  void PaintColumn(std::size_t at, QPainter* painter) const;
  void PaintLane(const StripColumn& column, std::size_t channel, const QRectF& place,
                 QPainter* painter) const;
  void PaintFrequency(std::size_t at, const QRectF& place, QPainter* painter) const;
  void PaintShown(QPainter* painter) const;

  const RecordBook* book_;
  mutable std::optional<RecordStripModel> model_;  // for this width
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_RECORD_STRIP_H_
