// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/stack_plot.h"

#include <qcustomplot.h>

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <cmath>
#include <limits>

#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kMarkSize = 7;
constexpr int kPale = 90;  // of 255

QVector<double> Vector(const std::vector<double>& values) { return {values.begin(), values.end()}; }

// Those that are hollow, or those that are not.
QVector<double> Chosen(const std::vector<double>& values, const StackMarks& marks, bool is_hollow) {
  QVector<double> chosen;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (marks.is_hollow[i] == is_hollow) {
      chosen.append(values[i]);
    }
  }
  return chosen;
}

}  // namespace

StackPlot::StackPlot(const StackView* view, QWidget* parent)
    : QWidget(parent), view_(view), plot_(new QCustomPlot(this)) {
  setObjectName(QStringLiteral("stack-picture"));
  plot_->setObjectName(QStringLiteral("stack-plot"));
  plot_->setFocusPolicy(Qt::NoFocus);
  plot_->setAutoAddPlottableToLegend(false);
  plot_->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_);
  setMinimumSize(240, 180);
  constexpr double kNoMore = 0.001;  // than the height that its text needs
  title_ = new QCPTextElement(plot_);
  plot_->plotLayout()->insertRow(0);
  plot_->plotLayout()->addElement(0, 0, title_);
  plot_->plotLayout()->setRowStretchFactor(0, kNoMore);
  axes_ = plot_->axisRect();
  legend_ = new QCPLegend;
  plot_->plotLayout()->addElement(2, 0, legend_);
  plot_->plotLayout()->setRowStretchFactor(2, kNoMore);
  legend_->setLayer(QStringLiteral("legend"));
  legend_->setBorderPen(Qt::NoPen);
  legend_->setBrush(Qt::NoBrush);
  cursor_ = NewUprightLine(axes_, plot_->layer(QStringLiteral("overlay")));
}

void StackPlot::Show(const QString& title, const std::vector<std::size_t>& groups,
                     const StackPicture& picture) {
  title_text_ = title;
  groups_ = groups;
  picture_ = picture;
  Draw();
}

void StackPlot::Draw() {
  legend_->clearItems();
  plot_->clearPlottables();
  left_out_ = 0;
  for (const std::size_t group : groups_) {
    AddGroup(group);
  }
  QString title = title_text_;
  if (left_out_ > 0) {
    title += QStringLiteral("\n%1 records are in the medians but not drawn").arg(left_out_);
  }
  title_->setText(title);
  plot_->setAccessibleName(QStringLiteral("Stack results: ") + title_text_);
  setAccessibleName(plot_->accessibleName());
  plot_->xAxis->setLabel(QString::fromStdString(StackAxisText(*view_, picture_)));
  plot_->yAxis->setLabel(QString::fromStdString(StackValueText(*view_, picture_)));
  SetRanges();
  ShowCursor();
  FollowTheme();
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

void StackPlot::AddGroup(std::size_t group) {
  const StackView::Group& records = view_->Groups()[group];
  const StackLines lines = StackLinesOf(*view_, records, picture_);
  const QColor color = TraceColor(static_cast<int>(group), palette());
  AddCurves(lines.records, color);
  AddMarks(lines.middle, color,
           QStringLiteral("%1 (%2 records)")
               .arg(QString::fromStdString(records.label))
               .arg(records.records.size()));
  left_out_ += lines.left_out;
}

// All in one, with gaps between: hundreds of graphs would take long.
void StackPlot::AddCurves(const std::vector<StackMarks>& curves, const QColor& color) {
  constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
  auto* curve = new QCPCurve(plot_->xAxis, plot_->yAxis);
  QVector<double> x;
  QVector<double> y;
  for (const StackMarks& one : curves) {
    x += Vector(one.x);
    y += Vector(one.y);
    x.append(kGap);
    y.append(kGap);
  }
  curve->setData(x, y);
  QColor pale = color;
  pale.setAlpha(kPale);
  curve->setPen(QPen(pale, 0));
  curve->setScatterStyle(QCPScatterStyle::ssNone);
}

void StackPlot::AddMarks(const StackMarks& marks, const QColor& color, const QString& name) {
  auto* line = new QCPCurve(plot_->xAxis, plot_->yAxis);
  line->setData(Vector(marks.x), Vector(marks.y));
  line->setName(name);
  line->setPen(picture_.is_points ? Qt::NoPen : TracePen(color));
  for (const bool is_hollow : {false, true}) {
    QCPGraph* graph = plot_->addGraph();
    graph->setData(Chosen(marks.x, marks, is_hollow), Chosen(marks.y, marks, is_hollow));
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(QCPScatterStyle(
        QCPScatterStyle::ssCircle, QPen(color, 0),
        is_hollow ? QBrush(palette().color(QPalette::Base)) : QBrush(color), kMarkSize));
    if (!is_hollow) {
      graph->setName(name);
      graph->addToLegend(legend_);
    }
    if (!marks.spread.empty()) {
      auto* bars = new QCPErrorBars(plot_->xAxis, plot_->yAxis);
      bars->setDataPlottable(graph);
      bars->setData(Chosen(marks.spread, marks, is_hollow));
      bars->setPen(QPen(color, 0));
    }
  }
}

void StackPlot::SetAxis(bool is_value, bool is_log) {
  QCPAxis* axis = is_value ? plot_->yAxis : plot_->xAxis;
  axis->setScaleType(is_log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
  if (is_log) {
    ticker.reset(new QCPAxisTickerLog);
  } else if (!is_value && !picture_.is_points && view_->AxisText() == "Item") {
    auto* whole = new QCPAxisTickerFixed;  // there is no item 2.5
    whole->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
    ticker.reset(whole);
  }
  axis->setTicker(ticker);
  axis->setNumberFormat(QStringLiteral("g"));
  axis->setNumberPrecision(5);
}

// Around medians, spreads and records, with a little room.
void StackPlot::SetRanges() {
  SetAxis(false, picture_.has_log_x);
  SetAxis(true, picture_.has_log_y);
  plot_->rescaleAxes();
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
    const QCPRange range = axis->range();
    if (axis->scaleType() == QCPAxis::stLinear) {
      const double room = range.size() > 0 ? range.size() * 0.05 : std::abs(range.lower) + 1;
      axis->setRange(range.lower - room, range.upper + room);
    } else if (range.lower > 0) {
      const double factor = std::pow(range.upper / range.lower, 0.05) * 1.02;
      axis->setRange(range.lower / factor, range.upper * factor);
    }
  }
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
  ThemePlot(plot_, palette(), font());
  title_->setTextColor(palette().color(QPalette::WindowText));
  title_->setFont(font());
  legend_->setFont(font());
  legend_->setTextColor(palette().color(QPalette::WindowText));
  cursor_->setPen(MarkerPen(palette().color(QPalette::WindowText), Qt::DashLine));
}

Result<> StackPlot::Save(const QString& path, const QSize& size) const {
  StackPlot picture(view_, nullptr);
  picture.setPalette(palette());
  picture.setFont(font());
  picture.resize(size);
  picture.plot_->resize(size);
  picture.plot_->setViewport(QRect(QPoint(), size));
  picture.Show(title_text_, groups_, picture_);
  return SavePlot(picture.plot_, path, size);
}

void StackPlot::OnClick(const QPoint& at) {
  const double x = plot_->xAxis->pixelToCoord(at.x());
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
  } else if (event->type() == QEvent::ContextMenu) {
    emit menuRequested(dynamic_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void StackPlot::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    Draw();
  }
  QWidget::changeEvent(event);
}

}  // namespace orvane
