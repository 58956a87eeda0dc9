// SPDX-License-Identifier: GPL-3.0-or-later
// What changes the rows of GridModel as a whole: its size, filling and sorting.
#include <algorithm>
#include <numeric>
#include <utility>

#include "ui/grid_model.h"

namespace orvane {

bool GridModel::SetRowCount(int count) {
  const int old = rowCount();
  if (count < 0) {
    return false;
  }
  if (count > old) {
    beginInsertRows({}, old, count - 1);
    while (rowCount() < count) {
      rows_.push_back(MakeRow({}));
    }
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
  if (count < 0) {
    return false;
  }
  if (count == old) {
    return true;
  }
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
  if (count < 0 || count > rowCount()) {
    return false;
  }
  fixed_row_count_ = count;
  if (column_count_ > 0) {
    emit headerDataChanged(Qt::Horizontal, 0, column_count_ - 1);
  }
  return true;
}

void GridModel::SetTexts(const std::vector<std::vector<QString>>& rows) {
  beginResetModel();
  std::size_t longest = 0;
  for (const auto& row : rows) {
    longest = std::max(longest, row.size());
  }
  if (!rows.empty()) {
    column_count_ = static_cast<int>(longest);
  }
  rows_.clear();
  rows_.reserve(rows.size());
  for (const auto& row : rows) {
    rows_.push_back(MakeRow(row));
  }
  endResetModel();
}

GridModel::Row GridModel::MakeRow(const std::vector<QString>& texts) const {
  Row row;
  row.reserve(static_cast<std::size_t>(column_count_));
  for (const QString& text : texts) {
    row.push_back(std::make_unique<CGridCell>(default_cell_, text));
  }
  while (row.size() < static_cast<std::size_t>(column_count_)) {
    row.push_back(std::make_unique<CGridCell>(default_cell_));
  }
  return row;
}

bool GridModel::SortRows(const Less& less, int col, bool ascending) {
  if (!less || col < 0 || col >= column_count_) {
    return false;
  }
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);

  std::vector<QString> keys;
  keys.reserve(rows_.size());
  for (int row = 0; row < rowCount(); ++row) {
    keys.push_back(GetCell(row, col)->GetText());
  }
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
