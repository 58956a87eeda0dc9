// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of CGridCtrl, in an open editor too: where they lead, and which are its own even in a
// window that has menu items of those keys.
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "ui/grid_ctrl.h"

namespace orvane {

void CGridCtrl::keyboardSearch(const QString& /*search*/) {}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = currentIndex();
  const int key = event->key();
  if (event == QKeySequence::Copy) {
    CopySelection();
  } else if (event == QKeySequence::Paste) {
    event->accept();
    Paste();  // last: who hears of the edits may even delete the grid
    return;
  } else if (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    event->accept();
    ShowMenu(PlaceOfMenu());  // not every system has this key for the menu
    return;
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (current.isValid()) {
      edit(current, EditKeyPressed, nullptr);
    }
  } else if (GridDelegate::IsKeyOfChoices(*event)) {
    if (current.isValid() && edit(current, EditKeyPressed, nullptr)) {
      delegate_.OpenChoices();
    }
  } else if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {  // with Ctrl: without is no key press
    QTableView::focusNextPrevChild(key == Qt::Key_Tab);
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

bool CGridCtrl::focusNextPrevChild(bool next) {
  return (tab_visits_cells_ && GoToEditableCell(next)) || QTableView::focusNextPrevChild(next);
}

// Row by row, as people read. False where there is none further on.
bool CGridCtrl::GoToEditableCell(bool next) {
  const int columns = GetColumnCount();
  const int cells = GetRowCount() * columns;
  const QModelIndex current = currentIndex();
  const int step = next ? 1 : -1;
  int cell = current.isValid() ? current.row() * columns + current.column() + step : 0;
  for (; cell >= 0 && cell < cells; cell += step) {
    const QModelIndex index = model_.index(cell / columns, cell % columns);
    if (!isRowHidden(index.row()) && model_.flags(index).testFlag(Qt::ItemIsEditable)) {
      SetFocusCell(index.row(), index.column());
      scrollTo(index);
      return true;
    }
  }
  return false;
}

void CGridCtrl::GoDown() {
  const auto [row, col] = GetFocusCell();
  for (int below = row + 1; row >= 0 && below < GetRowCount(); ++below) {
    if (!isRowHidden(below)) {
      SetFocusCell(below, col);
      return;
    }
  }
}

void CGridCtrl::OnEditorLeft(QKeyEvent* event) {
  if (std::exchange(stays_, false)) {
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    GoDown();
  } else if (hasFocus()) {
    QCoreApplication::sendEvent(this, event);
  }
}

bool CGridCtrl::event(QEvent* event) {
  // Copying and pasting are the grid's own, even where a window has menu items of those keys.
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Paste)) {
      event->accept();
      return true;
    }
  }
  return QTableView::event(event);
}

}  // namespace orvane
