// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_WIDGETS_CHANGES_MODEL_H_
#define ORVANE_CHANGES_WIDGETS_CHANGES_MODEL_H_

#include <QAbstractTableModel>
#include <set>
#include <vector>

#include "changes/change_rows.h"

namespace orvane {

/// The rows of a comparison; those whose value can be taken over have a tick.
class ChangesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { kCode, kMeaning, kThere, kHere, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  /// Rows with the same keys as before keep their places in the views; ticks stay with their keys.
  void SetRows(const std::vector<ChangeRow>& rows);
  const ChangeRow& Row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  const std::vector<ChangeRow>& Rows() const { return rows_; }
  /// The rows with a tick.
  std::vector<int> Ticked() const;
  void ClearTicks();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  void ticked();

 private:
  bool IsTicked(const ChangeRow& row) const { return ticks_.count(row.key.Word()) > 0; }

  std::vector<ChangeRow> rows_;
  std::set<std::uint64_t> ticks_;  // keys
};

}  // namespace orvane

#endif  // ORVANE_CHANGES_WIDGETS_CHANGES_MODEL_H_
