// SPDX-License-Identifier: GPL-3.0-or-later
// The focus, the visible rows, the keys and the clipboard of CGridCtrl.
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>
#include <algorithm>

#include "ui/grid_ctrl.h"

namespace orvane {

void CGridCtrl::SetFocusCell(int row, int col) {
  const QModelIndex index = model_.index(row, col);
  if (!index.isValid() || isRowHidden(row)) return;
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

std::pair<int, int> CGridCtrl::GetFocusCell() const {
  const QModelIndex current = currentIndex();
  return {current.row(), current.column()};
}

void CGridCtrl::EnsureVisible(int row, int col) { scrollTo(model_.index(row, col)); }

void CGridCtrl::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  NotifyFocus();
}

void CGridCtrl::NotifyFocus() {
  const auto focus = GetFocusCell();
  if (std::exchange(focus_, focus) != focus) emit FocusCellChanged(focus.first, focus.second);
}

void CGridCtrl::KeepFocusVisible() {
  const auto [current, col] = GetFocusCell();
  if (current < 0 || !isRowHidden(current)) return;
  int row = current;
  while (row < GetRowCount() && isRowHidden(row)) ++row;
  if (row == GetRowCount()) {
    row = current;
    while (row >= 0 && isRowHidden(row)) --row;
  }
  if (row >= 0) {
    SetFocusCell(row, col);
  } else {
    selectionModel()->clear();
  }
}

void CGridCtrl::SetRowVisible(int row, bool visible) {
  if (row < GetFixedRowCount() || row >= GetRowCount()) return;
  setRowHidden(row, !visible);
  KeepFocusVisible();
}

bool CGridCtrl::IsRowVisible(int row) const {
  if (row < 0 || row >= GetRowCount()) return false;
  return row < GetFixedRowCount() || !isRowHidden(row);
}

void CGridCtrl::SetVisibleRows(const std::vector<bool>& by_row) {
  setUpdatesEnabled(false);
  for (int row = GetFixedRowCount(); row < GetRowCount(); ++row) {
    const auto at = static_cast<std::size_t>(row);
    const bool hidden = at < by_row.size() && !by_row[at];
    if (hidden != isRowHidden(row)) setRowHidden(row, hidden);
  }
  setUpdatesEnabled(true);
  KeepFocusVisible();
  scrollTo(currentIndex());
}

QModelIndex CGridCtrl::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const QModelIndex to = QTableView::moveCursor(action, modifiers);
  return to.isValid() && !isRowHidden(to.row()) ? to : currentIndex();
}

void CGridCtrl::keyboardSearch(const QString& /*search*/) {}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = currentIndex();
  const int key = event->key();
  if (event == QKeySequence::Copy) {
    CopySelection();
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (current.isValid()) edit(current, EditKeyPressed, nullptr);
  } else if (event->modifiers() == Qt::AltModifier && current.isValid() &&
             (key == Qt::Key_Left || key == Qt::Key_Right)) {
    // What dragging does for the mouse.
    const int step = fontMetrics().averageCharWidth() * (key == Qt::Key_Left ? -1 : 1);
    const int width = columnWidth(current.column()) + step;
    setColumnWidth(current.column(), std::max(width, horizontalHeader()->minimumSectionSize()));
  } else {
    QTableView::keyPressEvent(event);
    return;
  }
  event->accept();
}

bool CGridCtrl::event(QEvent* event) {
  // Copying is the grid's own, even where a window has a menu item of that key.
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<QKeyEvent*>(event) == QKeySequence::Copy) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

bool CGridCtrl::eventFilter(QObject* watched, QEvent* event) {
  if (watched == horizontalHeader()->viewport() && event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    if (ShowHeaderTip(help->pos(), help->globalPos())) return true;
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
  const int height = fontMetrics().height() * 4 / 3;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

void CGridCtrl::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  columns_.Refit();
}

QString CGridCtrl::SelectionAsText() const {
  QRect bounds;  // columns across, rows down
  for (const QModelIndex& index : selectedIndexes()) {
    if (!isRowHidden(index.row())) bounds |= QRect(index.column(), index.row(), 1, 1);
  }
  QStringList lines;
  for (int row = bounds.top(); row <= bounds.bottom(); ++row) {
    if (isRowHidden(row)) continue;
    QStringList fields;
    for (int col = bounds.left(); col <= bounds.right(); ++col) {
      const QModelIndex index = model_.index(row, col);
      fields << (selectionModel()->isSelected(index) ? delegate_.displayText(index.data(), locale())
                                                     : QString());
    }
    lines << fields.join(QLatin1Char('\t'));
  }
  return lines.join(QLatin1Char('\n'));
}

void CGridCtrl::CopySelection() const {
  if (selectionModel()->hasSelection()) QGuiApplication::clipboard()->setText(SelectionAsText());
}

}  // namespace orvane
