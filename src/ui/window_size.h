// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_WINDOW_SIZE_H_
#define ORVANE_UI_WINDOW_SIZE_H_

#include <QScreen>
#include <QWidget>

namespace orvane {

/// Gives a window the size it wants, or as much of it as the screen has: a field laptop at 200 %
/// scaling has 683 x 384 pixels, title bar included.
inline void ResizeWithinScreen(QWidget* window, const QSize& wanted) {
  const QSize frame(16, 56);
  window->resize(wanted.boundedTo(window->screen()->availableSize() - frame));
}

}  // namespace orvane

#endif  // ORVANE_UI_WINDOW_SIZE_H_
