// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_columns.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>
#include <algorithm>
#include <numeric>

namespace orvane {

GridColumns::GridColumns(QTableView& view) : view_(view) {
  const QHeaderView* header = view_.horizontalHeader();
  TakeWidths();
  connect(header, &QHeaderView::sectionResized, this, [this] {
    if (applying_) {
      return;
    }
    expanded_ = false;
    TakeWidths();
  });
  connect(header, &QHeaderView::sectionCountChanged, this, [this](int /*old*/, int count) {
    given_.resize(static_cast<std::size_t>(count), view_.horizontalHeader()->defaultSectionSize());
    Refit();
  });
}

void GridColumns::TakeWidths() {
  given_.clear();
  for (int col = 0; col < view_.horizontalHeader()->count(); ++col) {
    given_.push_back(view_.columnWidth(col));
  }
}

bool GridColumns::SetWidth(int col, int px) {
  if (col < 0 || col >= static_cast<int>(given_.size()) || px <= 0) {
    return false;
  }
  given_[static_cast<std::size_t>(col)] = px;
  const QScopedValueRollback<bool> guard(applying_, true);
  if (!expanded_) {
    view_.setColumnWidth(col, px);
  }
  Refit();
  return true;
}

void GridColumns::ExpandToFit() {
  expanded_ = true;
  Refit();
}

void GridColumns::Refit() {
  if (!expanded_ || given_.empty()) {
    return;
  }
  const QScopedValueRollback<bool> guard(applying_, true);
  const int count = static_cast<int>(given_.size());
  const int used = std::accumulate(given_.begin(), given_.end(), 0);
  const int spare = std::max(0, view_.viewport()->width() - used);
  for (int col = 0; col < count; ++col) {
    const int share = spare / count + (col < spare % count ? 1 : 0);
    view_.setColumnWidth(col, given_[static_cast<std::size_t>(col)] + share);
  }
}

}  // namespace orvane
