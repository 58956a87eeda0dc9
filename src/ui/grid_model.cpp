// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_model.h"

#include <QFont>
#include <algorithm>

namespace orvane {

namespace {

// What only the look tells of a cell.
QString DescriptionOf(const CGridCellBase& cell) {
  QStringList parts;
  if (cell.IsMarked()) {
    parts << GridModel::tr("changed");
  }
  if (!cell.GetWarning().isEmpty()) {
    parts << cell.GetWarning();
  }
  if (cell.GetStar() == true) {
    parts << GridModel::tr("favourite");
  }
  return parts.join(QStringLiteral(", "));
}

QVariant CheckStateOf(const CGridCellBase& cell) {
  const std::optional<bool> star = cell.GetStar();
  return star ? QVariant(*star ? Qt::Checked : Qt::Unchecked) : QVariant();
}

}  // namespace

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : column_count_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const CGridCellBase* cell = GetCell(index.row(), index.column());
  if (!cell) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return cell->GetText();
    case Qt::ToolTipRole:
      return cell->GetTipText();
    case Qt::TextAlignmentRole:
      return static_cast<int>(cell->GetAlignment());
    case Qt::FontRole: {
      if (!cell->IsMarked()) {
        return {};
      }
      QFont bold;  // the weight alone: the view supplies the rest
      bold.setBold(true);
      return bold;
    }
    case Qt::AccessibleDescriptionRole:
      return DescriptionOf(*cell);
    case Qt::CheckStateRole:
      return CheckStateOf(*cell);
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || GetFixedRowCount() == 0) {
    return {};
  }
  const CGridCellBase* cell = GetCell(0, section);
  if (!cell) {
    return {};
  }
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
  for (int row = 0; row < GetFixedRowCount(); ++row) {
    lines << GetCell(row, col)->GetText();
  }
  return lines.join(QLatin1Char('\n'));
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const CGridCellBase* cell = GetCell(index.row(), index.column());
  if (!cell) {
    return Qt::NoItemFlags;
  }
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (index.row() < GetFixedRowCount()) {
    return flags;
  }
  flags |= Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
  flags.setFlag(Qt::ItemIsUserCheckable, cell->GetStar().has_value());
  if (!cell->IsReadOnly() && begin_edit_ && begin_edit_(index.row(), index.column())) {
    flags |= Qt::ItemIsEditable;
  }
  return flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role == Qt::CheckStateRole && (flags(index) & Qt::ItemIsUserCheckable)) {
    SetStar(index.row(), index.column(), value.toInt() == Qt::Checked);
    emit starToggled(index.row(), index.column());
    return true;
  }
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) {
    return false;
  }
  CGridCellBase* cell = GetCell(index.row(), index.column());
  const QString text = value.toString();
  if (text == cell->GetText() || !IsTypeable(*cell, text)) {
    return false;
  }
  cell->SetText(text);
  NotifyChanged(index.row(), index.column());
  emit textEdited(index.row(), index.column());
  return true;
}

bool GridModel::EnterText(const QModelIndex& index, QString text) {
  const CGridCellBase* cell = GetCell(index.row(), index.column());
  if (!cell) {
    return false;
  }
  if (text == cell->GetText()) {
    return true;
  }
  if (!(flags(index) & Qt::ItemIsEditable)) {
    return false;
  }
  if (validator_ && !IsTypeable(*cell, text)) {
    validator_->fixup(text);
  }
  return text == cell->GetText() || setData(index, text);
}

bool GridModel::IsTypeable(const CGridCellBase& cell, QString text) const {
  // A text that was over the limit before may stay as long as it was.
  if (text.size() > std::max<qsizetype>(cell.GetTextLimit(), cell.GetText().size())) {
    return false;
  }
  int cursor = 0;
  return !validator_ || validator_->validate(text, cursor) == QValidator::Acceptable;
}

int GridModel::GetFixedRowCount() const { return std::min(fixed_row_count_, rowCount()); }

CGridCellBase* GridModel::GetCell(int row, int col) const {
  if (row < 0 || row >= rowCount() || col < 0 || col >= column_count_) {
    return nullptr;
  }
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)].get();
}

bool GridModel::SetText(int row, int col, const QString& text) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) {
    return false;
  }
  cell->SetText(text);
  NotifyChanged(row, col);
  return true;
}

bool GridModel::SetMarked(int row, int col, bool marked) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) {
    return false;
  }
  cell->SetMarked(marked);
  NotifyChanged(row, col);
  return true;
}

bool GridModel::SetWarning(int row, int col, const QString& warning) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) {
    return false;
  }
  cell->SetWarning(warning);
  NotifyChanged(row, col);
  return true;
}

bool GridModel::SetStar(int row, int col, bool is_full) {
  CGridCellBase* cell = GetCell(row, col);
  if (!cell) {
    return false;
  }
  cell->SetStar(is_full);
  NotifyChanged(row, col);
  return true;
}

void GridModel::NotifyChanged(int row, int col) {
  const QModelIndex changed = index(row, col);
  emit dataChanged(changed, changed);
  if (row < GetFixedRowCount()) {
    emit headerDataChanged(Qt::Horizontal, col, col);
  }
}

}  // namespace orvane
