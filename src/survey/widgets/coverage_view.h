// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_COVERAGE_VIEW_H_
#define ORVANE_SURVEY_WIDGETS_COVERAGE_VIEW_H_

#include <QWidget>
#include <optional>

#include "survey/coverage.h"

namespace orvane {

/// What was recorded when: a line for each box over time without the nights, with what its table
/// planned, gaps left bare, and the share of bad records in the colour of warnings. A click chooses
/// a recording, arrows go from one to the next.
class CoverageView : public QWidget {
  Q_OBJECT

 public:
  explicit CoverageView(QWidget* parent);

  void SetCoverage(Coverage coverage);
  /// By its place in the survey; none: nothing is marked.
  void SetCurrent(std::optional<std::size_t> row);
  /// What is at a place of the widget, in words.
  QString TextAt(const QPointF& at) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void chosen(std::size_t row);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF Area() const;
  QRectF LaneRect(std::size_t lane) const;
  QRectF Bar(const CoveragePart& part, const QRectF& lane, double share) const;
  const CoveragePart* PartAt(const QPointF& at) const;
  void PaintLane(std::size_t lane, QPainter* painter) const;
  void PaintTimes(QPainter* painter) const;
  void FitAxis();

  Coverage coverage_;
  std::optional<CoverageAxis> axis_;  // of the coverage and the width; none without recordings
  std::optional<std::size_t> current_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_COVERAGE_VIEW_H_
