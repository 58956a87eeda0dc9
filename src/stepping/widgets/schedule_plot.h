// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_WIDGETS_SCHEDULE_PLOT_H_
#define ORVANE_STEPPING_WIDGETS_SCHEDULE_PLOT_H_

#include <QWidget>
#include <span>

#include "stepping/schedule_row.h"

class QCPAxisRect;
class QCPGraph;
class QCPItemText;
class QCustomPlot;

namespace orvane {

/// A schedule as a picture: the frequency against time on a logarithmic axis, below it the current.
/// Shown only; follows palette and font.
class SchedulePlot : public QWidget {
  Q_OBJECT

 public:
  explicit SchedulePlot(QWidget* parent = nullptr);

  void Show(std::span<const ScheduleRow> rows);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddAxes();
  void FollowTheme();
  void SetRanges(std::span<const ScheduleRow> rows);
  void SpaceTicks();

  QCustomPlot* plot_;
  QCPAxisRect* frequency_axes_ = nullptr;
  QCPAxisRect* current_axes_ = nullptr;
  QCPGraph* frequency_ = nullptr;
  QCPGraph* current_ = nullptr;
  QCPItemText* nothing_ = nullptr;  // shown where there are no steps
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_WIDGETS_SCHEDULE_PLOT_H_
