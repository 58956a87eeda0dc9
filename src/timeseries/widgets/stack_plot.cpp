// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/stack_plot.h"

#include <qcustomplot.h>

#include <QMouseEvent>
#include <cmath>
#include <limits>

#include "ui/plot_theme.h"

namespace orvane {
StackPlot::StackPlot(const StackView* view, QWidget* parent)
    : MarksPlot(QStringLiteral("stack"), parent),
      view_(view),
      cursor_(NewUprightLine(Plot()->axisRect(), Plot()->layer(QStringLiteral("overlay")))) {
  Plot()->installEventFilter(this);
}

void StackPlot::Show(const QString& title, const std::vector<std::size_t>& groups,
                     const StackPicture& picture) {
  title_text_ = title;
  groups_ = groups;
  picture_ = picture;
  Draw();
}

void StackPlot::Draw() {
  Clear();
  left_out_ = 0;
  for (const std::size_t group : groups_) {
    AddGroup(group);
  }
  QString title = title_text_;
  if (left_out_ > 0) {
    title += QStringLiteral("\n%1 records are in the medians but not drawn").arg(left_out_);
  }
  SetTexts(title, QString::fromStdString(StackAxisText(*view_, picture_)),
           QString::fromStdString(StackValueText(*view_, picture_)));
  Name(QStringLiteral("Stack results: ") + title_text_);
  SetRanges(picture_, !picture_.is_points && view_->AxisText() == "Item");
  ShowCursor();
  FollowTheme();
  Plot()->replot(QCustomPlot::rpQueuedReplot);
}

void StackPlot::AddGroup(std::size_t group) {
  const StackView::Group& records = view_->Groups()[group];
  const StackLines lines = StackLinesOf(*view_, records, picture_);
  const QColor color = TraceColor(static_cast<int>(group), palette());
  AddCurves(lines.records, color);
  AddMarks(lines.middle, color,
           QStringLiteral("%1 (%2 records)")
               .arg(QString::fromStdString(records.label))
               .arg(records.records.size()),
           !picture_.is_points);
  left_out_ += lines.left_out;
}

void StackPlot::ShowCursor() {
  const double place = view_->ItemPlace(picture_.item);
  cursor_->setVisible(!picture_.is_points && std::isfinite(place) &&
                      (!picture_.has_log_x || place > 0));
  if (cursor_->visible()) {
    cursor_->point1->setCoords(place, 0);
    cursor_->point2->setCoords(place, 1);
  }
}

void StackPlot::FollowTheme() {
  MarksPlot::FollowTheme();
  cursor_->setPen(MarkerPen(palette().color(QPalette::WindowText), Qt::DashLine));
}

Result<> StackPlot::Save(const QString& path, const QSize& size) const {
  StackPlot picture(view_, nullptr);
  picture.title_text_ = title_text_;
  picture.groups_ = groups_;
  picture.picture_ = picture_;
  return SaveCopy(&picture, path, size);
}

void StackPlot::OnClick(const QPoint& at) {
  const double x = Plot()->xAxis->pixelToCoord(at.x());
  std::size_t nearest = 0;
  double least = std::numeric_limits<double>::infinity();
  std::size_t items = 0;
  for (const std::size_t group : groups_) {
    items = std::max(items, view_->ItemsOfGroup(view_->Groups()[group]));
  }
  for (std::size_t item = 0; item < items; ++item) {
    const double distance = std::abs(view_->ItemPlace(item) - x);
    if (distance < least) {
      least = distance;
      nearest = item;
    }
  }
  if (!picture_.is_points && std::isfinite(least)) {
    emit itemChosen(nearest);
  }
}

bool StackPlot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const auto* mouse = dynamic_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton) {
      OnClick(mouse->pos());
    }
  }
  return MarksPlot::eventFilter(watched, event);
}

}  // namespace orvane
