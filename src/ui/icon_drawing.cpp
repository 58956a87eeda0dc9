// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/vector_drawing.h"

#include <QFile>
#include <QSvgRenderer>

namespace orvane {

QByteArray IconDrawing(const QString& name) {
  QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PaintIcon(const QByteArray& drawing, const QColor& color, const QRect& rect,
               QPainter* painter) {
  QByteArray colored = drawing;
  colored.replace("currentColor", color.name().toLatin1());
  QSvgRenderer(colored).render(painter, rect);
}

}  // namespace orvane
