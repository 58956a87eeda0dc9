// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/batch_results.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/list_item.h"
#include "ui/qt_path.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

enum Column : int { kFile, kResult, kOutput, kColumns };
constexpr int kOutputPath = Qt::UserRole;

}  // namespace

QString ResultText(const BatchResult& result) {
  QString text;
  switch (result.status) {
    case BatchStatus::kDone:
      return QStringLiteral("done");
    case BatchStatus::kDoneWithNote:
      text = QStringLiteral("done");
      break;
    case BatchStatus::kFailed:
      text = QStringLiteral("failed");
      break;
    case BatchStatus::kLeftAlone:
      text = QStringLiteral("left alone");
      break;
    case BatchStatus::kCancelled:
      return QStringLiteral("cancelled");
  }
  if (result.code != 0) {
    text += QStringLiteral(" (%1)").arg(result.code);
  }
  return result.text.empty() ? text
                             : text + QStringLiteral(": ") + QString::fromStdString(result.text);
}

CBatchResultDlg::CBatchResultDlg(const Batch& batch, const QString& message,
                                 const TextEditor* editor, QWidget* parent)
    : QDialog(parent), editor_(editor), list_(new QTreeWidget(this)) {
  setObjectName(QStringLiteral("batch-results"));
  setWindowTitle(QStringLiteral("Orvane"));
  auto* icon = new QLabel(this);
  const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(size, size));
  auto* text = new QLabel(message, this);
  text->setObjectName(QStringLiteral("message"));
  text->setTextFormat(Qt::PlainText);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* head = new QHBoxLayout;
  head->addWidget(icon);
  head->addWidget(text, 1);

  list_->setObjectName(QStringLiteral("results"));
  list_->setAccessibleName(QStringLiteral("Results"));
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setHeaderLabels(
      {QStringLiteral("File"), QStringLiteral("Result"), QStringLiteral("Output")});
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    if (const BatchResult* result = batch.Result(i); result != nullptr) {
      AddFile(batch.Input(i), *result);
    }
  }
  for (int column = 0; column < kOutput; ++column) {
    list_->resizeColumnToContents(column);
    list_->setColumnWidth(column, std::min(list_->columnWidth(column) + 16, 340));
  }
  list_->installEventFilter(this);
  connect(list_, &QTreeWidget::itemDoubleClicked, this,
          [this](QTreeWidgetItem* item) { Open(item); });

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("1"));
  auto* copy = buttons->addButton(QStringLiteral("Copy list"), QDialogButtonBox::ActionRole);
  copy->setObjectName(QStringLiteral("copy"));
  connect(copy, &QPushButton::clicked, this, &CBatchResultDlg::CopyAll);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(head);
  layout->addWidget(list_, 1);
  layout->addWidget(buttons);
  ResizeWithinScreen(this, QSize(820, 420));
}

bool CBatchResultDlg::eventFilter(QObject* watched, QEvent* event) {
  const auto* key = event->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent*>(event) : nullptr;
  if (key == nullptr || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)) {
    return QDialog::eventFilter(watched, event);
  }
  if (list_->currentItem() != nullptr) {
    Open(list_->currentItem());
  }
  return true;
}

void CBatchResultDlg::AddFile(const std::filesystem::path& input, const BatchResult& result) {
  const QString output = result.outputs.empty() ? QString() : TextFromPath(result.outputs.back());
  QStringList names;
  for (const auto& path : result.outputs) {
    names << TextFromPath(path.filename());
  }
  auto* item =
      OnlyShown(new QTreeWidgetItem(list_, {TextFromPath(input.filename()), ResultText(result),
                                            names.join(QStringLiteral(", "))}));
  item->setToolTip(kFile, QDir::toNativeSeparators(TextFromPath(input)));
  item->setToolTip(kResult, item->text(kResult));
  item->setToolTip(kOutput, QDir::toNativeSeparators(output));
  item->setData(kOutput, kOutputPath, output);
  const auto picture = result.status == BatchStatus::kDone     ? QStyle::SP_DialogApplyButton
                       : result.status == BatchStatus::kFailed ? QStyle::SP_MessageBoxCritical
                                                               : QStyle::SP_MessageBoxWarning;
  item->setIcon(kResult, style()->standardIcon(picture));
}

void CBatchResultDlg::Open(const QTreeWidgetItem* item) {
  const QString path = item->data(kOutput, kOutputPath).toString();
  if (path.isEmpty()) {
    return;
  }
  if (const QString fault = editor_->Show(path); !fault.isEmpty()) {
    QMessageBox::warning(this, QStringLiteral("Orvane"), fault);
  }
}

void CBatchResultDlg::CopyAll() const {
  QStringList lines;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem* item = list_->topLevelItem(row);
    lines << item->toolTip(kFile) + QLatin1Char('\t') + item->text(kResult) + QLatin1Char('\t') +
                 item->toolTip(kOutput);
  }
  QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

}  // namespace orvane
