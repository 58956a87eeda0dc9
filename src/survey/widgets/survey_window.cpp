// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/survey_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSettings>
#include <QSplitter>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>

#include "base/latin1.h"
#include "files/path_text.h"
#include "survey/survey_index.h"
#include "survey/survey_report.h"
#include "survey/widgets/report_files.h"
#include "ui/qt_path.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

const QString kState = QStringLiteral("Survey/Columns");
const QString kGrouping = QStringLiteral("Survey/Grouping");
const QString kGeometry = QStringLiteral("Survey/Window");
constexpr int kLook = 100;                 // ms between looks at what came
constexpr int kPause = 1500;               // ms without a change before a folder is looked at again
constexpr std::size_t kMostRows = 1500;    // taken at a time: a step of the window
constexpr std::size_t kMostOpen = 20'000;  // rows; of more groups are closed at first
constexpr int kMostWatched = 1000;         // folders
constexpr std::array<SurveyColumn, 6> kHiddenAtFirst = {
    SurveyColumn::kKind,  SurveyColumn::kFrequencies, SurveyColumn::kSaturated,
    SurveyColumn::kTable, SurveyColumn::kClock,       SurveyColumn::kFiles};

struct ConvertRow {
  SurveyConversion command;
  const char* text;
  std::array<FileType, 2> types;
};
constexpr std::array<ConvertRow, 10> kConvert = {{
    {SurveyConversion::kRestack,
     "&Restack Waveforms...",
     {FileType::kWaveform, FileType::kWaveform}},
    {SurveyConversion::kWaveformText,
     "&Waveforms To Text...",
     {FileType::kWaveform, FileType::kBand}},
    {SurveyConversion::kSpectra, "&Calibrated Spectra...", {FileType::kWaveform, FileType::kBand}},
    {SurveyConversion::kNetcdf, "Waveforms To &NetCDF...", {FileType::kWaveform, FileType::kBand}},
    {SurveyConversion::kMseed, "Waveforms To &MiniSEED...", {FileType::kWaveform, FileType::kBand}},
    {SurveyConversion::kTimeDomainCsv,
     "&Time Domain Stack Results To CSV...",
     {FileType::kStackResult, FileType::kStackResult}},
    {SurveyConversion::kFrequencyDomainCsv,
     "&Frequency Domain Stack Results To CSV...",
     {FileType::kStackResult, FileType::kStackResult}},
    {SurveyConversion::kTableText, "T&ables To Text...", {FileType::kTable, FileType::kTable}},
    {SurveyConversion::kScheduleText,
     "&Schedules To Text...",
     {FileType::kSchedule, FileType::kSchedule}},
    {SurveyConversion::kCalibrationText,
     "Cali&brations To Text...",
     {FileType::kBoxCalibration, FileType::kSensorCalibration}},
}};

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString Counted(std::size_t count, const char* one, const char* several) {
  return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

// Rows of one height, with room for a picture, whether they have one or not.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    constexpr int kMargin = 4;
    return QStyledItemDelegate::sizeHint(option, index)
        .expandedTo(QSize(0, TracePictures::Size().height() + kMargin));
  }
};

// The file that a row is named after; the row has one at least.
const RowFile& MainFileOf(const SurveyRow& row) {
  const auto main = std::find_if(row.files.begin(), row.files.end(),
                                 [&row](const RowFile& file) { return file.shown == row.name; });
  return main == row.files.end() ? row.files.front() : *main;
}

}  // namespace

CSurveyWindow::CSurveyWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      model_(new SurveyModel(this)),
      pictures_(new TracePictures(this)),
      overview_(new SurveyOverview(this)) {
  setObjectName(QStringLiteral("survey-window"));
  setWindowTitle(QStringLiteral("Survey"));
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(MakeTools());
  auto* parts = new QSplitter(Qt::Vertical, this);
  parts->addWidget(MakeList());
  parts->addWidget(MakeTabs());
  parts->setStretchFactor(0, 3);
  parts->setStretchFactor(1, 1);
  layout->addWidget(parts, 1);
  coverage_ = new CoverageView(this);
  connect(coverage_, &CoverageView::chosen, this, &CSurveyWindow::Select);
  layout->addWidget(coverage_);
  layout->addLayout(MakeFoot());
  connect(overview_, &SurveyOverview::came, this,
          [this](const std::shared_ptr<SurveyOverview::Made>& made) {
            coverage_->SetCoverage(std::move(made->coverage));
            sites_->SetSites(std::move(made->sites));
            const auto current = model_->RowAt(list_->currentIndex());
            coverage_->SetCurrent(current);
            sites_->SetCurrent(current);
          });
  connect(pictures_, &TracePictures::came, model_, &SurveyModel::PictureCame);
  model_->SetPictures([this](std::size_t row) -> QVariant {
    const SurveyRow& of = *model_->List().Rows()[row];
    const bool has_trace = of.IsRecording() && !of.files.empty();
    return has_trace ? QVariant(pictures_->Of(row, FileOf(of, MainFileOf(of)))) : QVariant();
  });
  timer_.setInterval(kLook);
  connect(&timer_, &QTimer::timeout, this, &CSurveyWindow::Look);
  later_.setSingleShot(true);
  later_.setInterval(kPause);
  connect(&later_, &QTimer::timeout, this, [this] { Start(true); });
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &CSurveyWindow::TakeChange);
  constexpr QSize kSize(1180, 680);
  ResizeWithinScreen(this, kSize);
  restoreGeometry(QSettings().value(kGeometry).toByteArray());
  list_->setFocus();  // arrows go through the recordings, not through the kinds of groups
  ShowState();
}

QLayout* CSurveyWindow::MakeTools() {
  grouping_ = new QComboBox(this);
  grouping_->setObjectName(QStringLiteral("survey-grouping"));
  grouping_->addItems({QStringLiteral("No groups"), QStringLiteral("Site"), QStringLiteral("Box"),
                       QStringLiteral("Day")});
  grouping_->setCurrentIndex(
      std::clamp(QSettings().value(kGrouping, 1).toInt(), 0, grouping_->count() - 1));
  connect(grouping_, &QComboBox::currentIndexChanged, this, &CSurveyWindow::Regroup);
  auto* caption = new QLabel(QStringLiteral("&Group by"), this);
  caption->setBuddy(grouping_);
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("survey-filter"));
  filter_->setPlaceholderText(QStringLiteral("Filter: a box, a site, bad, missing ..."));
  filter_->setAccessibleName(QStringLiteral("Filter"));
  filter_->setClearButtonEnabled(true);
  for (auto* button : filter_->findChildren<QToolButton*>()) {
    button->setAccessibleName(QStringLiteral("Clear"));
  }
  connect(filter_, &QLineEdit::textChanged, this, &CSurveyWindow::Refilter);
  const auto menu_button = [this](const char* text, const char* name, QMenu* menu) {
    auto* button = new QToolButton(this);
    button->setText(QString::fromLatin1(text));
    button->setObjectName(QString::fromLatin1(name));
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::TabFocus);
    button->setMenu(menu);
    return button;
  };
  deep_ = new QCheckBox(QStringLiteral("Samples &too"), this);
  deep_->setObjectName(QStringLiteral("survey-deep"));
  deep_->setToolTip(
      QStringLiteral("Look at all samples: saturated, dead and equal channels; checksums"));
  deep_->setAccessibleDescription(deep_->toolTip());
  connect(deep_, &QCheckBox::toggled, this, [this] { Start(true); });
  auto* row = new QHBoxLayout;
  row->addWidget(caption);
  row->addWidget(grouping_);
  row->addWidget(filter_, 1);
  row->addWidget(deep_);
  row->addWidget(menu_button("Columns", "survey-columns", nullptr));
  convert_ = menu_button("Convert", "survey-convert", MakeConvertMenu());
  row->addWidget(convert_);
  return row;
}

QWidget* CSurveyWindow::MakeList() {
  list_ = new QTreeView(this);
  list_->setObjectName(QStringLiteral("recordings"));
  list_->setAccessibleName(QStringLiteral("Recordings"));
  list_->setModel(model_);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setUniformRowHeights(true);
  constexpr int kRowsForWidths = 50;
  list_->header()->setResizeContentsPrecision(kRowsForWidths);
  list_->setAlternatingRowColors(true);
  list_->setTabKeyNavigation(false);
  list_->setIconSize(TracePictures::Size());
  list_->setItemDelegate(new RowDelegate(list_));
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->header()->setSectionsMovable(true);
  for (const SurveyColumn column : kHiddenAtFirst) {
    list_->setColumnHidden(static_cast<int>(column), true);
  }
  constexpr int kNameWidth = 300;
  list_->header()->resizeSection(0, kNameWidth);
  has_widths_ = list_->header()->restoreState(QSettings().value(kState).toByteArray());
  if (!has_widths_) {
    list_->header()->setSortIndicator(static_cast<int>(SurveyColumn::kStart), Qt::AscendingOrder);
  }
  list_->setSortingEnabled(true);
  connect(list_, &QTreeView::activated, this, &CSurveyWindow::OpenRow);
  connect(list_, &QWidget::customContextMenuRequested, this, &CSurveyWindow::ShowContextMenu);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& index) {
            coverage_->SetCurrent(model_->RowAt(index));
            sites_->SetCurrent(model_->RowAt(index));
          });
  findChild<QToolButton*>(QStringLiteral("survey-columns"))->setMenu(MakeColumnsMenu());
  Regroup();
  return list_;
}

// What is wrong and where the sites are; the first tab has its tools beside the titles.
QWidget* CSurveyWindow::MakeTabs() {
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("survey-tabs"));
  sentences_ = new FindingsPane(tabs_);
  sites_ = new SiteMapPane(tabs_);
  tabs_->addTab(sentences_, QStringLiteral("Findings"));
  tabs_->addTab(sites_, QStringLiteral("Map"));
  QWidget* tools = sentences_->MakeTools(tabs_);
  tabs_->setCornerWidget(tools);
  setTabOrder(tabs_->tabBar(), tools->findChild<QComboBox*>());
  connect(tabs_, &QTabWidget::currentChanged, tools,
          [tools](int index) { tools->setVisible(index == 0); });
  connect(sentences_, &FindingsPane::chosen, this, &CSurveyWindow::SelectFile);
  connect(sentences_, &FindingsPane::filtered, this, [this] {
    const FindingsList& list = sentences_->List();
    const QString count =
        list.Shown().size() == list.InAll()
            ? QString::number(list.InAll())
            : QStringLiteral("%1 of %2").arg(list.Shown().size()).arg(list.InAll());
    tabs_->setTabText(0, QStringLiteral("Findings (%1)").arg(count));
  });
  connect(sites_, &SiteMapPane::chosen, this, &CSurveyWindow::SelectRows);
  return tabs_;
}

QLayout* CSurveyWindow::MakeFoot() {
  state_ = new QLabel(this);
  state_->setObjectName(QStringLiteral("survey-state"));
  state_->setTextFormat(Qt::PlainText);
  progress_ = new QProgressBar(this);
  progress_->setAccessibleName(QStringLiteral("Progress"));
  progress_->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
  cancel_ = new QPushButton(QStringLiteral("&Cancel"), this);
  cancel_->setObjectName(QStringLiteral("survey-cancel"));
  connect(cancel_, &QPushButton::clicked, this, &CSurveyWindow::Cancel);
  auto* again = new QPushButton(QStringLiteral("&Look Again"), this);
  again->setObjectName(QStringLiteral("survey-again"));
  again->setShortcut(Qt::Key_F5);
  connect(again, &QPushButton::clicked, this, [this] { Start(true); });
  report_ = new QPushButton(QStringLiteral("Save &Report..."), this);
  report_->setObjectName(QStringLiteral("survey-report"));
  connect(report_, &QPushButton::clicked, this, &CSurveyWindow::SaveReport);
  auto* row = new QHBoxLayout;
  row->addWidget(state_, 1);
  row->addWidget(progress_);
  row->addWidget(cancel_);
  row->addWidget(again);
  row->addWidget(report_);
  return row;
}

QMenu* CSurveyWindow::MakeColumnsMenu() {
  auto* menu = new QMenu(QStringLiteral("Columns"), this);
  for (int column = 1; column < kSurveyColumns; ++column) {
    QAction* action = menu->addAction(Text(TitleOf(static_cast<SurveyColumn>(column))));
    action->setCheckable(true);
    action->setChecked(!list_->isColumnHidden(column));
    connect(action, &QAction::toggled, this,
            [this, column](bool is_shown) { list_->setColumnHidden(column, !is_shown); });
  }
  return menu;
}

QMenu* CSurveyWindow::MakeConvertMenu() {
  auto* menu = new QMenu(QStringLiteral("Convert"), this);
  for (const ConvertRow& row : kConvert) {
    QAction* action = menu->addAction(QString::fromLatin1(row.text));
    connect(action, &QAction::triggered, this,
            [this, command = row.command] { emit conversionWanted(command, FilesFor(command)); });
    connect(menu, &QMenu::aboutToShow, action, [this, action, command = row.command] {
      action->setEnabled(!FilesFor(command).isEmpty());
    });
  }
  return menu;
}

void CSurveyWindow::Open(const std::filesystem::path& folder) {
  folder_ = folder;
  const QString name = QDir::toNativeSeparators(TextFromPath(folder));
  setWindowTitle(QStringLiteral("Survey - ") + name);
  Start(false);
}

void CSurveyWindow::Start(bool is_again) {
  if (folder_.empty()) {
    return;
  }
  later_.stop();
  scan_.reset();  // stops it
  is_again_ = is_again && !model_->List().Rows().empty();
  steps_.clear();
  overview_->Forget();
  coming_ = model_->List().Emptied();
  drawn_.invalidate();
  if (!is_again_) {
    findings_ = std::make_shared<const std::vector<SurveyFinding>>();
    notes_.clear();
    pictures_->Clear();
    Arrange([](SurveyList* list) { list->Clear(); });
    coverage_->SetCoverage({});
    sentences_->SetFindings(findings_, notes_);
    sites_->SetSites({});
  }
  SurveyOptions options;
  options.depth = deep_->isChecked() ? ScanDepth::kDeep : ScanDepth::kHeaders;
  options.index = UsualIndexFile();
  scan_ = std::make_unique<SurveyScan>(folder_, std::move(options));
  timer_.start();
  ShowState();
}

void CSurveyWindow::Look() {
  constexpr int kRedraw = 1000;  // ms
  if (scan_ == nullptr) {
    timer_.stop();
    return;
  }
  const bool is_done = scan_->IsDone();  // asked before: what comes after it is taken next time
  const std::vector<SharedRow> rows = scan_->Take(kMostRows);
  if (is_again_) {
    coming_.Add(rows);
  } else if (!rows.empty()) {
    Arrange([&rows](SurveyList* list) { list->Add(rows); });
    if (!drawn_.isValid() || drawn_.elapsed() > kRedraw) {
      drawn_.start();
      overview_->Make(model_->List().Rows());
    }
  }
  if (is_done && rows.empty()) {
    End();
  }
  ShowState();
}

// Between two steps keys and clicks have their turn.
void CSurveyWindow::Then(std::function<void()> step) {
  steps_.push_back(std::move(step));
  if (steps_.size() > 1) {
    return;
  }
  auto* turns = new QTimer(this);
  connect(turns, &QTimer::timeout, this, [this, turns] {
    if (!steps_.empty()) {
      const auto first = steps_.front();  // it stays there: no other timer is begun
      first();
      if (!steps_.empty()) {
        steps_.pop_front();
      }
    }
    if (steps_.empty()) {
      turns->deleteLater();
      turns->stop();
    }
  });
  turns->start(0);
}

void CSurveyWindow::End() {
  timer_.stop();
  const bool is_whole = scan_->Outcome() && !scan_->WasStopped();
  end_note_ = Text(scan_->IndexNote());
  if (!scan_->Outcome()) {
    end_note_ = QStringLiteral("%1: %2, the rows are of before")
                    .arg(TextFromPath(folder_), Text(scan_->Outcome().Message()));
  }
  if (is_whole) {
    findings_ = std::make_shared<const std::vector<SurveyFinding>>(scan_->TakeFindings());
    notes_ = scan_->Notes();
    hidden_ = scan_->Hidden();
  } else if (scan_->WasStopped()) {
    end_note_ = QStringLiteral("cancelled: not all files were looked at");
  }
  scan_.reset();
  overview_->Forget();
  if (is_again_ && is_whole) {
    pictures_->Clear();
    Arrange([this](SurveyList* list) { list->TakeRows(std::move(coming_)); });
  }
  Then([this] { coming_ = model_->List().Emptied(); });
  Then([this] {
    model_->ChangeCells([this](SurveyList* list) { list->SetFindings(findings_); });
    AddFindings();
  });
  Then([this] { FitColumns(); });
  Then([this] {
    sentences_->SetFindings(findings_, notes_);
    overview_->Make(model_->List().Rows());
  });
  Then([this] { Watch(); });
}

// Some at a time; rows are arranged once all are there.
void CSurveyWindow::AddFindings() {
  constexpr std::size_t kAtOnce = 5000;
  bool is_more = false;
  model_->ChangeCells([&is_more](SurveyList* list) { is_more = list->AddFindings(kAtOnce); });
  if (is_more) {
    Then([this] { AddFindings(); });
  } else if (model_->List().DependsOnFindings()) {
    Then([this] { Arrange([](SurveyList* list) { list->Rearrange(); }); });
  }
}

// Once; after it the user's stay.
void CSurveyWindow::FitColumns() {
  for (int column = 1; column < kSurveyColumns && !has_widths_; ++column) {
    list_->resizeColumnToContents(column);
  }
  has_widths_ = true;
}

void CSurveyWindow::Cancel() {
  if (scan_ != nullptr) {
    scan_->Stop();
  }
}

// The folders of the rows and those above them: new files, and new folders, make themselves known.
void CSurveyWindow::Watch() {
  QStringList folders = {TextFromPath(folder_), TextFromPath(FolderAbove())};
  std::set<std::filesystem::path> seen;
  for (const SharedRow& row : model_->List().Rows()) {
    if (folders.size() < kMostWatched && seen.insert(row->place).second) {
      folders << TextFromPath(folder_ / row->place);
    }
  }
  folders.removeDuplicates();
  std::sort(folders.begin(), folders.end());
  QStringList before = watcher_.directories();
  std::sort(before.begin(), before.end());
  QStringList gone;
  QStringList fresh;
  std::set_difference(before.begin(), before.end(), folders.begin(), folders.end(),
                      std::back_inserter(gone));
  std::set_difference(folders.begin(), folders.end(), before.begin(), before.end(),
                      std::back_inserter(fresh));
  if (!gone.isEmpty()) {
    watcher_.removePaths(gone);
  }
  // Some at a time: a network answers slowly.
  constexpr int kAtOnce = 50;
  for (qsizetype at = 0; at < fresh.size(); at += kAtOnce) {
    Then([this, some = fresh.mid(at, kAtOnce)] { watcher_.addPaths(some); });
  }
}

// Of the folder above only that this one goes or comes back, as of a card.
void CSurveyWindow::TakeChange(const QString& folder) {
  std::error_code ignored;
  const bool is_there = std::filesystem::exists(folder_, ignored);
  if (folder != TextFromPath(FolderAbove()) || is_there != was_there_) {
    was_there_ = is_there;
    later_.start();
  }
}

std::filesystem::path CSurveyWindow::FolderAbove() const {
  return (folder_ / "").parent_path().parent_path();  // with or without a slash at its end
}

// What is selected, current and open stays so.
void CSurveyWindow::Arrange(const std::function<void(SurveyList*)>& change) {
  std::set<std::string> selected;
  for (const std::size_t row : SelectedRows()) {
    selected.insert(model_->List().Rows()[row]->name);
  }
  const auto current = model_->RowAt(list_->currentIndex());
  const std::string current_name = current ? model_->List().Rows()[*current]->name : std::string();
  std::set<std::string> open;
  const bool was_large = model_->List().Shown() > kMostOpen;
  const auto for_groups = [this](const auto& visit) {
    for (int group = 0; list_->rootIsDecorated() && group < model_->rowCount(); ++group) {
      visit(model_->index(group, 0), model_->List().Groups()[static_cast<std::size_t>(group)].key);
    }
  };
  for_groups([&](const QModelIndex& index, const std::string& key) {
    if (was_large && list_->isExpanded(index)) {
      open.insert(key);
    }
  });
  model_->Change(change);
  if (model_->List().Shown() <= kMostOpen) {
    list_->expandAll();
  } else {
    for_groups([&](const QModelIndex& index, const std::string& key) {
      list_->setExpanded(index, open.contains(key));
    });
  }
  for (int group = 0; list_->rootIsDecorated() && group < model_->rowCount(); ++group) {
    list_->setFirstColumnSpanned(group, {}, true);
  }
  const auto& rows = model_->List().Rows();
  QItemSelection selection;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const QModelIndex index =
        selected.contains(rows[row]->name) ? model_->IndexOf(row) : QModelIndex();
    if (index.isValid()) {
      selection.append(QItemSelectionRange(index));
    }
    if (index.isValid() && rows[row]->name == current_name) {
      list_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    }
  }
  list_->selectionModel()->select(selection,
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void CSurveyWindow::Regroup() {
  const int index = grouping_->currentIndex();
  QSettings().setValue(kGrouping, index);
  list_->setRootIsDecorated(index != 0);
  Arrange([index](SurveyList* list) { list->SetGrouping(static_cast<SurveyGrouping>(index)); });
}

void CSurveyWindow::Refilter() {
  const std::string text = filter_->text().toStdString();
  Arrange([&text](SurveyList* list) { list->SetFilter(text); });
  ShowState();
}

void CSurveyWindow::ShowState() {
  const bool is_scanning = scan_ != nullptr;
  progress_->setVisible(is_scanning);
  cancel_->setVisible(is_scanning);
  report_->setEnabled(!is_scanning && !model_->List().Rows().empty());
  QStringList parts;
  const SurveyList& list = model_->List();
  const std::size_t all = list.Rows().size();
  parts << (list.Shown() == all ? Counted(all, "row", "rows")
                                : QStringLiteral("%1 of %2 rows").arg(list.Shown()).arg(all));
  if (is_scanning) {
    const auto total = static_cast<int>(scan_->FilesInAll());
    progress_->setRange(0, total);
    progress_->setValue(static_cast<int>(scan_->FilesDone()));
    parts << (total == 0 ? QStringLiteral("listing folders")
                         : QStringLiteral("%1 of %2 files").arg(scan_->FilesDone()).arg(total));
  } else {
    parts << Counted(findings_->size(), "finding", "findings");
    if (!notes_.empty()) {
      parts << Counted(notes_.size(), "path not read", "paths not read");
    }
    if (hidden_ > 0) {
      parts << Text(HiddenText(hidden_));
    }
    if (!end_note_.isEmpty()) {
      parts << end_note_;
    }
  }
  state_->setText(parts.join(QStringLiteral("; ")));
}

void CSurveyWindow::SelectFile(const std::string& name) {
  const auto& rows = model_->List().Rows();
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&name](const SharedRow& row) { return row->name == name; });
  if (!name.empty() && found != rows.end()) {
    Select(static_cast<std::size_t>(found - rows.begin()));
  } else {
    SelectRows({});  // what was chosen before is not meant
  }
}

void CSurveyWindow::SelectRows(const SiteRows& rows) {
  QItemSelection selection;
  QModelIndex first;
  for (const std::size_t row : rows) {
    const QModelIndex index = model_->IndexOf(row);
    if (index.isValid()) {
      selection.append(QItemSelectionRange(index));
      first = first.isValid() && !(index < first) ? first : index;
    }
  }
  list_->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  list_->selectionModel()->select(selection,
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  list_->scrollTo(first);
  if (const std::size_t hidden = rows.size() - static_cast<std::size_t>(selection.size());
      hidden > 0) {
    state_->setText(Counted(hidden, "recording is", "recordings are") +
                    QStringLiteral(" hidden by the filter"));
  }
}

void CSurveyWindow::Select(std::size_t row) {
  const QModelIndex index = model_->IndexOf(row);
  if (index.isValid()) {
    list_->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    list_->scrollTo(index);
  } else {
    state_->setText(Text(model_->List().Rows()[row]->name) +
                    QStringLiteral(" is hidden by the filter"));
  }
}

std::vector<std::size_t> CSurveyWindow::SelectedRows() const {
  std::vector<std::size_t> rows;
  for (const QModelIndex& index : list_->selectionModel()->selectedRows()) {
    if (const auto row = model_->RowAt(index)) {
      rows.push_back(*row);
    }
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::filesystem::path CSurveyWindow::FileOf(const SurveyRow& row, const RowFile& file) const {
  return folder_ / row.place / PathOf(file.name);
}

QStringList CSurveyWindow::FilesFor(SurveyConversion command) const {
  const auto& types = kConvert[static_cast<std::size_t>(command)].types;
  QStringList files;
  for (const std::size_t place : SelectedRows()) {
    const SurveyRow& row = *model_->List().Rows()[place];
    for (const RowFile& file : row.files) {
      if (std::find(types.begin(), types.end(), file.type) != types.end()) {
        files << TextFromPath(FileOf(row, file));
      }
    }
  }
  return files;
}

void CSurveyWindow::OpenRow(const QModelIndex& index) {
  const auto place = model_->RowAt(index);
  if (place) {
    const SurveyRow& row = *model_->List().Rows()[*place];
    if (!row.files.empty()) {
      emit fileWanted(TextFromPath(FileOf(row, MainFileOf(row))));
    }
  }
}

// Each file of the row, then what is done with the selection.
void CSurveyWindow::ShowContextMenu(const QPoint& at) {
  const auto place = model_->RowAt(list_->indexAt(at));
  if (!place) {
    return;
  }
  QMenu menu;
  const SharedRow row = model_->List().Rows()[*place];
  for (const RowFile& file : row->files) {
    if (file.type != FileType::kText && file.type != FileType::kSchedule) {
      const QString path = TextFromPath(FileOf(*row, file));
      menu.addAction(QStringLiteral("Open ") + Text(file.shown), this,
                     [this, path] { emit fileWanted(path); });
    }
  }
  menu.addSeparator();
  menu.addMenu(convert_->menu());
  menu.exec(list_->viewport()->mapToGlobal(at));
}

void CSurveyWindow::SaveReport() {
  AskAndSaveReport({PrintableUtf8(PathText(folder_.filename())), model_->List().Rows(), *findings_,
                    notes_, folder_, 0, hidden_, "Orvane " ORVANE_VERSION},
                   this);
}

void CSurveyWindow::closeEvent(QCloseEvent* event) {
  QSettings().setValue(kState, list_->header()->saveState());
  QSettings().setValue(kGeometry, saveGeometry());
  Cancel();
  QWidget::closeEvent(event);
}

void CSurveyWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    scan_ != nullptr ? Cancel() : static_cast<void>(close());
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace orvane
