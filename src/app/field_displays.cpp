// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/field_displays.h"

#include <QRegularExpression>
#include <memory>
#include <utility>

#include "app/field_folders.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "response/widgets/calibration_display.h"
#include "response/widgets/calibration_dlg.h"
#include "spectra/decay_plan.h"
#include "timeseries/ts_companion.h"
#include "timeseries/widgets/loading_display.h"
#include "timeseries/widgets/stack_display.h"
#include "timeseries/widgets/waveform_display.h"
#include "timeseries/widgets/waveform_dlg.h"
#include "ui/byte_text.h"
#include "ui/file_dialogs.h"
#include "ui/qt_path.h"

namespace orvane {

FieldDisplays::FieldDisplays(COrvaneDoc* doc, QtPrompts* prompts, QStackedWidget* stack,
                             QWidget* window)
    : QObject(window), doc_(doc), prompts_(prompts), stack_(stack), window_(window) {}

bool FieldDisplays::ShowsWaveform() const {
  return qobject_cast<CWaveformDisplay*>(current_) != nullptr;
}

FieldDisplays::Kind FieldDisplays::KindOf(const QString& path) {
  static const QRegularExpression waveform(QStringLiteral("\\.(ts[sk0-9])$"),
                                           QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression calibration(QStringLiteral("\\.cl[bc]$"),
                                              QRegularExpression::CaseInsensitiveOption);
  return waveform.match(path).hasMatch()                              ? Kind::kWaveform
         : calibration.match(path).hasMatch()                         ? Kind::kCalibration
         : path.endsWith(QStringLiteral(".trs"), Qt::CaseInsensitive) ? Kind::kStack
                                                                      : Kind::kNone;
}

bool FieldDisplays::Open(Kind kind, const QString& path) {
  return kind == Kind::kWaveform      ? OpenWaveform(path)
         : kind == Kind::kCalibration ? OpenCalibration(path)
                                      : kind == Kind::kStack && OpenStack(path);
}

void FieldDisplays::OpenBeside(int by) {
  const Kind kind = kind_;
  const auto beside = FileBeside(PathFromText(path_), by, [kind](std::string_view name) {
    return KindOf(TextFromBytes(std::string(name))) == kind;
  });
  if (!beside || beside->empty()) {
    const QString name = TextFromPath(PathFromText(path_).filename());
    emit told(!beside  ? TextFromBytes(beside.Message())
              : by < 0 ? QStringLiteral("%1 is the first file of its kind in the folder").arg(name)
                       : QStringLiteral("%1 is the last file of its kind in the folder").arg(name));
    return;
  }
  const QString back = shown_;
  Open(kind, TextFromPath(*beside));
  return_to_ = IsReading() ? back : QString();
}

void FieldDisplays::Show(CDisplay* display) {
  Close();
  current_ = display;
  stack_->addWidget(display);
  stack_->setCurrentWidget(display);
  connect(display, &CDisplay::closeRequested, this, &FieldDisplays::Close);
  connect(display, &CDisplay::fileWanted, this, &FieldDisplays::OpenBeside,
          Qt::QueuedConnection);  // the display that asks goes
  connect(display, &CDisplay::told, this, &FieldDisplays::told);
  connect(display, &CDisplay::told, this, &FieldDisplays::changed);
  display->setFocus();
  emit changed();
}

void FieldDisplays::Close() {
  if (current_ != nullptr) {
    Leave();
    emit told(QStringLiteral("Ready"));
    emit changed();
  }
}

void FieldDisplays::Leave() {
  KeepWaveformSettings();
  stack_->removeWidget(current_);
  current_->deleteLater();
  current_ = nullptr;
  stack_->setCurrentIndex(0);
}

QString FieldDisplays::Ask(const QString& title, std::string_view filters, const QString& folder,
                           const char* key) {
  CFileDialog dialog(title, filters, folder, window_);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.ExecRemembering(QString::fromLatin1(key));
  return dialog.Chosen();
}

void FieldDisplays::AskForWaveform() {
  const QString path =
      Ask(QStringLiteral("Open Waveform"),
          "Tss File (*.tss)|*.tss|Time Series Files (*.ts?)|*.ts?|All Files (*.*)|*.*||",
          FieldFolders(doc_).Data(), "Folders/Waveforms");
  if (!path.isEmpty()) {
    OpenWaveform(path);
  }
}

void FieldDisplays::AskForCalibration() {
  const QString path = Ask(QStringLiteral("Open Calibration File"), CCalibrationDisplay::kFilters,
                           FieldFolders(doc_).Calibrations(), "Folders/Calibrations");
  if (!path.isEmpty()) {
    OpenCalibration(path);
  }
}

bool FieldDisplays::OpenWaveform(const QString& path) {
  path_ = path;
  kind_ = Kind::kWaveform;
  return Read(std::make_unique<TsLoading>(PathFromText(path), TsFile::Options()));
}

bool FieldDisplays::IsReading() const {
  return qobject_cast<CLoadingDisplay*>(current_) != nullptr;
}

bool FieldDisplays::Read(std::unique_ptr<TsLoading> loading) {
  if (loading->WaitFor(kLoadingPatience)) {
    return ShowRead(std::move(loading));
  }
  Follow(std::move(loading));
  return true;
}

void FieldDisplays::Follow(std::unique_ptr<TsLoading> loading) {
  auto* display = new CLoadingDisplay(std::move(loading));
  connect(&display->Strip(), &LoadingStrip::ended, this, [this, display] {
    const QString back = std::exchange(return_to_, QString());
    if (!ShowRead(display->Strip().Take()) && current_ == display) {
      Leave();  // the reason was shown already
      emit changed();
      if (!back.isEmpty()) {
        const QString tried = path_;
        OpenWaveform(back);
        path_ = tried;
      }
    }
  });
  connect(&display->Strip(), &LoadingStrip::cancelled, this, [this](const QString& text) {
    Close();
    emit told(text);
  });
  Show(display);
}

bool FieldDisplays::TellFault(const std::string& message, const std::string& reason) {
  prompts_->ShowWarning("File Open Error", message);
  emit told(QString::fromStdString(reason));
  return false;
}

bool FieldDisplays::ShowRead(std::unique_ptr<TsLoading> loading) {
  std::unique_ptr<TsFile> file = loading->Take();
  const Result<>& opened = loading->Outcome();
  if (!opened && file->FailureText().empty()) {
    return TellFault(OpenFailureText(loading->Path()),
                     FileMessage(loading->Path(), opened.Message()));
  }
  if (!opened) {
    TellFault(file->FailureText(), opened.Message());
    const bool wants_raw_counts =
        file->LacksCompanion() &&
        prompts_->AskYesNo(
            "Orvane", "Without its table the channels of " + PathText(loading->Path().filename()) +
                          " have no names and no units.\n\nShow raw counts?") == Answer::kYes;
    const TsFile::Options options{.header_size = {}, .needs_companion = false};
    return wants_raw_counts && Read(std::make_unique<TsLoading>(loading->Path(), options));
  }
  KeepWaveformSettings();
  auto display = std::make_unique<CWaveformDisplay>(prompts_);
  display->Adopt(waveform_settings_, has_small_unit_);
  display->Take(std::move(file), loading->Options());
  display->Adopt(traces_, trace_names_);
  CWaveformDisplay* shown = display.release();
  Show(shown);
  shown_ = TextFromPath(loading->Path());
  shown->ShowView();
  if (const QString left_out = shown->Book()->LeftOutText(); !left_out.isEmpty()) {
    emit told(left_out);
  }
  return true;
}

bool FieldDisplays::OpenCalibration(const QString& path) {
  auto display = std::make_unique<CCalibrationDisplay>(&calibration_ranges_, prompts_);
  if (!display->Open(path)) {
    if (qobject_cast<CCalibrationDisplay*>(current_) != nullptr) {
      Close();  // no curves are left on display
    }
    return false;
  }
  CCalibrationDisplay* shown = display.release();
  Show(shown);
  connect(shown, &CCalibrationDisplay::rangesRequested, this,
          &FieldDisplays::EditCalibrationRanges);
  shown->ShowView();
  return true;
}

bool FieldDisplays::OpenStack(const QString& path) {
  path_ = path;
  kind_ = Kind::kStack;
  const std::filesystem::path file = PathFromText(path);
  auto display = std::make_unique<CStackDisplay>();
  if (const Result<> opened = display->Open(path); !opened) {
    return TellFault(FileMessage(file, opened.Message()), FileMessage(file, opened.Message()));
  }
  TsCompanion companion;
  const auto table = FindInAnyCase(PathOf(CompanionName(PathText(file))));
  TblReport report;
  if (table && companion.Load(*table, &report) == kOk) {
    display->OfferWindows(RuleCentres(companion.Table()));
  }
  KeepWaveformSettings();
  CStackDisplay* shown = display.release();
  Show(shown);
  shown->ShowView();
  return true;
}

void FieldDisplays::EditCalibrationRanges() {
  auto* shown = qobject_cast<CCalibrationDisplay*>(current_);
  CalDisplay ranges = shown == nullptr ? calibration_ranges_ : shown->View().Display();
  CalDisplayForm form(ranges);
  if (CCalibrationDlg(&form, &ranges, prompts_, window_).exec() != QDialog::Accepted) {
    return;
  }
  if (shown == nullptr) {
    calibration_ranges_ = ranges;
  } else {
    shown->View().SetDisplay(ranges);
    shown->ShowView();
  }
}

void FieldDisplays::EditWaveformSettings() {
  if (auto* waveform = qobject_cast<CWaveformDisplay*>(current_); waveform != nullptr) {
    waveform->EditSettings();
    return;
  }
  WaveformView none;  // the next waveform is shown so
  none.SetSettings(waveform_settings_);
  WaveformForm form(none);
  if (CWaveformDlg(&form, &none, prompts_, window_).exec() == QDialog::Accepted) {
    waveform_settings_ = none.Settings();
  }
}

void FieldDisplays::KeepWaveformSettings() {
  if (auto* waveform = qobject_cast<CWaveformDisplay*>(current_); waveform != nullptr) {
    waveform_settings_ = waveform->View().Settings();
    has_small_unit_ = waveform->View().HasSmallUnit();
    traces_ = waveform->Traces();
    trace_names_ = waveform->TraceNames();
  }
}

}  // namespace orvane
