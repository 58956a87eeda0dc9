// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_display.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLayout>
#include <QSplitter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "files/path_text.h"
#include "timeseries/measure.h"
#include "timeseries/widgets/filter_menu.h"
#include "timeseries/widgets/waveform_dlg.h"
#include "timeseries/widgets/waveform_gain_dlg.h"
#include "ui/byte_text.h"
#include "ui/list_item.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr double kZoomStep = 1.5;
constexpr double kPanStep = 0.1;  // of what is visible
constexpr int kMilliseconds = 1000;
constexpr int kCursorColumns = 4;  // label, both cursors, difference

QString Number(double value) { return QString::fromStdString(FormatReal(value, 7)); }

}  // namespace

CWaveformDisplay::CWaveformDisplay(Prompts* prompts, QWidget* parent)
    : CDisplay(QStringLiteral("Waveform"), parent),
      prompts_(prompts),
      book_(new RecordBook(this)),
      plot_(new WaveformPlot(&view_, this)),
      records_(new RecordStrip(book_, this)),
      readings_(MakeReadings()),
      strip_(new LoadingStrip(this)),
      number_(new QSpinBox(this)) {
  setObjectName(QStringLiteral("waveform-display"));
  setFocusPolicy(Qt::StrongFocus);
  AddPaging();
  AddViewing();
  AddShaping();
  AddSaving();

  const QStringList titles{QString(),
                           QStringLiteral("Cursor 1"),
                           QStringLiteral("Cursor 2"),
                           QStringLiteral("Difference"),
                           QStringLiteral("Mean"),
                           QStringLiteral("RMS"),
                           QStringLiteral("Minimum"),
                           QStringLiteral("Maximum"),
                           QStringLiteral("Slope (per s)")};
  readings_->setColumnCount(static_cast<int>(titles.size()));
  readings_->setHorizontalHeaderLabels(titles);

  halves_ = new QSplitter(this);
  halves_->addWidget(plot_);
  halves_->addWidget(readings_);
  halves_->setStretchFactor(0, 1);
  halves_->setChildrenCollapsible(false);
  layout()->addWidget(strip_);
  layout()->addWidget(halves_);
  layout()->addWidget(records_);
  setTabOrder(number_, readings_);
  setTabOrder(readings_, records_);
  connect(records_, &RecordStrip::chosen, this, &CWaveformDisplay::GoTo);
  connect(strip_, &LoadingStrip::ended, this, [this] { TakeAgain(strip_->Take()); });
  connect(strip_, &LoadingStrip::cancelled, this, &CDisplay::told);
  connect(plot_, &WaveformPlot::changed, this, &CWaveformDisplay::ShowReadings);
  connect(plot_, &WaveformPlot::menuRequested, this, &CWaveformDisplay::ShowMenu);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (!view_.Next()) {
      TogglePlay();  // the end
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
                         Qt::Key_P, [this] { TogglePlay(); });
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
              ShowView();
            });
  AddKey("Pan up", "pan-up", "Traces up; with the mouse: drag with Ctrl", Qt::CTRL | Qt::Key_Up,
         [this] { PanValues(kPanStep); });
  AddKey("Pan down", "pan-down", "Traces down", Qt::CTRL | Qt::Key_Down,
         [this] { PanValues(-kPanStep); });
  auto_scale_ = AddButton("Auto scale", "auto-scale", "Scale each trace to fill its place",
                          Qt::Key_A, [this] { ToggleAutoScale(); });
  auto_scale_->setCheckable(true);
  auto_scale_->setChecked(view_.Settings().auto_scale);
  small_unit_ =
      AddButton("Microvolt", "small-unit", "Electric channels in microvolts", Qt::Key_U, [this] {
        view_.SetSmallUnit(small_unit_->isChecked());
        ShowView();
      });
  small_unit_->setCheckable(true);
  AddKey("Gains...", "gains", "Gains that a segment was recorded with", Qt::Key_G,
         [this] { EditGains(); });
  Bar()->addSeparator();
}

void CWaveformDisplay::AddShaping() {
  fold_ = AddKey("Fold", "fold", "The mean period of the segment and its spread", Qt::Key_F,
                 [this] { ToggleFold(); });
  filters_ = AddKey("Filters...", "filters", "What is done to the traces before they are shown",
                    Qt::Key_L, [this] { ChooseFilters(); });
  next_too_ = AddKey("Next segment too", "next-too", "Draw the next segment over this one",
                     Qt::Key_O, [this] { ShowOther(OtherRecord::Which::kNext); });
  previous_too_ =
      AddKey("Previous segment too", "previous-too", "Draw the previous segment over this one",
             Qt::SHIFT | Qt::Key_O, [this] { ShowOther(OtherRecord::Which::kPrevious); });
  AddKey("Other segment too...", "other-too", "Draw a segment of your choice over this one",
         Qt::CTRL | Qt::SHIFT | Qt::Key_O, [this] { ChooseOther(); });
  for (QAction* action : {fold_, next_too_, previous_too_}) {
    action->setCheckable(true);
  }
  Bar()->addAction(fold_);
  Bar()->addAction(filters_);
  Bar()->addSeparator();
}

void CWaveformDisplay::ToggleFold() {
  RecordShape shape = view_.Shape();
  shape.folds = !shape.folds;
  view_.SetShape(shape);
  ShowView();
}

// Below its button, or in the middle where that has no room.
void CWaveformDisplay::ChooseFilters() {
  FilterMenu menu(view_.Shape().filter, SampleRate(view_.Record().Header()), this);
  connect(&menu, &FilterMenu::chosen, this, [this](const ViewFilter& filter) {
    RecordShape shape = view_.Shape();
    shape.filter = filter;
    view_.SetShape(shape);
    ShowView();
  });
  const QWidget* button = Bar()->widgetForAction(filters_);
  const bool is_seen = button != nullptr && button->isVisible();
  menu.exec(is_seen ? button->mapToGlobal(button->rect().bottomLeft())
                    : mapToGlobal(rect().center()));
}

// The same again takes it away.
void CWaveformDisplay::ShowOther(OtherRecord::Which which) {
  other_.Choose(other_.Chosen() == which ? OtherRecord::Which::kNone : which);
  ShowView();
}

void CWaveformDisplay::ChooseOther() {
  bool is_chosen = false;
  const int most =
      static_cast<int>(std::min<std::uint64_t>(view_.Count(), std::numeric_limits<int>::max()));
  const int number =
      QInputDialog::getInt(this, QStringLiteral("Other Segment"), QStringLiteral("Number"),
                           static_cast<int>(view_.Number()), 1, std::max(most, 1), 1, &is_chosen);
  if (is_chosen) {
    other_.Choose(OtherRecord::Which::kChosen, static_cast<std::uint64_t>(number));
    ShowView();
  }
}

// What cannot be folded says why.
void CWaveformDisplay::FollowShape() {
  const bool folds = view_.Shape().folds;
  fold_->setChecked(folds);
  fold_->setEnabled(folds || view_.WhyNoFold().empty());
  fold_->setToolTip(view_.WhyNoFold().empty()
                        ? QStringLiteral("The mean period of the segment and its spread (F)")
                        : QStringLiteral("Not folded: ") + TextFromBytes(view_.WhyNoFold()));
  next_too_->setChecked(other_.Chosen() == OtherRecord::Which::kNext);
  previous_too_->setChecked(other_.Chosen() == OtherRecord::Which::kPrevious);
  plot_->SetOther(other_.Follow(view_));
}

void CWaveformDisplay::AddSaving() {
  AddButton("Copy", "copy", "Copy what is visible as text", QKeySequence::Copy, [this] { Copy(); });
  AddButton("Copy readings", "copy-readings", "Copy the readings of the cursors as text",
            Qt::CTRL | Qt::SHIFT | Qt::Key_C, [this] { CopyReadings(); });
  AddReload();
  AddButton("Save picture...", "save-picture", "Save the picture as PNG, SVG or PDF",
            Qt::CTRL | Qt::Key_P, [this] { Save(); });
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
  FollowShape();
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
  FillReadings();
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

// A row for the time and one for each trace; between two cursors also what is measured there.
void CWaveformDisplay::FillReadings() {
  const bool has_first = view_.Reading(WaveformView::kFirstCursor).has_value();
  const bool has_second = view_.Reading(WaveformView::kSecondCursor).has_value();
  const bool has_both = has_first && has_second;
  for (int column = kCursorColumns; column < readings_->columnCount(); ++column) {
    readings_->setColumnHidden(column, !has_both);
  }
  const int rows = static_cast<int>(view_.TraceCount()) + (has_both ? 2 : 1);
  readings_->setRowCount(has_first || has_second ? rows : 0);
  for (int row = 0; row < readings_->rowCount(); ++row) {
    const QStringList texts = ReadingsOf(row);
    for (int column = 0; column < readings_->columnCount(); ++column) {
      auto* item = OnlyShown(new QTableWidgetItem(texts.value(column)));
      item->setTextAlignment(column == 0 ? Qt::AlignLeft | Qt::AlignVCenter
                                         : Qt::AlignRight | Qt::AlignVCenter);
      readings_->setItem(row, column, item);
    }
  }
}

QStringList CWaveformDisplay::ReadingsOf(int row) const {
  const auto first = view_.Reading(WaveformView::kFirstCursor);
  const auto second = view_.Reading(WaveformView::kSecondCursor);
  const auto trace = static_cast<std::size_t>(row) - 1;
  if (row > static_cast<int>(view_.TraceCount())) {
    return {QStringLiteral("1 / dt (Hz)"), QString(), QString(), DistanceText()};
  }
  const auto value = [&](const WaveformReading& reading) {
    return row == 0 ? reading.time : reading.values[trace];
  };
  QStringList texts{TextFromBytes(row == 0 ? view_.TimeLabel() : view_.Channel(trace).Label()),
                    first ? Number(value(*first)) : QString(),
                    second ? Number(value(*second)) : QString(),
                    first && second ? Number(value(*second) - value(*first)) : QString()};
  if (row > 0 && first && second) {
    if (const auto m =
            Measure(view_.Values(trace), 1 / view_.SecondsPerScan(), first->time, second->time)) {
      texts << Number(m->mean) << Number(m->rms) << Number(m->min) << Number(m->max)
            << Number(m->slope);
    }
  }
  return texts;
}

QString CWaveformDisplay::DistanceText() const {
  const double distance = view_.Reading(WaveformView::kSecondCursor)->time -
                          view_.Reading(WaveformView::kFirstCursor)->time;
  return distance == 0 ? QString() : Number(1 / std::abs(distance));
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

void CWaveformDisplay::ToggleAutoScale() {
  WaveformSettings settings = view_.Settings();
  settings.auto_scale = !settings.auto_scale;
  view_.SetSettings(settings);
  FollowSettings();
}

void CWaveformDisplay::TogglePlay() {
  WaveformSettings settings = view_.Settings();
  settings.auto_play = !settings.auto_play;
  view_.SetSettings(settings);
  FollowSettings();
}

void CWaveformDisplay::FollowSettings() {
  const WaveformSettings& settings = view_.Settings();
  auto_scale_->setChecked(settings.auto_scale);
  auto_play_->setChecked(settings.auto_play);
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
    TogglePlay();  // the gains are those of the segment that is seen
  }
  WaveformGainForm form(view_);
  CWaveformGainDlg(&form, &view_, prompts_, this).exec();
  ShowView();
}

void CWaveformDisplay::Copy() {
  QApplication::clipboard()->setText(TextFromBytes(view_.VisibleText()));
  emit told(QStringLiteral("The visible scans were copied as text"));
}

void CWaveformDisplay::CopyReadings() {
  std::string text = view_.CursorText();
  const auto first = view_.Reading(WaveformView::kFirstCursor);
  const auto second = view_.Reading(WaveformView::kSecondCursor);
  if (first && second) {
    std::vector<MeasuredTrace> measured;
    for (std::size_t trace = 0; trace < view_.TraceCount(); ++trace) {
      const auto m =
          Measure(view_.Values(trace), 1 / view_.SecondsPerScan(), first->time, second->time);
      measured.push_back({view_.Channel(trace).Label(), m ? *m : Measurement()});
    }
    text += MeasurementText(first->time, second->time, measured);
  }
  const QString readings = TextFromBytes(text);
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
    other_.Forget();
    LimitNumber();
    book_->Follow(view_.File());
  }
  ShowView();
  if (!loading->Outcome()) {
    emit told(QStringLiteral("Not read again: ") +
              QString::fromStdString(loading->Outcome().Message()));
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
  auto_scale_->setChecked(adopted.auto_scale);
}

}  // namespace orvane
