// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/coverage_view.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "survey/survey_findings.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kGap = 4;  // pixels
constexpr double kLeastWidth = 2;
constexpr std::size_t kMostLanes = 12;  // more boxes share less height

QString Text(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

CoverageView::CoverageView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("coverage"));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
  SetCoverage({});
}

void CoverageView::SetCoverage(Coverage coverage) {
  axis_.reset();  // it knows the one before
  coverage_ = std::move(coverage);
  current_.reset();
  FitAxis();
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

// On a small screen lanes become narrow.
QSize CoverageView::minimumSizeHint() const {
  constexpr int kLeastLines = 4;
  const int least = kLeastLines * fontMetrics().lineSpacing() + static_cast<int>(2 * kGap);
  return {200, std::min(least, sizeHint().height())};
}

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

QRectF CoverageView::Bar(const CoveragePart& part, const QRectF& lane, double share) const {
  const double left = axis_->At(part.start);
  const double height = share * lane.height();
  return {left, lane.center().y() - height / 2, std::max(axis_->At(part.end) - left, kLeastWidth),
          height};
}

void CoverageView::PaintLane(std::size_t lane, QPainter* painter) const {
  constexpr double kPlanShare = 0.8;  // of the lane's height
  constexpr double kBarShare = 0.5;
  const CoverageLane& box = coverage_.lanes[lane];
  const QRectF rect = LaneRect(lane);
  constexpr double kLeastLine = 0.8;  // of a line's height, for names below each other
  const double line = kLeastLine * fontMetrics().lineSpacing();
  const auto each = static_cast<std::size_t>(std::ceil(line / std::max(rect.height(), 1.0)));
  if (lane % std::max<std::size_t>(each, 1) == 0) {
    painter->setPen(palette().color(QPalette::WindowText));
    painter->drawText(QRectF(kGap, rect.center().y() - line, rect.left() - 2 * kGap, 2 * line),
                      Qt::AlignLeft | Qt::AlignVCenter, Text(box.Name()));
  }
  for (const CoveragePart& part : box.planned) {
    painter->fillRect(Bar(part, rect, kPlanShare), QBrush(GridColor(palette()), Qt::Dense4Pattern));
  }
  double drawn_to = -1;  // of thousands of recordings only those that can be seen
  for (const CoveragePart& part : box.recorded) {
    QRectF bar = Bar(part, rect, kBarShare);
    const bool is_current = current_ && part.row == *current_;
    if (bar.right() < drawn_to + kLeastWidth / 2 && part.bad_share == 0 && !is_current) {
      continue;
    }
    drawn_to = std::max(drawn_to, bar.right());
    painter->fillRect(bar, TraceColor(0, palette()));
    bar.setTop(bar.bottom() - std::max(part.bad_share * bar.height(), kLeastWidth));
    if (part.bad_share > 0) {
      painter->fillRect(bar, WarningColor(palette()));
    }
    if (is_current) {
      painter->setPen(QPen(StandOut(palette().color(QPalette::Highlight), palette()), 2));
      painter->drawRect(Bar(part, rect, kPlanShare));
    }
  }
}

void CoverageView::PaintTimes(QPainter* painter) const {
  const QRectF area = Area();
  const int width = fontMetrics().horizontalAdvance(QStringLiteral("0000/00/00 00:00"));
  for (const CoverageAxis::Tick& tick : axis_->Ticks(width + 2 * kGap)) {
    painter->setPen(MarkerPen(GridColor(palette()), Qt::DashLine));
    painter->drawLine(QPointF(tick.at, area.top()), QPointF(tick.at, area.bottom()));
    painter->setPen(palette().color(QPalette::WindowText));
    painter->drawText(QPointF(tick.at, area.bottom() + fontMetrics().ascent() + 1),
                      Text(tick.text));
  }
}

void CoverageView::FitAxis() {
  axis_.reset();
  if (!coverage_.lanes.empty()) {
    axis_.emplace(coverage_, Area().left(), Area().width());
  }
}

void CoverageView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitAxis();
}

void CoverageView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(Area(), palette().color(QPalette::Base));
  if (coverage_.lanes.empty()) {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(Area(), Qt::AlignCenter, QStringLiteral("Nothing was recorded"));
  } else {
    PaintTimes(&painter);
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
        const QRectF bar = Bar(part, LaneRect(lane), 1);
        if (at.x() >= bar.left() - 1 && at.x() <= bar.right() + 1) {
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
