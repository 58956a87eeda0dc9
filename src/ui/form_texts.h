// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of fields as widgets show them, and back.
#ifndef ORVANE_UI_FORM_TEXTS_H_
#define ORVANE_UI_FORM_TEXTS_H_

#include <QString>
#include <string>
#include <string_view>

#include "base/ascii.h"
#include "forms/form_field.h"
#include "ui/byte_text.h"

namespace orvane {

inline QString LabelText(std::string_view label) {
  return QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size()));
}
// On a button or before a field, where one '&' would mark a key.
inline QString MarkedText(std::string_view label) {
  return LabelText(label).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// Values of tables are bytes; paths are texts of this computer.
inline QString ShownText(const Field& field, const std::string& text) {
  return field.widget == Widget::kPath ? QString::fromStdString(text) : TextFromBytes(text);
}
inline std::string StoredText(const Field& field, const QString& text) {
  return field.widget == Widget::kPath ? text.toStdString() : BytesFromText(text);
}

// As somebody may be typing it.
inline bool IsNumberAmidBlanks(const Field& field, const QString& text, std::string_view number) {
  const bool is_number = field.widget == Widget::kInteger || field.widget == Widget::kReal;
  return is_number && Trimmed(StoredText(field, text)) == number;
}

}  // namespace orvane

#endif  // ORVANE_UI_FORM_TEXTS_H_
