// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/plot_theme.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QDir>
#include <QMessageBox>
#include <QPdfWriter>
#include <algorithm>
#include <array>
#include <cmath>

#include "files/file_io.h"
#include "ui/file_dialogs.h"
#include "ui/picture_size_dlg.h"
#include "ui/qt_path.h"
#include "ui/themes.h"
#include "ui/vector_drawing.h"

namespace orvane {
namespace {

// A page of the size, of so many pixels for an inch. The page has the same resolution: fonts, whose
// sizes are points, would grow with any other. What is drawn stays lines and texts all the same.
void WritePdf(const QSize& size, double pixels_per_inch, QBuffer* buffer,
              const std::function<void(QPaintDevice*)>& draw) {
  QPdfWriter writer(buffer);
  writer.setResolution(static_cast<int>(std::lround(pixels_per_inch)));
  writer.setPageSize(QPageSize(QSizeF(size) / pixels_per_inch, QPageSize::Inch));
  writer.setPageMargins(QMarginsF());
  draw(&writer);
}

// The pictures that can be saved here, as the dialog names them.
std::string_view PictureFilters() {
  return CanWriteSvg() ? "PNG (*.png)|*.png|SVG (*.svg)|*.svg|PDF (*.pdf)|*.pdf||"
                       : "PNG (*.png)|*.png|PDF (*.pdf)|*.pdf||";
}

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  constexpr double kGlare = 0.05;
  const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
  return (high + kGlare) / (low + kGlare);
}

struct Picture {
  QSize size;
  QString title;
  double pixels_per_inch;
};

// Writes a picture as its extension says, by what draws on any device or makes pixels.
Result<> Save(const QString& path, const Picture& picture,
              const std::function<void(QPaintDevice*)>& draw,
              const std::function<QPixmap()>& pixels) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == QLatin1String("pdf")) {
    WritePdf(picture.size, picture.pixels_per_inch, &buffer, draw);
  } else if (extension == QLatin1String("svg") && CanWriteSvg()) {
    WriteSvg(picture.size, picture.title, &buffer, draw);
  } else if (extension == QLatin1String("png")) {
    pixels().save(&buffer, "PNG");
  } else {
    return Failure(QStringLiteral("%1: pictures are saved as .png%2 or .pdf")
                       .arg(QDir::toNativeSeparators(path),
                            CanWriteSvg() ? QStringLiteral(", .svg") : QString())
                       .toStdString());
  }
  buffer.close();
  const Result<> written = WriteFile(
      PathFromText(path),
      std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
  return written ? written
                 : Failure(QDir::toNativeSeparators(path).toStdString() + ": " + written.Message());
}

}  // namespace

void ThemeAxis(QCPAxis* axis, const QPalette& palette, const QFont& font) {
  const QPen line(palette.color(QPalette::WindowText), HasThickLines() ? 2 : 1);
  axis->setBasePen(line);
  axis->setTickPen(line);
  axis->setSubTickPen(line);
  axis->setTickLabelColor(line.color());
  axis->setLabelColor(line.color());
  axis->setTickLabelFont(font);
  axis->setLabelFont(font);
  const QPen grid(GridColor(palette), HasThickLines() ? 1 : 0,
                  HasThickLines() ? Qt::SolidLine : Qt::DotLine);
  axis->grid()->setPen(grid);
  axis->grid()->setZeroLinePen(grid);
}

void ThemePlot(QCustomPlot* plot, const QPalette& palette, const QFont& font) {
  plot->setLocale(QLocale::c());  // decimal points
  plot->setBackground(palette.brush(QPalette::Window));
  for (QCPAxisRect* axes : plot->axisRects()) {
    axes->setBackground(palette.brush(QPalette::Base));
    for (QCPAxis* axis : axes->axes()) {
      ThemeAxis(axis, palette, font);
    }
  }
}

QColor StandOut(const QColor& color, const QPalette& palette) {
  constexpr double kEnough = 4.55;
  constexpr int kMost = 255;
  const QColor base = palette.color(QPalette::Base);
  const QColor window = palette.color(QPalette::Window);
  const int step = base.lightness() < 128 ? 3 : -3;
  QColor result = color;
  for (int light = color.lightness(); light >= 0 && light <= kMost; light += step) {
    result = QColor::fromHsl(color.hslHue(), color.hslSaturation(), light);
    if (Contrast(result, base) >= kEnough && Contrast(result, window) >= kEnough) {
      break;
    }
  }
  return result;
}

QColor WarningColor(const QPalette& palette) {
  constexpr QRgb kOrange = 0xFFC85000;
  return StandOut(QColor(kOrange), palette);
}

QColor GridColor(const QPalette& palette) {
  const QColor text = palette.color(QPalette::Text);
  const QColor ground = palette.color(QPalette::Base);
  const double share = HasThickLines() ? 0.5 : 0.4;  // of the text
  const auto mix = [share](int one, int other) {
    return static_cast<int>(std::lround(share * one + (1 - share) * other));
  };
  return {mix(text.red(), ground.red()), mix(text.green(), ground.green()),
          mix(text.blue(), ground.blue())};
}

QColor BlackOrWhite(const QColor& ground) {
  return Contrast(Qt::black, ground) >= Contrast(Qt::white, ground) ? Qt::black : Qt::white;
}

QColor TraceColor(int index, const QPalette& palette) {
  // Hues that people with a weak sense of red and green can tell apart come first.
  constexpr auto kHues =
      std::to_array<int>({214, 28, 158, 330, 48, 190, 268, 8, 96, 300, 234, 130});
  const bool is_dark = palette.color(QPalette::Base).lightness() < 128;
  const int hue = kHues[static_cast<std::size_t>(index) % kHues.size()];
  const int light = HasThickLines() ? 60 : 95;  // near to black
  return StandOut(is_dark ? QColor::fromHsl(hue, 200, 165) : QColor::fromHsl(hue, 220, light),
                  palette);
}

QPen TracePen(const QColor& color, Qt::PenStyle style) {
  constexpr double kUsual = 1.5;
  constexpr double kThick = 3;
  return {color, HasThickLines() ? kThick : kUsual, style};
}

QPen MarkerPen(const QColor& color, Qt::PenStyle style) {
  return {color, HasThickLines() ? 2.0 : 1.0, style};
}

QCPItemStraightLine* NewUprightLine(QCPAxisRect* axes, QCPLayer* layer) {
  auto* line = new QCPItemStraightLine(axes->parentPlot());
  line->setLayer(layer);
  line->setAntialiased(false);  // smoothed, an upright line is pale
  line->setClipAxisRect(axes);
  for (QCPItemPosition* position : {line->point1, line->point2}) {
    position->setAxisRect(axes);
    position->setTypeX(QCPItemPosition::ptPlotCoords);
    position->setTypeY(QCPItemPosition::ptAxisRectRatio);
    position->setAxes(axes->axis(QCPAxis::atBottom), axes->axis(QCPAxis::atLeft));
  }
  return line;
}

Result<> SavePlot(QCustomPlot* plot, const QString& path, QSize size) {
  size = size.isValid() ? size : plot->size();
  // With a painter that keeps lines as lines.
  const auto draw = [plot, size](QPaintDevice* device) {
    QCPPainter painter;
    painter.begin(device);
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    painter.fillRect(QRect(QPoint(), size), plot->palette().brush(QPalette::Window));
    plot->toPainter(&painter, size.width(), size.height());
    painter.end();
  };
  return Save(path, {size, plot->accessibleName(), static_cast<double>(plot->logicalDpiX())}, draw,
              [plot, size] { return plot->toPixmap(size.width(), size.height()); });
}

Result<> SaveDrawing(const QString& path, const QSize& size, const QString& title,
                     double pixels_per_inch, const std::function<void(QPainter*)>& draw) {
  const auto draw_on = [&draw](QPaintDevice* device) {
    QPainter painter(device);
    draw(&painter);
  };
  return Save(path, {size, title, pixels_per_inch}, draw_on, [&draw_on, size] {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    draw_on(&picture);
    return picture;
  });
}

bool AskAndSavePicture(const QSize& shown, const QString& name, QWidget* parent,
                       const SavePicture& save) {
  CPictureSizeDlg size(shown, parent);
  if (size.exec() != QDialog::Accepted) {
    return false;
  }
  CFileDialog dialog(QStringLiteral("Save Picture"), PictureFilters(), QString(), parent);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  const auto choose_suffix = [&dialog](const QString& filter) {
    dialog.setDefaultSuffix(filter.section(QLatin1Char('.'), -1).chopped(1));
  };
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, choose_suffix);
  choose_suffix(dialog.nameFilters().constFirst());
  dialog.selectFile(name);
  if (!dialog.ExecRemembering(QStringLiteral("Folders/Pictures"))) {
    return false;
  }
  QString path = dialog.Chosen();
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (!QStringList{QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf")}.contains(
          suffix)) {
    path += QLatin1Char('.') + dialog.defaultSuffix();  // a name with a dot of its own
    const QString question = QStringLiteral("%1 exists. Replace it?").arg(path);
    if (QFileInfo::exists(path) &&
        QMessageBox::question(parent, QStringLiteral("Orvane"), question) != QMessageBox::Yes) {
      return false;
    }
  }
  const Result<> saved = save(path, size.Chosen());
  if (!saved) {
    QMessageBox::warning(parent, QStringLiteral("Orvane"), QString::fromStdString(saved.Message()));
  }
  return static_cast<bool>(saved);
}

}  // namespace orvane
