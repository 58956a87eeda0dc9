// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_MARKS_PLOT_H_
#define ORVANE_TIMESERIES_WIDGETS_MARKS_PLOT_H_

#include <QColor>
#include <QWidget>
#include <vector>

#include "base/result.h"
#include "timeseries/stack_lines.h"

class QCPAxis;
class QCPLegend;
class QCPTextElement;
class QCustomPlot;

namespace orvane {

/// A picture of thin curves, and of thick lines with marks and spreads, hollow marks for negative
/// values on logarithmic axes: a title above, a legend below.
class MarksPlot : public QWidget {
  Q_OBJECT

 public:
  /// `name` begins the names of the widgets.
  MarksPlot(const QString& name, QWidget* parent);

  QCustomPlot* Plot() { return plot_; }
  /// As `SavePlot()`, drawn again for a size.
  virtual Result<> Save(const QString& path, const QSize& size) const = 0;

 signals:
  /// The right button of the mouse.
  void menuRequested(const QPoint& at);

 protected:
  /// Draws all again, after a change of theme too.
  virtual void Draw() = 0;
  void Clear();
  void SetTexts(const QString& title, const QString& x, const QString& y);
  /// For assistive tools.
  void Name(const QString& name);
  void AddCurves(const std::vector<StackMarks>& curves, const QColor& color);
  void AddMarks(const StackMarks& marks, const QColor& color, const QString& name, bool has_line);
  void SetRanges(const StackPicture& picture, bool has_whole_x);
  virtual void FollowTheme();
  /// Saves the picture of a copy that shows the same.
  Result<> SaveCopy(MarksPlot* copy, const QString& path, const QSize& size) const;

  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static void SetAxis(QCPAxis* axis, bool is_log, bool is_whole);

  QCustomPlot* plot_;
  QCPTextElement* title_;
  QCPLegend* legend_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_MARKS_PLOT_H_
