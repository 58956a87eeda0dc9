// SPDX-License-Identifier: GPL-3.0-or-later
// What needs Qt's module for SVG, which not every build has.
#ifndef ORVANE_UI_VECTOR_DRAWING_H_
#define ORVANE_UI_VECTOR_DRAWING_H_

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QPainter>
#include <QString>
#include <functional>

namespace orvane {

/// Whether pictures can be saved as SVG here.
bool CanWriteSvg();

/// Lets `draw` draw on an SVG of a size, which is written into `buffer`.
void WriteSvg(const QSize& size, const QString& title, QBuffer* buffer,
              const std::function<void(QPaintDevice*)>& draw);

/// The drawing of an icon by its name among the program's resources; empty where there is none.
QByteArray IconDrawing(const QString& name);

/// Draws it in one colour.
void PaintIcon(const QByteArray& drawing, const QColor& color, const QRect& rect,
               QPainter* painter);

}  // namespace orvane

#endif  // ORVANE_UI_VECTOR_DRAWING_H_
