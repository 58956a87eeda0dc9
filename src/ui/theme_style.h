// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_THEME_STYLE_H_
#define ORVANE_UI_THEME_STYLE_H_

#include <QProxyStyle>

namespace orvane {

/// Fusion with outlines that everybody can see: those of radio buttons and check boxes with a
/// contrast of at least 4.5:1, the lines of grids; thick ones where the theme asks for it.
class ThemeStyle : public QProxyStyle {
  Q_OBJECT

 public:
  ThemeStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  /// The arrows of a toolbar that has no room for all follow the theme as the other icons do.
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                     const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace orvane

#endif  // ORVANE_UI_THEME_STYLE_H_
