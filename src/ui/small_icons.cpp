// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/small_icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPolygonF>
#include <cmath>
#include <numbers>
#include <utility>

namespace orvane {
namespace {

// A polygon within the unit square.
class PolygonIconEngine : public QIconEngine {
 public:
  PolygonIconEngine(QPolygonF shape, bool is_full) : shape_(std::move(shape)), is_full_(is_full) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::Text;
    const QColor color = QGuiApplication::palette().color(role);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width(), rect.height());
    painter->setPen(is_full_ ? QPen(Qt::NoPen) : QPen(color, 1.0 / rect.width()));
    painter->setBrush(is_full_ ? QBrush(color) : QBrush(Qt::NoBrush));
    painter->drawPolygon(shape_);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new PolygonIconEngine(shape_, is_full_); }

 private:
  QPolygonF shape_;
  bool is_full_;
};

// Five points at the top of a circle and so on, five between them on a smaller one.
QPolygonF Star() {
  constexpr int kPoints = 5;
  constexpr double kOuter = 0.48;
  constexpr double kInner = 0.2;
  QPolygonF star;
  for (int i = 0; i < 2 * kPoints; ++i) {
    const double angle = std::numbers::pi * i / kPoints;
    const double radius = i % 2 == 0 ? kOuter : kInner;
    star << QPointF(0.5 + radius * std::sin(angle), 0.52 - radius * std::cos(angle));
  }
  return star;
}

}  // namespace

QIcon StarIcon(bool is_full) { return QIcon(new PolygonIconEngine(Star(), is_full)); }

QIcon DownIcon() {
  const QPolygonF triangle({{0.2, 0.35}, {0.8, 0.35}, {0.5, 0.7}});
  return QIcon(new PolygonIconEngine(triangle, true));
}

}  // namespace orvane
