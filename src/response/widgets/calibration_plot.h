// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_WIDGETS_CALIBRATION_PLOT_H_
#define ORVANE_RESPONSE_WIDGETS_CALIBRATION_PLOT_H_

#include <QWidget>

#include "base/result.h"
#include "response/cal_lines.h"

class QCPAxisRect;
class QCPItemStraightLine;
class QCPItemText;
class QCPLayer;
class QCPLegend;
class QCPTextElement;
class QCustomPlot;

namespace orvane {

/// Draws what a `CalView` shows: a title, the amplitudes, below them the phases, each measured
/// point marked, and the cursor. A click sets the cursor.
class CalibrationPlot : public QWidget {
  Q_OBJECT

 public:
  /// The view must outlive the plot.
  CalibrationPlot(CalView* view, QWidget* parent);

  /// Draws the view again, whatever of it has changed.
  void ShowView();
  /// Only the cursor has moved.
  void ShowCursor();
  QCustomPlot* Plot() { return plot_; }
  /// Saves what the view shows, drawn again for a size. As `SavePlot()`.
  Result<> Save(const QString& path, const QSize& size) const;

 signals:
  /// The user set the cursor.
  void cursorMoved();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QCPAxisRect* MakeAxes(int row);
  void MoveCursorLines();
  void AddTexts();
  QColor ColorOf(int color) const;
  QBrush InMarks(const std::vector<CalLine>& lines) const;
  void AddLine(const CalLine& line, const QBrush& in_marks);
  void AddTolerance();
  void FillLegend();
  void FitLegend();
  void SetRanges();
  void FitHeight();
  void FollowTheme();

  CalView* view_;
  QCustomPlot* plot_;
  QCPTextElement* title_ = nullptr;
  QCPAxisRect* amplitude_ = nullptr;
  QCPAxisRect* phase_ = nullptr;
  QCPLegend* legend_ = nullptr;  // names the curves where there are several
  QCPItemText* nothing_ = nullptr;
  QCPItemStraightLine* amplitude_cursor_ = nullptr;
  QCPItemStraightLine* phase_cursor_ = nullptr;
  QCPLayer* cursors_ = nullptr;  // a picture of its own over that of the curves
  bool is_drawn_ = false;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_WIDGETS_CALIBRATION_PLOT_H_
