// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_FIELD_DISPLAYS_H_
#define ORVANE_APP_FIELD_DISPLAYS_H_

#include <QObject>
#include <QStackedWidget>
#include <memory>

#include "app/orvane_doc.h"
#include "app/qt_prompts.h"
#include "response/display_form.h"
#include "timeseries/trace_arrangement.h"
#include "timeseries/ts_loading.h"
#include "timeseries/waveform_view.h"
#include "ui/display.h"

namespace orvane {

/// The field files on display: one at a time is in the window in place of the table. How one
/// was shown is how the next one is.
class FieldDisplays : public QObject {
  Q_OBJECT

 public:
  enum class Kind { kNone, kWaveform, kCalibration, kStack };
  /// What a file is by its name.
  static Kind KindOf(const QString& path);

  /// All must outlive this. The first page of `stack` is the table's.
  FieldDisplays(COrvaneDoc* doc, QtPrompts* prompts, QStackedWidget* stack, QWidget* window);

  /// Null where the table is shown.
  CDisplay* Current() const { return current_; }
  bool ShowsWaveform() const;
  /// Shows a field file in place of what was there. Takes the display over.
  void Show(CDisplay* display);
  /// Brings the table back.
  void Close();

  /// False, after a message, where the file cannot be shown. A waveform whose records take time is
  /// read beside the window and shown later, if it can be.
  bool OpenWaveform(const QString& path);
  /// Whether a waveform is being read, to be shown.
  bool IsReading() const;
  bool OpenCalibration(const QString& path);
  bool OpenStack(const QString& path);
  /// Opens the file of the same kind that is next in the folder, or before; one that cannot be read
  /// is told, and the next call goes on from it.
  void OpenBeside(int by);
  void AskForWaveform();
  void AskForCalibration();
  void EditWaveformSettings();
  void EditCalibrationRanges();

 signals:
  /// Another display, or none, or another of its parts is shown.
  void changed();
  /// For the status bar.
  void told(const QString& text);

 private:
  QString Ask(const QString& title, std::string_view filters, const QString& folder,
              const char* key);
  bool Open(Kind kind, const QString& path);
  void KeepWaveformSettings();
  void Leave();
  bool Read(std::unique_ptr<TsLoading> loading);
  void Follow(std::unique_ptr<TsLoading> loading);
  bool ShowRead(std::unique_ptr<TsLoading> loading);
  bool TellFault(const std::string& message, const std::string& reason);

  COrvaneDoc* doc_;
  QtPrompts* prompts_;
  QStackedWidget* stack_;
  QWidget* window_;
  CDisplay* current_ = nullptr;
  QString path_;       // opened last, or tried
  QString shown_;      // the waveform that was shown last
  QString return_to_;  // shown again where the file beside it, which takes time, cannot be read
  Kind kind_ = Kind::kNone;
  WaveformSettings waveform_settings_;
  TraceArrangement traces_;
  std::vector<std::string> trace_names_;
  bool has_small_unit_ = false;
  CalDisplay calibration_ranges_;
};

}  // namespace orvane

#endif  // ORVANE_APP_FIELD_DISPLAYS_H_
