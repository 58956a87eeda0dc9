// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/fit_report_dlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "response/fit_report.h"
#include "ui/list_item.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr int kReasonLines = 6;   // seen at once; the rest is scrolled to
constexpr int kMostLetters = 20;  // of a column: the rest of a verdict is in its tip

}  // namespace

CFitReportDlg::CFitReportDlg(const CalData& cal, QWidget* parent)
    : QDialog(parent), table_(new QTableWidget(this)) {
  setWindowTitle(QStringLiteral("Model Fit"));
  const std::string warning = FitWarning(cal);
  auto* verdict =
      new QLabel(warning.empty() ? QStringLiteral("The model describes all channels well.")
                                 : QStringLiteral("Warning - ") + QString::fromStdString(warning),
                 this);
  verdict->setObjectName(QStringLiteral("verdict"));
  verdict->setWordWrap(true);
  auto* reasons = new QPlainTextEdit(this);
  reasons->setObjectName(QStringLiteral("reasons"));
  reasons->setAccessibleName(QStringLiteral("What speaks against each channel"));
  reasons->setReadOnly(true);
  reasons->setTabChangesFocus(true);
  for (const std::string& line : FitReasons(cal)) {
    reasons->appendPlainText(QString::fromStdString(line));
  }
  reasons->moveCursor(QTextCursor::Start);
  reasons->setVisible(!warning.empty());
  reasons->setFixedHeight(kReasonLines * fontMetrics().lineSpacing());
  table_->setObjectName(QStringLiteral("fit"));
  table_->setAccessibleName(QStringLiteral("Model fit by channel"));
  table_->setTabKeyNavigation(false);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  Fill(cal);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
  connect(copy, &QPushButton::clicked, this, &CFitReportDlg::Copy);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(verdict);
  layout->addWidget(reasons);
  layout->addWidget(table_, 1);
  layout->addWidget(buttons);
  setTabOrder(reasons, table_);
  const int width =
      table_->verticalHeader()->sizeHint().width() + table_->horizontalHeader()->length() + 60;
  const int height = table_->verticalHeader()->length() + 140;
  ResizeWithinScreen(this, QSize(width, height));
}

void CFitReportDlg::Fill(const CalData& cal) {
  const auto rows = FitTable(cal);
  table_->setRowCount(static_cast<int>(rows.size()));
  table_->setColumnCount(static_cast<int>(cal.Channels()));
  QStringList channels;
  for (std::size_t c = 1; c <= cal.Channels(); ++c) {
    channels << QStringLiteral("Channel %1").arg(c);
  }
  table_->setHorizontalHeaderLabels(channels);
  QStringList names;
  for (int row = 0; row < table_->rowCount(); ++row) {
    const auto& texts = rows[static_cast<std::size_t>(row)];
    names << QString::fromStdString(texts.front());
    for (int column = 0; column < table_->columnCount(); ++column) {
      auto* item = OnlyShown(new QTableWidgetItem(
          QString::fromStdString(texts[static_cast<std::size_t>(column) + 1])));
      item->setToolTip(item->text());
      item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      if (cal.model.fits[static_cast<std::size_t>(column)].IsDoubtful()) {
        QFont bold = font();
        bold.setBold(true);
        item->setFont(bold);
      }
      table_->setItem(row, column, item);
    }
  }
  table_->setVerticalHeaderLabels(names);
  table_->resizeColumnsToContents();
  for (int column = 0; column < table_->columnCount(); ++column) {
    const int most = kMostLetters * fontMetrics().averageCharWidth();
    table_->setColumnWidth(column, std::min(table_->columnWidth(column), most));
  }
}

void CFitReportDlg::Copy() {
  QString text;
  for (int column = 0; column < table_->columnCount(); ++column) {
    text += QLatin1Char('\t') + table_->horizontalHeaderItem(column)->text();
  }
  text += QLatin1Char('\n');
  for (int row = 0; row < table_->rowCount(); ++row) {
    text += table_->verticalHeaderItem(row)->text();
    for (int column = 0; column < table_->columnCount(); ++column) {
      text += QLatin1Char('\t') + table_->item(row, column)->text();
    }
    text += QLatin1Char('\n');
  }
  const QString reasons = findChild<QPlainTextEdit*>(QStringLiteral("reasons"))->toPlainText();
  text += reasons.isEmpty() ? QString() : QLatin1Char('\n') + reasons + QLatin1Char('\n');
  QApplication::clipboard()->setText(text);
}

}  // namespace orvane
