// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the map of a spread, on screen and into pictures alike.
#ifndef ORVANE_EDITORS_WIDGETS_MAP_PAINTER_H_
#define ORVANE_EDITORS_WIDGETS_MAP_PAINTER_H_

#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <string>
#include <vector>

#include "editors/spread_map.h"

namespace orvane {

/// What is looked at, beside the map itself.
struct MapLook {
  int current = -1;  ///< item; below 0: none
  std::vector<MapMark> marks;
  double zoom = 1;  ///< 1: all of it, around its middle
  MapPoint centre;  ///< for any other zoom
};

/// Metres to pixels: one scale for both axes, north up.
class MapProjection {
 public:
  MapProjection(const SpreadMap& map, const MapLook& look, const QRectF& area);

  QPointF ToScreen(const MapPoint& point) const;
  MapPoint ToGround(const QPointF& at) const;
  /// Pixels per metre.
  double Scale() const { return scale_; }

 private:
  QPointF middle_;
  MapPoint centre_;
  double scale_ = 1;
};

/// Where items are drawn: what the labels of the axes and the lines of text leave.
QRectF MapArea(const QSizeF& size, const QFont& font, const SpreadMap& map);

/// The item nearest to a point of the screen, at most 12 pixels away; -1 where there is none.
int MapItemAt(const SpreadMap& map, const MapProjection& projection, const QPointF& at);

/// What is wrong with an item; empty: nothing.
std::string MarkOf(const MapItem& item, const std::vector<MapMark>& marks);

void PaintMap(QPainter* painter, const QSizeF& size, const SpreadMap& map, const MapLook& look,
              const QPalette& palette, const QFont& font);

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_MAP_PAINTER_H_
