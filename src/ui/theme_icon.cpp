// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include "ui/vector_drawing.h"

namespace orvane {
namespace {

class ThemeIconEngine : public QIconEngine {
 public:
  explicit ThemeIconEngine(QByteArray drawing) : drawing_(std::move(drawing)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
    PaintIcon(drawing_, QGuiApplication::palette().color(group, role), rect, painter);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new ThemeIconEngine(drawing_); }

 private:
  QByteArray drawing_;
};

}  // namespace

QIcon ThemeIcon(const QString& name) {
  const QByteArray drawing = IconDrawing(name);
  return drawing.isEmpty() ? QIcon() : QIcon(new ThemeIconEngine(drawing));
}

}  // namespace orvane
