// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_

#include <QWidget>
#include <array>
#include <vector>

#include "base/result.h"
#include "timeseries/waveform_view.h"

class QCPAxisRect;
class QCPGraph;
class QCPMarginGroup;
class QCPItemStraightLine;
class QCPItemText;
class QCPTextElement;
class QCustomPlot;

namespace orvane {

/// Draws what a `WaveformView` shows: a title with a note beside it, below it one strip for each
/// trace that has room, with its label and status at the left, one time axis at the bottom, the
/// names of channels without room, and the cursors. Mouse: the wheel zooms the time where the mouse
/// is, with Ctrl the values; dragging pans the time, with Ctrl the values; a click sets the first
/// cursor, with Shift the second.
class WaveformPlot : public QWidget {
  Q_OBJECT

 public:
  /// The view must outlive the plot.
  WaveformPlot(WaveformView* view, QWidget* parent);

  /// Draws the view again, whatever of it has changed.
  void ShowView();
  QCustomPlot* Plot() { return plot_; }
  /// Lines drawn with the traces, of the record that this view shows; null: none. It must outlive
  /// the plot.
  void SetOther(WaveformView* other) { other_ = other; }
  /// Saves what the view shows, drawn again for a size, under the file's name. As `SavePlot()`.
  Result<> Save(const QString& path, const QSize& size) const;

 signals:
  /// The user changed the visible times or a cursor of the view.
  void changed();
  /// The right button of the mouse.
  void menuRequested(const QPoint& at);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Strip {
    QCPAxisRect* axes = nullptr;
    QCPTextElement* label = nullptr;
    QCPGraph* graph = nullptr;
    std::array<QCPGraph*, 2> extras{};  // another record, or the spread of a fold
    std::array<QCPItemStraightLine*, 2> cursors{};
    std::array<QCPItemStraightLine*, 2> limits{};  // of the box's converter
  };

  void MakeHeader();
  void MakeStrips(std::size_t count);
  Strip MakeStrip(int row);
  QCPItemStraightLine* MakeLine(const Strip& strip);
  void MakeTimeAxis(int row, QCPMarginGroup* margins);
  std::size_t StripsWithRoom() const;
  void ShowHeader();
  void ShowLabel(std::size_t trace);
  void GivePlaces();
  void SayWhatIsShown();
  void SizeLabels();
  void ShowStrip(std::size_t trace, WaveformTrace line);
  void ShowExtras(std::size_t trace);
  void ShowCursors(const Strip& strip);
  void LabelCursors();
  void ShowLimits(std::size_t trace);
  void FollowTheme();
  bool OnWheel(const QWheelEvent& event);
  bool OnPress(const QMouseEvent& event);
  bool OnMove(const QMouseEvent& event);
  bool OnRelease(const QMouseEvent& event);
  double TimeAt(double pixel) const;
  int PlotWidth() const;

  WaveformView* view_;
  WaveformView* other_ = nullptr;
  QCustomPlot* plot_;
  bool has_file_name_ = false;
  QCPTextElement* title_ = nullptr;
  QCPTextElement* note_ = nullptr;
  QCPTextElement* not_drawn_ = nullptr;
  QCPTextElement* time_label_ = nullptr;
  QCPAxisRect* time_axes_ = nullptr;
  std::vector<Strip> strips_;
  std::array<QCPItemText*, 2> cursor_labels_{};
  int drawn_height_ = 0;  // of the first strip
  // While a button is held: where it went down, what was visible then, and whether it was a drag.
  QPointF press_;
  ValueRange press_times_;
  double panned_ = 0;  // so far, in heights of a strip
  bool is_pressed_ = false;
  bool is_dragging_ = false;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_
