// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_CONTENT_SCROLL_AREA_H_
#define ORVANE_UI_CONTENT_SCROLL_AREA_H_

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QScrollArea>

namespace orvane {

/// Wants to be as large as its content, and scrolls on screens that are smaller. The wheel scrolls
/// over lists and numbers too, and changes only what has the focus.
class ContentScrollArea : public QScrollArea {
 public:
  ContentScrollArea(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);  // the content's controls have it
    setWidget(content);
    for (QWidget* control : content->findChildren<QWidget*>()) {
      if (qobject_cast<QComboBox*>(control) != nullptr ||
          qobject_cast<QAbstractSpinBox*>(control) != nullptr) {
        control->setFocusPolicy(Qt::StrongFocus);  // not by the wheel
        control->installEventFilter(this);
      }
    }
  }

  QSize sizeHint() const override { return widget()->sizeHint(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* control = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && control != widget() && !control->hasFocus()) {
      event->ignore();
      return true;
    }
    return QScrollArea::eventFilter(watched, event);
  }
};

}  // namespace orvane

#endif  // ORVANE_UI_CONTENT_SCROLL_AREA_H_
