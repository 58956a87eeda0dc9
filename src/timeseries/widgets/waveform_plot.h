// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_

#include <QWidget>
#include <array>
#include <vector>

#include "base/result.h"
#include "timeseries/trace_arrangement.h"
#include "timeseries/waveform_view.h"
#include "timeseries/widgets/waveform_mouse.h"

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
/// names of channels that are hidden or have no room, and the cursors. The mouse is that of
/// `WaveformMouse`.
class WaveformPlot : public QWidget, private TracePlaces {
  Q_OBJECT

 public:
  /// View and arrangement must outlive the plot.
  WaveformPlot(WaveformView* view, TraceArrangement* traces, QWidget* parent);

  /// Draws the view again, whatever of it has changed.
  void ShowView();
  QCustomPlot* Plot() { return plot_; }
  /// Lines drawn with the traces, of the record that this view shows; null: none. It must outlive
  /// the plot.
  void SetOther(WaveformView* other) { other_ = other; }
  /// Saves what the view shows, drawn again for a size, under the file's name. As `SavePlot()`.
  Result<> Save(const QString& path, const QSize& size) const;

 signals:
  /// The user changed what is visible, a cursor, or the arrangement of the traces.
  void changed();
  /// The right button of the mouse.
  void menuRequested(const QPoint& at);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Strip {
    std::size_t trace = 0;
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
  std::string OverlayText() const;
  void ShowHeader();
  void ShowLabel(const Strip& strip);
  void GivePlaces();
  void SayWhatIsShown();
  void SizeLabels();
  void ShowStrip(const Strip& strip, WaveformTrace line);
  void ShowExtras(const Strip& strip);
  void ShowCursors(const Strip& strip);
  void LabelCursors();
  void ShowLimits(const Strip& strip);
  void FollowTheme();
  std::optional<std::size_t> TraceAt(double y) const override;
  QRectF PlaceOf(std::optional<std::size_t> trace) const override;
  int PlotWidth() const;

  WaveformView* view_;
  TraceArrangement* traces_;
  WaveformView* other_ = nullptr;
  QCustomPlot* plot_;
  WaveformMouse* mouse_;
  bool has_file_name_ = false;
  QCPTextElement* title_ = nullptr;
  QCPTextElement* note_ = nullptr;
  QCPTextElement* not_drawn_ = nullptr;
  QCPTextElement* time_label_ = nullptr;
  QCPAxisRect* time_axes_ = nullptr;
  std::vector<std::size_t> shown_;  // the first of them are in the strips
  std::vector<Strip> strips_;
  std::array<QCPItemText*, 2> cursor_labels_{};
  int drawn_height_ = 0;  // of the first strip
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_PLOT_H_
