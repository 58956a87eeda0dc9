// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_NAMED_BUTTON_H_
#define ORVANE_UI_NAMED_BUTTON_H_

#include <QPushButton>
#include <QString>

namespace orvane {

/// A button whose tip is also what assistive tools say of it; `handler` is a method or signal of
/// its parent.
template <typename Parent>
QPushButton* NewNamedButton(const char* text, const char* name, const char* tip, Parent* parent,
                            void (Parent::*handler)()) {
  auto* button = new QPushButton(QString::fromLatin1(text), parent);
  button->setObjectName(QString::fromLatin1(name));
  button->setToolTip(QString::fromLatin1(tip));
  button->setAccessibleDescription(button->toolTip());
  QObject::connect(button, &QPushButton::clicked, parent, handler);
  return button;
}

}  // namespace orvane

#endif  // ORVANE_UI_NAMED_BUTTON_H_
