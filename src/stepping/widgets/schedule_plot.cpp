// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/schedule_plot.h"

#include <qcustomplot.h>

#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

// A level line from the end of the step before to the end of this one.
void AddStep(QCPGraph* graph, double begin, double end, double value) {
  graph->addData(begin, value);
  graph->addData(end, value);
}

}  // namespace

SchedulePlot::SchedulePlot(QWidget* parent) : QWidget(parent), plot_(new QCustomPlot(this)) {
  setObjectName(QStringLiteral("schedule-picture"));
  setAccessibleName(QStringLiteral("Schedule: frequency and current against time"));
  plot_->setObjectName(QStringLiteral("schedule-plot"));
  plot_->setAccessibleName(accessibleName());
  plot_->setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_);
  setMinimumSize(215, 200);
  AddAxes();
  FollowTheme();
  Show({});
}

void SchedulePlot::AddAxes() {
  plot_->plotLayout()->clear();
  frequency_axes_ = new QCPAxisRect(plot_);
  current_axes_ = new QCPAxisRect(plot_);
  plot_->plotLayout()->addElement(0, 0, frequency_axes_);
  plot_->plotLayout()->addElement(1, 0, current_axes_);
  plot_->plotLayout()->setRowStretchFactor(0, 2);
  auto* margins = new QCPMarginGroup(plot_);
  for (QCPAxisRect* axes : {frequency_axes_, current_axes_}) {
    axes->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    axes->setupFullAxesBox();
    for (QCPAxis* axis : axes->axes()) {
      axis->setLayer(QStringLiteral("axes"));
      axis->grid()->setLayer(QStringLiteral("grid"));
    }
    axes->axis(QCPAxis::atTop)->setTicks(false);
    axes->axis(QCPAxis::atRight)->setTicks(false);
  }
  QCPAxis* frequency = frequency_axes_->axis(QCPAxis::atLeft);
  frequency->setScaleType(QCPAxis::stLogarithmic);
  const QSharedPointer<QCPAxisTickerLog> decades(new QCPAxisTickerLog);
  decades->setTickCount(12);
  decades->setSubTickCount(8);
  frequency->setTicker(decades);
  frequency->setNumberFormat(QStringLiteral("g"));
  frequency->setNumberPrecision(6);
  frequency->setLabel(QStringLiteral("Frequency (Hz)"));
  current_axes_->axis(QCPAxis::atLeft)->setLabel(QStringLiteral("Current (A)"));
  current_axes_->axis(QCPAxis::atBottom)->setLabel(QStringLiteral("Time (s)"));
  for (QCPAxisRect* axes : {frequency_axes_, current_axes_}) {
    axes->axis(QCPAxis::atBottom)->setNumberFormat(QStringLiteral("g"));
  }
  frequency_axes_->axis(QCPAxis::atBottom)->setTickLabels(false);  // the same time as below
  current_axes_->axis(QCPAxis::atLeft)->ticker()->setTickCount(4);
  frequency_ = plot_->addGraph(frequency_axes_->axis(QCPAxis::atBottom), frequency);
  current_ =
      plot_->addGraph(current_axes_->axis(QCPAxis::atBottom), current_axes_->axis(QCPAxis::atLeft));
  nothing_ = new QCPItemText(plot_);
  nothing_->setClipAxisRect(frequency_axes_);
  nothing_->position->setAxisRect(frequency_axes_);
  nothing_->position->setType(QCPItemPosition::ptAxisRectRatio);
  nothing_->position->setCoords(0.5, 0.5);
  nothing_->setText(QStringLiteral("No schedule"));
}

void SchedulePlot::Show(std::span<const ScheduleRow> rows) {
  for (QCPGraph* graph : {frequency_, current_}) {
    graph->setData({}, {});
  }
  double begin = 0;
  for (const ScheduleRow& row : rows) {
    const double end = row.end_time;
    AddStep(frequency_, begin, end, row.frequency > 0 ? double{row.frequency} : kNothing);
    AddStep(current_, begin, end, row.current);
    begin = end;
  }
  nothing_->setVisible(rows.empty());
  SetRanges(rows);
  plot_->replot(QCustomPlot::rpQueuedReplot);  // once for all cells of a paste
}

void SchedulePlot::SetRanges(std::span<const ScheduleRow> rows) {
  constexpr double kMargin = 1.05;
  double end = 1;
  double lowest = HUGE_VAL;
  double highest = 0;
  double most = 0;
  for (const ScheduleRow& row : rows) {
    end = std::max(end, static_cast<double>(row.end_time));
    most = std::max(most, double{row.current});
    if (row.frequency > 0) {
      lowest = std::min(lowest, double{row.frequency});
      highest = std::max(highest, double{row.frequency});
    }
  }
  if (lowest > highest) {
    lowest = 1;
    highest = 1000;
  }
  constexpr double kAboveAndBelow = 2;  // an octave
  frequency_axes_->axis(QCPAxis::atLeft)
      ->setRange(lowest / kAboveAndBelow, highest * kAboveAndBelow);
  current_axes_->axis(QCPAxis::atLeft)->setRange(0, most > 0 ? most * kMargin : 1);
  for (QCPAxisRect* axes : {frequency_axes_, current_axes_}) {
    axes->axis(QCPAxis::atBottom)->setRange(0, end * kMargin);
  }
  SpaceTicks();
}

// As many ticks of time as have their labels apart.
void SchedulePlot::SpaceTicks() {
  const double end = current_axes_->axis(QCPAxis::atBottom)->range().upper;
  const int digits = QFontMetrics(font()).horizontalAdvance(QString::number(static_cast<int>(end)) +
                                                            QStringLiteral("00"));
  const int room = width() - QFontMetrics(font()).horizontalAdvance(QStringLiteral("0000000000"));
  for (QCPAxisRect* axes : {frequency_axes_, current_axes_}) {
    // The ticker takes a round step and so up to half as many again.
    axes->axis(QCPAxis::atBottom)
        ->ticker()
        ->setTickCount(std::clamp(room * 2 / (3 * digits), 1, 6));
  }
}

void SchedulePlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  SpaceTicks();
}

void SchedulePlot::FollowTheme() {
  ThemePlot(plot_, palette(), font());
  nothing_->setColor(palette().color(QPalette::WindowText));
  nothing_->setFont(font());
  const QPen line = TracePen(StandOut(palette().color(QPalette::Highlight), palette()));
  frequency_->setPen(line);
  current_->setPen(line);
}

void SchedulePlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    FollowTheme();
    plot_->replot();
  }
}

}  // namespace orvane
