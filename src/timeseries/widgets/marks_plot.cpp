// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/marks_plot.h"

#include <qcustomplot.h>

#include <QContextMenuEvent>
#include <QVBoxLayout>
#include <algorithm>
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

MarksPlot::MarksPlot(const QString& name, QWidget* parent)
    : QWidget(parent), plot_(new QCustomPlot(this)) {
  setObjectName(name + QStringLiteral("-picture"));
  plot_->setObjectName(name + QStringLiteral("-plot"));
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
  legend_ = new QCPLegend;
  plot_->plotLayout()->addElement(2, 0, legend_);
  plot_->plotLayout()->setRowStretchFactor(2, kNoMore);
  legend_->setLayer(QStringLiteral("legend"));
  legend_->setBorderPen(Qt::NoPen);
  legend_->setBrush(Qt::NoBrush);
}

void MarksPlot::Clear() {
  legend_->clearItems();
  plot_->clearPlottables();
}

void MarksPlot::SetTexts(const QString& title, const QString& x, const QString& y) {
  title_->setText(title);
  plot_->xAxis->setLabel(x);
  plot_->yAxis->setLabel(y);
}

void MarksPlot::Name(const QString& name) {
  plot_->setAccessibleName(name);
  setAccessibleName(name);
}

// All in one, with gaps between: hundreds of graphs would take long.
void MarksPlot::AddCurves(const std::vector<StackMarks>& curves, const QColor& color) {
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

void MarksPlot::AddMarks(const StackMarks& marks, const QColor& color, const QString& name,
                         bool has_line) {
  auto* line = new QCPCurve(plot_->xAxis, plot_->yAxis);
  line->setData(Vector(marks.x), Vector(marks.y));
  line->setName(name);
  line->setPen(has_line ? TracePen(color) : Qt::NoPen);
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

void MarksPlot::SetAxis(QCPAxis* axis, bool is_log, bool is_whole) {
  axis->setScaleType(is_log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
  if (is_log) {
    ticker.reset(new QCPAxisTickerLog);
  } else if (is_whole) {
    auto* whole = new QCPAxisTickerFixed;  // there is no item 2.5
    whole->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
    ticker.reset(whole);
  }
  axis->setTicker(ticker);
  axis->setNumberFormat(QStringLiteral("g"));
  axis->setNumberPrecision(5);
}

// Around medians, spreads and records, with a little room.
void MarksPlot::SetRanges(const StackPicture& picture, bool has_whole_x) {
  SetAxis(plot_->xAxis, picture.has_log_x, has_whole_x);
  SetAxis(plot_->yAxis, picture.has_log_y, false);
  plot_->rescaleAxes();
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
    const QCPRange range = axis->range();
    if (axis->scaleType() == QCPAxis::stLinear) {
      constexpr double kTellable = 1e-3;  // of a value, by the digits of the ticks
      const double most = std::max(std::abs(range.lower), std::abs(range.upper));
      const double room = range.size() > 0 ? std::max(range.size() * 0.05, most * kTellable)
                                           : std::abs(range.lower) + 1;
      axis->setRange(range.lower - room, range.upper + room);
    } else if (range.lower > 0) {
      const double factor = std::pow(range.upper / range.lower, 0.05) * 1.02;
      axis->setRange(range.lower / factor, range.upper * factor);
    }
  }
}

void MarksPlot::FollowTheme() {
  ThemePlot(plot_, palette(), font());
  title_->setTextColor(palette().color(QPalette::WindowText));
  title_->setFont(font());
  legend_->setFont(font());
  legend_->setTextColor(palette().color(QPalette::WindowText));
}

Result<> MarksPlot::SaveCopy(MarksPlot* copy, const QString& path, const QSize& size) const {
  copy->setPalette(palette());
  copy->setFont(font());
  copy->resize(size);
  copy->plot_->resize(size);
  copy->plot_->setViewport(QRect(QPoint(), size));
  copy->Draw();
  return SavePlot(copy->plot_, path, size);
}

bool MarksPlot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ContextMenu) {
    emit menuRequested(dynamic_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void MarksPlot::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    Draw();
  }
  QWidget::changeEvent(event);
}

}  // namespace orvane
