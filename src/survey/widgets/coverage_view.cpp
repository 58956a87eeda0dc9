// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/coverage_view.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "survey/survey_findings.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kGap = 4;  // pixels
constexpr double kLeastWidth = 2;
constexpr std::size_t kMostLanes = 12;  // more boxes share less height
constexpr std::int64_t kDay = 86400;

QString Text(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

CoverageView::CoverageView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("coverage"));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  SetCoverage({});
}

void CoverageView::SetCoverage(Coverage coverage) {
  coverage_ = std::move(coverage);
  current_.reset();
  setAccessibleName(QStringLiteral("Coverage"));
  setAccessibleDescription(Text(Summarize(coverage_)));
  updateGeometry();
  update();
}

void CoverageView::SetCurrent(std::optional<std::size_t> row) {
  current_ = row;
  update();
}

QSize CoverageView::sizeHint() const {
  const auto lanes =
      static_cast<int>(std::clamp<std::size_t>(coverage_.lanes.size(), 2, kMostLanes));
  return {480, (lanes + 1) * (fontMetrics().lineSpacing() + 2) + static_cast<int>(2 * kGap)};
}

QSize CoverageView::minimumSizeHint() const { return {200, sizeHint().height()}; }

QRectF CoverageView::Area() const {
  const double left = fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 2 * kGap;
  const double below = fontMetrics().lineSpacing() + kGap;
  return {left, kGap, std::max(width() - left - kGap, 1.0), std::max(height() - below - kGap, 1.0)};
}

QRectF CoverageView::LaneRect(std::size_t lane) const {
  const QRectF area = Area();
  const double height =
      area.height() / static_cast<double>(std::max<std::size_t>(1, coverage_.lanes.size()));
  return {area.left(), area.top() + height * static_cast<double>(lane), area.width(), height};
}

double CoverageView::XOf(double seconds) const {
  const QRectF area = Area();
  const double span = std::max<double>(1, static_cast<double>(coverage_.end - coverage_.start));
  return area.left() + (seconds - static_cast<double>(coverage_.start)) / span * area.width();
}

void CoverageView::PaintLane(std::size_t lane, QPainter* painter) const {
  const CoverageLane& box = coverage_.lanes[lane];
  const QRectF rect = LaneRect(lane);
  painter->setPen(palette().color(QPalette::WindowText));
  painter->drawText(QRectF(kGap, rect.top(), rect.left() - 2 * kGap, rect.height()),
                    Qt::AlignLeft | Qt::AlignVCenter, Text(box.name));
  const auto bar = [&](const CoveragePart& part, double from, double share) {
    const double left = XOf(static_cast<double>(part.start));
    const double right = XOf(static_cast<double>(part.end));
    return QRectF(left, rect.top() + from * rect.height(), std::max(right - left, kLeastWidth),
                  share * rect.height());
  };
  for (const CoveragePart& part : box.planned) {
    painter->fillRect(bar(part, 0.1, 0.8), QBrush(GridColor(palette()), Qt::Dense6Pattern));
  }
  for (const CoveragePart& part : box.recorded) {
    const QColor color = part.is_bad ? WarningColor(palette()) : TraceColor(0, palette());
    painter->fillRect(bar(part, 0.25, 0.5), color);
    if (current_ && part.row == *current_) {
      painter->setPen(QPen(StandOut(palette().color(QPalette::Highlight), palette()), 2));
      painter->drawRect(bar(part, 0.1, 0.8));
    }
  }
}

// The beginning of each day, by its date where there is room.
void CoverageView::PaintDays(QPainter* painter) const {
  const QRectF area = Area();
  const std::int64_t days = (coverage_.end - coverage_.start) / kDay + 1;
  const std::int64_t step = std::max<std::int64_t>(1, days / 60);
  double free_from = 0;
  for (std::int64_t day = (coverage_.start / kDay + 1) * kDay; day <= coverage_.end;
       day += step * kDay) {
    const double x = XOf(static_cast<double>(day));
    painter->setPen(MarkerPen(GridColor(palette()), Qt::DashLine));
    painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const QString date = Text(SurveyTime(day)).section(QLatin1Char(' '), 0, 0);
    const double width = fontMetrics().horizontalAdvance(date);
    const double left = std::min(x, area.right() - width);
    if (left >= free_from) {
      painter->setPen(palette().color(QPalette::WindowText));
      painter->drawText(QPointF(left, area.bottom() + fontMetrics().ascent() + 1), date);
      free_from = left + width + 2 * kGap;
    }
  }
}

void CoverageView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(Area(), palette().color(QPalette::Base));
  if (coverage_.lanes.empty()) {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(Area(), Qt::AlignCenter, QStringLiteral("Nothing was recorded"));
  } else {
    PaintDays(&painter);
    for (std::size_t lane = 0; lane < coverage_.lanes.size(); ++lane) {
      PaintLane(lane, &painter);
    }
  }
  painter.setPen(
      QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), hasFocus() ? 2 : 1));
  painter.drawRect(Area());
}

const CoveragePart* CoverageView::PartAt(const QPointF& at) const {
  for (std::size_t lane = 0; lane < coverage_.lanes.size(); ++lane) {
    if (!LaneRect(lane).contains(at)) {
      continue;
    }
    for (const auto* parts : {&coverage_.lanes[lane].recorded, &coverage_.lanes[lane].planned}) {
      for (const CoveragePart& part : *parts) {
        const double left = XOf(static_cast<double>(part.start));
        const double right = std::max(XOf(static_cast<double>(part.end)), left + kLeastWidth);
        if (at.x() >= left - 1 && at.x() <= right + 1) {
          return &part;
        }
      }
    }
  }
  return nullptr;
}

QString CoverageView::TextAt(const QPointF& at) const {
  const CoveragePart* part = PartAt(at);
  return part == nullptr
             ? QString()
             : Text(part->what + ", " + SurveyTime(part->start) + " to " + SurveyTime(part->end));
}

bool CoverageView::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), TextAt(help->pos()), this);
    return true;
  }
  return QWidget::event(event);
}

void CoverageView::mousePressEvent(QMouseEvent* event) {
  if (const CoveragePart* part = PartAt(event->position()); part != nullptr) {
    emit chosen(part->row);
  }
}

// From recording to recording: of one box by time, Up and Down to the box above and below.
void CoverageView::keyPressEvent(QKeyEvent* event) {
  const bool is_across = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
  const bool is_down = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
  if (!is_across && !is_down) {
    QWidget::keyPressEvent(event);
    return;
  }
  const int by = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up ? -1 : 1;
  if (const auto row = Neighbour(coverage_, current_, by, is_down)) {
    emit chosen(*row);
  }
}

}  // namespace orvane
