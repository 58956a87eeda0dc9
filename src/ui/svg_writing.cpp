// SPDX-License-Identifier: GPL-3.0-or-later
#include <QSvgGenerator>

#include "ui/vector_drawing.h"

namespace orvane {

bool CanWriteSvg() { return true; }

void WriteSvg(const QSize& size, const QString& title, QBuffer* buffer,
              const std::function<void(QPaintDevice*)>& draw) {
  QSvgGenerator generator;
  generator.setOutputDevice(buffer);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(), size));
  generator.setTitle(title);
  draw(&generator);
}

}  // namespace orvane
