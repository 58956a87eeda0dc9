// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_GRID_MODEL_H_
#define ORVANE_UI_GRID_MODEL_H_

#include <QAbstractTableModel>
#include <QPointer>
#include <QValidator>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "ui/grid_cell.h"

namespace orvane {

// The cells of a grid. Rows are counted from the first fixed row, so that the header texts are
// ordinary cells to whoever reads the model.
class GridModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using Less = std::function<bool(const QString& a, const QString& b)>;
  using BeginEdit = std::function<bool(int row, int col)>;

  using QAbstractTableModel::QAbstractTableModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  // An edit, as a user makes it: keeps to the veto, the validator and the text limit. False when
  // it was refused or when the text is the one the cell already held. A star is set by its check
  // state.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  // As setData(), but with a text that nobody saw in an editor: the validator may repair it, and
  // true means that the cell now holds it, changed or not.
  bool EnterText(const QModelIndex& index, QString text);

  bool SetRowCount(int count);
  bool SetColumnCount(int count);
  bool SetFixedRowCount(int count);

  // Never more than there are rows; the count asked for comes back with the rows.
  int GetFixedRowCount() const;

  // Replaces all cells in one reset. There are as many columns as the longest row has; shorter
  // rows are filled up with empty cells. Without any row the columns stay.
  void SetTexts(const std::vector<std::vector<QString>>& rows);

  // Null when out of range. The model keeps the cell, until the next SetTexts() or smaller count.
  CGridCellBase* GetCell(int row, int col) const;
  CGridDefaultCell& DefaultCell() { return default_cell_; }

  bool SetText(int row, int col, const QString& text);
  bool SetMarked(int row, int col, bool marked);
  bool SetWarning(int row, int col, const QString& warning);
  bool SetStar(int row, int col, bool is_full);

  // Sorts the rows below the fixed ones, stable both ways. Persistent indexes follow their rows.
  bool SortRows(const Less& less, int col, bool ascending);

  void SetBeginEdit(BeginEdit begin_edit) { begin_edit_ = std::move(begin_edit); }
  void SetValidator(const QValidator* validator) { validator_ = validator; }
  const QValidator* Validator() const { return validator_; }

 signals:
  // setData() has changed the text of a cell.
  void textEdited(int row, int col);
  // setData() has filled or emptied the star of a cell.
  void starToggled(int row, int col);

 private:
  using Row = std::vector<std::unique_ptr<CGridCellBase>>;

  Row MakeRow(const std::vector<QString>& texts) const;
  QString HeaderText(int col) const;
  bool IsTypeable(const CGridCellBase& cell, QString text) const;
  void NotifyChanged(int row, int col);

  CGridDefaultCell default_cell_;
  std::vector<Row> rows_;
  int column_count_ = 0;
  int fixed_row_count_ = 0;
  BeginEdit begin_edit_;
  QPointer<const QValidator> validator_;
};

}  // namespace orvane

#endif  // ORVANE_UI_GRID_MODEL_H_
