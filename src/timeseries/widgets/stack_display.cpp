// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/stack_display.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLayout>
#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "ui/list_item.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

enum Column { kItem, kPlace, kRecords, kMedian, kSpread, kColumns };

QString Number(double value) { return QString::fromStdString(FormatReal(value, 6)); }

}  // namespace

CStackDisplay::CStackDisplay(QWidget* parent)
    : CDisplay(QStringLiteral("Stack results"), parent),
      note_(new QLabel(this)),
      list_(new QListWidget(this)),
      plot_(new StackPlot(&view_, this)),
      items_(MakeReadings()),
      domain_(new QComboBox(this)),
      against_(new QComboBox(this)) {
  setObjectName(QStringLiteral("stack-display"));
  setFocusProxy(list_);
  AddViewing();
  AddChoices();
  AddSaving();
  note_->setObjectName(QStringLiteral("note"));
  note_->setWordWrap(true);
  note_->setMargin(4);
  list_->setObjectName(QStringLiteral("labels"));
  list_->setAccessibleName(QStringLiteral("Labels shown"));
  list_->setToolTip(QStringLiteral("Select several with Ctrl or Shift"));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(list_, &QListWidget::itemSelectionChanged, this, &CStackDisplay::ShowView);
  items_->setObjectName(QStringLiteral("items"));
  items_->setAccessibleName(QStringLiteral("Items of the label"));
  items_->setColumnCount(kColumns);
  items_->setHorizontalHeaderLabels({QStringLiteral("Item"), QStringLiteral("ms"),
                                     QStringLiteral("Records"), QStringLiteral("Median"),
                                     QStringLiteral("Spread")});
  items_->setSelectionBehavior(QAbstractItemView::SelectRows);
  items_->setSelectionMode(QAbstractItemView::SingleSelection);
  items_->show();
  connect(items_, &QTableWidget::currentCellChanged, this, [this](int row) {
    if (row >= 0) {
      ChooseItem(static_cast<std::size_t>(row));
    }
  });
  auto* parts = new QSplitter(this);
  for (QWidget* part : std::initializer_list<QWidget*>{list_, plot_, items_}) {
    parts->addWidget(part);
  }
  parts->setStretchFactor(1, 1);
  parts->setChildrenCollapsible(false);
  parts->setSizes({120, 700, 280});
  layout()->addWidget(note_);
  layout()->addWidget(parts);
  connect(plot_, &StackPlot::itemChosen, this,
          [this](std::size_t item) { items_->setCurrentCell(static_cast<int>(item), kItem); });
  connect(plot_, &StackPlot::menuRequested, this, &CStackDisplay::ShowMenu);
}

void CStackDisplay::AddViewing() {
  AddButton("Previous", "previous", "Previous label", Qt::Key_PageUp, [this] { Step(-1); });
  AddButton("Next", "next", "Next label", Qt::Key_PageDown, [this] { Step(1); });
  AddButton("All labels", "all", "All labels at once", Qt::CTRL | Qt::Key_A,
            [this] { list_->selectAll(); });
  Bar()->addSeparator();
}

QAction* CStackDisplay::AddSwitch(const char* text, const char* name, const char* tip,
                                  const QKeySequence& key, bool* value) {
  QAction* action = AddButton(text, name, tip, key, [this, value] {
    *value = !*value;
    ShowView();
  });
  action->setCheckable(true);
  return action;
}

void CStackDisplay::AddChoices() {
  domain_->setObjectName(QStringLiteral("domain"));
  domain_->setAccessibleName(QStringLiteral("Domain"));
  domain_->setToolTip(QStringLiteral(
      "What the items are: the files do not say it. First the one that their size suggests"));
  domain_->addItems({QStringLiteral("Time domain"), QStringLiteral("Frequency domain")});
  connect(domain_, &QComboBox::activated, this, [this](int index) {
    view_.SetDomain(index == 0 ? StackDomain::kTime : StackDomain::kFrequency);
    FollowDomain();
    ShowView();
  });
  Bar()->addWidget(domain_);
  second_ = AddButton("Second number", "second", "The second number of each item, not the first",
                      Qt::Key_2, [this] {
                        view_.SetPart(second_->isChecked() ? 1 : 0);
                        ShowView();
                      });
  second_->setCheckable(true);
  against_->setObjectName(QStringLiteral("against"));
  against_->setAccessibleName(QStringLiteral("Drawn over"));
  against_->setToolTip(
      QStringLiteral("All items as curves, or the chosen item of each record as a point"));
  against_->addItems({QStringLiteral("Items"), QStringLiteral("Field at 26"),
                      QStringLiteral("Extension's number")});
  connect(against_, &QComboBox::activated, this, [this](int index) {
    picture_.is_points = index > 0;
    picture_.against = index == 2 ? StackView::Against::kExtension : StackView::Against::kValue26;
    ShowView();
  });
  Bar()->addWidget(against_);
  windows_ = AddButton("Windows", "windows",
                       "Items at the centres of the windows that Orvane's rule gives; the file "
                       "does not say what the box's are",
                       Qt::Key_W, [this] {
                         has_windows_ = windows_->isChecked();
                         view_.SetWindowCentres(has_windows_ ? centres_ : std::vector<double>());
                         ShowView();
                       });
  windows_->setCheckable(true);
  windows_->setEnabled(false);
  AddSwitch("Log X", "log-x", "Logarithmic axis of the items", Qt::Key_X, &picture_.has_log_x);
  AddSwitch("Log Y", "log-y", "Logarithmic axis of the values: negative ones are hollow", Qt::Key_Y,
            &picture_.has_log_y);
  Bar()->addSeparator();
}

void CStackDisplay::AddSaving() {
  AddButton("Copy", "copy", "Copy the items of the label as text", QKeySequence::Copy,
            [this] { Copy(); });
  AddReload();
  AddFiles();
  AddButton("Save picture...", "save-picture", "Save the picture as PNG, SVG or PDF",
            Qt::CTRL | Qt::SHIFT | Qt::Key_P, [this] { Save(); });
  AddButton("Close", "close", "Back to the table", Qt::Key_Escape,
            [this] { emit closeRequested(); });
}

Result<> CStackDisplay::Open(const QString& path) {
  const Result<> opened = view_.Open(PathFromText(path));
  if (opened) {
    path_ = path;
    picture_ = {.is_points = picture_.is_points,
                .against = picture_.against,
                .item = 0,
                .has_log_x = picture_.has_log_x,
                .has_log_y = picture_.has_log_y};
    FollowDomain();
    FillList();
  }
  return opened;
}

void CStackDisplay::OfferWindows(std::vector<double> centres) {
  centres_ = std::move(centres);
  windows_->setEnabled(!centres_.empty());
}

QString CStackDisplay::Title() const { return TextFromPath(PathFromText(path_).filename()); }

void CStackDisplay::FollowDomain() {
  const bool is_time = view_.Domain() == StackDomain::kTime;
  domain_->setCurrentIndex(is_time ? 0 : 1);
  second_->setEnabled(is_time);
}

void CStackDisplay::FillList() {
  const QSignalBlocker blocker(list_);
  list_->clear();
  for (const StackView::Group& group : view_.Groups()) {
    auto* item = OnlyShown(new QListWidgetItem(QString::fromStdString(group.label), list_));
    item->setToolTip(QStringLiteral("%1 records").arg(group.records.size()));
  }
  list_->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
}

void CStackDisplay::Step(int by) {
  const int row = list_->currentRow() + by;
  if (row >= 0 && row < list_->count()) {
    list_->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
  }
}

const StackView::Group* CStackDisplay::Current() const {
  const int row = list_->currentRow();
  return row < 0 ? nullptr : &view_.Groups()[static_cast<std::size_t>(row)];
}

void CStackDisplay::ShowView() {
  std::vector<std::size_t> groups;
  for (int row = 0; row < list_->count(); ++row) {
    if (list_->item(row)->isSelected()) {
      groups.push_back(static_cast<std::size_t>(row));
    }
  }
  ShowItems();
  ShowNote();
  QString title = Title();
  if (view_.Domain() != view_.Guess()) {
    title += QStringLiteral(" (not the domain that the size of its items suggests)");
  }
  plot_->Show(title, groups, picture_);
  const StackView::Group* group = Current();
  emit told(group == nullptr ? QString()
                             : QStringLiteral("%1: %2 records, %3 items")
                                   .arg(QString::fromStdString(group->label))
                                   .arg(group->records.size())
                                   .arg(view_.ItemsOfGroup(*group)));
}

void CStackDisplay::ShowItems() {
  const QSignalBlocker blocker(items_);
  const StackView::Group* group = Current();
  const std::vector<RobustStats> summary =
      group == nullptr ? std::vector<RobustStats>() : view_.Summary(*group);
  items_->setRowCount(static_cast<int>(summary.size()));
  items_->setColumnHidden(kPlace, !has_windows_);
  for (int row = 0; row < items_->rowCount(); ++row) {
    const auto item = static_cast<std::size_t>(row);
    const RobustStats& stats = summary[item];
    const double place = view_.ItemPlace(item);
    const bool is_any = stats.count > 0;
    const std::array<QString, kColumns> texts = {
        QString::number(row + 1), std::isfinite(place) ? Number(place) : QString(),
        QString::number(stats.count), is_any ? Number(stats.median) : QString(),
        is_any ? Number(stats.spread) : QString()};
    for (int column = 0; column < kColumns; ++column) {
      auto* cell = OnlyShown(new QTableWidgetItem(texts[static_cast<std::size_t>(column)]));
      cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      items_->setItem(row, column, cell);
    }
  }
  items_->resizeColumnsToContents();
  constexpr int kBeside = 24;  // frame and scroll bar
  constexpr int kWidest = 420;
  items_->setMinimumWidth(std::min(items_->horizontalHeader()->length() + kBeside, kWidest));
  picture_.item = std::min(picture_.item, summary.empty() ? 0 : summary.size() - 1);
  items_->setCurrentCell(static_cast<int>(picture_.item), kItem);
}

void CStackDisplay::ShowNote() {
  QStringList notes;
  if (view_.CutAt() > 0) {
    notes << QStringLiteral(
                 "The file ends within a record, which begins at byte %1 and is not shown.")
                 .arg(view_.CutAt());
  }
  if (const std::size_t others = view_.OtherSizes(); others > 0) {
    notes << QStringLiteral(
                 "The items of %1 of %2 records have another size than those of this "
                 "domain: their values may mean something else.")
                 .arg(others)
                 .arg(view_.Count());
  }
  note_->setText(notes.join(QLatin1Char(' ')));
  note_->setVisible(!notes.isEmpty());
}

void CStackDisplay::ChooseItem(std::size_t item) {
  if (item != picture_.item) {
    picture_.item = item;
    ShowView();
  }
}

void CStackDisplay::Reload() {
  const StackDomain domain = view_.Domain();
  const bool was_chosen = domain != view_.Guess();
  const int row = list_->currentRow();
  const Result<> opened = view_.Open(PathFromText(path_));
  if (opened && was_chosen) {
    view_.SetDomain(domain);
  }
  FollowDomain();
  FillList();
  list_->setCurrentRow(std::clamp(row, 0, std::max(list_->count() - 1, 0)));
  ShowView();
  if (!opened) {
    emit told(QStringLiteral("Not read again: ") + QString::fromStdString(opened.Message()));
  }
}

void CStackDisplay::Copy() {
  QString text = QStringLiteral("Item\tms\tRecords\tMedian\tSpread\n");
  for (int row = 0; row < items_->rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < kColumns; ++column) {
      cells << items_->item(row, column)->text();
    }
    text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
  }
  QApplication::clipboard()->setText(text);
  emit told(QStringLiteral("The items were copied as text"));
}

void CStackDisplay::Save() {
  AskAndSavePicture(
      plot_->size(), TextFromPath(PathFromText(path_).stem()), this,
      [this](const QString& path, const QSize& size) { return plot_->Save(path, size); });
}

}  // namespace orvane
