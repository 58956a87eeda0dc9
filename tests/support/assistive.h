// SPDX-License-Identifier: GPL-3.0-or-later
// Values set as screen readers, dictation and scripts of assistive tools set them.
#ifndef ORVANE_TESTS_SUPPORT_ASSISTIVE_H_
#define ORVANE_TESTS_SUPPORT_ASSISTIVE_H_

#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>

namespace orvane::testing {

inline void SetTextAssistively(QWidget* widget, const QString& text) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
  ASSERT_NE(interface, nullptr);
  QAccessibleTextInterface* old = interface->textInterface();
  QAccessibleEditableTextInterface* editable = interface->editableTextInterface();
  ASSERT_TRUE(old != nullptr && editable != nullptr);
  editable->replaceText(0, old->characterCount(), text);
}

inline bool OffersToggle(QWidget* widget) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
  return interface->actionInterface()->actionNames().contains(
      QAccessibleActionInterface::toggleAction());
}

inline void ToggleAssistively(QWidget* widget) {
  ASSERT_TRUE(OffersToggle(widget));
  QAccessible::queryAccessibleInterface(widget)->actionInterface()->doAction(
      QAccessibleActionInterface::toggleAction());
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_ASSISTIVE_H_
