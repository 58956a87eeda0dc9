// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_
#define ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_

#include <vector>

#include "timeseries/widgets/marks_plot.h"

class QCPItemStraightLine;

namespace orvane {

/// Draws stack results: of each label that is chosen its records as thin lines, medians and spreads
/// as thick ones; or one item as points. Hollow marks are of negative values.
class StackPlot : public MarksPlot {
  Q_OBJECT

 public:
  /// The view must outlive the plot.
  StackPlot(const StackView* view, QWidget* parent);

  /// Draws these groups of the view, by their places in it. `title` may be of several lines.
  void Show(const QString& title, const std::vector<std::size_t>& groups,
            const StackPicture& picture);
  Result<> Save(const QString& path, const QSize& size) const override;

 signals:
  /// An item was clicked, from 0.
  void itemChosen(std::size_t item);

 protected:
  void Draw() override;
  void FollowTheme() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddGroup(std::size_t group);
  void ShowCursor();
  void OnClick(const QPoint& at);

  const StackView* view_;
  QCPItemStraightLine* cursor_;
  QString title_text_;
  std::vector<std::size_t> groups_;
  StackPicture picture_;
  std::size_t left_out_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_STACK_PLOT_H_
