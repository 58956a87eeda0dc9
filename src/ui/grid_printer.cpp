// SPDX-License-Identifier: GPL-3.0-or-later
// How a printed grid is laid out, and the prints of CGridCtrl.
#include "ui/grid_printer.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "ui/grid_delegate.h"

namespace orvane {
namespace {

constexpr qreal kRowSpacing = 1.5;    // rows to letters, as on screen
constexpr qreal kCellMargin = 0.25;   // left and right of a text, to the height of the letters
constexpr int kHeaderShade = 0xE8;    // light enough for black letters
constexpr qreal kSmallestFont = 0.1;  // points: fonts cannot be of no size

qreal HeightOf(const QFont& font, const QPrinter& printer) {
  return QFontMetricsF(font, &printer).height() * kRowSpacing;
}

}  // namespace

GridPrinter::GridPrinter(const CGridCtrl& grid, QString title, const QPrinter& printer)
    : grid_(grid),
      title_(std::move(title)),
      page_font_(grid.font()),
      page_(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size()) {
  // In points, even where the screen's font is counted in the screen's pixels.
  page_font_.setPointSizeF(QFontInfo(grid.font()).pointSizeF());
  const qreal pixels = static_cast<qreal>(printer.logicalDpiX()) / grid.logicalDpiX();
  for (int col = 0; col < grid.GetColumnCount(); ++col) {
    widths_.push_back(grid.GetColumnWidth(col) * pixels);
  }
  const qreal total = std::accumulate(widths_.begin(), widths_.end(), qreal{0});
  const qreal scale = total > page_.width() ? page_.width() / total : 1;
  for (qreal& width : widths_) {
    width *= scale;
  }
  cell_font_ = page_font_;
  cell_font_.setPointSizeF(std::max(page_font_.pointSizeF() * scale, kSmallestFont));
  line_ = HeightOf(page_font_, printer);
  row_height_ = HeightOf(cell_font_, printer);
  for (int row = grid.GetFixedRowCount(); row < grid.GetRowCount(); ++row) {
    if (grid.IsRowVisible(row)) {
      rows_.push_back(row);
    }
  }
  const qreal around = line_ * (title_.isEmpty() ? 1 : 2) + row_height_ * grid.GetFixedRowCount();
  rows_per_page_ = std::max(1, static_cast<int>((page_.height() - around) / row_height_));
}

int GridPrinter::PageCount() const {
  const int rows = static_cast<int>(rows_.size());
  return std::max(1, (rows + rows_per_page_ - 1) / rows_per_page_);
}

bool GridPrinter::Print(QPrinter* printer) const {
  int first = 1;
  int last = PageCount();
  if (printer->printRange() == QPrinter::PageRange && printer->fromPage() > 0) {
    first = printer->fromPage();
    last = std::min(last, printer->toPage());
  }
  if (first > last) {
    return true;  // no page was asked for
  }
  QPainter painter;
  if (!painter.begin(printer)) {
    return false;
  }
  const int copies = printer->supportsMultipleCopies() ? 1 : printer->copyCount();
  for (int copy = 0; copy < copies; ++copy) {
    for (int page = first; page <= last; ++page) {
      if ((copy > 0 || page > first) && !printer->newPage()) {
        return false;
      }
      PaintPage(&painter, page);
    }
  }
  return painter.end() && printer->printerState() != QPrinter::Error;
}

void GridPrinter::PaintPage(QPainter* painter, int page) const {
  painter->setFont(page_font_);
  const QRectF foot(0, page_.height() - line_, page_.width(), line_);
  painter->drawText(foot, Qt::AlignHCenter | Qt::AlignBottom,
                    QString::asprintf("Page %d of %d", page, PageCount()));
  qreal top = 0;
  if (!title_.isEmpty()) {
    const QString title = painter->fontMetrics().elidedText(OneLine(title_), Qt::ElideRight,
                                                            static_cast<int>(page_.width()));
    painter->drawText(QRectF(0, 0, page_.width(), line_), Qt::AlignLeft | Qt::AlignTop, title);
    top += line_;
  }
  for (int row = 0; row < grid_.GetFixedRowCount(); ++row, top += row_height_) {
    PaintRow(painter, row, top);
  }
  const auto per_page = static_cast<std::size_t>(rows_per_page_);
  const std::size_t first = static_cast<std::size_t>(page - 1) * per_page;
  const std::size_t end = std::min(rows_.size(), first + per_page);
  for (std::size_t i = first; i < end; ++i, top += row_height_) {
    PaintRow(painter, rows_[i], top);
  }
}

void GridPrinter::PaintRow(QPainter* painter, int row, qreal top) const {
  const bool is_header = row < grid_.GetFixedRowCount();
  const qreal margin = row_height_ / kRowSpacing * kCellMargin;
  qreal left = 0;
  for (std::size_t i = 0; i < widths_.size(); left += widths_[i++]) {
    const CGridCellBase* cell = grid_.GetCell(row, static_cast<int>(i));
    if (!cell || widths_[i] <= 0) {
      continue;
    }
    const QRectF frame(left, top, widths_[i], row_height_);
    if (is_header) {
      painter->fillRect(frame, QColor(kHeaderShade, kHeaderShade, kHeaderShade));
    }
    painter->setPen(QPen(Qt::gray, 0));
    painter->drawRect(frame);
    QFont font = cell_font_;
    font.setBold(is_header || cell->IsMarked());
    painter->setFont(font);
    painter->setPen(Qt::black);
    const QRectF inner = frame.adjusted(margin, 0, -margin, 0);
    const QString text = QFontMetricsF(font, painter->device())
                             .elidedText(OneLine(cell->GetText()), Qt::ElideRight, inner.width());
    painter->drawText(inner, static_cast<int>(cell->GetAlignment()) | Qt::TextSingleLine, text);
  }
}

int CGridCtrl::PageCount(const QPrinter& printer) const {
  return GridPrinter(*this, print_title_, printer).PageCount();
}

bool CGridCtrl::Print(QPrinter* printer) const {
  return GridPrinter(*this, print_title_, *printer).Print(printer);
}

}  // namespace orvane
