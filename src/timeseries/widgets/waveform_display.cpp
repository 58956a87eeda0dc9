// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_display.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QSplitter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "files/path_text.h"
#include "timeseries/waveform_text.h"
#include "timeseries/widgets/waveform_dlg.h"
#include "timeseries/widgets/waveform_export.h"
#include "timeseries/widgets/waveform_gain_dlg.h"
#include "timeseries/widgets/waveform_readings.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr double kZoomStep = 1.5;
constexpr double kPanStep = 0.1;  // of what is visible
constexpr int kMilliseconds = 1000;

}  // namespace

CWaveformDisplay::CWaveformDisplay(Prompts* prompts, QWidget* parent)
    : CDisplay(QStringLiteral("Waveform"), parent),
      prompts_(prompts),
      watch_(new FileWatch(this)),
      fate_(new QLabel(this)),
      book_(new RecordBook(this)),
      plot_(new WaveformPlot(&view_, &traces_, this)),
      records_(new RecordStrip(book_, this)),
      readings_(MakeReadings()),
      strip_(new LoadingStrip(this)),
      number_(new QSpinBox(this)) {
  setObjectName(QStringLiteral("waveform-display"));
  setFocusPolicy(Qt::StrongFocus);
  AddPaging();
  AddViewing();
  shape_ = new ShapeCommands(&view_, this);
  channels_ = new TraceCommands(&view_, &traces_, this);
  Bar()->addSeparator();
  AddSaving();

  PrepareReadings(readings_);
  halves_ = new QSplitter(this);
  halves_->addWidget(plot_);
  halves_->addWidget(readings_);
  halves_->setStretchFactor(0, 1);
  halves_->setChildrenCollapsible(false);
  fate_->setObjectName(QStringLiteral("fate"));
  fate_->setWordWrap(true);
  fate_->setMargin(4);
  fate_->hide();
  layout()->addWidget(strip_);
  layout()->addWidget(fate_);
  layout()->addWidget(halves_);
  layout()->addWidget(records_);
  setTabOrder(number_, readings_);
  setTabOrder(readings_, records_);
  connect(records_, &RecordStrip::chosen, this, &CWaveformDisplay::GoTo);
  connect(watch_, &FileWatch::changed, this, &CWaveformDisplay::OnFate);
  connect(strip_, &LoadingStrip::ended, this, [this] { TakeAgain(strip_->Take()); });
  connect(strip_, &LoadingStrip::cancelled, this, &CDisplay::told);
  connect(plot_, &WaveformPlot::changed, this, [this] {
    channels_->Follow();
    ShowReadings();
  });
  connect(plot_, &WaveformPlot::menuRequested, this, [this](const QPoint& at) {
    ShowView();  // the channel below the mouse is selected
    ShowMenu(at);
  });
  connect(shape_, &ShapeCommands::changed, this, &CWaveformDisplay::ShowView);
  connect(channels_, &TraceCommands::changed, this, &CWaveformDisplay::ShowView);
  connect(channels_, &TraceCommands::told, this, &CDisplay::told);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (!view_.Next()) {
      Toggle(&WaveformSettings::auto_play);  // the end
    }
    ShowView();
  });
}

void CWaveformDisplay::AddPaging() {
  AddButton("First", "first", "First segment", Qt::CTRL | Qt::Key_Home,
            [this] { Page(view_.First()); });
  AddButton("Previous", "previous", "Previous segment", Qt::Key_PageUp, [this] { ScrollBack(); });
  number_->setObjectName(QStringLiteral("segment"));
  number_->setAccessibleName(QStringLiteral("Segment"));
  number_->setToolTip(QStringLiteral("Number of the segment shown"));
  number_->setLocale(QLocale::c());
  number_->setKeyboardTracking(false);
  connect(number_, &QSpinBox::valueChanged, this, [this](int number) {
    Page(number > 0 && view_.GoTo(static_cast<std::uint64_t>(number)));
  });
  connect(number_, &QSpinBox::editingFinished, this, [this] { setFocus(); });
  number_->installEventFilter(this);
  Bar()->addWidget(number_);
  AddButton("Next", "next", "Next segment", Qt::Key_PageDown, [this] { ScrollForward(); });
  AddButton("Last", "last", "Last segment", Qt::CTRL | Qt::Key_End, [this] { Page(view_.Last()); });
  AddButton("Next bad", "next-bad", "Next segment that the box marked as bad", Qt::Key_B,
            [this] { Page(view_.NextBad()); });
  auto_play_ = AddButton("Auto play", "auto-play", "Step through the segments by the timer",
                         Qt::Key_P, [this] { Toggle(&WaveformSettings::auto_play); });
  auto_play_->setCheckable(true);
  Bar()->addSeparator();
}

void CWaveformDisplay::AddViewing() {
  AddButton("Zoom in", "zoom-in", "Show less time; with the mouse: wheel", Qt::Key_Plus,
            [this] { Zoom(kZoomStep); });
  AddButton("Zoom out", "zoom-out", "Show more time", Qt::Key_Minus,
            [this] { Zoom(1 / kZoomStep); });
  AddButton("All", "all", "The whole segment", Qt::Key_0, [this] {
    view_.ShowAllTimes();
    ShowView();
  });
  AddButton("Taller", "taller", "Larger traces; with the mouse: Ctrl and wheel", Qt::Key_Up,
            [this] { ZoomValues(kZoomStep); });
  AddButton("Flatter", "flatter", "Smaller traces", Qt::Key_Down,
            [this] { ZoomValues(1 / kZoomStep); });
  AddButton("Reset views", "reset", "The whole segment and all traces as they open", Qt::Key_R,
            [this] {
              view_.ResetViews();
              traces_.ResetValues();
              ShowView();
            });
  AddKey("Pan up", "pan-up", "Traces up; with the mouse: drag with Ctrl", Qt::CTRL | Qt::Key_Up,
         [this] { PanValues(-kPanStep); });
  AddKey("Pan down", "pan-down", "Traces down", Qt::CTRL | Qt::Key_Down,
         [this] { PanValues(kPanStep); });
  auto_scale_ = AddButton("Auto scale", "auto-scale", "Scale each trace to fill its place",
                          Qt::Key_A, [this] { Toggle(&WaveformSettings::auto_scale); });
  auto_scale_->setCheckable(true);
  auto_scale_->setChecked(view_.Settings().auto_scale);
  small_unit_ =
      AddButton("Microvolt", "small-unit", "Electric channels in microvolts", Qt::Key_U, [this] {
        view_.SetSmallUnit(small_unit_->isChecked());
        ShowView();
      });
  small_unit_->setCheckable(true);
  clock_ = AddKey("Clock time", "clock", "Times of day along the axis in place of seconds",
                  Qt::Key_T, [this] { Toggle(&WaveformSettings::has_clock); });
  counts_ = AddKey("Counts", "counts", "Counts of the box in place of units", Qt::Key_C,
                   [this] { Toggle(&WaveformSettings::has_counts); });
  clock_->setCheckable(true);
  counts_->setCheckable(true);
  AddKey("Gains...", "gains", "Gains that a segment was recorded with", Qt::Key_G,
         [this] { EditGains(); });
  Bar()->addSeparator();
}

void CWaveformDisplay::AddSaving() {
  AddButton("Copy", "copy", "Copy what is visible as text", QKeySequence::Copy, [this] { Copy(); });
  AddButton("Copy readings", "copy-readings", "Copy the readings of the cursors as text",
            Qt::CTRL | Qt::SHIFT | Qt::Key_C, [this] { CopyReadings(); });
  AddReload();
  AddFiles();
  AddKey("Save as CSV...", "save-csv", "Save what is visible as comma-separated values",
         Qt::CTRL | Qt::Key_E, [this] { SaveCsv(); });
  AddButton("Save picture...", "save-picture", "Save the picture as PNG, SVG or PDF",
            Qt::CTRL | Qt::SHIFT | Qt::Key_P, [this] { Save(); });
  AddButton("Close", "close", "Back to the table", Qt::Key_Escape, [this] {
    if (strip_->IsReading()) {
      strip_->Cancel();
    } else if (!RemoveCursors()) {
      emit closeRequested();
    }
  });
}

void CWaveformDisplay::Take(std::unique_ptr<TsFile> file, const TsFile::Options& options) {
  view_.Take(std::move(file), options);
  LimitNumber();
  book_->Follow(view_.File());
  watch_->Follow(&view_.File());
  if (const std::string bad = view_.File().BadRecordText(); !bad.empty()) {
    prompts_->ShowWarning("Orvane", bad);
  }
  if (const std::string& error = view_.File().ReadError(); !error.empty()) {
    prompts_->ShowWarning("Orvane", error);
  }
  ShowView();
}

void CWaveformDisplay::LimitNumber() {
  const QSignalBlocker blocker(number_);
  number_->setRange(
      view_.Count() == 0 ? 0 : 1,
      static_cast<int>(std::min<std::uint64_t>(view_.Count(), std::numeric_limits<int>::max())));
}

QString CWaveformDisplay::Title() const { return TextFromPath(view_.File().Path().filename()); }

void CWaveformDisplay::ShowView() {
  shape_->Follow();
  channels_->Follow();
  plot_->SetOther(shape_->Other().Follow(view_));
  plot_->ShowView();
  ShowReadings();
  const QSignalBlocker blocker(number_);
  number_->setValue(
      static_cast<int>(std::min<std::uint64_t>(view_.Number(), std::numeric_limits<int>::max())));
  records_->SetShown(view_.Number());
  emit recordShown();
}

void CWaveformDisplay::ShowReadings() {
  const bool has_cursor =
      view_.Reading(WaveformView::kFirstCursor) || view_.Reading(WaveformView::kSecondCursor);
  const bool was_hidden = readings_->isHidden();
  readings_->setVisible(has_cursor);
  FillReadings(view_, readings_);
  if (has_cursor) {
    readings_->resizeColumnsToContents();
    const int length = readings_->horizontalHeader()->length() + 24;
    const int wanted = std::min(length, halves_->width() / 2);
    if (was_hidden || readings_->width() < wanted) {
      halves_->setSizes({halves_->width() - wanted, wanted});
    }
  }
  const QString problem = QString::fromStdString(view_.Problem());
  emit told(TextFromBytes(view_.StatusBarText()) +
            (problem.isEmpty() ? QString() : QStringLiteral(" - ") + problem));
}

void CWaveformDisplay::Page(bool is_other) {
  if (is_other) {
    ShowView();
  }
}

void CWaveformDisplay::Zoom(double factor) {
  const auto reading = view_.Reading(WaveformView::kFirstCursor);
  const ValueRange times = view_.VisibleTimes();
  const bool is_visible = reading && reading->time >= times.low && reading->time <= times.high;
  view_.ZoomTimes(factor, is_visible ? reading->time : (times.low + times.high) / 2);
  ShowView();
}

void CWaveformDisplay::ZoomValues(double factor) {
  view_.ZoomValues(factor);
  ShowView();
}

void CWaveformDisplay::PanValues(double share) {
  view_.PanValues(share);
  ShowView();
}

void CWaveformDisplay::Pan(double share) {
  const ValueRange times = view_.VisibleTimes();
  view_.PanTimes((times.high - times.low) * share);
  ShowView();
}

// The first step puts the cursor into the middle; the visible part follows it.
void CWaveformDisplay::MoveCursor(WaveformView::Cursor cursor, int scans) {
  const auto reading = view_.Reading(cursor);
  const ValueRange times = view_.VisibleTimes();
  double time = (times.low + times.high) / 2;
  if (reading) {
    const auto scan = static_cast<std::int64_t>(reading->scan) + scans;
    time = view_.TimeOf(static_cast<std::size_t>(std::max<std::int64_t>(scan, 0)));
  }
  view_.SetCursor(cursor, time);
  if (time < times.low || time > times.high) {
    view_.PanTimes(time < times.low ? time - times.low : time - times.high);
  }
  ShowView();
}

void CWaveformDisplay::Toggle(bool WaveformSettings::*setting) {
  WaveformSettings settings = view_.Settings();
  settings.*setting = !(settings.*setting);
  view_.SetSettings(settings);
  FollowSettings();
}

void CWaveformDisplay::FollowSettings() {
  const WaveformSettings& settings = view_.Settings();
  auto_scale_->setChecked(settings.auto_scale);
  auto_play_->setChecked(settings.auto_play);
  clock_->setChecked(settings.has_clock);
  counts_->setChecked(settings.has_counts);
  timer_.stop();
  if (settings.auto_play) {
    timer_.start(static_cast<int>(settings.timer_seconds * kMilliseconds));
  }
  ShowView();
}

void CWaveformDisplay::EditSettings() {
  WaveformForm form(view_);
  timer_.stop();
  CWaveformDlg(&form, &view_, prompts_, this).exec();
  FollowSettings();
}

void CWaveformDisplay::EditGains() {
  if (const std::string reason = view_.WhyNoGains(); !reason.empty()) {
    emit told(TextFromBytes(reason));
    return;
  }
  if (view_.Settings().auto_play) {
    Toggle(&WaveformSettings::auto_play);  // the gains are those of the segment that is seen
  }
  WaveformGainForm form(view_);
  CWaveformGainDlg(&form, &view_, prompts_, this).exec();
  ShowView();
}

void CWaveformDisplay::Copy() {
  QApplication::clipboard()->setText(TextFromBytes(VisibleText(view_)));
  emit told(QStringLiteral("The visible scans were copied as text"));
}

void CWaveformDisplay::CopyReadings() {
  const QString readings = TextFromBytes(ReadingsText(view_));
  if (!readings.isEmpty()) {
    QApplication::clipboard()->setText(readings);
  }
  emit told(readings.isEmpty() ? QStringLiteral("There is no cursor whose readings could be copied")
                               : QStringLiteral("The readings of the cursors were copied as text"));
}

// What is shown stays until the file is read.
void CWaveformDisplay::Reload() {
  auto loading = std::make_unique<TsLoading>(view_.File().Path(), view_.Options());
  if (loading->WaitFor(kLoadingPatience)) {
    TakeAgain(std::move(loading));
  } else {
    strip_->Follow(std::move(loading));
  }
}

void CWaveformDisplay::TakeAgain(std::unique_ptr<TsLoading> loading) {
  std::unique_ptr<TsFile> fresh = loading->Take();
  if (loading->Outcome()) {
    view_.TakeAgain(std::move(fresh));
    shape_->Other().Forget();
    LimitNumber();
    const bool is_other = watch_->Fate() == FileFate::kReplaced;
    if (is_other && !book_->IsKept()) {
      emit told(QStringLiteral("The ticks were for the file before; they are gone"));
    }
    is_other ? book_->Follow(view_.File()) : book_->FollowAgain(view_.File());
    watch_->Follow(&view_.File());
    fate_->hide();
  }
  ShowView();
  if (!loading->Outcome()) {
    emit told(QStringLiteral("Not read again: ") +
              QString::fromStdString(loading->Outcome().Message()));
  }
}

// What was read stays on display, whatever becomes of the file.
void CWaveformDisplay::OnFate(FileFate fate) {
  const QString name = Title();
  QString text;
  if (fate == FileFate::kShorter) {
    text = QStringLiteral("%1 has become shorter; F5 reads it again").arg(name);
  } else if (fate == FileFate::kGone) {
    text = QStringLiteral("%1 is no longer there").arg(name);
  } else if (fate == FileFate::kReplaced) {
    text = QStringLiteral("Another file has the name %1 now; F5 reads it").arg(name);
  }
  fate_->setText(text);
  QPalette warning = palette();
  warning.setColor(QPalette::WindowText, WarningColor(palette()));
  fate_->setPalette(warning);
  fate_->setVisible(!text.isEmpty());
  if (!text.isEmpty()) {
    emit told(text);
  } else if (fate == FileFate::kGrown) {
    TakeMore();
  }
}

// So many at a time that no key press waits.
void CWaveformDisplay::TakeMore() {
  constexpr std::uint64_t kMostAtOnce = 2000;
  const TsIndex::Growth growth = view_.Extend(kMostAtOnce);
  if (growth.more == 0 && !growth.is_last_whole_now) {
    return;  // the next record is not whole yet
  }
  shape_->Other().Forget();
  LimitNumber();
  if (growth.is_last_whole_now) {
    book_->FollowAgain(view_.File());
  } else {
    book_->Grow(view_.File());
  }
  ShowView();
  emit told(growth.more == 1 ? QStringLiteral("1 record more")
                             : QStringLiteral("%1 records more").arg(growth.more));
  if (growth.more == kMostAtOnce) {
    QMetaObject::invokeMethod(watch_, &FileWatch::Look, Qt::QueuedConnection);
  }
}

void CWaveformDisplay::SaveCsv() {
  const QString said = AskAndSaveCsv(view_, traces_.Shown(view_.TraceCount()), this);
  if (!said.isEmpty()) {
    emit told(said);
  }
}

void CWaveformDisplay::Save() {
  const QString name =
      TextFromPath(view_.File().Path().stem()) + QStringLiteral("-%1").arg(view_.Number());
  AskAndSavePicture(plot_->size(), name, this, [this](const QString& path, const QSize& size) {
    return plot_->Save(path, size);
  });
}

bool CWaveformDisplay::RemoveCursors() {
  bool had_any = false;
  for (const auto cursor : {WaveformView::kFirstCursor, WaveformView::kSecondCursor}) {
    had_any = had_any || view_.Reading(cursor).has_value();
    view_.SetCursor(cursor, std::nullopt);
  }
  ShowView();
  return had_any;
}

void CWaveformDisplay::keyPressEvent(QKeyEvent* event) {
  const bool has_shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  const bool has_control = (event->modifiers() & Qt::ControlModifier) != 0;
  const int direction = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
  constexpr int kLeap = 10;
  if (direction == 0) {
    CDisplay::keyPressEvent(event);
  } else if (has_shift) {
    MoveCursor(WaveformView::kSecondCursor, has_control ? kLeap * direction : direction);
  } else if (has_control) {
    MoveCursor(WaveformView::kFirstCursor, direction);
  } else {
    Pan(kPanStep * direction);
  }
}

// While the number of the segment has the focus it takes its own keys; Escape leaves it.
bool CWaveformDisplay::eventFilter(QObject* watched, QEvent* event) {
  const bool is_override = event->type() == QEvent::ShortcutOverride;
  if (watched == number_ && (is_override || event->type() == QEvent::KeyPress)) {
    const int key = dynamic_cast<QKeyEvent*>(event)->key();
    const bool is_number =
        key == Qt::Key_Up || key == Qt::Key_Down || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (is_override && (is_number || key == Qt::Key_Escape)) {
      event->accept();
      return true;
    }
    if (!is_override && key == Qt::Key_Escape) {
      const QSignalBlocker blocker(number_);  // drops what was typed so far
      number_->setValue(static_cast<int>(view_.Number()));
      setFocus();
      return true;
    }
  }
  return CDisplay::eventFilter(watched, event);
}

void CWaveformDisplay::Adopt(const WaveformSettings& settings, bool has_small_unit) {
  WaveformSettings adopted = settings;
  adopted.auto_play = false;
  view_.SetSettings(adopted);
  view_.SetSmallUnit(has_small_unit);
  small_unit_->setChecked(has_small_unit);
  FollowSettings();
}

void CWaveformDisplay::Adopt(const TraceArrangement& traces,
                             const std::vector<std::string>& channels) {
  if (channels == TraceNames()) {
    traces_ = traces;
    traces_.ResetValues();
  }
}

std::vector<std::string> CWaveformDisplay::TraceNames() const {
  std::vector<std::string> names;
  for (std::size_t trace = 0; trace < view_.TraceCount(); ++trace) {
    names.push_back(view_.Channel(trace).name);
  }
  return names;
}

}  // namespace orvane
