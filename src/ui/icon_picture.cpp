// SPDX-License-Identifier: GPL-3.0-or-later
// Without the module: icons are pictures made while building, whose opaque parts are coloured.
#include <QFile>
#include <QImage>

#include "ui/vector_drawing.h"

namespace orvane {

QByteArray IconDrawing(const QString& name) {
  QFile file(QStringLiteral(":/icons/%1.png").arg(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PaintIcon(const QByteArray& drawing, const QColor& color, const QRect& rect,
               QPainter* painter) {
  QImage picture = QImage::fromData(drawing, "PNG").convertToFormat(QImage::Format_ARGB32);
  QPainter inks(&picture);
  inks.setCompositionMode(QPainter::CompositionMode_SourceIn);
  inks.fillRect(picture.rect(), color);
  inks.end();
  painter->save();
  painter->setRenderHint(QPainter::SmoothPixmapTransform);
  painter->drawImage(rect, picture);
  painter->restore();
}

}  // namespace orvane
