// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/field_tips.h"

#include <utility>

#include "ui/byte_text.h"

namespace orvane {
namespace {

constexpr auto kOwnDescription = "ownDescription";  // property: it comes back after a warning

FieldTips& Tips() {
  static FieldTips tips;
  return tips;
}

}  // namespace

void SetFieldTips(FieldTips tips) { Tips() = std::move(tips); }

void ShowFieldTip(const Field& field, QWidget* widget) {
  if (Tips() == nullptr) {
    return;
  }
  const FieldTip tip = Tips()(field);
  widget->setToolTip(TextFromBytes(tip.text));
  widget->setWhatsThis(widget->toolTip());
  widget->setProperty(kOwnDescription, TextFromBytes(tip.brief));
  if (widget->accessibleDescription().isEmpty()) {
    widget->setAccessibleDescription(OwnDescription(widget));
  }
}

QString CellTip(std::string_view key, std::string_view title) {
  if (Tips() == nullptr || key.empty()) {
    return {};
  }
  Field field{0, Widget::kText, title};
  field.key = key;
  return TextFromBytes(Tips()(field).text);
}

void AddToTip(const QString& line, QWidget* widget) {
  const QString tip = widget->toolTip();
  widget->setToolTip(tip.isEmpty() ? line : tip + QLatin1Char('\n') + line);
}

QString OwnDescription(const QWidget* widget) {
  return widget->property(kOwnDescription).toString();
}

}  // namespace orvane
