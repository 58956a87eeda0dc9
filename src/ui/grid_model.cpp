// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_model.h"

#include <QFont>
#include <algorithm>
#include <numeric>
#include <utility>

namespace orvane {

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : column_count_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const CGridCellBase* cell = GetCell(index.row(), index.column());
  if (!cell) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return cell->GetText();
    case Qt::ToolTipRole:
      return cell->GetTipText();
    case Qt::TextAlignmentRole:
      return static_cast<int>(cell->GetAlignment());
    case Qt::FontRole: {
      if (!cell->IsMarked()) return {};
      QFont bold;  // the weight alone: the view supplies the rest
      bold.setBold(true);
      return bold;
    }
    case Qt::AccessibleDescriptionRole:
      return cell->IsMarked() ? tr("changed") : QString();
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || GetFixedRowCount() == 0) return {};
  const CGridCellBase* cell = GetCell(0, section);
  if (!cell) return {};
  switch (role) {
    case Qt::DisplayRole:
      return HeaderText(section);
    case Qt::ToolTipRole:
      return cell->GetTipText();
    case Qt::TextAlignmentRole:
      return static_cast<int>(cell->GetAlignment());
    default:
      return {};
  }
}

QString GridModel::HeaderText(int col) const {
  QStringList lines;
  for (int row = 0; row < GetFixedRowCount(); ++row) lines << GetCell(row, col)->GetText();
  return lines.join(QLatin1Char('\n'));
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const CGridCellBase* cell = GetCell(index.row(), index.column());
  if (!cell) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (index.row() < GetFixedRowCount()) return flags;
  flags |= Qt::ItemIsSelectable;
  if (!cell->IsReadOnly() && begin_edit_ && begin_edit_(index.row(), index.column())) {
    flags |= Qt::ItemIsEditable;
  }
  return flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  CGridCellBase* cell = GetCell(index.row(), index.column());
  const QString text = value.toString();
  if (text == cell->GetText() || !IsTypeable(*cell, text)) return false;
  cell->SetText(text);
  NotifyChanged(index.row(), index.column());
  emit TextEdited(index.row(), index.column());
  return true;
}

bool GridModel::IsTypeable(const CGridCellBase& cell, QString text) const {
  // A text that was over the limit before may stay as long as it was.
  if (text.size() > std::max<qsizetype>(cell.GetTextLimit(), cell.GetText().size())) return false;
  int cursor = 0;
  return !validator_ || validator_->validate(text, cursor) == QValidator::Acceptable;
}

bool GridModel::SetRowCount(int count) {
  const int old = rowCount();
  if (count < 0) return false;
  if (count > old) {
    beginInsertRows({}, old, count - 1);
    while (rowCount() < count) rows_.push_back(MakeRow({}));
    endInsertRows();
  } else if (count < old) {
    beginRemoveRows({}, count, old - 1);
    rows_.resize(static_cast<std::size_t>(count));
    endRemoveRows();
  }
  return true;
}

bool GridModel::SetColumnCount(int count) {
  const int old = column_count_;
  if (count < 0) return false;
  if (count == old) return true;
  if (count > old) {
    beginInsertColumns({}, old, count - 1);
  } else {
    beginRemoveColumns({}, count, old - 1);
  }
  column_count_ = count;
  for (Row& row : rows_) {
    row.resize(static_cast<std::size_t>(std::min(old, count)));
    while (row.size() < static_cast<std::size_t>(count)) {
      row.push_back(std::make_unique<CGridCell>(default_cell_));
    }
  }
  if (count > old) {
    endInsertColumns();
  } else {
    endRemoveColumns();
  }
  return true;
}

bool GridModel::SetFixedRowCount(int count) {
  if (count < 0 || count > rowCount()) return false;
  fixed_row_count_ = count;
  if (column_count_ > 0) emit headerDataChanged(Qt::Horizontal, 0, column_count_ - 1);
  return true;
}

int GridModel::GetFixedRowCount() const { return std::min(fixed_row_count_, rowCount()); }

void GridModel::SetTexts(const std::vector<std::vector<QString>>& rows) {
  beginResetModel();
  std::size_t longest = 0;
  for (const auto& row : rows) longest = std::max(longest, row.size());
  if (!rows.empty()) column_count_ = static_cast<int>(longest);
  rows_.clear();
  rows_.reserve(rows.size());
  for (const auto& row : rows) rows_.push_back(MakeRow(row));
  endResetModel();
}

GridModel::Row GridModel::MakeRow(const std::vector<QString>& texts) const {
  Row row;
  row.reserve(static_cast<std::size_t>(column_count_));
  for (const QString& text : texts) row.push_back(std::make_unique<CGridCell>(default_cell_, text));
  while (row.size() < static_cast<std::size_t>(column_count_)) {
    row.push_back(std::make_unique<CGridCell>(default_cell_));
  }
  return row;
}

CGridCellBase* GridModel::GetCell(int row, int col) const {
  if (row < 0 || row >= rowCount() || col < 0 || col >= column_count_) return nullptr;
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)].get();
}

bool GridModel::SetText(int row, int col, const QString& text) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) return false;
  cell->SetText(text);
  NotifyChanged(row, col);
  return true;
}

bool GridModel::SetMarked(int row, int col, bool marked) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) return false;
  cell->SetMarked(marked);
  NotifyChanged(row, col);
  return true;
}

void GridModel::NotifyChanged(int row, int col) {
  const QModelIndex changed = index(row, col);
  emit dataChanged(changed, changed);
  if (row < GetFixedRowCount()) emit headerDataChanged(Qt::Horizontal, col, col);
}

bool GridModel::SortRows(const Less& less, int col, bool ascending) {
  if (!less || col < 0 || col >= column_count_) return false;
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);

  std::vector<QString> keys;
  keys.reserve(rows_.size());
  for (int row = 0; row < rowCount(); ++row) keys.push_back(GetCell(row, col)->GetText());
  std::vector<std::size_t> order(rows_.size());  // new row -> old row
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin() + GetFixedRowCount(), order.end(),
                   [&](std::size_t a, std::size_t b) {
                     return ascending ? less(keys[a], keys[b]) : less(keys[b], keys[a]);
                   });

  std::vector<Row> sorted(rows_.size());
  std::vector<int> new_row(rows_.size());
  for (std::size_t row = 0; row < order.size(); ++row) {
    sorted[row] = std::move(rows_[order[row]]);
    new_row[order[row]] = static_cast<int>(row);
  }
  rows_ = std::move(sorted);

  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  to.reserve(from.size());
  for (const QModelIndex& old : from) {
    to << index(new_row[static_cast<std::size_t>(old.row())], old.column());
  }
  changePersistentIndexList(from, to);
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
  return true;
}

}  // namespace orvane
