// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_
#define ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_

#include <QWidget>
#include <vector>

#include "base/result.h"
#include "timeseries/stack_lines.h"

class QCPAxisRect;
class QCPItemStraightLine;
class QCPLegend;
class QCPTextElement;
class QCustomPlot;

namespace orvane {

/// Draws stack results: of each label that is chosen its records as thin lines, medians and spreads
/// as thick ones; or one item as points. Hollow marks are of negative values.
class StackPlot : public QWidget {
  Q_OBJECT

 public:
  /// The view must outlive the plot.
  StackPlot(const StackView* view, QWidget* parent);

  /// Draws these groups of the view, by their places in it. `title` may be of several lines.
  void Show(const QString& title, const std::vector<std::size_t>& groups,
            const StackPicture& picture);
  QCustomPlot* Plot() { return plot_; }
  /// As `SavePlot()`, drawn again for a size.
  Result<> Save(const QString& path, const QSize& size) const;

 signals:
  /// An item was clicked, from 0.
  void itemChosen(std::size_t item);
  /// The right button of the mouse.
  void menuRequested(const QPoint& at);

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Draw();
  void AddGroup(std::size_t group);
  void AddCurves(const std::vector<StackMarks>& curves, const QColor& color);
  void AddMarks(const StackMarks& marks, const QColor& color, const QString& name);
  void SetRanges();
  void SetAxis(bool is_value, bool is_log);
  void ShowCursor();
  void FollowTheme();
  void OnClick(const QPoint& at);

  const StackView* view_;
  QCustomPlot* plot_;
  QCPTextElement* title_;
  QCPAxisRect* axes_;
  QCPLegend* legend_;
  QCPItemStraightLine* cursor_;
  QString title_text_;
  std::vector<std::size_t> groups_;
  StackPicture picture_;
  std::size_t left_out_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_
