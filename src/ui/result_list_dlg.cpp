// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/result_list_dlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/list_item.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

enum Column : int { kName, kResult, kOutput, kFolder, kColumns };
constexpr int kPathRole = Qt::UserRole;
constexpr int kEndless = 1 << 20;
constexpr int kDetailsRole = Qt::UserRole + 2;
constexpr int kOrderRole = Qt::UserRole + 1;  // kind, then the list's own order

class ResultItem : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;

  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    if (column != kResult) {
      const int order = text(column).localeAwareCompare(other.text(column));
      if (order != 0) {
        return order < 0;
      }
    }
    return data(kResult, kOrderRole).toInt() < other.data(kResult, kOrderRole).toInt();
  }
};

// As high as the text needs in the width that its column has.
class WrappingDelegate : public QStyledItemDelegate {
 public:
  explicit WrappingDelegate(QTreeWidget* list) : QStyledItemDelegate(list), list_(list) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (index.column() == kResult) {
      const int margin = 2 * (list_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
      const int beside = list_->style()->pixelMetric(QStyle::PM_SmallIconSize) + 2 * margin;
      const QString text = index.data().toString();
      const QFontMetrics font = list_->fontMetrics();
      const QRect room(0, 0, std::max(list_->columnWidth(kResult) - beside, 40), kEndless);
      const QRect wrapped = font.boundingRect(room, Qt::TextWordWrap | Qt::AlignLeft, text);
      size = QSize(font.horizontalAdvance(text) + beside,  // as wide as it would like to be
                   std::max(size.height(), wrapped.height() + margin));
    }
    return size;
  }

 private:
  QTreeWidget* list_;
};

bool IsText(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  return suffix == QLatin1String("txt") || suffix == QLatin1String("csv");
}

}  // namespace

QString ResultRow::Folder() const {
  const QString of = outputs.isEmpty() ? path : outputs.back();
  return of.isEmpty() ? QString()
                      : QDir::toNativeSeparators(QFileInfo(of).absoluteDir().absolutePath());
}

CResultListDlg::CResultListDlg(const Texts& texts, const std::vector<ResultRow>& rows,
                               const TextEditor* editor, QWidget* parent)
    : QDialog(parent), editor_(editor), list_(new QTreeWidget(this)), details_(new QLabel(this)) {
  setObjectName(QStringLiteral("batch-results"));
  setWindowTitle(QStringLiteral("Orvane"));
  list_->setObjectName(QStringLiteral("results"));
  list_->setAccessibleName(QStringLiteral("Results"));
  list_->setRootIsDecorated(false);
  list_->setWordWrap(true);
  list_->setAlternatingRowColors(true);
  list_->setItemDelegate(new WrappingDelegate(list_));
  list_->setHeaderLabels({texts.first_column, QStringLiteral("Result"), QStringLiteral("Output"),
                          QStringLiteral("Folder")});
  int number = 0;
  for (const ResultRow& row : rows) {
    AddRow(row, number++);
  }
  list_->setSortingEnabled(true);
  list_->sortByColumn(kResult, Qt::AscendingOrder);
  details_->setObjectName(QStringLiteral("details"));
  details_->setTextFormat(Qt::PlainText);
  details_->setWordWrap(true);
  details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  details_->setVisible(std::any_of(rows.begin(), rows.end(),
                                   [](const ResultRow& row) { return !row.details.isEmpty(); }));
  connect(list_, &QTreeWidget::currentItemChanged, this, &CResultListDlg::ShowDetails);
  if (list_->topLevelItemCount() > 0) {
    list_->setCurrentItem(list_->topLevelItem(0));
  }
  FitColumns();
  list_->installEventFilter(this);
  connect(list_, &QTreeWidget::itemDoubleClicked, this,
          [this](QTreeWidgetItem* item) { Open(item); });
  const bool has_problem = std::any_of(rows.begin(), rows.end(), [](const ResultRow& row) {
    return row.kind == ResultRow::kProblem;
  });
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(Head(texts, has_problem));
  layout->addWidget(list_, 1);
  layout->addWidget(details_);
  layout->addWidget(Buttons());
  ResizeWithinScreen(this, QSize(940, 440));
}

QLayout* CResultListDlg::Head(const Texts& texts, bool has_problem) {
  auto* icon = new QLabel(this);
  icon->setObjectName(QStringLiteral("icon"));
  icon->setAccessibleName(has_problem ? QStringLiteral("Warning") : QStringLiteral("Information"));
  const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
  const auto picture =
      has_problem ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
  icon->setPixmap(style()->standardIcon(picture).pixmap(size, size));
  auto* lines = new QVBoxLayout;
  for (const auto& [name, text] : {std::pair("message", texts.message), {"counts", texts.counts}}) {
    auto* line = new QLabel(text, this);
    line->setObjectName(QLatin1String(name));
    line->setTextFormat(Qt::PlainText);
    line->setWordWrap(true);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setVisible(!text.isEmpty());
    lines->addWidget(line);
  }
  auto* head = new QHBoxLayout;
  head->addWidget(icon);
  head->addLayout(lines, 1);
  return head;
}

QWidget* CResultListDlg::Buttons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("1"));
  auto* folder = buttons->addButton(QStringLiteral("Open folder"), QDialogButtonBox::ActionRole);
  folder->setObjectName(QStringLiteral("open-folder"));
  folder->setToolTip(QStringLiteral("Show the folder of the selected row"));
  connect(folder, &QPushButton::clicked, this, &CResultListDlg::OpenFolder);
  auto* copy = buttons->addButton(QStringLiteral("Copy list"), QDialogButtonBox::ActionRole);
  copy->setObjectName(QStringLiteral("copy"));
  connect(copy, &QPushButton::clicked, this, &CResultListDlg::CopyAll);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  return buttons;
}

void CResultListDlg::AddRow(const ResultRow& row, int number) {
  QStringList names;
  for (const QString& output : row.outputs) {
    names << QFileInfo(output).fileName();
  }
  auto* item = OnlyShown(new ResultItem(
      list_, {row.name, row.result, names.join(QStringLiteral(", ")), row.Folder()}));
  const QString output = row.outputs.isEmpty() ? QString() : row.outputs.back();
  item->setToolTip(kName, QDir::toNativeSeparators(row.path.isEmpty() ? row.name : row.path));
  item->setToolTip(kResult, row.result);
  item->setData(kName, kDetailsRole, row.details);
  item->setToolTip(kOutput, QDir::toNativeSeparators(output));
  item->setToolTip(kFolder, row.Folder());
  item->setData(kOutput, kPathRole, output);
  constexpr int kMostRows = 1 << 28;
  item->setData(kResult, kOrderRole, row.kind * kMostRows + number);
  const auto picture = row.kind == ResultRow::kGood      ? QStyle::SP_DialogApplyButton
                       : row.kind == ResultRow::kProblem ? QStyle::SP_MessageBoxCritical
                                                         : QStyle::SP_MessageBoxWarning;
  item->setIcon(kResult, style()->standardIcon(picture));
}

void CResultListDlg::FitColumns() {
  constexpr std::array<int, kColumns> kMost = {240, 380, 200, 0};
  for (int column = 0; column < kFolder; ++column) {
    list_->resizeColumnToContents(column);
    const int wanted = list_->header()->sectionSizeHint(column);
    list_->setColumnWidth(column, std::clamp(list_->columnWidth(column) + 16, wanted,
                                             kMost[static_cast<std::size_t>(column)]));
  }
  // Rows become higher or lower with the width that their reasons have.
  connect(list_->header(), &QHeaderView::sectionResized, this, [this](int column) {
    if (column == kResult) {
      list_->doItemsLayout();
    }
  });
  list_->doItemsLayout();
}

bool CResultListDlg::eventFilter(QObject* watched, QEvent* event) {
  const auto* key = event->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent*>(event) : nullptr;
  if (key == nullptr || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)) {
    return QDialog::eventFilter(watched, event);
  }
  if (list_->currentItem() != nullptr) {
    Open(list_->currentItem());
  }
  return true;
}

void CResultListDlg::Open(const QTreeWidgetItem* item) {
  const QString path = item->data(kOutput, kPathRole).toString();
  if (path.isEmpty() || editor_ == nullptr) {
    return;
  }
  if (!IsText(path)) {
    to_show_ = path;
    accept();
  } else if (const Result<> shown = editor_->Show(path); !shown) {
    QMessageBox::warning(this, QStringLiteral("Orvane"), QString::fromStdString(shown.Message()));
  }
}

void CResultListDlg::ShowDetails(const QTreeWidgetItem* item) {
  details_->setText(item == nullptr ? QString() : item->data(kName, kDetailsRole).toString());
}

void CResultListDlg::OpenFolder() {
  const QTreeWidgetItem* item = list_->currentItem();
  const QString folder = item == nullptr ? QString() : item->text(kFolder);
  if (!folder.isEmpty() && !open_folder(QUrl::fromLocalFile(QDir::fromNativeSeparators(folder)))) {
    QMessageBox::warning(this, QStringLiteral("Orvane"),
                         QStringLiteral("No program was found to show the folder %1.").arg(folder));
  }
}

void CResultListDlg::CopyAll() const {
  QStringList lines;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem* item = list_->topLevelItem(row);
    lines << item->toolTip(kName) + QLatin1Char('\t') + item->text(kResult) + QLatin1Char('\t') +
                 item->toolTip(kOutput);
  }
  QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

}  // namespace orvane
