// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/timeline_bar.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kMostLanes = 2;
constexpr double kGap = 4;          // pixels
constexpr double kLeastWidth = 3;   // of a bar of its own, pixels
constexpr double kBarShare = 0.75;  // of a lane's height

}  // namespace

TimelineBar::TimelineBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("timeline"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimelineBar::SetTimeline(Timeline line) {
  line_ = std::move(line);
  setAccessibleName(QStringLiteral("Timeline: ") + TextFromBytes(line_.text));
  update();
}

QSize TimelineBar::sizeHint() const {
  return {320, (kMostLanes + 1) * fontMetrics().lineSpacing() + static_cast<int>(2 * kGap)};
}

QSize TimelineBar::minimumSizeHint() const { return {160, sizeHint().height()}; }

int TimelineBar::Lanes() const {
  return std::clamp(static_cast<int>(line_.lanes.size()), 1, kMostLanes);
}

QRectF TimelineBar::Area() const {
  const QFontMetricsF metrics(font());
  const double left = metrics.horizontalAdvance(QStringLiteral("High rates")) + 2 * kGap;
  return {left, kGap, std::max(width() - left - kGap, 1.0), Lanes() * metrics.lineSpacing()};
}

QRectF TimelineBar::LaneRect(std::size_t lane) const {
  const QRectF area = Area();
  const double height = area.height() / Lanes();
  return {area.left(), area.top() + height * static_cast<double>(lane), area.width(), height};
}

// Seconds that a bar of its own takes.
double TimelineBar::Least() const {
  return kLeastWidth * (line_.end - line_.start) / Area().width();
}

double TimelineBar::XOf(double seconds) const {
  const QRectF area = Area();
  return area.left() + (seconds - line_.start) / (line_.end - line_.start) * area.width();
}

void TimelineBar::PaintLane(std::size_t lane, QPainter* painter) const {
  const QRectF rect = LaneRect(lane);
  painter->setPen(palette().color(QPalette::WindowText));
  painter->drawText(QRectF(kGap, rect.top(), rect.left(), rect.height()),
                    Qt::AlignLeft | Qt::AlignVCenter, TextFromBytes(line_.lanes[lane].name));
  if (!line_.lanes[lane].note.empty()) {
    painter->setPen(WarningColor(palette()));
    painter->drawText(rect.adjusted(kGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                      TextFromBytes(line_.lanes[lane].note));
    return;
  }
  const QColor color = TraceColor(static_cast<int>(lane), palette());
  const double height = rect.height() * kBarShare;
  const double top = rect.top() + (rect.height() - height) / 2;
  for (const LanePart& span : SpansOf(line_.lanes[lane], Least())) {
    const double left = XOf(span.start);
    const double width = XOf(span.end) - left;
    // A gap before the next bar, which a band needs not.
    const double shown = span.is_band ? width : std::max(width - 1, kLeastWidth - 1);
    painter->fillRect(QRectF(left, top, shown, height),
                      span.is_band ? QBrush(color, Qt::Dense4Pattern) : QBrush(color));
  }
}

void TimelineBar::PaintMidnights(QPainter* painter) const {
  const QRectF area = Area();
  painter->setPen(MarkerPen(palette().color(QPalette::WindowText), Qt::DashLine));
  for (const double midnight : line_.midnights) {
    const double x = XOf(midnight);
    painter->drawLine(QPointF(x, area.top() - kGap), QPointF(x, area.bottom() + kGap));
  }
  if (line_.now && *line_.now >= line_.start && *line_.now <= line_.end) {
    painter->setPen(QPen(WarningColor(palette()), 3));
    const double x = XOf(*line_.now);
    painter->drawLine(QPointF(x, area.top() - kGap), QPointF(x, area.bottom() + kGap));
  }
}

// Start and end; midnights by their dates, now by its name, where there is room.
void TimelineBar::PaintTimes(QPainter* painter) const {
  const QRectF area = Area();
  const QFontMetricsF metrics(font());
  std::vector<std::pair<double, double>> taken;
  const auto put = [&](double seconds, const QString& text) {
    const double width = metrics.horizontalAdvance(text);
    const double left = std::clamp(XOf(seconds) - width / 2, area.left(), area.right() - width);
    const bool is_free = std::none_of(taken.begin(), taken.end(), [&](const auto& other) {
      return left < other.second + kGap && other.first < left + width + kGap;
    });
    if (is_free) {
      taken.emplace_back(left, left + width);
      painter->drawText(QPointF(left, area.bottom() + kGap + metrics.ascent()), text);
    }
  };
  painter->setPen(palette().color(QPalette::WindowText));
  put(line_.start, TextFromBytes(TimeTextOf(line_, line_.start)));
  put(line_.end, TextFromBytes(TimeTextOf(line_, line_.end)));
  if (line_.now && *line_.now > line_.start && *line_.now < line_.end) {
    put(*line_.now, QStringLiteral("now"));
  }
  for (const double midnight : line_.midnights) {
    put(midnight, TextFromBytes(TimeTextOf(line_, midnight)).section(QLatin1Char(' '), 0, 0));
  }
}

void TimelineBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (line_.lanes.empty()) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(static_cast<int>(kGap), 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                     TextFromBytes(line_.text));
    return;
  }
  painter.fillRect(Area(), palette().color(QPalette::Base));
  for (std::size_t lane = 0; lane < line_.lanes.size(); ++lane) {
    PaintLane(lane, &painter);
  }
  PaintMidnights(&painter);
  PaintTimes(&painter);
}

QString TimelineBar::TextAt(const QPointF& at) const {
  for (std::size_t lane = 0; lane < line_.lanes.size(); ++lane) {
    if (!LaneRect(lane).contains(at)) {
      continue;
    }
    for (const LanePart& span : SpansOf(line_.lanes[lane], Least())) {
      if (at.x() >= XOf(span.start) && at.x() <= XOf(span.end)) {
        return TextFromBytes(line_.lanes[lane].name + (span.what.empty() ? "" : ": " + span.what) +
                             ", " + TimeTextOf(line_, span.start) + " to " +
                             TimeTextOf(line_, span.end));
      }
    }
  }
  return TextFromBytes(line_.text);
}

bool TimelineBar::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), TextAt(help->pos()), this);
    return true;
  }
  return QWidget::event(event);
}

}  // namespace orvane
