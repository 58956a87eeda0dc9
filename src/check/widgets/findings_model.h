// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_WIDGETS_FINDINGS_MODEL_H_
#define ORVANE_CHECK_WIDGETS_FINDINGS_MODEL_H_

#include <QAbstractTableModel>
#include <vector>

#include "check/finding.h"

namespace orvane {

/// Findings, the worst first, each with a sign of its severity, which assistive tools read as a
/// word, and its sentence with the box in front.
class FindingsModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { kSeverity, kSentence, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  void SetFindings(std::vector<Finding> findings);
  const Finding& At(int row) const { return findings_[static_cast<std::size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  std::vector<Finding> findings_;
};

}  // namespace orvane

#endif  // ORVANE_CHECK_WIDGETS_FINDINGS_MODEL_H_
