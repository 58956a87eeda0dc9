// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/orvane_view.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <iterator>

#include "table/param_dictionary.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr int kGap = 8;
// Widths of the window, in zeros of its font, from which on there are three and two columns.
constexpr int kThreeColumns = 116;
constexpr int kTwoColumns = 72;
constexpr std::size_t kMostFindings = 3;

// The first few errors, then warnings.
QStringList WorstOf(std::span<const Finding> findings) {
  QStringList worst;
  for (const Severity severity : {Severity::kError, Severity::kWarning}) {
    for (const Finding& finding : findings) {
      if (finding.severity == severity && worst.size() < static_cast<qsizetype>(kMostFindings)) {
        const std::string box = finding.box.empty() ? "" : finding.box + ": ";
        worst << QString::fromStdString(box + finding.sentence);
      }
    }
  }
  return worst;
}

}  // namespace

COrvaneView::COrvaneView(COrvaneDoc* doc, QWidget* parent) : QScrollArea(parent), doc_(doc) {
  setObjectName(QStringLiteral("view"));
  setAccessibleName(QStringLiteral("Table at a glance"));
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // its cards have it, and scroll it
  Build();
  Follow();
  connect(doc_, &COrvaneDoc::changed, this, &COrvaneView::Follow);
  connect(&minute_, &QTimer::timeout, this, &COrvaneView::Follow);
  constexpr std::chrono::minutes kMinute{1};
  minute_.start(kMinute);
}

QLayout* COrvaneView::NewHead(QWidget* page) {
  name_ = new QLabel(page);
  name_->setTextFormat(Qt::PlainText);
  name_->setObjectName(QStringLiteral("name"));
  QFont font = name_->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  name_->setFont(font);
  file_ = NewValueLabel(page);
  file_->setObjectName(QStringLiteral("file"));
  auto* head = new QVBoxLayout;
  head->addWidget(name_);
  head->addWidget(file_);
  return head;
}

void COrvaneView::Build() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(2 * kGap, kGap, 2 * kGap, kGap);
  layout->addLayout(NewHead(page));
  grid_ = new QGridLayout;
  grid_->setHorizontalSpacing(kGap);
  layout->addLayout(grid_, 1);
  for (QWidget*& column : columns_) {
    column = new QWidget(page);
    auto* rows = new QVBoxLayout(column);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kGap / 2);
  }
  AddParts();
  AddTimeline();
  layout->addWidget(CardOf(Part::kTimeline));
  for (std::size_t part = 0; part < cards_.size(); ++part) {
    connect(cards_[part], &GlanceCard::clicked, this,
            [this, part] { emit opened(static_cast<Part>(part)); });
  }
  setWidget(page);
  ArrangeColumns();
  OrderTab();
}

void COrvaneView::AddToColumn(int column, QWidget* widget, int stretch) {
  auto* rows = qobject_cast<QVBoxLayout*>(columns_[static_cast<std::size_t>(column)]->layout());
  rows->addWidget(widget, stretch);
}

// What is set up at the left, box by box and in words in the middle, what comes of it at the right.
void COrvaneView::AddParts() {
  constexpr std::array<const char*, kGroups> kNames = {"method", "boxes", "times", "gains",
                                                       "survey"};
  const auto summary = SummarizeTable(doc_->Table(), UtcClock());
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    groups_[i] = new LinesCard(TextFromBytes(summary[i].title), kNames[i], this);
    cards_[i] = groups_[i];
  }
  for (const auto& [part, column] : {std::pair(Part::kMethod, 0),
                                     {Part::kTimes, 0},
                                     {Part::kGains, 0},
                                     {Part::kBoxes, 1},
                                     {Part::kSurvey, 1}}) {
    AddToColumn(column, CardOf(part));
  }
  start_ = new StartPanel(this);
  AddToColumn(2, start_);
  for (const int column : {0, 1}) {
    AddToColumn(column, new QWidget(this), 1);  // takes what room is left
  }
  AddCheck();
  AddMap();
}

void COrvaneView::AddCheck() {
  auto* card = new GlanceCard(QStringLiteral("Morning check"), "check", this);
  cards_[static_cast<std::size_t>(Part::kCheck)] = card;
  counts_ = NewValueLabel(card);
  counts_->setObjectName(QStringLiteral("check-counts"));
  QFont bold = counts_->font();
  bold.setBold(true);
  counts_->setFont(bold);
  worst_ = NewValueLabel(card);
  worst_->setObjectName(QStringLiteral("check-worst"));
  worst_->hide();
  auto* rows = new QVBoxLayout;
  rows->addWidget(counts_);
  rows->addWidget(worst_);
  card->SetContent(rows);
  AddToColumn(2, card);
}

// The small map only shows: keys and pointer are the card's.
void COrvaneView::AddMap() {
  auto* card = new GlanceCard(QStringLiteral("Map"), "map-card", this);
  cards_[static_cast<std::size_t>(Part::kMap)] = card;
  map_ = new SpreadMapView(card);
  map_->setObjectName(QStringLiteral("map-at-a-glance"));
  map_->setFocusPolicy(Qt::NoFocus);
  map_->setAttribute(Qt::WA_TransparentForMouseEvents);
  constexpr int kLeastHeight = 140;  // and whatever room there is beyond
  map_->setMinimumHeight(kLeastHeight);
  map_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  auto* rows = new QVBoxLayout;
  rows->addWidget(map_);
  card->SetContent(rows);
  AddToColumn(2, card, 1);
}

void COrvaneView::AddTimeline() {
  auto* card = new GlanceCard(QStringLiteral("Timeline (UTC)"), "timeline-card", this);
  cards_[static_cast<std::size_t>(Part::kTimeline)] = card;
  timeline_ = new TimelineBar(card);
  auto* rows = new QVBoxLayout;
  rows->addWidget(timeline_);
  card->SetContent(rows);
}

// Side by side as many as have room, the others below.
void COrvaneView::ArrangeColumns() {
  const int zeros = viewport()->width() / fontMetrics().horizontalAdvance(QLatin1Char('0'));
  const int count = zeros >= kThreeColumns ? kColumns : zeros >= kTwoColumns ? 2 : 1;
  PlaceStart(count == kColumns);
  for (int i = 0; i < kColumns; ++i) {
    const bool is_whole_row = count == 2 && i == 2;
    grid_->addWidget(columns_[static_cast<std::size_t>(i)], i / count, i % count, 1,
                     is_whole_row ? 2 : 1);
    grid_->setColumnStretch(i, i < count ? 1 : 0);
  }
}

// Beside the table, or where that has no room above it: what to begin with is never out of sight.
void COrvaneView::PlaceStart(bool is_beside) {
  auto* above = qobject_cast<QVBoxLayout*>(widget()->layout());
  auto* beside = qobject_cast<QVBoxLayout*>(columns_.back()->layout());
  QVBoxLayout* place = is_beside ? beside : above;
  if (place->indexOf(start_) < 0) {
    (is_beside ? above : beside)->removeWidget(start_);
    place->insertWidget(is_beside ? 0 : 1, start_);
    OrderTab();
  }
}

// Column by column, and what to begin with where it stands.
void COrvaneView::OrderTab() {
  std::vector<QWidget*> chain;
  for (const Part part : {Part::kMethod, Part::kTimes, Part::kGains, Part::kBoxes, Part::kSurvey,
                          Part::kCheck, Part::kMap, Part::kTimeline}) {
    chain.push_back(CardOf(part));
  }
  constexpr int kBeforeCheck = 5;
  const bool is_beside = columns_.back()->layout()->indexOf(start_) >= 0;
  const auto buttons = start_->findChildren<QPushButton*>();
  chain.insert(chain.begin() + (is_beside ? kBeforeCheck : 0), buttons.begin(), buttons.end());
  for (std::size_t i = 1; i < chain.size(); ++i) {
    setTabOrder(chain[i - 1], chain[i]);
  }
}

void COrvaneView::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  ArrangeColumns();
}

void COrvaneView::changeEvent(QEvent* event) {
  QScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && timeline_ != nullptr) {
    Follow();
  }
}

bool COrvaneView::IsNotInFile(const SummaryLine& line) const {
  const auto& all = doc_->NotInFile();
  return std::find_first_of(line.keys.begin(), line.keys.end(), all.begin(), all.end()) !=
         line.keys.end();
}

QString COrvaneView::NotInFileText() const {
  const std::size_t count = doc_->NotInFile().size();
  return count == 0 ? QString()
                    : QStringLiteral("; %1 of %2 values are not in the file")
                          .arg(count)
                          .arg(kDictionarySize);
}

void COrvaneView::ShowFile() {
  name_->setText(doc_->Title() + (doc_->IsModified() ? QStringLiteral(" (changed)") : QString()));
  name_->setToolTip(doc_->Path().isEmpty()
                        ? QString()
                        : QDir::toNativeSeparators(QFileInfo(doc_->Path()).path()));
  file_->setText(doc_->Path().isEmpty() ? QStringLiteral("New table, not saved yet")
                                        : QStringLiteral("%1, TBL version %2%3")
                                              .arg(QDir::toNativeSeparators(doc_->Path()))
                                              .arg(doc_->FileVersion())
                                              .arg(NotInFileText()));
}

const ScheduleFile* COrvaneView::Steps() {
  const int number = doc_->Path().isEmpty() ? 0 : ScheduleFileNumber(doc_->Table());
  return number == 0 ? nullptr : &schedule_.Look(PathFromText(doc_->Path()), number);
}

void COrvaneView::ShowTimeline() {
  Timeline line = TimelineOf(doc_->Table(), UtcClock(), 0, Steps());
  CardOf(Part::kTimeline)->SetContentText(QString::fromStdString(line.text));
  timeline_->SetTimeline(std::move(line));
}

void COrvaneView::Follow() {
  ShowFile();
  const auto summary = SummarizeTable(doc_->Table(), UtcClock());
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    groups_[i]->SetLines(summary[i].lines,
                         [this](const SummaryLine& line) { return IsNotInFile(line); });
  }
  SpreadMap map = MapOf(doc_->Table());
  CardOf(Part::kMap)->SetContentText(TextFromBytes(Summarize(map)));
  map_->SetMap(std::move(map));
  ShowTimeline();
  if (!doc_->Path().isEmpty() || doc_->IsModified()) {
    HideStart();
  }
}

void COrvaneView::HideStart() {
  if (!start_->isHidden()) {
    start_->hide();
    verticalScrollBar()->setValue(0);  // the focus went to the next one and was scrolled to
  }
}

void COrvaneView::ShowStart(bool is_shown) {
  if (is_shown) {
    start_->show();
    start_->setFocus();
  } else {
    HideStart();
  }
}

void COrvaneView::SetFindings(const QString& counts, std::span<const Finding> findings,
                              const std::vector<MapMark>& marks) {
  const QStringList worst = WorstOf(findings);
  counts_->setText(counts);
  QPalette colors = palette();
  if (CountFindings(findings).errors > 0) {
    colors.setColor(QPalette::WindowText, WarningColor(palette()));
  }
  counts_->setPalette(colors);
  worst_->setText(worst.join(QLatin1Char('\n')));
  worst_->setVisible(!worst.isEmpty());
  CardOf(Part::kCheck)->setAccessibleName(QStringLiteral("Morning check: ") + counts);
  CardOf(Part::kCheck)->SetContentText(worst.join(QStringLiteral("; ")));
  map_->SetMarked(marks);
}

}  // namespace orvane
