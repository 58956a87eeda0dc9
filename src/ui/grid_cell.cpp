// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_cell.h"

#include <utility>

namespace orvane {

CGridCell::CGridCell(const CGridDefaultCell& fallback, QString text)
    : fallback_(fallback), text_(std::move(text)) {}

Qt::Alignment CGridCell::GetAlignment() const {
  return alignment_.value_or(fallback_.GetAlignment());
}

void CGridCell::SetChoices(const QStringList& texts) {
  choices_.clear();
  for (const QString& text : texts) {
    choices_.push_back({text, text});
  }
  opens_choices_ = true;
}

}  // namespace orvane
