// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/flow_layout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace orvane {
namespace {

constexpr int kGap = 10;  // pixels between items, and between lines half of it

bool Expands(const QLayoutItem* item) {
  return item->expandingDirections().testFlag(Qt::Horizontal);
}

}  // namespace

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) { setContentsMargins(0, 0, 0, 0); }

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

// Qt asks for it where a widget is deleted.
QLayoutItem* FlowLayout::takeAt(int index) {
  if (itemAt(index) == nullptr) {
    return nullptr;
  }
  const auto place = items_.begin() + index;
  QLayoutItem* item = place->release();
  items_.erase(place);
  return item;
}

std::vector<FlowLayout::Line> FlowLayout::LinesIn(int width) const {
  std::vector<Line> lines;
  for (const auto& item : items_) {
    if (item->isEmpty()) {
      continue;
    }
    const QSize size = item->sizeHint();
    if (lines.empty() || lines.back().width + kGap + size.width() > width) {
      lines.emplace_back();
    }
    Line& line = lines.back();
    line.width += size.width() + (line.items.empty() ? 0 : kGap);
    line.height = std::max(line.height, size.height());
    line.items.push_back(item.get());
  }
  return lines;
}

int FlowLayout::heightForWidth(int width) const {
  int height = 0;
  for (const Line& line : LinesIn(width)) {
    height += line.height + (height == 0 ? 0 : kGap / 2);
  }
  return height;
}

QSize FlowLayout::sizeHint() const {
  int width = 0;
  for (const auto& item : items_) {
    width += item->sizeHint().width() + (width == 0 ? 0 : kGap);
  }
  return {width, heightForWidth(width)};
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) {
    size = size.expandedTo(item->minimumSize());
  }
  return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  QPoint at = rect.topLeft();
  for (const Line& line : LinesIn(rect.width())) {
    Place(line, at, rect.width());
    at.ry() += line.height + kGap / 2;
  }
}

void FlowLayout::Place(const Line& line, const QPoint& at, int width) const {
  const auto expanding =
      static_cast<int>(std::count_if(line.items.begin(), line.items.end(), Expands));
  const int more = expanding == 0 ? 0 : std::max(0, width - line.width) / expanding;
  int left = at.x();
  for (QLayoutItem* item : line.items) {
    const QSize size = item->sizeHint();
    // An item wider than the line is cut to it.
    const QRect cell(left, at.y(), std::min(size.width() + (Expands(item) ? more : 0), width),
                     line.height);
    const auto* widget = item->widget();
    const auto direction = widget == nullptr ? Qt::LeftToRight : widget->layoutDirection();
    item->setGeometry(QStyle::visualRect(direction, geometry(), cell));
    left = cell.right() + 1 + kGap;
  }
}

}  // namespace orvane
