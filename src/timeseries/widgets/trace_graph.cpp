// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/trace_graph.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace orvane {
namespace {

// What a line covers of each column of points; all numbers are points of the screen.
class Columns {
 public:
  // Everything is kept within `room` and a line's width around it.
  Columns(const QRectF& room, int width)
      : width_(width),
        left_(static_cast<int>(std::floor(room.left())) - width),
        top_(room.top() - width),
        bottom_(room.bottom() + width),
        spans_(static_cast<std::size_t>(std::ceil(room.width())) + 2 * std::size_t(width) + 1) {}

  void Add(QPointF from, QPointF to) {
    if (from.x() > to.x()) {
      std::swap(from, to);
    }
    const double end = left_ + static_cast<double>(spans_.size());
    if (!(from.x() < end && to.x() >= left_)) {  // also where one is not a number
      return;
    }
    const double slope = (to.y() - from.y()) / (to.x() - from.x());  // unused where it is endless
    const auto first = static_cast<int>(std::floor(std::max<double>(from.x(), left_)));
    const auto last = static_cast<int>(std::floor(std::min(to.x(), end - 1)));
    const auto at = [&](double x) {
      return x <= from.x() ? from.y() : x >= to.x() ? to.y() : from.y() + (x - from.x()) * slope;
    };
    for (int x = first; x <= last; ++x) {
      Put(x, at(x));
      Put(x, at(x + 1));
    }
  }

  // `pixel`: the painter's length of a point.
  void Fill(QPainter* painter, const QColor& color, double pixel) const {
    const auto before = static_cast<std::size_t>((width_ - 1) / 2);
    const auto behind = static_cast<std::size_t>(width_ / 2);
    for (std::size_t i = before; i + behind < spans_.size(); ++i) {
      Span wide;
      for (std::size_t k = i - before; k <= i + behind; ++k) {
        wide.low = std::min(wide.low, spans_[k].low);
        wide.high = std::max(wide.high, spans_[k].high);
      }
      if (wide.low <= wide.high) {
        const double top = std::floor(wide.low) - static_cast<double>(before);
        const double bottom = std::floor(wide.high) + 1 + static_cast<double>(behind);
        painter->fillRect(QRectF((left_ + static_cast<double>(i)) * pixel, top * pixel, pixel,
                                 (bottom - top) * pixel),
                          color);
      }
    }
  }

 private:
  struct Span {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
  };

  void Put(int x, double y) {
    Span& span = spans_[static_cast<std::size_t>(x - left_)];
    const double kept = std::clamp(y, top_, bottom_);
    span.low = std::min(span.low, kept);
    span.high = std::max(span.high, kept);
  }

  int width_;
  int left_;
  double top_;
  double bottom_;
  std::vector<Span> spans_;
};

}  // namespace

void TraceGraph::drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const {
  if (painter->modes().testFlag(QCPPainter::pmVectorized)) {
    QCPGraph::drawLinePlot(painter, lines);
    return;
  }
  const double scale = painter->device()->devicePixelRatioF();
  const int width = std::max(static_cast<int>(std::lround(pen().widthF() * scale)), 1);
  const QRectF room(keyAxis()->axisRect()->rect());
  Columns columns(QRectF(room.topLeft() * scale, room.size() * scale), width);
  for (qsizetype i = 1; i < lines.size(); ++i) {
    columns.Add(lines[i - 1] * scale, lines[i] * scale);
  }
  columns.Fill(painter, pen().color(), 1 / scale);
}

}  // namespace orvane
