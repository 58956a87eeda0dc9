// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_LIST_ITEM_H_
#define ORVANE_UI_LIST_ITEM_H_

#include <QtCore/Qt>

namespace orvane {

/// An item of a list or table of Qt's own that is only looked at. By itself it would report to
/// assistive tools that it can be edited, dragged and ticked.
template <typename Item>
Item* OnlyShown(Item* item) {
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  return item;
}

}  // namespace orvane

#endif  // ORVANE_UI_LIST_ITEM_H_
