// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/spread_map_view.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kZoomStep = 1.5;
constexpr double kMostZoom = 1e4;

}  // namespace

SpreadMapView::SpreadMapView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("map"));
  setAccessibleName(QStringLiteral("Map of the spread"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  Describe();
}

void SpreadMapView::SetMap(SpreadMap map) {
  int box = -1;
  int channel = -1;
  if (look_.current >= 0) {
    box = map_.items[static_cast<std::size_t>(look_.current)].box;
    channel = map_.items[static_cast<std::size_t>(look_.current)].channel;
  }
  map_ = std::move(map);
  look_.current = map_.IndexOf(box, channel);
  Describe();
}

void SpreadMapView::SetMarked(std::vector<MapMark> marks) {
  look_.marks = std::move(marks);
  Describe();
}

void SpreadMapView::Choose(int box, int channel) {
  look_.current = map_.IndexOf(box, channel);
  Describe();
}

void SpreadMapView::ShowChosen(int item) {
  look_.current = item;
  Describe();
}

// Assistive tools are told what is chosen.
void SpreadMapView::Describe() {
  QString text = TextFromBytes(Summarize(map_));
  if (look_.current >= 0) {
    const MapItem& item = map_.items[static_cast<std::size_t>(look_.current)];
    const std::string mark = MarkOf(item, look_.marks);
    text = TextFromBytes(orvane::Describe(item)) +
           QString::fromStdString(mark.empty() ? "" : "; " + mark) + QStringLiteral(". ") + text;
  }
  setAccessibleDescription(text);
  update();
}

MapProjection SpreadMapView::Projection() const {
  return {map_, look_, MapArea(size(), font(), map_)};
}

void SpreadMapView::SetCurrent(int item) {
  look_.current = item;
  Describe();
  if (item >= 0) {
    const MapItem& shown = map_.items[static_cast<std::size_t>(item)];
    if (look_.zoom != 1 &&
        !MapArea(size(), font(), map_).contains(Projection().ToScreen(shown.points.front()))) {
      look_.centre = shown.points.front();
    }
    if (shown.box >= 0 && shown.channel >= 0) {
      emit chosen(shown.box, shown.channel);
    }
  }
}

void SpreadMapView::Step(int to) {
  const int count = static_cast<int>(map_.items.size());
  if (count > 0) {
    SetCurrent(std::clamp(to, 0, count - 1));
  }
}

// The place stays where it is on the screen.
void SpreadMapView::Zoom(double factor, const MapPoint& around) {
  const QPointF middle = MapArea(size(), font(), map_).center();
  const MapPoint centre = Projection().ToGround(middle);
  const double zoom = std::clamp(look_.zoom * factor, 1.0, kMostZoom);
  const double share = look_.zoom / zoom;
  look_.centre = {around.east + (centre.east - around.east) * share,
                  around.north + (centre.north - around.north) * share};
  look_.zoom = zoom < kZoomStep / 1.2 ? 1 : zoom;
  update();
}

void SpreadMapView::ZoomAtCurrent(double factor) {
  const QPointF middle = MapArea(size(), font(), map_).center();
  Zoom(factor, look_.current < 0
                   ? Projection().ToGround(middle)
                   : map_.items[static_cast<std::size_t>(look_.current)].points.front());
}

void SpreadMapView::ShowAll() {
  look_.zoom = 1;
  update();
}

void SpreadMapView::keyPressEvent(QKeyEvent* event) {
  const int last = static_cast<int>(map_.items.size()) - 1;
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      return Step(look_.current - 1);
    case Qt::Key_Right:
    case Qt::Key_Down:
      return Step(look_.current + 1);
    case Qt::Key_Home:
      return Step(0);
    case Qt::Key_End:
      return Step(last);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (look_.current < 0) {
        break;
      }
      emit activated(look_.current);
      return;
    case Qt::Key_Plus:
      return ZoomAtCurrent(kZoomStep);
    case Qt::Key_Minus:
      return ZoomAtCurrent(1 / kZoomStep);
    case Qt::Key_0:
      return ShowAll();
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

void SpreadMapView::mousePressEvent(QMouseEvent* event) {
  dragged_ = event->pos();
  if (event->button() == Qt::LeftButton) {
    if (const int item = MapItemAt(map_, Projection(), event->position()); item >= 0) {
      SetCurrent(item);
      emit activated(item);
    }
  }
}

void SpreadMapView::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) {
    QToolTip::showText(event->globalPosition().toPoint(), TextAt(event->position()), this);
  } else if (look_.zoom != 1) {
    const QPointF moved = event->pos() - dragged_;
    const double scale = Projection().Scale();
    look_.centre.east -= moved.x() / scale;
    look_.centre.north += moved.y() / scale;
    dragged_ = event->pos();
    update();
  }
}

QString SpreadMapView::TextAt(const QPointF& at) const {
  if (map_.items.empty() || !MapArea(size(), font(), map_).contains(at)) {
    return TextFromBytes(Summarize(map_));
  }
  const MapProjection projection = Projection();
  if (const int item = MapItemAt(map_, projection, at); item >= 0) {
    const MapItem& shown = map_.items[static_cast<std::size_t>(item)];
    const std::string mark = MarkOf(shown, look_.marks);
    return TextFromBytes(orvane::Describe(shown)) +
           QString::fromStdString(mark.empty() ? "" : "\n" + mark);
  }
  const MapPoint ground = projection.ToGround(at);
  const int decimals =
      std::clamp(static_cast<int>(std::ceil(std::log10(projection.Scale()))), 0, 3);
  return TextFromBytes(FormatFixed(ground.east, decimals) + " E, " +
                       FormatFixed(ground.north, decimals) + " N (m)");
}

void SpreadMapView::wheelEvent(QWheelEvent* event) {
  if (!hasFocus() || event->angleDelta().y() == 0) {
    event->ignore();  // what is around it scrolls
    return;
  }
  Zoom(event->angleDelta().y() > 0 ? kZoomStep : 1 / kZoomStep,
       Projection().ToGround(event->position()));
}

void SpreadMapView::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  menu.addAction(QStringLiteral("&Save Picture..."), this, &SpreadMapView::AskToSave);
  menu.addSeparator();
  menu.addAction(QStringLiteral("Zoom &In\t+"), this, [this] { ZoomAtCurrent(kZoomStep); });
  menu.addAction(QStringLiteral("Zoom &Out\t-"), this, [this] { ZoomAtCurrent(1 / kZoomStep); });
  menu.addAction(QStringLiteral("Show &All\t0"), this, &SpreadMapView::ShowAll);
  menu.exec(event->globalPos());
}

Result<> SpreadMapView::SavePicture(const QString& path, const QSize& size) const {
  return SaveDrawing(path, size, accessibleName(), logicalDpiX(), [this, size](QPainter* painter) {
    PaintMap(painter, size, map_, look_, palette(), font());
  });
}

void SpreadMapView::AskToSave() {
  AskAndSavePicture(
      size(), QStringLiteral("Map"), this,
      [this](const QString& path, const QSize& chosen) { return SavePicture(path, chosen); });
}

void SpreadMapView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintMap(&painter, size(), map_, look_, palette(), font());
  if (hasFocus()) {
    painter.setPen(MarkerPen(palette().color(QPalette::Highlight)));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

}  // namespace orvane
