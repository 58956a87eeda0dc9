// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/calibration_display.h"

#include <QEvent>
#include <QHeaderView>
#include <QLayout>
#include <QSettings>
#include <QSignalBlocker>
#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "response/fit_report.h"
#include "response/widgets/compare_dlg.h"
#include "response/widgets/fit_report_dlg.h"
#include "ui/file_dialogs.h"
#include "ui/list_item.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

// As for every file that cannot be opened.
void Warn(Prompts* prompts, const std::string& message) {
  const bool is_open_failure = message.starts_with("Failed to open");
  prompts->ShowWarning(is_open_failure ? "File Open Error" : "Orvane", message);
}

QString Number(double value) { return QString::fromStdString(FormatReal(value, 6)); }

constexpr int kColumns = 7;
constexpr int kKnownColumns = 5;  // and after: how well the model is known
constexpr int kPassColumn = 1;

// Two digits of what is an estimate itself.
QString Known(const CalReading& reading, double value) {
  constexpr double kLeast = 0.001;  // smaller ones tell nobody anything
  return !reading.known   ? QString()
         : value < kLeast ? QStringLiteral("< 0.001")
                          : QString::fromStdString(FormatReal(value, 2));
}

std::array<QString, kColumns> CellsOf(const CalReading& reading) {
  return {QString::fromStdString(reading.label).section(QLatin1Char(' '), 1),
          QString::number(reading.sweep + 1),
          Number(reading.frequency),
          Number(reading.amplitude),
          Number(reading.phase),
          Known(reading, 100 * (reading.known ? reading.known->wider.amplitude : 0)),
          Known(reading, reading.known ? reading.known->wider.phase : 0)};
}

// What is there already stays: a step of the cursor changes numbers only.
void SetCell(QTableWidget* table, int row, int column, const QString& text) {
  QTableWidgetItem* item = table->item(row, column);
  if (item == nullptr) {
    item = OnlyShown(new QTableWidgetItem(text));
    item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    table->setItem(row, column, item);
  } else if (item->text() != text) {
    item->setText(text);
  }
}

}  // namespace

CCalibrationDisplay::CCalibrationDisplay(CalDisplay* ranges, Prompts* prompts, QWidget* parent)
    : CDisplay(QStringLiteral("Calibration"), parent),
      prompts_(prompts),
      view_(ranges),
      warning_(new QLabel(this)),
      list_(new QListWidget(this)),
      plot_(new CalibrationPlot(&view_, this)),
      readings_(MakeReadings()),
      parts_(new QSplitter(this)) {
  setObjectName(QStringLiteral("calibration-display"));
  setFocusProxy(list_);
  view_.SetTolerance(KeptTolerance());
  AddChannels();
  AddReference();
  AddModel();
  AddOthers();
  warning_->setObjectName(QStringLiteral("warning"));
  warning_->setWordWrap(true);
  warning_->setMargin(4);
  list_->setObjectName(QStringLiteral("channels"));
  list_->setAccessibleName(QStringLiteral("Channels shown"));
  list_->setToolTip(QStringLiteral("Select several with Ctrl or Shift"));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(list_, &QListWidget::itemSelectionChanged, this, &CCalibrationDisplay::OnSelected);
  for (QWidget* part : std::initializer_list<QWidget*>{list_, plot_, readings_}) {
    parts_->addWidget(part);
  }
  parts_->setStretchFactor(1, 1);
  parts_->setChildrenCollapsible(false);
  readings_->horizontalHeader()->setDefaultSectionSize(
      readings_->horizontalHeader()->minimumSectionSize());
  layout()->addWidget(warning_);
  layout()->addWidget(parts_);
  parts_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(plot_, &CalibrationPlot::cursorMoved, this, &CCalibrationDisplay::ShowReadings);
}

void CCalibrationDisplay::AddChannels() {
  AddButton("Previous", "previous", "Previous channel", Qt::Key_PageUp, [this] { Step(-1); });
  AddButton("Next", "next", "Next channel", Qt::Key_PageDown, [this] { Step(1); });
  AddButton("All channels", "all", "All channels at once", Qt::CTRL | Qt::Key_A, [this] {
    view_.ShowAll();
    ShowView();
  });
  Bar()->addSeparator();
}

void CCalibrationDisplay::AddReference() {
  AddButton("Reference...", "reference", "Compare with another calibration file",
            Qt::CTRL | Qt::Key_R, [this] { AskForReference(); });
  ratio_ = AddButton("Ratio", "ratio", "The ratio to the reference", Qt::CTRL | Qt::Key_T, [this] {
    view_.SetRatio(ratio_->isChecked());
    ShowView();
  });
  ratio_->setCheckable(true);
  compare_ = AddButton("Compare...", "compare", "By how much channels differ from the reference",
                       Qt::CTRL | Qt::Key_D, [this] { Compare(); });
  no_reference_ =
      AddButton("No reference", "no-reference", "The file alone", QKeySequence(), [this] {
        view_.RemoveReference();
        ShowView();
      });
  Bar()->addSeparator();
}

void CCalibrationDisplay::AddModel() {
  model_ = AddButton("Model", "model", "The model of the box against its points",
                     Qt::CTRL | Qt::Key_M, [this] {
                       view_.SetModel(model_->isChecked());
                       ShowView();
                     });
  model_->setCheckable(true);
  fit_report_ = AddButton("Fit report...", "fit-report", "The parts of the model and its errors",
                          Qt::CTRL | Qt::Key_I, [this] { ShowFitReport(); });
  Bar()->addSeparator();
}

void CCalibrationDisplay::AddOthers() {
  AddButton("Ranges...", "ranges", "Ranges of the axes", Qt::CTRL | Qt::Key_G,
            [this] { emit rangesRequested(); });
  AddButton("Fit ranges", "fit", "Ranges around all that is shown", Qt::CTRL | Qt::Key_F, [this] {
    view_.FitDisplay();
    ShowView();
  });
  AddKey("Cursor left", "cursor-left", "Previous measured point", Qt::Key_Left,
         [this] { MoveCursor(-1); });
  AddKey("Cursor right", "cursor-right", "Next measured point", Qt::Key_Right,
         [this] { MoveCursor(1); });
  AddReload();
  Bar()->addSeparator();
  AddButton("Save picture...", "save-picture", "Save the picture as PNG, SVG or PDF",
            Qt::CTRL | Qt::SHIFT | Qt::Key_P, [this] { Save(); });
  AddButton("Close", "close", "Back to the table", Qt::Key_Escape, [this] {
    if (view_.Cursor()) {
      view_.SetCursor(std::nullopt);
      plot_->ShowCursor();
      ShowReadings();
    } else {
      emit closeRequested();
    }
  });
}

bool CCalibrationDisplay::Open(const QString& path) {
  const Result<> opened = view_.Open(PathFromText(path));
  ShowFile();
  if (!opened) {
    Warn(prompts_, opened.Message());
  }
  return static_cast<bool>(opened);
}

void CCalibrationDisplay::Reload() {
  const Result<> reloaded = view_.Reload();
  ShowFile();
  if (!reloaded) {
    Warn(prompts_, reloaded.Message());
  }
}

void CCalibrationDisplay::ShowFile() {
  const QString warning =
      QString::fromStdString(view_.HasModel() ? FitWarning(*view_.Model()) : std::string());
  warning_->setText(QStringLiteral("Warning - ") + warning);
  warning_->setVisible(!warning.isEmpty());
  FillList();
  ShowView();
}

bool CCalibrationDisplay::OpenReference(const QString& path) {
  if (const Result<> opened = view_.OpenReference(PathFromText(path)); !opened) {
    Warn(prompts_, opened.Message());
    return false;
  }
  ShowView();
  return true;
}

void CCalibrationDisplay::FillList() {
  const QSignalBlocker blocker(list_);
  list_->clear();
  for (std::size_t c = 0; c < view_.Count(); ++c) {
    OnlyShown(new QListWidgetItem(QStringLiteral("Channel %1").arg(c + 1), list_));
  }
}

// If one channel is shown, the lines have the colours of its passes.
void CCalibrationDisplay::ColorChannels() {
  for (int c = 0; c < list_->count(); ++c) {
    QPixmap color(12, 12);
    color.fill(view_.Shown().size() > 1 ? TraceColor(c, palette()) : QColor(Qt::transparent));
    list_->item(c)->setIcon(color);
  }
  list_->setMaximumWidth(list_->sizeHintForColumn(0) + 32);
}

void CCalibrationDisplay::SelectShown() {
  const QSignalBlocker blocker(list_);
  ColorChannels();
  list_->clearSelection();
  for (const std::size_t channel : view_.Shown()) {
    list_->item(static_cast<int>(channel))->setSelected(true);
  }
  if (!view_.Shown().empty()) {
    const auto current = static_cast<std::size_t>(std::max(list_->currentRow(), 0));
    if (!std::binary_search(view_.Shown().begin(), view_.Shown().end(), current) ||
        list_->currentRow() < 0) {
      list_->setCurrentRow(static_cast<int>(view_.Shown().front()), QItemSelectionModel::NoUpdate);
    }
  }
}

void CCalibrationDisplay::OnSelected() {
  std::vector<std::size_t> channels;
  for (const QModelIndex& index : list_->selectionModel()->selectedIndexes()) {
    channels.push_back(static_cast<std::size_t>(index.row()));
  }
  if (!channels.empty()) {
    view_.Show(std::move(channels));
    ShowView();
  }
}

void CCalibrationDisplay::Step(int by) {
  if (view_.Step(by)) {
    ShowView();
  }
}

void CCalibrationDisplay::ShowView() {
  SelectShown();
  no_reference_->setEnabled(view_.HasReference());
  ratio_->setEnabled(view_.HasReference());
  ratio_->setChecked(view_.ShowsRatio());
  compare_->setEnabled(view_.HasReference());
  if (!view_.HasModel()) {
    model_->setToolTip(QString::fromStdString(view_.WhyNoModel()));
    fit_report_->setToolTip(model_->toolTip());
  }
  model_->setEnabled(view_.HasModel() && !view_.ShowsRatio());
  model_->setChecked(view_.ShowsModel());
  fit_report_->setEnabled(view_.HasModel());
  view_.SetCursor(view_.Cursor());  // the curves may have other points
  plot_->ShowView();
  readings_->setColumnCount(0);  // and none of the widths
  ShowReadings();
}

void CCalibrationDisplay::FillReadings(const std::vector<CalReading>& readings) {
  readings_->setColumnCount(kColumns);
  readings_->setHorizontalHeaderLabels(
      {QStringLiteral("Channel"), QStringLiteral("Pass"), QStringLiteral("Hz"),
       QString::fromStdString(view_.AmplitudeLabel()), QString::fromStdString(view_.PhaseLabel()),
       QStringLiteral("Known to, %"), QStringLiteral("degrees")});
  for (int column = kKnownColumns; column < kColumns; ++column) {
    readings_->setColumnHidden(column, !view_.ShowsModel());
  }
  readings_->setRowCount(static_cast<int>(readings.size()));
  int row = 0;
  for (const CalReading& reading : readings) {
    int column = 0;
    for (const QString& text : CellsOf(reading)) {
      SetCell(readings_, row, column++, text);
    }
    ++row;
  }
  readings_->setColumnHidden(kPassColumn, std::all_of(readings.begin(), readings.end(),
                                                      [](const auto& r) { return r.sweep == 0; }));
}

// As wide as their texts need, never narrower than before, so that neither table nor plot jumps at
// a step of the cursor. The view's own fitting asks each cell for its size, which takes too long.
// Whether any has grown.
bool CCalibrationDisplay::GrowColumns() {
  constexpr int kMargins = 12;
  const QFontMetrics metrics = readings_->fontMetrics();
  bool has_grown = false;
  for (int column = 0; column < readings_->columnCount(); ++column) {
    int width = readings_->horizontalHeader()->sectionSizeHint(column);
    for (int row = 0; row < readings_->rowCount(); ++row) {
      width = std::max(width,
                       metrics.horizontalAdvance(readings_->item(row, column)->text()) + kMargins);
    }
    if (width > readings_->columnWidth(column) && !readings_->isColumnHidden(column)) {
      readings_->setColumnWidth(column, width);
      has_grown = true;
    }
  }
  return has_grown;
}

void CCalibrationDisplay::ShowReadings() {
  const auto readings = view_.Readings();
  const bool was_hidden = readings_->isHidden();
  readings_->setVisible(!readings.empty());
  FillReadings(readings);
  if (GrowColumns() || was_hidden != readings_->isHidden()) {
    DivideWidth();
  }
  std::string line = view_.Title();
  if (!readings.empty()) {
    const CalReading& first = readings.front();
    line += "   " + first.label + ", pass " + FormatInt(std::int64_t{first.sweep} + 1) + ": " +
            FormatReal(first.frequency, 6) + " Hz, " + FormatReal(first.amplitude, 6) + ", " +
            FormatReal(first.phase, 6) + " degrees";
  } else if (!view_.Curves().note.empty()) {
    line += " - " + view_.Curves().note;
  }
  if (readings.empty() && !view_.RangesText().empty()) {
    line += " - " + view_.RangesText();
  }
  emit told(QString::fromStdString(line));
}

// The list as narrow as its texts, the readings too while the plot keeps half.
void CCalibrationDisplay::DivideWidth() {
  const int list = list_->maximumWidth();
  const int wanted = readings_->isHidden() ? 0 : readings_->horizontalHeader()->length() + 24;
  const int readings = std::min(wanted, parts_->width() / 2 - list);
  parts_->setSizes({list, parts_->width() - list - readings, readings});
}

void CCalibrationDisplay::resizeEvent(QResizeEvent* event) {
  CDisplay::resizeEvent(event);
  layout()->activate();
  DivideWidth();
}

void CCalibrationDisplay::AskForReference() {
  CFileDialog dialog(QStringLiteral("Reference Calibration"), kFilters,
                     TextFromPath(view_.Curves().path.parent_path()), this);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() == QDialog::Accepted) {
    OpenReference(dialog.selectedFiles().constFirst());
  }
}

void CCalibrationDisplay::Compare() {
  const auto one = ReadComparedCal(view_.Curves().path);
  const auto other = ReadComparedCal(view_.ReferencePath());
  if (!one || !other) {
    Warn(prompts_, one ? other.Message() : one.Message());
    return;
  }
  Result<CalComparison> comparison = orvane::Compare(*one, *other);
  if (!comparison) {
    Warn(prompts_, comparison.Message());
    return;
  }
  CCompareDlg dialog(std::move(*comparison), this);
  const auto follow = [this] {
    view_.SetTolerance(KeptTolerance());
    plot_->ShowView();
  };
  connect(&dialog, &CCompareDlg::toleranceChanged, this, follow);
  dialog.exec();
}

void CCalibrationDisplay::ShowFitReport() { CFitReportDlg(*view_.Model(), this).exec(); }

void CCalibrationDisplay::MoveCursor(int by) {
  view_.MoveCursor(by);
  plot_->ShowCursor();
  ShowReadings();
}

void CCalibrationDisplay::Save() {
  const QString name = TextFromPath(view_.Curves().path.stem());
  const auto& shown = view_.Shown();
  AskAndSavePicture(
      plot_->size(), shown.size() == 1 ? name + QStringLiteral("-%1").arg(shown.front() + 1) : name,
      this, [this](const QString& path, const QSize& size) { return plot_->Save(path, size); });
}

void CCalibrationDisplay::changeEvent(QEvent* event) {
  CDisplay::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    FillList();
    SelectShown();
  }
}

}  // namespace orvane
