// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/map_painter.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kDot = 4;          // radius of an electrode, pixels
constexpr double kNear = 12;        // what counts as pointed at, pixels
constexpr double kGap = 4;          // between texts and what they name, pixels
constexpr double kGridStep = 64;    // at least, pixels
constexpr double kLeastSize = 1;    // metres, of a map with one point
constexpr double kMarginShare = 8;  // this part of the area is left free on each side
constexpr int kMostNotes = 3;
constexpr int kTitleLines = 2;

// The smallest of 1, 2 and 5 times a power of ten that is no less than `least`.
double RoundLength(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1 - 1e-9)) {
      return factor * power;
    }
  }
  return 10 * power;
}

QStringList NoteLines(const SpreadMap& map) {
  QStringList lines;
  for (const std::string& note : map.notes) {
    lines << TextFromBytes(note);
  }
  if (lines.size() > kMostNotes) {
    const auto more = lines.size() - kMostNotes + 1;
    lines = lines.mid(0, kMostNotes - 1) << QStringLiteral("and %1 more").arg(more);
  }
  return lines;
}

QString TitleOf(const SpreadMap& map, const MapLook& look) {
  if (look.current < 0 || look.current >= static_cast<int>(map.items.size())) {
    return map.items.empty() ? QStringLiteral("Nothing has a position")
                             : QStringLiteral("East and north in metres");
  }
  const MapItem& item = map.items[static_cast<std::size_t>(look.current)];
  const std::string mark = MarkOf(item, look.marks);
  if (!mark.empty()) {  // it has room in place of the coordinates, which the pointer tells
    return TextFromBytes(item.name + ", " + item.owner + ": ") + QString::fromStdString(mark);
  }
  return TextFromBytes(Describe(item));
}

double DistanceTo(const QLineF& line, const QPointF& at) {
  const QPointF along = line.p2() - line.p1();
  const double squared = QPointF::dotProduct(along, along);
  const double part =
      squared > 0 ? std::clamp(QPointF::dotProduct(at - line.p1(), along) / squared, 0.0, 1.0) : 0;
  return QLineF(at, line.p1() + part * along).length();
}

class Drawing {
 public:
  Drawing(QPainter* painter, const SpreadMap& map, const MapLook& look, const QPalette& palette,
          const QRectF& area)
      : painter_(*painter),
        map_(map),
        look_(look),
        palette_(palette),
        area_(area),
        projection_(map, look, area) {}

  void Paint() {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.fillRect(area_, palette_.color(QPalette::Base));
    PaintGrid();
    painter_.setClipRect(area_);
    for (std::size_t i = 0; i < map_.items.size(); ++i) {
      PaintItem(map_.items[i], static_cast<int>(i) == look_.current);
    }
    PaintNames();
    PaintScaleBar();
    PaintNorth();
    painter_.restore();
  }

 private:
  QColor TextColor() const { return palette_.color(QPalette::Text); }

  void PaintGrid() {
    const double step = RoundLength(kGridStep / projection_.Scale());
    const MapPoint least = projection_.ToGround(area_.bottomLeft());
    const MapPoint most = projection_.ToGround(area_.topRight());
    const QFontMetricsF metrics(painter_.font());
    const QPen grid(GridColor(palette_), 0, Qt::DotLine);
    const QPen text(palette_.color(QPalette::WindowText));
    for (double east = std::ceil(least.east / step) * step; east <= most.east; east += step) {
      const double x = projection_.ToScreen({east, 0}).x();
      painter_.setPen(grid);
      painter_.drawLine(QPointF(x, area_.top()), QPointF(x, area_.bottom()));
      const QString label = AxisText(east, step);
      const double width = metrics.horizontalAdvance(label);
      painter_.setPen(text);
      if (x - width / 2 >= 0 && x + width / 2 <= area_.right()) {
        painter_.drawText(QPointF(x - width / 2, area_.bottom() + metrics.ascent() + 1), label);
      }
    }
    for (double north = std::ceil(least.north / step) * step; north <= most.north; north += step) {
      const double y = projection_.ToScreen({0, north}).y();
      painter_.setPen(grid);
      painter_.drawLine(QPointF(area_.left(), y), QPointF(area_.right(), y));
      const QString label = AxisText(north, step);
      painter_.setPen(text);
      painter_.drawText(QPointF(area_.left() - kGap - metrics.horizontalAdvance(label),
                                y + metrics.ascent() / 2 - 1),
                        label);
    }
    painter_.setPen(QPen(text.color(), 0));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(area_);
  }

  // A place on an axis, without the dirt of its additions.
  static QString AxisText(double metres, double step) {
    return QString::fromStdString(FormatReal(std::round(metres / step) * step + 0.0));
  }

  QColor ColorOf(const MapItem& item) const {
    if (!MarkOf(item, look_.marks).empty()) {
      return WarningColor(palette_);
    }
    return item.box < 0 || item.is_transmitter ? TextColor() : TraceColor(item.box - 1, palette_);
  }

  void PaintItem(const MapItem& item, bool is_current) {
    QPolygonF points;
    for (const MapPoint& point : item.points) {
      points << projection_.ToScreen(point);
    }
    if (item.kind == MapItem::kLoop) {
      points << points.front();
    }
    if (is_current) {
      constexpr double kHalo = 9;
      painter_.setPen(QPen(palette_.color(QPalette::Highlight), kHalo, Qt::SolidLine, Qt::RoundCap,
                           Qt::RoundJoin));
      DrawLines(item, points);
    }
    const QColor color = ColorOf(item);
    QPen pen = TracePen(color, item.kind == MapItem::kDirection ? Qt::DashLine : Qt::SolidLine);
    if (item.is_transmitter) {
      pen.setWidthF(pen.widthF() * 1.6);
    }
    painter_.setPen(pen);
    DrawLines(item, points);
    painter_.setPen(TracePen(color));
    PaintEnds(item, points, color);
    if (!MarkOf(item, look_.marks).empty()) {
      PaintWarning(points.front(), color);
    }
  }

  // One point too, as a dot; the places of a site are not joined.
  void DrawLines(const MapItem& item, const QPolygonF& points) {
    painter_.setBrush(Qt::NoBrush);
    if (points.size() == 1 || item.kind == MapItem::kSite) {
      painter_.drawPoints(points);
    } else {
      painter_.drawPolyline(points);
    }
  }

  // Positive electrodes are filled, negative ones are rings.
  void PaintEnds(const MapItem& item, const QPolygonF& points, const QColor& color) {
    const QPointF first = points.front();
    switch (item.kind) {
      case MapItem::kDipole:
        painter_.setBrush(palette_.color(QPalette::Base));
        painter_.drawEllipse(points.back(), kDot - 0.5, kDot - 0.5);
        [[fallthrough]];
      case MapItem::kElectrode:
        painter_.setBrush(color);
        painter_.drawEllipse(first, kDot - 1, kDot - 1);
        break;
      case MapItem::kSensor:
        painter_.setBrush(color);
        painter_.drawRect(QRectF(first.x() - kDot, first.y() - kDot, 2 * kDot, 2 * kDot));
        break;
      case MapItem::kStation:
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolygon(
            QPolygonF({first + QPointF(0, -2 * kDot), first + QPointF(-1.8 * kDot, kDot),
                       first + QPointF(1.8 * kDot, kDot)}));
        break;
      case MapItem::kDirection:
        PaintArrowHead(QLineF(first, points.back()));
        break;
      case MapItem::kSite:
        painter_.setBrush(color);
        for (const QPointF& point : points) {
          painter_.drawEllipse(point, kDot, kDot);
        }
        break;
      case MapItem::kLoop:
        break;
    }
  }

  void PaintArrowHead(const QLineF& arrow) {
    for (const double turn : {150.0, 210.0}) {
      QLineF side(arrow.p2(), arrow.p2() + QPointF(1, 0));
      side.setAngle(arrow.angle() + turn);
      side.setLength(2.5 * kDot);
      painter_.drawLine(side);
    }
  }

  void PaintWarning(const QPointF& at, const QColor& color) {
    constexpr double kSide = 8;
    const QPointF top = at + QPointF(-2 * kSide, -2 * kSide);
    painter_.setBrush(color);
    painter_.drawPolygon(
        QPolygonF({top, top + QPointF(-kSide, 1.7 * kSide), top + QPointF(kSide, 1.7 * kSide)}));
    painter_.setPen(BlackOrWhite(color));
    painter_.drawText(QRectF(top.x() - kSide, top.y(), 2 * kSide, 1.8 * kSide), Qt::AlignCenter,
                      QStringLiteral("!"));
  }

  // The current one first; the others where they have room.
  void PaintNames() {
    std::vector<QRectF> taken;
    for (const MapItem& item : map_.items) {
      for (std::size_t i = 0; item.kind == MapItem::kSite && i < item.points.size(); ++i) {
        const QPointF at = projection_.ToScreen(item.points[i]);
        taken.emplace_back(at.x() - kDot, at.y() - kDot, 2 * kDot, 2 * kDot);
      }
    }
    const int count = static_cast<int>(map_.items.size());
    for (int pass = 0; pass < 2; ++pass) {
      for (int i = 0; i < count; ++i) {
        if ((i == look_.current) == (pass == 0)) {
          PaintName(map_.items[static_cast<std::size_t>(i)], pass == 0, &taken);
        }
      }
    }
  }

  void PaintName(const MapItem& item, bool is_current, std::vector<QRectF>* taken) {
    QFont font = painter_.font();
    font.setBold(is_current);
    const QFontMetricsF metrics(font);
    const QString name = TextFromBytes(item.name);
    const QSizeF size(metrics.horizontalAdvance(name), metrics.height());
    const QPointF at = AnchorOf(item);
    for (const QPointF& corner : CornersFor(item, at, size)) {
      const QRectF rect(corner, size);
      const bool is_free = area_.contains(rect) &&
                           std::none_of(taken->begin(), taken->end(), [&rect](const QRectF& other) {
                             return other.intersects(rect);
                           });
      if (!is_free) {
        continue;
      }
      taken->push_back(rect.adjusted(-kGap, 0, kGap, 0));
      const QFont usual = painter_.font();
      painter_.setFont(font);
      painter_.setPen(TextColor());
      painter_.drawText(QPointF(rect.left(), rect.top() + metrics.ascent()), name);
      painter_.setFont(usual);
      return;
    }
  }

  // What a name is beside: the middle; where lines cross in their middles, nearer to the first end;
  // the tip of an arrow.
  QPointF AnchorOf(const MapItem& item) const {
    const QPointF first = projection_.ToScreen(item.points.front());
    if (item.points.size() < 2) {
      return first;
    }
    const double share = item.kind == MapItem::kDirection                         ? 1
                         : item.kind == MapItem::kSite                            ? 0
                         : map_.is_around_centre && item.kind == MapItem::kDipole ? 0.06
                                                                                  : 0.5;
    return first + share * (projection_.ToScreen(item.points[1]) - first);
  }

  // Below and above all of it.
  std::array<QPointF, 2> OutsideOf(const MapItem& item, const QSizeF& size) const {
    QPolygonF points;
    for (const MapPoint& point : item.points) {
      points << projection_.ToScreen(point);
    }
    const QRectF all = points.boundingRect();
    const double x = all.center().x() - size.width() / 2;
    return {QPointF(x, all.bottom() + kGap), QPointF(x, all.top() - kGap - size.height())};
  }

  // Where the name of an item may begin: on both sides of its line.
  std::array<QPointF, 2> CornersFor(const MapItem& item, const QPointF& at,
                                    const QSizeF& size) const {
    const QPointF along = item.points.size() < 2 ? QPointF(1, 0)
                                                 : projection_.ToScreen(item.points[1]) -
                                                       projection_.ToScreen(item.points[0]);
    const bool is_upright = std::abs(along.y()) > std::abs(along.x());
    const double off = kGap + kDot;
    if (item.kind == MapItem::kLoop || item.kind == MapItem::kSite) {
      return OutsideOf(item, size);
    }
    if (is_upright) {
      const double y = at.y() - size.height() / 2;
      return {QPointF(at.x() + off, y), QPointF(at.x() - off - size.width(), y)};
    }
    const double x = at.x() - size.width() / 2;
    return {QPointF(x, at.y() - off - size.height()), QPointF(x, at.y() + off)};
  }

  void PaintScaleBar() {
    const double length = RoundLength(area_.width() / 10 / projection_.Scale());
    const double pixels = length * projection_.Scale();
    const QPointF start = area_.bottomLeft() + QPointF(2 * kGap, -2 * kGap);
    const QPointF end = start + QPointF(pixels, 0);
    painter_.setPen(QPen(TextColor(), 2));
    painter_.drawLine(start, end);
    painter_.drawLine(start, start - QPointF(0, kGap));
    painter_.drawLine(end, end - QPointF(0, kGap));
    const QString text = length >= 1000 ? QString::fromStdString(FormatReal(length / 1000)) + " km"
                                        : QString::fromStdString(FormatReal(length)) + " m";
    painter_.drawText(start - QPointF(0, 2 * kGap), text);
  }

  void PaintNorth() {
    const QPointF tip = area_.topRight() + QPointF(-3 * kGap, 2 * kGap);
    const QLineF arrow(tip + QPointF(0, 5 * kGap), tip);
    painter_.setPen(QPen(TextColor(), 1.5));
    painter_.drawLine(arrow);
    PaintArrowHead(arrow);
    const QFontMetricsF metrics(painter_.font());
    const QString north = QStringLiteral("N");
    painter_.drawText(QPointF(tip.x() - kGap - kDot - metrics.horizontalAdvance(north),
                              tip.y() + metrics.ascent()),
                      north);
  }

  QPainter& painter_;
  const SpreadMap& map_;
  const MapLook& look_;
  const QPalette& palette_;
  QRectF area_;
  MapProjection projection_;
};

}  // namespace

MapProjection::MapProjection(const SpreadMap& map, const MapLook& look, const QRectF& area)
    : middle_(area.center()) {
  const MapExtent all = map.Extent().value_or(MapExtent());
  const double width = std::max(all.most.east - all.least.east, kLeastSize);
  const double height = std::max(all.most.north - all.least.north, kLeastSize);
  const double free_share = 1 - 2 / kMarginShare;
  const double fit = std::min(std::max(area.width(), 1.0) * free_share / width,
                              std::max(area.height(), 1.0) * free_share / height);
  scale_ = fit * look.zoom;
  centre_ = look.zoom != 1 ? look.centre
                           : MapPoint{(all.least.east + all.most.east) / 2,
                                      (all.least.north + all.most.north) / 2};
}

QPointF MapProjection::ToScreen(const MapPoint& point) const {
  return middle_ + QPointF(point.east - centre_.east, centre_.north - point.north) * scale_;
}

MapPoint MapProjection::ToGround(const QPointF& at) const {
  const QPointF metres = (at - middle_) / scale_;
  return {centre_.east + metres.x(), centre_.north - metres.y()};
}

QRectF MapArea(const QSizeF& size, const QFont& font, const SpreadMap& map) {
  const QFontMetricsF metrics(font);
  const double left = metrics.horizontalAdvance(QStringLiteral("0000000")) + 2 * kGap;
  const double line = metrics.lineSpacing();
  const double below = line * (1 + static_cast<double>(NoteLines(map).size())) + kGap;
  const double top = kTitleLines * line + 2 * kGap;
  return {left, top, std::max(size.width() - left - kGap, 1.0),
          std::max(size.height() - top - below, 1.0)};
}

int MapItemAt(const SpreadMap& map, const MapProjection& projection, const QPointF& at) {
  int nearest = -1;
  double least = kNear;
  for (std::size_t i = 0; i < map.items.size(); ++i) {
    const auto& points = map.items[i].points;
    const bool is_closed = map.items[i].kind == MapItem::kLoop;
    const bool is_joined = map.items[i].kind != MapItem::kSite;
    const std::size_t count = points.size();
    for (std::size_t p = 0; p < (is_closed || !is_joined || count == 1 ? count : count - 1); ++p) {
      const QLineF line(projection.ToScreen(points[p]),
                        projection.ToScreen(points[is_joined ? (p + 1) % count : p]));
      if (const double distance = DistanceTo(line, at); distance < least) {
        least = distance;
        nearest = static_cast<int>(i);
      }
    }
  }
  return nearest;
}

std::string MarkOf(const MapItem& item, const std::vector<MapMark>& marks) {
  std::string why;
  for (const MapMark& mark : marks) {
    if (item.box >= 0 && mark.box == item.box &&
        (mark.channel < 0 || mark.channel == item.channel)) {
      why += (why.empty() ? "" : "; ") + mark.why;
    }
  }
  return why;
}

void PaintMap(QPainter* painter, const QSizeF& size, const SpreadMap& map, const MapLook& look,
              const QPalette& palette, const QFont& font) {
  painter->save();
  painter->setFont(font);
  const QRectF area = MapArea(size, font, map);
  painter->fillRect(QRectF(QPointF(), size), palette.color(QPalette::Window));
  const QFontMetricsF metrics(font);
  const QString title = TitleOf(map, look);
  painter->setPen(palette.color(QPalette::WindowText));
  const double width = size.width() - 2 * kGap;
  painter->drawText(QRectF(kGap, 0, width, kTitleLines * metrics.lineSpacing()),
                    Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, title);
  double y = area.bottom() + metrics.lineSpacing() + metrics.ascent() + 1;
  for (const QString& note : NoteLines(map)) {
    painter->drawText(QPointF(kGap, y), metrics.elidedText(note, Qt::ElideRight, width));
    y += metrics.lineSpacing();
  }
  if (map.items.empty()) {
    painter->fillRect(area, palette.color(QPalette::Base));
  } else {
    Drawing(painter, map, look, palette, area).Paint();
  }
  painter->restore();
}

}  // namespace orvane
