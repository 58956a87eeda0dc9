// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_THEME_ICON_H_
#define ORVANE_UI_THEME_ICON_H_

#include <QIcon>

namespace orvane {

/// A line drawing from the resources (":/icons/NAME.svg") in the text colour of the palette, so
/// that it reads in light and dark themes and follows a change of theme; dimmed while disabled.
QIcon ThemeIcon(const QString& name);

}  // namespace orvane

#endif  // ORVANE_UI_THEME_ICON_H_
