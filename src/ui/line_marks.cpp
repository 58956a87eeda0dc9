// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/line_marks.h"

#include <QAction>
#include <QEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QStyle>
#include <algorithm>

#include "ui/field_tips.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

const QString kWarningMark = QStringLiteral("warning");
const QString kFaultFrame = QStringLiteral("fault");

// Around a line whose text OK would refuse. A style sheet would change the whole line's look.
class FaultFrame : public QWidget {
 public:
  explicit FaultFrame(QLineEdit* line) : QWidget(line) {
    setObjectName(kFaultFrame);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    line->installEventFilter(this);
    resize(line->size());
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    constexpr int kWidth = 2;
    QPainter painter(this);
    painter.setPen(QPen(WarningColor(palette()), kWidth));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) {
      resize(static_cast<QResizeEvent*>(event)->size());
    }
    return QWidget::eventFilter(watched, event);
  }
};

}  // namespace

void LimitTyping(QLineEdit* line, int max_length) {
  if (max_length > 0) {
    line->setMaxLength(std::max(max_length, static_cast<int>(line->text().size())));
  }
}

void MarkLine(QLineEdit* line, const QString& warning) {
  auto* mark = line->findChild<QAction*>(kWarningMark);
  if (mark == nullptr) {
    const QIcon icon = line->style()->standardIcon(QStyle::SP_MessageBoxWarning);
    mark = line->addAction(icon, QLineEdit::TrailingPosition);
    mark->setObjectName(kWarningMark);
  }
  mark->setVisible(!warning.isEmpty());
  mark->setToolTip(warning);
  line->setAccessibleDescription(warning.isEmpty() ? OwnDescription(line) : warning);
}

void FrameLine(QLineEdit* line, bool is_wrong) {
  auto* frame = line->findChild<QWidget*>(kFaultFrame);
  if (frame == nullptr && is_wrong) {
    frame = new FaultFrame(line);
  }
  if (frame != nullptr) {
    frame->setVisible(is_wrong);
  }
}

}  // namespace orvane
