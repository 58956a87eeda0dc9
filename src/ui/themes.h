// SPDX-License-Identifier: GPL-3.0-or-later
// What the program looks like. Themes of its own are palettes over Qt's style Fusion, the same on
// every system.
#ifndef ORVANE_UI_THEMES_H_
#define ORVANE_UI_THEMES_H_

#include <QPalette>

namespace orvane {

/// In the order of the menu.
enum class Theme { kSystem, kLight, kDark, kSunlight };

/// The colours of a theme; of the system's those that Fusion has by itself.
QPalette ThemePalette(Theme theme);

/// Gives the program a theme at once; the system's restores its style and palette.
void ApplyTheme(Theme theme);
/// The theme applied last.
Theme CurrentTheme();
/// Black on white for screens in the sun: lines are drawn thick.
bool HasThickLines();

/// The user's, from the settings.
Theme SavedTheme();
void SaveTheme(Theme theme);

}  // namespace orvane

#endif  // ORVANE_UI_THEMES_H_
