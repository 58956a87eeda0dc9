// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_PRINTER_H_
#define ORVANE_UI_GRID_PRINTER_H_

#include <QFont>
#include <QPainter>
#include <QPrinter>
#include <QString>
#include <vector>

#include "ui/grid_ctrl.h"

namespace orvane {

// A printed grid, laid out for one printer: on each page the title if there is one, the fixed
// rows, as many visible rows as fit whole, and "Page %d of %d" at the foot. Columns are as wide as
// on screen; columns wider than the page together are made to fit, with smaller letters. A text
// too long for its column is cut with an ellipsis. An empty grid has one page.
//
// To be used at once: it must not outlive a change of the grid or of the printer's page.
class GridPrinter {
 public:
  GridPrinter(const CGridCtrl& grid, QString title, const QPrinter& printer);

  int PageCount() const;

  // Prints the pages and copies that the printer is set to. False if the printer failed.
  bool Print(QPrinter* printer) const;

 private:
  void PaintPage(QPainter* painter, int page) const;
  void PaintRow(QPainter* painter, int row, qreal top) const;

  const CGridCtrl& grid_;
  QString title_;
  QFont page_font_;  // of title and foot
  QFont cell_font_;
  QRectF page_;  // without the margins, from (0, 0) on; like all lengths in the printer's pixels
  qreal line_ = 0;
  qreal row_height_ = 0;
  std::vector<qreal> widths_;
  std::vector<int> rows_;  // the visible rows below the header
  int rows_per_page_ = 1;
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_PRINTER_H_
