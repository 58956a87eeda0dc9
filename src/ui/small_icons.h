// SPDX-License-Identifier: GPL-3.0-or-later
// Icons as small as the letters of a line, in the text colour of the palette.
#ifndef ORVANE_UI_SMALL_ICONS_H_
#define ORVANE_UI_SMALL_ICONS_H_

#include <QIcon>

namespace orvane {

/// A star, full or its outline alone.
QIcon StarIcon(bool is_full);

/// A triangle that points down: there is a list to open.
QIcon DownIcon();

}  // namespace orvane

#endif  // ORVANE_UI_SMALL_ICONS_H_
