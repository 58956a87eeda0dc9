// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/widgets/changes_model.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::array<const char*, ChangesModel::kColumns> kTitles = {"Code", "Meaning", "There",
                                                                     "Here"};

QString TextOf(const ChangeRow& row, int column) {
  switch (column) {
    case ChangesModel::kCode:
      return QString::fromStdString(row.code);
    case ChangesModel::kMeaning:
      return QString::fromStdString(row.meaning);
    case ChangesModel::kThere:
      return QString::fromStdString(row.there);
    default:
      return QString::fromStdString(row.here);
  }
}

}  // namespace

void ChangesModel::SetRows(const std::vector<ChangeRow>& rows) {
  const bool has_same_keys = std::equal(
      rows.begin(), rows.end(), rows_.begin(), rows_.end(),
      [](const ChangeRow& a, const ChangeRow& b) { return a.key == b.key && a.code == b.code; });
  if (has_same_keys) {
    rows_ = rows;
    if (!rows_.empty()) {
      emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
    }
    return;
  }
  beginResetModel();
  rows_ = rows;
  std::set<std::uint64_t> kept;
  for (const ChangeRow& row : rows_) {
    if (row.can_take && IsTicked(row)) {
      kept.insert(row.key.Word());
    }
  }
  ticks_ = std::move(kept);
  endResetModel();
}

std::vector<int> ChangesModel::Ticked() const {
  std::vector<int> rows;
  for (int row = 0; row < rowCount(); ++row) {
    if (Row(row).can_take && IsTicked(Row(row))) {
      rows.push_back(row);
    }
  }
  return rows;
}

void ChangesModel::ClearTicks() {
  ticks_.clear();
  if (!rows_.empty()) {
    emit dataChanged(index(0, kCode), index(rowCount() - 1, kCode), {Qt::CheckStateRole});
  }
  emit ticked();
}

int ChangesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ChangesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const ChangeRow& row = Row(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return TextOf(row, index.column());
    case Qt::CheckStateRole:
      if (index.column() == kCode && row.can_take) {
        return static_cast<int>(IsTicked(row) ? Qt::Checked : Qt::Unchecked);
      }
      return {};
    default:
      return {};
  }
}

bool ChangesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kCode || !Row(index.row()).can_take) {
    return false;
  }
  const std::uint64_t key = Row(index.row()).key.Word();
  if (value.toInt() == Qt::Checked) {
    ticks_.insert(key);
  } else {
    ticks_.erase(key);
  }
  emit dataChanged(index, index, {role});
  emit ticked();
  return true;
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < kColumns) {
    return QString::fromLatin1(kTitles[static_cast<std::size_t>(section)]);
  }
  return {};
}

Qt::ItemFlags ChangesModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.isValid() && index.column() == kCode && Row(index.row()).can_take) {
    flags |= Qt::ItemIsUserCheckable;
  }
  return flags;
}

}  // namespace orvane
