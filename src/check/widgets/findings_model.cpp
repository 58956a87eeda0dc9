// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/widgets/findings_model.h"

#include <algorithm>
#include <array>

#include "check/widgets/severity_sign.h"

namespace orvane {
namespace {

constexpr std::array<const char*, FindingsModel::kColumns> kTitles = {"", "Finding"};

}  // namespace

void FindingsModel::SetFindings(std::vector<Finding> findings) {
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
  if (findings == findings_) {
    return;  // selection and place stay
  }
  beginResetModel();
  findings_ = std::move(findings);
  endResetModel();
}

int FindingsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(findings_.size());
}

int FindingsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const Finding& finding = At(index.row());
  if (index.column() == kSeverity) {
    switch (role) {
      case Qt::DecorationRole:
        return SignOf(finding.severity);
      case Qt::AccessibleTextRole:
      case Qt::ToolTipRole:
        return WordOf(finding.severity);
      default:
        return {};
    }
  }
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
    return {};
  }
  return QString::fromStdString(finding.box.empty() ? finding.sentence
                                                    : finding.box + ": " + finding.sentence);
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < kColumns) {
    return QString::fromLatin1(kTitles[static_cast<std::size_t>(section)]);
  }
  return {};
}

Qt::ItemFlags FindingsModel::flags(const QModelIndex& /*index*/) const {
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace orvane
