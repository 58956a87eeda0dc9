// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DISPLAY_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DISPLAY_H_

#include <QLabel>
#include <QSpinBox>
#include <QSplitter>
#include <QTimer>

#include "forms/prompts.h"
#include "timeseries/waveform_view.h"
#include "timeseries/widgets/file_watch.h"
#include "timeseries/widgets/loading_strip.h"
#include "timeseries/widgets/record_book.h"
#include "timeseries/widgets/record_strip.h"
#include "timeseries/widgets/shape_commands.h"
#include "timeseries/widgets/trace_commands.h"
#include "timeseries/widgets/waveform_plot.h"
#include "ui/display.h"

namespace orvane {

/// A waveform file on display: one record at a time, with a tool bar, a table of what the cursors
/// read, and keys for everything.
class CWaveformDisplay : public CDisplay {
  Q_OBJECT

 public:
  explicit CWaveformDisplay(Prompts* prompts, QWidget* parent = nullptr);

  /// Shows a file that is open, by these options; reports bad records and faults.
  void Take(std::unique_ptr<TsFile> file, const TsFile::Options& options);
  WaveformView& View() { return view_; }
  RecordBook* Book() { return book_; }
  void GoTo(std::uint64_t number) { Page(view_.GoTo(number)); }
  /// Takes over how another file was shown, but for auto play.
  void Adopt(const WaveformSettings& settings, bool has_small_unit);
  /// Takes over which traces of another file were hidden and enlarged, where both have the same
  /// channels.
  void Adopt(const TraceArrangement& traces, const std::vector<std::string>& channels);
  const TraceArrangement& Traces() const { return traces_; }
  std::vector<std::string> TraceNames() const;
  /// Looks whether the file has changed, as it does by itself now and then.
  void LookAtFile() { watch_->Look(); }
  /// Asks for a file for what is seen.
  void SaveCsv();

  QString Title() const override;
  void ScrollBack() override { Page(view_.Previous()); }
  void ScrollForward() override { Page(view_.Next()); }
  void Reload() override;
  /// The dialog "Wavefrom Display Parameters".
  void EditSettings();
  /// The dialog of the gains that the record is shown by.
  void EditGains();
  /// Draws the view again and shows its place in the status bar.
  void ShowView();

 signals:
  /// This record is shown now, or again.
  void recordShown();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void TakeAgain(std::unique_ptr<TsLoading> loading);
  void OnFate(FileFate fate);
  void TakeMore();
  void LimitNumber();
  void AddPaging();
  void AddViewing();
  void AddSaving();
  void Page(bool is_other);
  void Zoom(double factor);
  void ZoomValues(double factor);
  void PanValues(double share);
  void Pan(double share);
  void MoveCursor(WaveformView::Cursor cursor, int scans);
  void Toggle(bool WaveformSettings::*setting);
  void FollowSettings();
  void ShowReadings();
  void Copy();
  void CopyReadings();
  void Save();
  bool RemoveCursors();

  Prompts* prompts_;
  WaveformView view_;
  TraceArrangement traces_;
  FileWatch* watch_;
  QLabel* fate_;
  RecordBook* book_;
  WaveformPlot* plot_;
  RecordStrip* records_;
  QTableWidget* readings_;
  LoadingStrip* strip_;
  QSplitter* halves_ = nullptr;
  QSpinBox* number_;
  QAction* auto_play_ = nullptr;
  QAction* auto_scale_ = nullptr;
  QAction* small_unit_ = nullptr;
  QAction* clock_ = nullptr;
  QAction* counts_ = nullptr;
  ShapeCommands* shape_ = nullptr;
  TraceCommands* channels_ = nullptr;
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_DISPLAY_H_
