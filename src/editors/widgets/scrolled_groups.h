// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_SCROLLED_GROUPS_H_
#define ORVANE_EDITORS_WIDGETS_SCROLLED_GROUPS_H_

#include <QDialog>
#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <initializer_list>

#include "ui/content_scroll_area.h"
#include "ui/window_size.h"

namespace orvane {

/// The groups scroll where the screen is smaller, the buttons stay. `width`: at least, in pixels.
inline void LayOutScrolled(QDialog* dialog, QWidget* content, QDialogButtonBox* buttons,
                           int width) {
  auto* layout = new QVBoxLayout(dialog);
  layout->addWidget(new ContentScrollArea(content, dialog), 1);
  layout->addWidget(buttons);
  ResizeWithinScreen(dialog, dialog->sizeHint().expandedTo(QSize(width, 0)));
}

/// Groups below each other.
inline QWidget* Column(std::initializer_list<QWidget*> groups) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* group : groups) {
    layout->addWidget(group);
  }
  layout->addStretch();
  return column;
}

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_SCROLLED_GROUPS_H_
