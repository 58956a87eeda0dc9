// SPDX-License-Identifier: GPL-3.0-or-later
// What all plots share: colours and fonts of the desktop's theme, and saving.
#ifndef ORVANE_UI_PLOT_THEME_H_
#define ORVANE_UI_PLOT_THEME_H_

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QSize>
#include <QString>
#include <QWidget>
#include <functional>

#include "base/result.h"

class QCPAxis;
class QCPAxisRect;
class QCPItemStraightLine;
class QCPLayer;
class QCustomPlot;

namespace orvane {

/// An axis with its labels, ticks and grid in the palette's colours.
void ThemeAxis(QCPAxis* axis, const QPalette& palette, const QFont& font);

/// A plot with all its axis rectangles.
void ThemePlot(QCustomPlot* plot, const QPalette& palette, const QFont& font);

/// The colour nearest to `color` that stands out from the grounds of plots and windows: a contrast
/// of at least 4.5:1, as the web's accessibility guidelines define it.
QColor StandOut(const QColor& color, const QPalette& palette);
/// The colour of texts that warn.
QColor WarningColor(const QPalette& palette);
/// The colour of the lines of grids: between that of texts and the ground.
QColor GridColor(const QPalette& palette);
/// Black or white, whichever stands out more.
QColor BlackOrWhite(const QColor& ground);

/// The colour of a line: 12 that differ on light and on dark grounds, then the same again.
QColor TraceColor(int index, const QPalette& palette);

/// The pen of a line that shows values: 1.5 logical pixels at every scale, thicker where the theme
/// asks for it.
QPen TracePen(const QColor& color, Qt::PenStyle style = Qt::SolidLine);

/// The pen of a line that marks a place, such as a cursor: thinner, and it follows the theme too.
QPen MarkerPen(const QColor& color, Qt::PenStyle style = Qt::SolidLine);

/// A line over the whole height of axes: its points have a place on the lower axis and 0 or 1.
QCPItemStraightLine* NewUprightLine(QCPAxisRect* axes, QCPLayer* layer);

/// Saves a picture of a plot in its own size or another, as its extension says: .png, .svg or .pdf.
/// After a failure the old file stays.
Result<> SavePlot(QCustomPlot* plot, const QString& path, QSize size = {});

/// The same of what `draw` draws in `size`, in pixels of which `pixels_per_inch` are an inch.
/// `title` names it for assistive tools.
Result<> SaveDrawing(const QString& path, const QSize& size, const QString& title,
                     double pixels_per_inch, const std::function<void(QPainter*)>& draw);

/// Asks for size and file, the file in the folder last used, and lets `save` write it, which
/// returns what `SavePlot()` does. Adds the extension of the kind chosen where the name has none.
/// True where a picture was written.
using SavePicture = std::function<Result<>(const QString& path, const QSize& size)>;
bool AskAndSavePicture(const QSize& shown, const QString& name, QWidget* parent,
                       const SavePicture& save);

}  // namespace orvane

#endif  // ORVANE_UI_PLOT_THEME_H_
