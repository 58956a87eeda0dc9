// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/survey_model.h"

#include <QFont>

#include "check/widgets/severity_sign.h"

namespace orvane {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// What an index is of: the group itself, or a row in group `id - 1`.
constexpr quintptr kGroupItself = 0;

bool IsNumber(SurveyColumn column) {
  switch (column) {
    case SurveyColumn::kBox:
    case SurveyColumn::kChannels:
    case SurveyColumn::kRate:
    case SurveyColumn::kRecords:
    case SurveyColumn::kBad:
    case SurveyColumn::kSaturated:
      return true;
    default:
      return false;
  }
}

}  // namespace

void SurveyModel::Change(const std::function<void(SurveyList*)>& change) {
  beginResetModel();
  change(&list_);
  endResetModel();
}

void SurveyModel::ChangeCells(const std::function<void(SurveyList*)>& change) {
  change(&list_);
  const int groups = HasGroups() ? rowCount() : 1;
  for (int group = 0; group < groups; ++group) {
    const QModelIndex parent = HasGroups() ? index(group, 0) : QModelIndex();
    if (const int rows = rowCount(parent); rows > 0) {
      emit dataChanged(index(0, 0, parent), index(rows - 1, kSurveyColumns - 1, parent));
    }
  }
}

void SurveyModel::PictureCame(std::size_t row) {
  if (const QModelIndex index = IndexOf(row); index.isValid()) {
    emit dataChanged(index, index, {Qt::DecorationRole});
  }
}

std::optional<std::size_t> SurveyModel::RowAt(const QModelIndex& index) const {
  if (!index.isValid() || (HasGroups() && index.internalId() == kGroupItself)) {
    return std::nullopt;
  }
  const std::size_t group = HasGroups() ? index.internalId() - 1 : 0;
  return list_.Groups()[group].rows[static_cast<std::size_t>(index.row())];
}

QModelIndex SurveyModel::IndexOf(std::size_t row) const {
  const auto place = list_.PlaceOf(row);
  return place ? createIndex(static_cast<int>(place->row), 0, HasGroups() ? place->group + 1 : 0)
               : QModelIndex();
}

QModelIndex SurveyModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column < 0 || row >= rowCount(parent) || column >= kSurveyColumns) {
    return {};
  }
  return createIndex(row, column,
                     parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kGroupItself);
}

QModelIndex SurveyModel::parent(const QModelIndex& index) const {
  if (!index.isValid() || !HasGroups() || index.internalId() == kGroupItself) {
    return {};
  }
  return createIndex(static_cast<int>(index.internalId()) - 1, 0, kGroupItself);
}

int SurveyModel::rowCount(const QModelIndex& parent) const {
  const auto& groups = list_.Groups();
  if (!parent.isValid()) {
    return static_cast<int>(HasGroups()      ? groups.size()
                            : groups.empty() ? 0
                                             : groups.front().rows.size());
  }
  const bool is_group = HasGroups() && parent.internalId() == kGroupItself && parent.column() == 0;
  return is_group ? static_cast<int>(groups[static_cast<std::size_t>(parent.row())].rows.size())
                  : 0;
}

int SurveyModel::columnCount(const QModelIndex& /*parent*/) const { return kSurveyColumns; }

QVariant SurveyModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const auto row = RowAt(index);
  return row ? OfRow(*row, static_cast<SurveyColumn>(index.column()), role)
             : OfGroup(index.row(), index.column(), role);
}

QVariant SurveyModel::OfGroup(int group, int column, int role) const {
  if (column != 0) {
    return {};
  }
  if (role == Qt::DisplayRole) {
    return Text(list_.Groups()[static_cast<std::size_t>(group)].title);
  }
  if (role == Qt::FontRole) {
    QFont bold;
    bold.setBold(true);
    return bold;
  }
  return {};
}

QVariant SurveyModel::OfRow(std::size_t row, SurveyColumn column, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return Text(list_.Cell(row, column));
    case Qt::ToolTipRole: {
      const std::string sentences = list_.SentencesOf(row);
      return Text(column == SurveyColumn::kFindings ? sentences : list_.Cell(row, column));
    }
    case Qt::AccessibleTextRole:
      return column == SurveyColumn::kFindings ? Text(list_.SentencesOf(row))
                                               : Text(list_.Cell(row, column));
    case Qt::TextAlignmentRole:
      return IsNumber(column) ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::DecorationRole:
      if (const auto worst = list_.WorstOf(row); worst && column == SurveyColumn::kFindings) {
        return SignOf(*worst);
      }
      return column == SurveyColumn::kName && picture_of_ ? picture_of_(row) : QVariant();
    default:
      return {};
  }
}

// A view of tens of thousands of rows asks each of them.
Qt::ItemFlags SurveyModel::flags(const QModelIndex& index) const {
  const bool is_row = index.isValid() && (!HasGroups() || index.internalId() != kGroupItself);
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable |
         (is_row ? Qt::ItemNeverHasChildren : Qt::NoItemFlags);
}

QVariant SurveyModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
      section < kSurveyColumns) {
    return Text(TitleOf(static_cast<SurveyColumn>(section)));
  }
  return {};
}

void SurveyModel::sort(int column, Qt::SortOrder order) {
  if (column >= 0 && column < kSurveyColumns) {
    Change([&](SurveyList* list) {
      list->SetOrder(static_cast<SurveyColumn>(column), order == Qt::DescendingOrder);
    });
  }
}

}  // namespace orvane
