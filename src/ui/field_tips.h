// SPDX-License-Identifier: GPL-3.0-or-later
// Tool tips of what shows a parameter. Their texts are the program's: what parameters mean is known
// from all dialogs together.
#ifndef ORVANE_UI_FIELD_TIPS_H_
#define ORVANE_UI_FIELD_TIPS_H_

#include <QString>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>

#include "forms/form_field.h"

namespace orvane {

struct FieldTip {
  std::string text;   ///< in lines
  std::string brief;  ///< for assistive tools, which read it with every field
};

/// Set once when the program starts; without it there are no such tips.
using FieldTips = std::function<FieldTip(const Field&)>;
void SetFieldTips(FieldTips tips);

/// Gives a widget the tip of its field, which is also its help (Shift+F1).
void ShowFieldTip(const Field& field, QWidget* widget);

/// The tip of a cell that shows a key, below the title of its column.
QString CellTip(std::string_view key, std::string_view title);

/// Adds a line to the tip of a widget.
void AddToTip(const QString& line, QWidget* widget);

/// What assistive tools say of a widget while nothing is wrong with it.
QString OwnDescription(const QWidget* widget);

}  // namespace orvane

#endif  // ORVANE_UI_FIELD_TIPS_H_
