// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "ui/plot_theme.h"
#include "ui/theme_icon.h"
#include "ui/themes.h"

namespace orvane {
namespace {

// Between text and ground, and yet it stands out; in the sun the focus has a colour.
QColor Outline(const QStyleOption& option) {
  const bool is_enabled = option.state.testFlag(QStyle::State_Enabled);
  if (is_enabled && HasThickLines() && option.state.testFlag(QStyle::State_HasFocus)) {
    return option.palette.color(QPalette::Highlight);
  }
  return !is_enabled       ? option.palette.color(QPalette::Disabled, QPalette::Text)
         : HasThickLines() ? option.palette.color(QPalette::Text)
                           : StandOut(Qt::gray, option.palette);
}

// Fusion's frame of a group begins so far down, below the title.
int TitleHeight(const QStyleOption& option) {
  constexpr int kMargin = 3;
  const int indicator = QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight);
  return std::max(indicator, option.fontMetrics.height()) + kMargin;
}

void DrawOutline(QStyle::PrimitiveElement element, const QStyleOption& option, QPainter* painter) {
  const bool is_round = element == QStyle::PE_IndicatorRadioButton;
  const bool is_thick = HasThickLines();
  const bool has_focus = option.state.testFlag(QStyle::State_HasFocus);
  const double width = is_thick && has_focus ? 3
                       : is_thick            ? 2
                       : is_round            ? 1.4
                                             : 1;  // smoothing pales what is round
  painter->save();
  painter->setPen(QPen(Outline(option), width));
  painter->setBrush(Qt::NoBrush);
  const int title = element == QStyle::PE_FrameGroupBox ? TitleHeight(option) : 0;
  const QRectF rect = QRectF(option.rect)
                          .adjusted(0, title, 0, 0)
                          .adjusted(width / 2, width / 2, -width / 2, -width / 2);
  if (is_round) {
    painter->setRenderHint(QPainter::Antialiasing);
    const double side = std::min(rect.width(), rect.height());
    QRectF circle(0, 0, side, side);
    circle.moveCenter(rect.center());
    painter->drawEllipse(circle);
  } else {
    painter->drawRect(rect);
  }
  painter->restore();
}

}  // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool is_indicator = element == PE_IndicatorRadioButton || element == PE_IndicatorCheckBox;
  const bool is_frame = element == PE_FrameLineEdit || element == PE_FrameGroupBox ||
                        element == PE_PanelButtonCommand;
  if (is_indicator || (is_frame && HasThickLines())) {
    DrawOutline(element, *option, painter);
  }
}

QIcon ThemeStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                               const QWidget* widget) const {
  const QIcon more =
      which == SP_ToolBarHorizontalExtensionButton ? ThemeIcon(QStringLiteral("more")) : QIcon();
  return more.isNull() ? QProxyStyle::standardIcon(which, option, widget) : more;
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
  if (hint == SH_Table_GridLineColor && option != nullptr) {
    const QColor line = HasThickLines() ? QColor(Qt::black) : GridColor(option->palette);
    return static_cast<int>(line.rgb());
  }
  return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace orvane
