// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/notice_label.h"

#include <QPainter>

namespace orvane {

NoticeLabel::NoticeLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
  // A long path must not widen the window.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void NoticeLabel::ShowNotice(const QString& text) {
  setText(text);
  setToolTip(text);
}

void NoticeLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QString line = text().section(QLatin1Char('\n'), 0, 0);
  const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, width());
  painter.drawText(rect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), shown);
}

}  // namespace orvane
