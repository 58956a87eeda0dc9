// SPDX-License-Identifier: GPL-3.0-or-later
// What is seen of CGridCtrl: the focus cell, which rows are hidden, the tips of the header, the
// sizes of rows and columns.
#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>
#include <utility>

#include "ui/grid_ctrl.h"

namespace orvane {

void CGridCtrl::SetFocusCell(int row, int col) {
  const QModelIndex index = model_.index(row, col);
  if (!index.isValid() || isRowHidden(row)) {
    return;
  }
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

std::pair<int, int> CGridCtrl::GetFocusCell() const {
  const QModelIndex current = currentIndex();
  return {current.row(), current.column()};
}

// Where rows have just been hidden or shown the scroll bars have the old range until later.
void CGridCtrl::EnsureVisible(int row, int col) {
  executeDelayedItemsLayout();
  updateGeometries();
  scrollTo(model_.index(row, col));
}

void CGridCtrl::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  NotifyFocus();
}

void CGridCtrl::NotifyFocus() {
  const auto focus = GetFocusCell();
  if (std::exchange(focus_, focus) != focus) {
    emit focusCellChanged(focus.first, focus.second);
  }
}

void CGridCtrl::KeepFocusVisible() {
  const auto [current, col] = GetFocusCell();
  if (current < 0 || !isRowHidden(current)) {
    return;
  }
  int row = current;
  while (row < GetRowCount() && isRowHidden(row)) {
    ++row;
  }
  if (row == GetRowCount()) {
    row = current;
    while (row >= 0 && isRowHidden(row)) {
      --row;
    }
  }
  if (row >= 0) {
    SetFocusCell(row, col);
  } else {
    selectionModel()->clear();
  }
}

void CGridCtrl::HideFixedRows() {
  const int fixed = GetFixedRowCount();
  for (int row = fixed; row < hidden_fixed_rows_; ++row) {
    showRow(row);
  }
  for (int row = 0; row < fixed; ++row) {
    hideRow(row);
  }
  hidden_fixed_rows_ = fixed;
  horizontalHeader()->setVisible(fixed > 0);
  KeepFocusVisible();
  NotifyFocus();
}

void CGridCtrl::SetRowVisible(int row, bool visible) {
  if (row < GetFixedRowCount() || row >= GetRowCount()) {
    return;
  }
  setRowHidden(row, !visible);
  KeepFocusVisible();
}

bool CGridCtrl::IsRowVisible(int row) const {
  if (row < 0 || row >= GetRowCount()) {
    return false;
  }
  return row < GetFixedRowCount() || !isRowHidden(row);
}

void CGridCtrl::SetVisibleRows(const std::vector<bool>& by_row) {
  setUpdatesEnabled(false);
  for (int row = GetFixedRowCount(); row < GetRowCount(); ++row) {
    const auto at = static_cast<std::size_t>(row);
    const bool hidden = at < by_row.size() && !by_row[at];
    if (hidden != isRowHidden(row)) {
      setRowHidden(row, hidden);
    }
  }
  setUpdatesEnabled(true);
  KeepFocusVisible();
  if (const auto [row, col] = GetFocusCell(); row >= 0) {
    EnsureVisible(row, col);
  }
}

bool CGridCtrl::eventFilter(QObject* watched, QEvent* event) {
  if (watched == horizontalHeader()->viewport() && event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    if (ShowHeaderTip(help->pos(), help->globalPos())) {
      return true;
    }
  }
  return QTableView::eventFilter(watched, event);
}

bool CGridCtrl::ShowHeaderTip(const QPoint& pos, const QPoint& global_pos) {
  const QHeaderView* header = horizontalHeader();
  const int col = header->logicalIndexAt(pos);
  if (col < 0 || !model_.headerData(col, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty()) {
    return false;
  }
  const bool cut = header->sectionSizeHint(col) > header->sectionSize(col);
  const QString text = cut ? model_.headerData(col, Qt::Horizontal).toString() : QString();
  QToolTip::showText(global_pos, PlainToolTip(text), header->viewport());
  return true;
}

void CGridCtrl::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    UpdateRowHeight();
  }
}

void CGridCtrl::UpdateRowHeight() {
  const int height = fontMetrics().height() * 3 / 2;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

void CGridCtrl::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  columns_.Refit();
}

}  // namespace orvane
