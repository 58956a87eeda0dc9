// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/record_table_model.h"

#include <algorithm>
#include <unordered_map>

#include "ui/byte_text.h"

namespace orvane {
namespace {

using Kind = RecordColumn::Kind;

constexpr auto kLeftOutText = "left out";

}  // namespace

void RecordTableModel::SetBook(RecordBook* book, std::vector<QString> names) {
  if (book_ != nullptr) {
    disconnect(book_, nullptr, this, nullptr);
  }
  book_ = book;
  names_ = std::move(names);
  if (book_ != nullptr) {
    connect(book_, &RecordBook::restarted, this, &RecordTableModel::Restart);
    connect(book_, &RecordBook::grown, this, &RecordTableModel::Grow);
    connect(book_, &RecordBook::leftOutChanged, this, &RecordTableModel::ShowTicks);
    connect(book_, &QObject::destroyed, this, [this] {
      book_ = nullptr;
      Restart();
    });
  }
  Restart();
}

void RecordTableModel::Restart() {
  beginResetModel();
  columns_ = book_ == nullptr ? std::vector<RecordColumn>() : book_->List().Columns();
  rows_ = Sorted();
  endResetModel();
}

// With the first record the channels become known.
void RecordTableModel::Grow() {
  if (columns_.size() == book_->List().Columns().size()) {
    Order();
  } else {
    Restart();
  }
}

void RecordTableModel::SetFilter(const QString& text) {
  filter_ = text.trimmed().toLower();
  Order();
}

void RecordTableModel::sort(int column, Qt::SortOrder order) {
  sorted_by_ = column;
  order_ = order;
  Order();
}

// What is selected stays selected.
void RecordTableModel::Order() {
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  std::vector<std::size_t> kept;
  for (const QModelIndex& index : before) {
    kept.push_back(rows_[static_cast<std::size_t>(index.row())]);
  }
  rows_ = Sorted();
  std::unordered_map<std::size_t, int> places;
  for (std::size_t place = 0; !kept.empty() && place < rows_.size(); ++place) {
    places[rows_[place]] = static_cast<int>(place);
  }
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i) {
    const auto place = places.find(kept[static_cast<std::size_t>(i)]);
    after << (place == places.end() ? QModelIndex() : index(place->second, before[i].column()));
  }
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

std::vector<std::size_t> RecordTableModel::Sorted() const {
  if (book_ == nullptr || columns_.empty()) {
    return {};
  }
  const auto column = static_cast<std::size_t>(std::max(sorted_by_ - 1, 0));
  const bool is_descending = order_ == Qt::DescendingOrder;
  std::vector<std::size_t> rows =
      book_->List().Sorted(columns_[std::min(column, columns_.size() - 1)], is_descending);
  if (sorted_by_ == kLeftOut) {
    std::stable_partition(rows.begin(), rows.end(), [&](std::size_t row) {
      return book_->LeftOut().Has(book_->List().Number(row)) == is_descending;
    });
  }
  if (!filter_.isEmpty()) {
    rows.erase(
        std::remove_if(rows.begin(), rows.end(), [this](std::size_t row) { return !Passes(row); }),
        rows.end());
  }
  return rows;
}

bool RecordTableModel::Passes(std::size_t row) const {
  const RecordList& list = book_->List();
  QString text;
  for (const RecordColumn& column : columns_) {
    if (column.IsOfChannel()) {
      break;
    }
    text += TextFromBytes(list.Text(row, column)) + QLatin1Char('\n');
  }
  text += list.IsSaturated(row) ? QStringLiteral("saturated\n") : QString();
  text += book_->LeftOut().Has(list.Number(row)) ? QLatin1String(kLeftOutText) : QLatin1String();
  return text.toLower().contains(filter_);
}

void RecordTableModel::ShowTicks() {
  if (!rows_.empty()) {
    emit dataChanged(index(0, kLeftOut), index(rowCount() - 1, kLeftOut), {Qt::CheckStateRole});
  }
}

std::uint64_t RecordTableModel::NumberOf(int row) const {
  return book_->List().Number(rows_[static_cast<std::size_t>(row)]);
}

int RecordTableModel::RowOf(std::uint64_t number) const {
  const auto at = std::find_if(rows_.begin(), rows_.end(), [&](std::size_t row) {
    return book_->List().Number(row) == number;
  });
  return at == rows_.end() ? -1 : static_cast<int>(at - rows_.begin());
}

int RecordTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RecordTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || columns_.empty() ? 0 : static_cast<int>(columns_.size()) + 1;
}

QVariant RecordTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const std::size_t row = rows_[static_cast<std::size_t>(index.row())];
  if (index.column() == kLeftOut) {
    const bool is_left_out = book_->LeftOut().Has(book_->List().Number(row));
    return role == Qt::CheckStateRole
               ? QVariant(static_cast<int>(is_left_out ? Qt::Checked : Qt::Unchecked))
               : QVariant();
  }
  const RecordColumn& column = columns_[static_cast<std::size_t>(index.column()) - 1];
  const bool is_number = column.kind != Kind::kTime && column.kind != Kind::kStatus;
  switch (role) {
    case Qt::DisplayRole:
      return TextFromBytes(book_->List().Text(row, column));
    case Qt::TextAlignmentRole:
      return static_cast<int>((is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
      return {};
  }
}

bool RecordTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || index.column() != kLeftOut) {
    return false;
  }
  book_->SetLeftOut(NumberOf(index.row()), value.toInt() == Qt::Checked);
  return true;
}

QString RecordTableModel::Title(const RecordColumn& column) const {
  const QString name = column.channel < names_.size()
                           ? names_[column.channel]
                           : QStringLiteral("Ch %1").arg(column.channel + 1);
  switch (column.kind) {
    case Kind::kNumber:
      return QStringLiteral("Record");
    case Kind::kTime:
      return QStringLiteral("Time");
    case Kind::kFrequency:
      return QStringLiteral("Frequency (Hz)");
    case Kind::kStatus:
      return QStringLiteral("Status");
    case Kind::kPeakToPeak:
      return name + QStringLiteral(" peak to peak");
    case Kind::kMean:
      return name + QStringLiteral(" mean");
    case Kind::kRms:
      return name + QStringLiteral(" RMS");
    case Kind::kSaturated:
      return name + QStringLiteral(" saturated");
  }
  return {};
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section >= columnCount()) {
    return {};
  }
  if (role == Qt::DisplayRole) {
    return section == kLeftOut ? QStringLiteral("Left out")
                               : Title(columns_[static_cast<std::size_t>(section) - 1]);
  }
  const bool is_count =
      section > kLeftOut && columns_[static_cast<std::size_t>(section) - 1].IsOfChannel();
  return role == Qt::ToolTipRole && is_count ? QVariant(QStringLiteral("In counts of the box"))
                                             : QVariant();
}

Qt::ItemFlags RecordTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return index.column() == kLeftOut ? flags | Qt::ItemIsUserCheckable : flags;
}

}  // namespace orvane
