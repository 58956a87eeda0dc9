// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/themes.h"

#include <QApplication>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>
#include <array>
#include <memory>
#include <optional>

#include "ui/theme_style.h"

namespace orvane {
namespace {

const QString kSetting = QStringLiteral("Window/Theme");
const QString kFusion = QStringLiteral("fusion");
constexpr std::array<const char*, 4> kNames = {"system", "light", "dark", "sunlight"};

QPalette Dark() {
  QPalette palette(QColor(53, 53, 56), QColor(43, 43, 46));
  palette.setColor(QPalette::Base, QColor(30, 30, 32));
  palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
  palette.setColor(QPalette::Highlight, QColor(58, 122, 190));
  palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  return palette;
}

QPalette Sunlight() {
  QPalette palette(Qt::white, Qt::white);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, Qt::black);
  }
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(96, 96, 96));
  }
  for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::ToolTipBase,
                          QPalette::HighlightedText}) {
    palette.setColor(role, Qt::white);
  }
  palette.setColor(QPalette::Highlight, QColor(0, 0, 140));
  palette.setColor(QPalette::PlaceholderText, QColor(64, 64, 64));
  palette.setColor(QPalette::Link, QColor(0, 0, 160));
  return palette;
}

// The style that the program began with, which the system's theme restores.
const QString& SystemStyle() {
  static const QString name = QApplication::style()->name();
  return name;
}

std::optional<Theme>& Applied() {
  static std::optional<Theme> theme;
  return theme;
}

}  // namespace

QPalette ThemePalette(Theme theme) {
  switch (theme) {
    case Theme::kDark:
      return Dark();
    case Theme::kSunlight:
      return Sunlight();
    default:
      return std::unique_ptr<QStyle>(QStyleFactory::create(kFusion))->standardPalette();
  }
}

void ApplyTheme(Theme theme) {
  const bool is_system = theme == Theme::kSystem;
  const bool is_fusion = !is_system || SystemStyle().toLower() == kFusion;
  if (Applied() == theme) {
    return;
  }
  Applied() = theme;
  QApplication::setStyle(is_fusion ? new ThemeStyle : QStyleFactory::create(SystemStyle()));
  QApplication::setPalette(is_system ? QPalette() : ThemePalette(theme));
}

Theme CurrentTheme() { return Applied().value_or(Theme::kSystem); }

bool HasThickLines() { return CurrentTheme() == Theme::kSunlight; }

Theme SavedTheme() {
  const QString name = QSettings().value(kSetting).toString();
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (name == QLatin1String(kNames[i])) {
      return static_cast<Theme>(i);
    }
  }
  return Theme::kSystem;
}

void SaveTheme(Theme theme) {
  QSettings().setValue(kSetting, QLatin1String(kNames[static_cast<std::size_t>(theme)]));
}

}  // namespace orvane
