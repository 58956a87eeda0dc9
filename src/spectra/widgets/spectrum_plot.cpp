// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectrum_plot.h"

#include <qcustomplot.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "timeseries/widgets/trace_graph.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

QVector<double> Vector(const std::vector<double>& values) { return {values.begin(), values.end()}; }

// Every decade is numbered; within two decades numbers are spread as usual.
void SetLogRange(QCPAxis* axis, double low, double high) {
  QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
  if (high / low > 100) {
    auto* decades = new QCPAxisTickerLog;
    decades->setTickCount(6);
    decades->setSubTickCount(8);
    ticker.reset(decades);
  }
  axis->setTicker(ticker);
  axis->setRange(low, high);
}

// Whole decades about the values; what is more than 12 decades below the greatest is rounding.
ValueRange DecadesAbout(const std::vector<SpectrumCurve>& curves) {
  double high = 0;
  for (const SpectrumCurve& curve : curves) {
    for (const double value : curve.values) {
      high = std::max(high, value);
    }
  }
  if (!(high > 0)) {
    return {1e-3, 1};
  }
  double low = high;
  for (const SpectrumCurve& curve : curves) {
    for (const double value : curve.values) {
      low = value > high * 1e-12 ? std::min(low, value) : low;
    }
  }
  high = std::pow(10, std::floor(std::log10(high)) + 1);
  return {std::min(std::pow(10, std::floor(std::log10(low))), high / 100), high};
}

}  // namespace

SpectrumPlot::SpectrumPlot(SpectrumView* view, QWidget* parent)
    : QWidget(parent), view_(view), plot_(new QCustomPlot(this)) {
  setObjectName(QStringLiteral("spectrum-picture"));
  setFocusPolicy(Qt::StrongFocus);
  plot_->setObjectName(QStringLiteral("spectrum-plot"));
  plot_->setFocusPolicy(Qt::NoFocus);
  plot_->setAutoAddPlottableToLegend(false);
  plot_->setNotAntialiasedElements(QCP::aeAll);
  plot_->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(plot_);
  setMinimumSize(240, 160);
  MakeAxes();
  plot_->addLayer(QStringLiteral("cursors"));
  cursors_ = plot_->layer(QStringLiteral("cursors"));
  cursors_->setMode(QCPLayer::lmBuffered);
  cursor_ = NewUprightLine(axes_, cursors_);
  connect(plot_, &QCustomPlot::afterReplot, this, [this] { is_drawn_ = true; });
}

void SpectrumPlot::MakeAxes() {
  plot_->plotLayout()->clear();
  caption_ = new QCPTextElement(plot_);
  plot_->plotLayout()->addElement(0, 0, caption_);
  axes_ = new QCPAxisRect(plot_);
  axes_->setLayer(QStringLiteral("background"));  // or its ground would cover the grid
  axes_->setupFullAxesBox();
  for (QCPAxis* axis : axes_->axes()) {
    axis->setLayer(QStringLiteral("axes"));
    axis->grid()->setLayer(QStringLiteral("grid"));
  }
  axes_->axis(QCPAxis::atTop)->setTicks(false);
  axes_->axis(QCPAxis::atRight)->setTicks(false);
  for (const auto side : {QCPAxis::atBottom, QCPAxis::atLeft}) {
    axes_->axis(side)->setScaleType(QCPAxis::stLogarithmic);
    axes_->axis(side)->setNumberFormat(QStringLiteral("g"));
    axes_->axis(side)->setNumberPrecision(4);
  }
  axes_->axis(QCPAxis::atBottom)->setLabel(QStringLiteral("Frequency (Hz)"));
  plot_->plotLayout()->addElement(1, 0, axes_);
  constexpr double kNoMore = 0.001;  // than the height that its text needs
  plot_->plotLayout()->setRowStretchFactor(0, kNoMore);
}

void SpectrumPlot::ShowCurves() {
  const std::vector<SpectrumCurve> curves = view_->Curves(std::max(width(), 1));
  while (graphs_.size() < curves.size()) {
    auto* graph = new TraceGraph(axes_->axis(QCPAxis::atBottom), axes_->axis(QCPAxis::atLeft));
    graph->setAdaptiveSampling(false);  // there are few points for each column already
    graphs_.push_back(graph);
  }
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    graphs_[i]->setVisible(i < curves.size());
    if (i < curves.size()) {
      graphs_[i]->setData(Vector(curves[i].frequencies), Vector(curves[i].values), true);
      graphs_[i]->setPen(TracePen(TraceColor(static_cast<int>(curves[i].channel), palette())));
    }
  }
  const bool has_any = view_->Shown().Bins() > 1;
  for (const auto side : {QCPAxis::atBottom, QCPAxis::atLeft}) {
    axes_->axis(side)->setTicks(has_any);
    axes_->axis(side)->setTickLabels(has_any);
    axes_->axis(side)->grid()->setVisible(has_any);
  }
  if (has_any) {
    const ValueRange values = DecadesAbout(curves);
    const ValueRange frequencies = view_->Frequencies();
    SetLogRange(axes_->axis(QCPAxis::atLeft), values.low, values.high);
    SetLogRange(axes_->axis(QCPAxis::atBottom), frequencies.low,
                std::max(frequencies.high, frequencies.low * 1.1));
  }
}

void SpectrumPlot::ShowMarks() {
  const std::vector<SpectrumMark> marks =
      view_->Shown().Bins() > 1 ? view_->Marks() : std::vector<SpectrumMark>();
  while (marks_.size() < marks.size()) {
    marks_.push_back(NewUprightLine(axes_, plot_->layer(QStringLiteral("grid"))));
  }
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    marks_[i]->setVisible(i < marks.size());
    if (i < marks.size()) {
      marks_[i]->point1->setCoords(marks[i].frequency, 0);
      marks_[i]->point2->setCoords(marks[i].frequency, 1);
    }
  }
  ColorMarks();
}

// The fundamental in a whole line, its harmonics dotted, mains dashed in the colour of warnings.
void SpectrumPlot::ColorMarks() {
  const std::vector<SpectrumMark> marks = view_->Marks();
  const QColor text = palette().color(QPalette::WindowText);
  const QColor pale = GridColor(palette());
  for (std::size_t i = 0; i < std::min(marks.size(), marks_.size()); ++i) {
    const auto kind = marks[i].kind;
    marks_[i]->setPen(
        kind == SpectrumMark::kMains      ? MarkerPen(WarningColor(palette()), Qt::DashLine)
        : kind == SpectrumMark::kHarmonic ? MarkerPen(StandOut(pale, palette()), Qt::DotLine)
                                          : MarkerPen(text));
  }
}

void SpectrumPlot::MoveCursorLine() {
  const auto bin = view_->CursorBin();
  cursor_->setVisible(bin.has_value());
  const double at = bin ? view_->Shown().Frequency(*bin) : 1;
  cursor_->point1->setCoords(at, 0);
  cursor_->point2->setCoords(at, 1);
}

void SpectrumPlot::ShowCursor() {
  MoveCursorLine();
  if (is_drawn_) {
    cursors_->replot();
  }
}

void SpectrumPlot::ShowView() {
  ShowCurves();
  ShowMarks();
  MoveCursorLine();
  axes_->axis(QCPAxis::atLeft)->setLabel(QString::fromStdString(view_->ValueLabel()));
  setAccessibleName(QStringLiteral("Spectrum"));
  setAccessibleDescription(QString::fromStdString(view_->Summary()));
  plot_->setAccessibleName(accessibleName());
  FollowTheme();
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

void SpectrumPlot::FollowTheme() {
  ThemePlot(plot_, palette(), font());
  QFont bold = font();
  bold.setBold(true);
  caption_->setFont(bold);
  caption_->setTextColor(palette().color(QPalette::WindowText));
  // On screen the whole of it is above the plot, where lines are broken.
  const QString whole = is_picture_ ? QString::fromStdString(view_->Caption()) : QString();
  caption_->setText(fontMetrics().elidedText(whole.section(QLatin1Char(';'), 0, 0), Qt::ElideRight,
                                             std::max(width() * 9 / 10, 50)));
  cursor_->setPen(MarkerPen(StandOut(palette().color(QPalette::Highlight), palette())));
}

Result<> SpectrumPlot::Save(const QString& path, const QSize& size) const {
  SpectrumPlot picture(view_, nullptr);
  picture.is_picture_ = true;
  picture.setPalette(palette());
  picture.setFont(font());
  picture.resize(size);
  picture.plot_->resize(size);
  picture.plot_->setViewport(QRect(QPoint(), size));
  picture.ShowView();
  return SavePlot(picture.plot_, path, size);
}

bool SpectrumPlot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const auto& press = static_cast<const QMouseEvent&>(*event);
    setFocus(Qt::MouseFocusReason);
    if (press.button() == Qt::LeftButton && axes_->rect().contains(press.position().toPoint()) &&
        view_->Shown().Bins() > 1) {
      view_->SetCursor(axes_->axis(QCPAxis::atBottom)->pixelToCoord(press.position().x()));
      emit cursorMoved();
    }
  }
  return QWidget::eventFilter(watched, event);
}

void SpectrumPlot::keyPressEvent(QKeyEvent* event) {
  const int direction = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
    emit pageWanted(event->key() == Qt::Key_PageUp ? -1 : 1);
    return;
  }
  if (direction == 0 && event->key() != Qt::Key_Delete) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (direction == 0) {
    view_->SetCursor(std::nullopt);
  } else if ((event->modifiers() & Qt::ControlModifier) != 0) {
    view_->MoveToHarmonic(direction);
  } else {
    view_->MoveCursor(direction);
  }
  emit cursorMoved();
}

void SpectrumPlot::paintEvent(QPaintEvent* /*event*/) {
  if (hasFocus()) {
    QPainter painter(this);
    painter.setPen(MarkerPen(palette().color(QPalette::Highlight)));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

void SpectrumPlot::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void SpectrumPlot::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void SpectrumPlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowView();
}

void SpectrumPlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    ShowView();
  }
}

}  // namespace orvane
