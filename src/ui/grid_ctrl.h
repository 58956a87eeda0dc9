// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_CTRL_H_
#define ORVANE_UI_GRID_CTRL_H_

#include <QString>
#include <QTableView>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "ui/grid_columns.h"
#include "ui/grid_delegate.h"
#include "ui/grid_model.h"
#include "ui/grid_texts.h"

class QPrinter;
class QContextMenuEvent;

namespace orvane {

// A grid of texts with fixed header rows, in-place editing, sorting and hiding of rows.
//
// Its context menu copies, saves and prints cells, and where some of them can be edited it pastes
// and loads them. Actions that were added to the grid follow.
//
// Row numbers count the fixed rows: with one fixed row the first data row is row 1. Calls with
// a row or column that does not exist do nothing; getters then return nothing, setters false.
class CGridCtrl : public QTableView {
  Q_OBJECT

 public:
  using Less = GridModel::Less;
  using BeginEdit = GridModel::BeginEdit;

  explicit CGridCtrl(QWidget* parent = nullptr);
  ~CGridCtrl() override;
  CGridCtrl(const CGridCtrl&) = delete;
  CGridCtrl& operator=(const CGridCtrl&) = delete;
  CGridCtrl(CGridCtrl&&) = delete;
  CGridCtrl& operator=(CGridCtrl&&) = delete;

  // Size. New cells are empty, lost cells are gone.
  bool SetColumnCount(int count);
  bool SetRowCount(int count);
  bool SetFixedRowCount(int count);
  int GetColumnCount() const { return model_.columnCount(); }
  int GetRowCount() const { return model_.rowCount(); }
  int GetFixedRowCount() const { return model_.GetFixedRowCount(); }

  // Widths in device-independent pixels; GetColumnWidth() is the width on screen, 0 if there is no
  // such column.
  bool SetColumnWidth(int col, int px) { return columns_.SetWidth(col, px); }
  int GetColumnWidth(int col) const { return columnWidth(col); }

  // Widens the columns evenly until they fill the width of the grid, and does so again when the
  // grid is resized, until the user drags a column. The widths that were set are the least.
  void ExpandColumnsToFit() { columns_.ExpandToFit(); }

  bool SetItemText(int row, int col, const QString& text);
  QString GetItemText(int row, int col) const;

  // Replaces all rows, the fixed ones included, at one go. The columns become as many as the
  // longest row has. All rows are visible then, nothing is marked, no cell has the focus, and an
  // editor that was open is gone without an edit.
  void SetTexts(const std::vector<std::vector<QString>>& rows);

  // The grid owns the cells. What is changed through the pointer shows at the next repaint.
  CGridCellBase* GetCell(int row, int col) const { return model_.GetCell(row, col); }
  CGridDefaultCell& DefaultCell() { return model_.DefaultCell(); }

  // Bold, and described as "changed" to assistive tools.
  void SetItemMarked(int row, int col, bool marked);

  // In the colour of warnings, and described by that text; empty: nothing is wrong.
  void SetItemWarning(int row, int col, const QString& warning);

  // A star in front of the text. A click on it and Space in its cell fill and empty it.
  void SetItemStar(int row, int col, bool is_full);

  // Asked whether a cell may be edited, also while nobody is editing (assistive tools want to
  // know): it must have no side effects. Without it nothing can be edited; fixed rows never can.
  void SetBeginEdit(BeginEdit begin_edit) { model_.SetBeginEdit(std::move(begin_edit)); }

  // Not owned; may be null. Text it does not accept cannot be entered: Return keeps the editor
  // open, and leaving the editor another way leaves the cell as it was.
  void SetEditValidator(const QValidator* validator) { model_.SetValidator(validator); }

  bool IsEditing() const { return delegate_.OpenEditor() != nullptr; }

  // Return in an open editor goes down a row, and with this Tab and Shift+Tab visit the cells that
  // can be edited, from the last one out of the grid. Ctrl+Tab always leaves.
  void SetTabVisitsCells(bool visits) { tab_visits_cells_ = visits; }

  // For whoever hears of an edit and refuses it: the key that ended it does not leave the cell. Of
  // a cell that is pasted or loaded the refusal is counted, and true says that the grid itself will
  // report the reason, once for all cells.
  bool RefuseEdit(const QString& reason = {});

  // Takes over and closes an open editor; afterwards the cell is set and cellEdited() was emitted.
  void CommitEdit();

  // Stable sorting of the rows below the fixed ones; descending keeps equal rows in order too.
  // Focus, selection, marks and hiding follow their rows. An open editor is committed first.
  void SortItems(const Less& less, int col, bool ascending);
  void SortTextItems(int col, bool ascending);  // by UTF-16 code units, whatever the locale

  // Moves the focus cell and selects it alone. Fixed and hidden rows cannot have it.
  void SetFocusCell(int row, int col);
  std::pair<int, int> GetFocusCell() const;  // row and column, (-1, -1) if there is none
  void EnsureVisible(int row, int col);      // scrolls

  // A focus cell that gets hidden passes the focus down to the next visible row, else up.
  // Fixed rows are always visible.
  void SetRowVisible(int row, bool visible);
  bool IsRowVisible(int row) const;
  void SetVisibleRows(const std::vector<bool>& by_row);  // rows past its end are visible

  // The selected cells within their bounding rectangle, without hidden rows: fields separated by
  // tabs, rows by newlines. Copying nothing leaves the clipboard alone.
  QString SelectionAsText() const;
  void CopySelection();

  // Sets the cells from the focus cell on, to the right and down the visible rows; what lies past
  // the last row or column is dropped, and so is an empty text. Each cell is set as if it were
  // edited in place: it may refuse, and cellEdited() follows a change at once. An open editor is
  // committed first. PasteText() returns how many cells now hold their text.
  void Paste();  // the text of the clipboard
  int PasteText(const QString& text);

  // Off at first. When on, pressing a selected cell drags SelectionAsText() out, other cells still
  // begin a selection, and a dropped text is pasted from the cell under the mouse on. Dropping
  // always copies. Dropped files are left to the window. In place of Qt's setDragEnabled().
  void SetDragEnabled(bool enabled);

  // Prints the header and the visible rows as GridPrinter says; the title is above the header
  // of each page. The context menu prints a grid without one under the name of window and grid.
  // False if the printer failed.
  void SetPrintTitle(const QString& title) { print_title_ = title; }
  int PageCount(const QPrinter& printer) const;
  bool Print(QPrinter* printer) const;
  // Asks for a printer, or a PDF file, before.
  void AskAndPrint();

  // All cells, header and hidden rows included, as UTF-8 text: see grid_texts.h. An open editor is
  // committed first. Loading sets the rows in their present order as pasting does, from the first
  // data row on; it refuses a file of another header, of more or fewer rows, or whose rows have
  // other names (what is read-only before the first edited column), and reports to the user what of
  // a file the cells refuse. On failure nothing has changed; the message is "PATH: reason".
  //
  // A grid that shows the same rows of one thing after another names it: the file then says so in
  // its first header cell, and is refused where another is shown.
  void SetOwnerOfCells(const QString& owner) { owner_of_cells_ = owner; }
  Result<> SaveCells(const QString& path);
  Result<> LoadCells(const QString& path);

  // Does nothing: type-ahead would leave the focus on hidden rows.
  void keyboardSearch(const QString& search) override;

 signals:
  // An in-place edit or a paste has changed the text of a cell; the editor is closed already.
  void cellEdited(int row, int col);

  // The user has filled or emptied the star of a cell.
  void starToggled(int row, int col);

  // A paste, drop or load is over: how many cells hold the text meant for them, even if they held
  // it before, and how many refused it.
  void pasted(int set, int refused);

  // GetFocusCell() has changed, also because its row was sorted to another place.
  void focusCellChanged(int row, int col);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void mousePressEvent(QMouseEvent* event) override;
  void startDrag(Qt::DropActions supported_actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void commitData(QWidget* editor) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  // The cell that is being pasted or loaded, and what was refused so far.
  struct Entering {
    int row = 0;  // from 1, without the fixed rows
    bool is_refused = false;
    QStringList reasons;
  };

  void HideFixedRows();
  void KeepFocusVisible();
  void NotifyFocus();
  void UpdateRowHeight();
  void OnTextEdited(int row, int col);
  void OnEditorLeft(QKeyEvent* event);
  void GoDown();
  bool GoToEditableCell(bool next);
  int EnterTexts(const QModelIndex& first, const GridTexts& texts, bool is_load);
  void TellRefused(int set, int refused, QStringList reasons);
  bool HasEditableCells() const;
  QPoint PlaceOfMenu() const;
  void ShowMenu(const QPoint& at);
  void AskAndSave();
  void AskAndLoad();
  bool ShowHeaderTip(const QPoint& pos, const QPoint& global_pos);

  GridModel model_;
  GridDelegate delegate_;
  GridColumns columns_;
  int hidden_fixed_rows_ = 0;          // how many fixed rows the body hides now
  std::pair<int, int> focus_{-1, -1};  // as last announced
  bool committing_ = false;
  bool stays_ = false;
  bool tab_visits_cells_ = false;
  bool drags_ = false;
  Entering* entering_ = nullptr;
  QString print_title_;
  QString owner_of_cells_;
  std::optional<QPersistentModelIndex> edited_;  // to be announced when its editor has closed
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_CTRL_H_
