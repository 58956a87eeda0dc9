// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_COLUMNS_H_
#define ORVANE_UI_GRID_COLUMNS_H_

#include <QObject>
#include <vector>

class QTableView;

namespace orvane {

// The column widths of a table view: those that were given, and on request the even widening of
// all columns up to the width of the view. Widths are in device-independent pixels.
class GridColumns final : public QObject {
  Q_OBJECT

 public:
  // The view must already have its model and must outlive this.
  explicit GridColumns(QTableView& view);

  bool SetWidth(int col, int px);
  void ExpandToFit();

  // For a view that was resized: widens again, unless a column was dragged since ExpandToFit().
  void Refit();

 private:
  void TakeWidths();

  QTableView& view_;
  std::vector<int> given_;
  bool expanded_ = false;
  bool applying_ = false;
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_COLUMNS_H_
