// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_SPREAD_MAP_VIEW_H_
#define ORVANE_EDITORS_WIDGETS_SPREAD_MAP_VIEW_H_

#include <QPoint>
#include <QWidget>
#include <vector>

#include "base/result.h"
#include "editors/spread_map.h"
#include "editors/widgets/map_painter.h"

namespace orvane {

/// The map of a spread: north up, one scale for both axes. Arrow keys and clicks choose what is
/// described, plus, minus and the wheel zoom, 0 shows all. The context menu saves a picture.
class SpreadMapView : public QWidget {
  Q_OBJECT

 public:
  explicit SpreadMapView(QWidget* parent);

  /// Keeps what is chosen where that is still on the map.
  void SetMap(SpreadMap map);
  const SpreadMap& Map() const { return map_; }
  /// What something is wrong with. Counted as in the map's items.
  void SetMarked(std::vector<MapMark> marks);

  /// Shows an item as chosen; below 0: none. Emits nothing.
  void ShowChosen(int item);
  /// Shows a channel as chosen; nothing is chosen where the map lacks it. Emits nothing.
  void Choose(int box, int channel);
  /// Below 0: none.
  int Current() const { return look_.current; }
  /// Coordinates under a place of the widget, and what is there.
  QString TextAt(const QPointF& at) const;

  /// As `SavePlot()`.
  Result<> SavePicture(const QString& path, const QSize& size) const;
  void AskToSave();

  QSize sizeHint() const override { return {380, 320}; }
  QSize minimumSizeHint() const override { return {220, 140}; }

 signals:
  /// The user chose a channel; both count from 0.
  void chosen(int box, int channel);
  /// The user clicked an item, or pressed Return on the one that is chosen.
  void activated(int item);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  MapProjection Projection() const;
  void Step(int to);
  void Zoom(double factor, const MapPoint& around);
  void ZoomAtCurrent(double factor);
  void ShowAll();
  void SetCurrent(int item);
  void Describe();

  SpreadMap map_;
  MapLook look_;
  QPoint dragged_;  // where the pointer was last
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_SPREAD_MAP_VIEW_H_
