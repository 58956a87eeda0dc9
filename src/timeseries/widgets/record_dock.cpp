// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/record_dock.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/named_button.h"

namespace orvane {

RecordDock::RecordDock(QWidget* parent)
    : QDockWidget(QStringLiteral("Records"), parent),
      model_(new RecordTableModel(this)),
      summary_(new QLabel(this)) {
  setObjectName(QStringLiteral("records"));
  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  layout->addLayout(MakeTop());
  MakeList();
  layout->addWidget(list_, 1);
  summary_->setObjectName(QStringLiteral("record-summary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  layout->addWidget(summary_);
  setWidget(content);
  setFocusProxy(list_);
  connect(filter_, &QLineEdit::textChanged, model_, &RecordTableModel::SetFilter);
  connect(list_, &CListView::opened, this, &RecordDock::GoTo);
  connect(list_, &QTableView::clicked, this, [this](const QModelIndex& index) {
    if (index.column() != RecordTableModel::kLeftOut) {
      GoTo(index.row());
    }
  });
  ShowState();
}

QLayout* RecordDock::MakeTop() {
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("record-filter"));
  filter_->setAccessibleName(QStringLiteral("Filter of the records"));
  filter_->setPlaceholderText(QStringLiteral("Filter: bad, saturated, left out, a time ..."));
  filter_->setClearButtonEnabled(true);
  bad_ =
      NewNamedButton("Leave Out &Bad", "leave-out-bad",
                     "Tick the records that their box marked bad", this, &RecordDock::LeaveOutBad);
  keep_ = NewNamedButton("Keep Bes&ide The File", "keep-beside",
                         "Write the ticks to NAME.TSS.leave-out.txt: restacking, texts and "
                         "spectra then do without these records",
                         this, &RecordDock::Keep);
  all_ = NewNamedButton("&Take All", "take-all-records", "Remove all ticks", this,
                        &RecordDock::TakeAll);
  auto* top = new QHBoxLayout;
  top->addWidget(filter_, 1);
  for (QPushButton* button : {bad_, keep_, all_}) {
    top->addWidget(button);
  }
  return top;
}

void RecordDock::AddAction(const char* text, const QKeySequence& key,
                           void (RecordDock::*handler)()) {
  auto* action = new QAction(QString::fromLatin1(text), list_);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, handler);
  list_->addAction(action);
}

void RecordDock::MakeList() {
  list_ = new CListView(QStringLiteral("record-list"), QStringLiteral("Records"), model_, this);
  list_->setAccessibleDescription(QStringLiteral(
      "Values of channels in counts; Space leaves a record out, Return goes to it, S sorts by the "
      "current column"));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->horizontalHeader()->setStretchLastSection(false);
  list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setMinimumHeight(3 * fontMetrics().height());  // a field laptop at 200 % is small
  list_->sortByColumn(1, Qt::AscendingOrder);
  list_->setSortingEnabled(true);
  list_->setContextMenuPolicy(Qt::ActionsContextMenu);
  AddAction("&Leave Out Or Take", Qt::Key_Space, &RecordDock::Toggle);
  AddAction("&Sort By This Column", Qt::Key_S, &RecordDock::SortByColumn);
  connect(model_, &QAbstractItemModel::modelReset, list_, [this] {
    list_->resizeColumnsToContents();
    ShowCurrent();
  });
}

void RecordDock::Follow(CWaveformDisplay* display) {
  if (display_ == display) {
    return;
  }
  if (display_ != nullptr) {
    disconnect(display_->Book(), nullptr, this, nullptr);
    disconnect(display_, nullptr, this, nullptr);
  }
  display_ = display;
  std::vector<QString> names;
  if (display != nullptr) {
    for (std::size_t i = 0; i < display->View().TraceCount(); ++i) {
      names.push_back(TextFromBytes(display->View().Channel(i).name));
    }
    connect(display->Book(), &RecordBook::grown, this, &RecordDock::ShowState);
    connect(display->Book(), &RecordBook::leftOutChanged, this, &RecordDock::ShowState);
    connect(display, &CWaveformDisplay::recordShown, this, &RecordDock::ShowCurrent);
  }
  model_->SetBook(display == nullptr ? nullptr : display->Book(), std::move(names));
  ShowState();
}

void RecordDock::GoTo(int row) {
  if (display_ != nullptr) {
    display_->GoTo(model_->NumberOf(row));
  }
}

void RecordDock::ShowCurrent() {
  if (display_ == nullptr) {
    return;
  }
  const int row = model_->RowOf(display_->View().Number());
  if (row >= 0 && list_->currentIndex().row() != row) {
    list_->setCurrentIndex(model_->index(row, std::max(list_->currentIndex().column(), 0)));
  }
}

// All selected records become what the current one is not.
void RecordDock::Toggle() {
  if (display_ == nullptr || !list_->currentIndex().isValid()) {
    return;
  }
  const std::uint64_t current = model_->NumberOf(list_->currentIndex().row());
  const bool is_left_out = !display_->Book()->LeftOut().Has(current);
  std::vector<std::uint64_t> numbers{current};
  for (const int row : list_->SelectedRows()) {
    numbers.push_back(model_->NumberOf(row));
  }
  for (const std::uint64_t number : numbers) {
    display_->Book()->SetLeftOut(number, is_left_out);
  }
}

// By the mouse a click on the header does it.
void RecordDock::SortByColumn() {
  const QHeaderView* header = list_->horizontalHeader();
  const int column = std::max(list_->currentIndex().column(), 0);
  const bool is_again = header->sortIndicatorSection() == column;
  list_->sortByColumn(column, is_again && header->sortIndicatorOrder() == Qt::DescendingOrder
                                  ? Qt::AscendingOrder
                                  : Qt::DescendingOrder);
  if (model_->rowCount() > 0) {
    list_->setCurrentIndex(model_->index(0, column));
  }
}

void RecordDock::LeaveOutBad() {
  if (display_ != nullptr) {
    display_->Book()->LeaveOutBad();
  }
}

void RecordDock::TakeAll() {
  if (display_ != nullptr) {
    display_->Book()->TakeAll();
  }
}

void RecordDock::Keep() {
  if (display_ != nullptr) {
    const Result<> kept = display_->Book()->Keep();
    if (!kept) {
      summary_->setText(TextFromBytes("Not kept: " + kept.Message()));
    }
  }
}

void RecordDock::ShowState() {
  const bool has_book = display_ != nullptr;
  const RecordBook* book = has_book ? display_->Book() : nullptr;
  summary_->setText(has_book ? book->Summary() : QString());
  bad_->setEnabled(has_book && display_->View().File().BadCount() > 0);
  keep_->setEnabled(has_book && !book->IsKept());
  all_->setEnabled(has_book && !book->LeftOut().IsEmpty());
}

}  // namespace orvane
