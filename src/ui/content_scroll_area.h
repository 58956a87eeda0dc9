// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_CONTENT_SCROLL_AREA_H_
#define ORVANE_UI_CONTENT_SCROLL_AREA_H_

#include <QScrollArea>

namespace orvane {

/// Wants to be as large as its content, and scrolls on screens that are smaller.
class ContentScrollArea : public QScrollArea {
 public:
  ContentScrollArea(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);  // the content's controls have it
    setWidget(content);
  }

  QSize sizeHint() const override { return widget()->sizeHint(); }
};

}  // namespace orvane

#endif  // ORVANE_UI_CONTENT_SCROLL_AREA_H_
