// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/list_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

namespace orvane {

CListView::CListView(const QString& name, const QString& title, QAbstractItemModel* model,
                     QWidget* parent)
    : QTableView(parent) {
  setObjectName(name);
  setAccessibleName(title);
  setModel(model);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { emit opened(index.row()); });
}

std::vector<int> CListView::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) {
    rows.push_back(index.row());
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

void CListView::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QTableView::keyPressEvent(event);
  } else if (currentIndex().isValid()) {
    emit opened(currentIndex().row());
  }
}

}  // namespace orvane
