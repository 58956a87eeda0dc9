// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_RECORD_TABLE_MODEL_H_
#define ORVANE_TIMESERIES_WIDGETS_RECORD_TABLE_MODEL_H_

#include <QAbstractTableModel>
#include <vector>

#include "timeseries/widgets/record_book.h"

namespace orvane {

/// The records of a book as rows, sorted and filtered. The first column holds the ticks of those
/// that are left out, the others are those of `RecordList`. It grows with the book.
class RecordTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr int kLeftOut = 0;

  explicit RecordTableModel(QObject* parent) : QAbstractTableModel(parent) {}

  /// Null: no rows. `names` are those of the first channels; others are called "Ch 9".
  void SetBook(RecordBook* book, std::vector<QString> names);
  /// Only rows with this text in number, time, frequency or status, or which it names as "bad",
  /// "saturated" or "left out"; upper and lower case are the same.
  void SetFilter(const QString& text);

  std::uint64_t NumberOf(int row) const;
  /// -1: it is not among the rows.
  int RowOf(std::uint64_t number) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  void Restart();
  void Grow();
  void Order();
  void ShowTicks();
  bool Passes(std::size_t row) const;
  std::vector<std::size_t> Sorted() const;
  QString Title(const RecordColumn& column) const;

  RecordBook* book_ = nullptr;
  std::vector<QString> names_;
  std::vector<RecordColumn> columns_;
  std::vector<std::size_t> rows_;  // of the list, as they are shown
  QString filter_;
  int sorted_by_ = 1;  // the number
  Qt::SortOrder order_ = Qt::AscendingOrder;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_RECORD_TABLE_MODEL_H_
