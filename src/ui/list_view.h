// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_LIST_VIEW_H_
#define ORVANE_UI_LIST_VIEW_H_

#include <QTableView>
#include <vector>

namespace orvane {

/// A list of rows with columns over any model: rows are chosen whole, and Tab leaves it.
class CListView : public QTableView {
  Q_OBJECT

 public:
  /// `title` is for assistive tools.
  CListView(const QString& name, const QString& title, QAbstractItemModel* model, QWidget* parent);

  /// The rows that are selected, from the top.
  std::vector<int> SelectedRows() const;

 signals:
  /// Return was pressed on a row, or it was double-clicked.
  void opened(int row);

 protected:
  /// Return never reaches a dialog around the list, which it would close.
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace orvane

#endif  // ORVANE_UI_LIST_VIEW_H_
