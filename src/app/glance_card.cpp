// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/glance_card.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionGroupBox>

#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kFocusRoom = 4;  // pixels around the frame

QStyleOptionGroupBox FrameOf(const QAbstractButton* card, const QRect& rect) {
  QStyleOptionGroupBox frame;
  frame.initFrom(card);
  frame.rect = rect.adjusted(kFocusRoom, kFocusRoom, -kFocusRoom, -kFocusRoom);
  frame.text = card->text();
  frame.lineWidth = 1;
  frame.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
  frame.state &= ~QStyle::State_HasFocus;
  return frame;
}

}  // namespace

QLabel* NewValueLabel(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  return label;
}

GlanceCard::GlanceCard(const QString& title, const char* name, QWidget* parent)
    : QAbstractButton(parent) {
  setObjectName(QString::fromLatin1(name));
  setText(title);
  setAccessibleName(title);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setForegroundRole(QPalette::WindowText);  // of its labels too
  setBackgroundRole(QPalette::Window);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void GlanceCard::SetOpens(const QString& what) {
  setToolTip(QStringLiteral("Opens ") + what);
  Describe();
}

void GlanceCard::SetContentText(const QString& content) {
  content_ = content;
  Describe();
}

void GlanceCard::Describe() {
  const QString end = content_.isEmpty() ? QString() : QStringLiteral(". ");
  setAccessibleDescription(content_ + end + toolTip());
}

void GlanceCard::SetContent(QLayout* content) {
  setLayout(content);
  PlaceContent();
}

// Where the style has it in a group of this title.
void GlanceCard::PlaceContent() {
  constexpr QRect kAny(0, 0, 400, 400);
  const QStyleOptionGroupBox frame = FrameOf(this, kAny);
  const QRect content =
      style()->subControlRect(QStyle::CC_GroupBox, &frame, QStyle::SC_GroupBoxContents, this);
  if (layout() != nullptr) {
    constexpr int kGap = 6;
    layout()->setContentsMargins(content.left() + kGap, content.top() + kGap,
                                 kAny.right() - content.right() + kGap,
                                 kAny.bottom() - content.bottom() + kGap);
  }
}

void GlanceCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QStyleOptionGroupBox frame = FrameOf(this, rect());
  style()->drawComplexControl(QStyle::CC_GroupBox, &frame, &painter, this);
  if (hasFocus() || underMouse()) {
    painter.setPen(
        QPen(StandOut(palette().color(QPalette::Highlight), palette()), hasFocus() ? 2 : 1));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void GlanceCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

void GlanceCard::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
    PlaceContent();
  }
}

LinesCard::LinesCard(const QString& title, const char* name, QWidget* parent)
    : GlanceCard(title, name, parent), form_(new QFormLayout) {
  constexpr int kGap = 16;
  form_->setHorizontalSpacing(kGap);
  form_->setVerticalSpacing(kGap / 4);
  SetContent(form_);
}

void LinesCard::SetLines(const std::vector<SummaryLine>& lines,
                         const std::function<bool(const SummaryLine&)>& is_missing) {
  const int count = static_cast<int>(lines.size());
  while (form_->rowCount() < count) {
    form_->addRow(new QLabel(this), NewValueLabel(this));
  }
  QStringList shown;
  for (int row = 0; row < form_->rowCount(); ++row) {
    form_->setRowVisible(row, row < count);
    if (row < count) {
      const SummaryLine& line = lines[static_cast<std::size_t>(row)];
      shown << TextFromBytes(line.label) + QStringLiteral(": ") +
                   ShowLine(row, line, is_missing(line));
    }
  }
  SetContentText(shown.join(QStringLiteral("; ")));
}

QString LinesCard::ShowLine(int row, const SummaryLine& line, bool is_missing) {
  QString value = line.value.empty() ? QStringLiteral("not set") : TextFromBytes(line.value);
  if (is_missing) {
    value += QStringLiteral(" (not in the file)");
  }
  if (!line.caution.empty()) {
    value += QStringLiteral(", ") + TextFromBytes(line.caution);
  }
  const QString caption = TextFromBytes(line.label);
  qobject_cast<QLabel*>(form_->itemAt(row, QFormLayout::LabelRole)->widget())
      ->setText(caption + QLatin1Char(':'));
  auto* label = qobject_cast<QLabel*>(form_->itemAt(row, QFormLayout::FieldRole)->widget());
  label->setText(value);
  QPalette colors = palette();
  if (line.value.empty() || is_missing) {
    colors.setColor(QPalette::WindowText, StandOut(Qt::gray, palette()));
  }
  if (!line.caution.empty()) {
    colors.setColor(QPalette::WindowText, WarningColor(palette()));
  }
  label->setPalette(colors);
  label->setAccessibleName(text() + QStringLiteral(": ") + caption + QStringLiteral(": ") + value);
  return value;
}

}  // namespace orvane
