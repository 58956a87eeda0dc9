// SPDX-License-Identifier: GPL-3.0-or-later
// CGridCtrl as a whole: what it is made of, the number and the texts of its cells, editing in place
// and sorting.
#include "ui/grid_ctrl.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <utility>

namespace orvane {
namespace {

// A table view that shows the model already when the members after it are made.
QTableView& Attach(QTableView& view, GridModel& model) {
  view.setModel(&model);
  return view;
}

}  // namespace

CGridCtrl::CGridCtrl(QWidget* parent) : QTableView(parent), columns_(Attach(*this, model_)) {
  setItemDelegate(&delegate_);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollMode(ScrollPerPixel);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setTextElideMode(Qt::ElideRight);
  horizontalHeader()->viewport()->installEventFilter(this);
  connect(&model_, &GridModel::textEdited, this, &CGridCtrl::OnTextEdited);
  connect(&model_, &GridModel::starToggled, this, &CGridCtrl::starToggled);
  connect(&delegate_, &GridDelegate::editorLeft, this, &CGridCtrl::OnEditorLeft);
  UpdateRowHeight();
  HideFixedRows();
}

CGridCtrl::~CGridCtrl() {
  // The members go before the base class, which must not call them any more.
  horizontalHeader()->viewport()->removeEventFilter(this);
  blockSignals(true);
  setModel(nullptr);
  setItemDelegate(nullptr);
}

bool CGridCtrl::SetColumnCount(int count) {
  const bool done = model_.SetColumnCount(count);
  NotifyFocus();
  return done;
}

bool CGridCtrl::SetRowCount(int count) {
  const bool done = model_.SetRowCount(count);
  HideFixedRows();
  return done;
}

bool CGridCtrl::SetFixedRowCount(int count) {
  const bool done = model_.SetFixedRowCount(count);
  HideFixedRows();
  return done;
}

bool CGridCtrl::SetItemText(int row, int col, const QString& text) {
  return model_.SetText(row, col, text);
}

QString CGridCtrl::GetItemText(int row, int col) const {
  const CGridCellBase* cell = GetCell(row, col);
  return cell ? cell->GetText() : QString();
}

void CGridCtrl::SetTexts(const std::vector<std::vector<QString>>& rows) {
  model_.SetTexts(rows);
  SetVisibleRows({});
  HideFixedRows();
}

void CGridCtrl::SetItemMarked(int row, int col, bool marked) { model_.SetMarked(row, col, marked); }

void CGridCtrl::SetItemWarning(int row, int col, const QString& warning) {
  model_.SetWarning(row, col, warning);
}

void CGridCtrl::SetItemStar(int row, int col, bool is_full) { model_.SetStar(row, col, is_full); }

void CGridCtrl::CommitEdit() {
  QLineEdit* editor = delegate_.OpenEditor();
  if (!editor) {
    return;
  }
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void CGridCtrl::OnTextEdited(int row, int col) {
  if (committing_) {
    edited_ = model_.index(row, col);
  } else {
    emit cellEdited(row, col);
  }
}

void CGridCtrl::commitData(QWidget* editor) {
  const QScopedValueRollback<bool> guard(committing_, true);
  QTableView::commitData(editor);
}

void CGridCtrl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  stays_ = false;
  // Only now: whoever hears of the edit may sort, refill or open dialogs.
  const auto edited = std::exchange(edited_, std::nullopt);
  if (edited && edited->isValid()) {
    emit cellEdited(edited->row(), edited->column());
  }
}

void CGridCtrl::SortItems(const Less& less, int col, bool ascending) {
  CommitEdit();
  if (!model_.SortRows(less, col, ascending)) {
    return;
  }
  NotifyFocus();
  scrollTo(currentIndex());
}

void CGridCtrl::SortTextItems(int col, bool ascending) {
  SortItems([](const QString& a, const QString& b) { return a < b; }, col, ascending);
}

}  // namespace orvane
