// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_plot.h"

#include <qcustomplot.h>

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/byte_text.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kWheelStep = 1.25;
constexpr int kDragStart = 4;  // pixels
constexpr int kMostTimeTicks = 10;
constexpr double kEdge = 0.1;

QFont LabelFont(const QWidget& widget) {
  QFont font(QStringLiteral("Arial"));
  font.setPointSizeF(widget.font().pointSizeF());
  return font;
}

QFont NumberFont(const QWidget& widget) {
  QFont font(QStringLiteral("Courier New"));
  font.setPointSizeF(widget.font().pointSizeF() * 0.9);
  return font;
}

// Numbers at a value axis of so many pixels.
int MostValues(int height) {
  constexpr int kLow = 36;  // room for one number, or for two
  return height < kLow ? 2 : std::clamp(height / 16, 4, 6);
}

// Ticks by the rule of the display: round steps, as many decimals as tell them apart. None stands
// so near to an end of a value axis that its number would touch that of the next strip.
class RoundTicker : public QCPAxisTicker {
 public:
  explicit RoundTicker(const QCPAxisRect* value_axes = nullptr) : value_axes_(value_axes) {}

  void generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                int /*precision*/, QVector<double>& ticks, QVector<double>* sub_ticks,
                QVector<QString>* labels) override {
    const bool is_value = value_axes_ != nullptr;
    const int most = is_value ? MostValues(value_axes_->height()) : kMostTimeTicks;
    const double margin = is_value ? kEdge * range.size() : 0;
    AxisTicks round = TicksBetween(range.lower + margin, range.upper - margin, most);
    // One number tells no scale.
    for (int more = most + 1; round.values.size() < 2 && more <= kMostTimeTicks; ++more) {
      round = TicksBetween(range.lower + margin, range.upper - margin, more);
    }
    ticks = QVector<double>(round.values.begin(), round.values.end());
    if (sub_ticks != nullptr) {
      sub_ticks->clear();
    }
    if (labels != nullptr) {
      labels->clear();
      for (const double value : round.values) {
        labels->append(TextFromBytes(TickText(value, round.precision)).trimmed());
      }
    }
  }

 private:
  const QCPAxisRect* value_axes_;
};

QVector<double> Vector(std::vector<double> values) { return {values.begin(), values.end()}; }

}  // namespace

WaveformPlot::WaveformPlot(WaveformView* view, QWidget* parent)
    : QWidget(parent), view_(view), plot_(new QCustomPlot(this)) {
  setObjectName(QStringLiteral("waveform-picture"));
  setAccessibleName(QStringLiteral("Waveform"));
  plot_->setObjectName(QStringLiteral("waveform-plot"));
  plot_->setAccessibleName(accessibleName());
  plot_->setFocusPolicy(Qt::NoFocus);  // the display has the keys
  plot_->setNotAntialiasedElements(QCP::aeAll);
  plot_->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_);
  setMinimumSize(320, 200);
  plot_->plotLayout()->clear();
  title_ = new QCPTextElement(plot_);
  title_->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
  plot_->plotLayout()->addElement(0, 0, title_);
  plot_->plotLayout()->setRowStretchFactor(0, 0.001);  // as high as its line, no more
  FollowTheme();
  // Ticks are chosen before the strips get their heights: a new height needs a second drawing.
  connect(plot_, &QCustomPlot::afterReplot, this, [this] {
    const int height = strips_.empty() ? 0 : strips_.front().axes->height();
    if (height != drawn_height_) {
      drawn_height_ = height;
      plot_->replot(QCustomPlot::rpQueuedReplot);
    }
  });
}

WaveformPlot::Strip WaveformPlot::MakeStrip(int row) {
  Strip strip;
  auto* line = new QCPLayoutGrid;
  strip.label = new QCPTextElement(plot_);
  strip.label->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
  strip.axes = new QCPAxisRect(plot_);
  strip.axes->setMinimumSize(50, 24);
  strip.axes->setupFullAxesBox();
  strip.axes->axis(QCPAxis::atTop)->setTicks(false);
  strip.axes->axis(QCPAxis::atRight)->setTicks(false);
  strip.axes->axis(QCPAxis::atLeft)
      ->setTicker(QSharedPointer<QCPAxisTicker>(new RoundTicker(strip.axes)));
  strip.axes->axis(QCPAxis::atBottom)->setTicker(QSharedPointer<QCPAxisTicker>(new RoundTicker));
  for (QCPAxis* axis : strip.axes->axes()) {
    axis->setLayer(QStringLiteral("axes"));
    axis->grid()->setLayer(QStringLiteral("grid"));
  }
  line->addElement(0, 0, strip.label);
  line->addElement(0, 1, strip.axes);
  plot_->plotLayout()->addElement(row, 0, line);
  strip.graph =
      plot_->addGraph(strip.axes->axis(QCPAxis::atBottom), strip.axes->axis(QCPAxis::atLeft));
  strip.graph->setAdaptiveSampling(false);  // the view has thinned the line already
  for (QCPItemStraightLine*& cursor : strip.cursors) {
    cursor = new QCPItemStraightLine(plot_);
    cursor->setClipAxisRect(strip.axes);
    for (QCPItemPosition* position : {cursor->point1, cursor->point2}) {
      position->setAxisRect(strip.axes);
      position->setAxes(strip.axes->axis(QCPAxis::atBottom), strip.axes->axis(QCPAxis::atLeft));
    }
  }
  return strip;
}

void WaveformPlot::MakeStrips(std::size_t count) {
  plot_->clearItems();
  plot_->clearGraphs();
  strips_.clear();
  while (plot_->plotLayout()->rowCount() > 1) {
    plot_->plotLayout()->removeAt(plot_->plotLayout()->rowColToIndex(1, 0));
    plot_->plotLayout()->simplify();
  }
  auto* margins = new QCPMarginGroup(plot_);
  for (std::size_t i = 0; i < count; ++i) {
    strips_.push_back(MakeStrip(static_cast<int>(i) + 1));
    QCPAxisRect* axes = strips_.back().axes;
    axes->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    axes->axis(QCPAxis::atBottom)->setTickLabels(false);
    axes->setMinimumMargins(QMargins(0, 0, 12, 0));
    axes->setAutoMargins(QCP::msLeft | QCP::msRight);
    axes->setMargins(QMargins(0, 0, 0, 0));
  }
  MakeTimeAxis(static_cast<int>(count) + 1, margins);
  plot_->plotLayout()->setRowSpacing(2);
  FollowTheme();
}

// An axis rectangle of no height below the strips, so that all of these are equally high.
void WaveformPlot::MakeTimeAxis(int row, QCPMarginGroup* margins) {
  auto* line = new QCPLayoutGrid;
  time_label_ = new QCPTextElement(plot_);
  time_axes_ = new QCPAxisRect(plot_);
  time_axes_->setMinimumSize(50, 1);
  time_axes_->setMaximumSize(QWIDGETSIZE_MAX, 1);
  time_axes_->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
  time_axes_->setMinimumMargins(QMargins(0, 0, 12, 0));
  time_axes_->axis(QCPAxis::atLeft)->setVisible(false);
  QCPAxis* axis = time_axes_->axis(QCPAxis::atBottom);
  axis->setTicker(QSharedPointer<QCPAxisTicker>(new RoundTicker));
  axis->setLayer(QStringLiteral("axes"));
  axis->grid()->setVisible(false);
  line->addElement(0, 0, time_label_);
  line->addElement(0, 1, time_axes_);
  plot_->plotLayout()->addElement(row, 0, line);
}

// The labels are as wide as the widest of them, within reason.
void WaveformPlot::SizeLabels() {
  constexpr int kWidest = 220;
  constexpr int kAnyHeight = 100000;  // without a limit a text limits its strip to its lines
  const QFontMetrics metrics(LabelFont(*this));
  int width = metrics.horizontalAdvance(QStringLiteral("Ch 12 (mV) "));
  for (const Strip& strip : strips_) {
    for (const QString& line : strip.label->text().split(QLatin1Char('\n'))) {
      width = std::max(width, metrics.horizontalAdvance(line) + 8);
    }
  }
  width = std::min(width, kWidest);
  for (const Strip& strip : strips_) {
    strip.label->setMinimumSize(width, 10);
    strip.label->setMaximumSize(width, kAnyHeight);
  }
  time_label_->setMinimumSize(width, 1);
  time_label_->setMaximumSize(width, kAnyHeight);
}

void WaveformPlot::ShowStrip(std::size_t trace, WaveformTrace line) {
  const Strip& strip = strips_[trace];
  QString text = TextFromBytes(view_->Channel(trace).Label()).simplified();
  text += TextFromBytes(view_->StatusText(trace));
  strip.label->setText(text);
  strip.label->setTextColor(TraceColor(static_cast<int>(trace), palette()));
  strip.graph->setData(Vector(std::move(line.times)), Vector(std::move(line.values)), true);
  const ValueRange times = view_->VisibleTimes();
  const ValueRange values = view_->ValuesOf(trace);
  strip.axes->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
  strip.axes->axis(QCPAxis::atLeft)->setRange(values.low, values.high);
  ShowCursors(strip);
}

void WaveformPlot::ShowCursors(const Strip& strip) {
  for (const auto cursor : {WaveformView::kFirstCursor, WaveformView::kSecondCursor}) {
    const auto reading = view_->Reading(cursor);
    QCPItemStraightLine* line = strip.cursors[cursor];
    line->setVisible(reading.has_value());
    if (reading) {
      line->point1->setCoords(reading->time, 0);
      line->point2->setCoords(reading->time, 1);
    }
  }
}

void WaveformPlot::ShowView() {
  if (strips_.size() != view_->TraceCount()) {
    MakeStrips(view_->TraceCount());
  }
  title_->setText(view_->Number() == 0 ? QString() : TextFromBytes(view_->TitleText()));
  const QColor text = palette().color(view_->IsBad() ? QPalette::Link : QPalette::WindowText);
  title_->setTextColor(StandOut(text, palette()));
  if (!strips_.empty()) {
    std::vector<WaveformTrace> lines = view_->Traces(PlotWidth());
    for (std::size_t trace = 0; trace < strips_.size(); ++trace) {
      ShowStrip(trace, std::move(lines[trace]));
    }
    SizeLabels();
    const ValueRange times = view_->VisibleTimes();
    time_axes_->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
    time_axes_->axis(QCPAxis::atBottom)->setLabel(TextFromBytes(view_->TimeLabel()));
  }
  QStringList spoken(title_->text());
  for (const Strip& strip : strips_) {
    spoken << strip.label->text().simplified();
  }
  plot_->setAccessibleDescription(spoken.join(QStringLiteral("; ")));
  if (view_->Record().Header().scans == 0 && !view_->Problem().empty()) {
    title_->setText(QString::fromStdString(view_->Problem()));
  }
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

int WaveformPlot::PlotWidth() const {
  const int width = strips_.empty() ? 0 : strips_.front().axes->width();
  return width > 10 ? width : plot_->width();
}

void WaveformPlot::FollowTheme() {
  ThemePlot(plot_, palette(), NumberFont(*this));
  QFont title = NumberFont(*this);
  title.setPointSizeF(font().pointSizeF());
  title_->setFont(title);
  title_->setTextColor(palette().color(QPalette::WindowText));
  for (std::size_t i = 0; i < strips_.size(); ++i) {
    strips_[i].label->setFont(LabelFont(*this));
    strips_[i].graph->setPen(QPen(TraceColor(static_cast<int>(i), palette()), 0));
    const QColor line = palette().color(QPalette::WindowText);
    strips_[i].cursors[0]->setPen(QPen(line, 0));
    strips_[i].cursors[1]->setPen(QPen(line, 0, Qt::DashLine));
  }
}

void WaveformPlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    FollowTheme();
    ShowView();
  }
}

double WaveformPlot::TimeAt(double pixel) const {
  return strips_.front().axes->axis(QCPAxis::atBottom)->pixelToCoord(pixel);
}

bool WaveformPlot::eventFilter(QObject* watched, QEvent* event) {
  if (strips_.empty()) {
    return QWidget::eventFilter(watched, event);
  }
  switch (event->type()) {
    case QEvent::Resize:
      QMetaObject::invokeMethod(this, &WaveformPlot::ShowView, Qt::QueuedConnection);
      return false;
    case QEvent::ContextMenu:
      emit MenuAsked(dynamic_cast<QContextMenuEvent*>(event)->globalPos());
      return true;
    case QEvent::Wheel:
      return OnWheel(*dynamic_cast<QWheelEvent*>(event));
    case QEvent::MouseButtonPress:
      return OnPress(*dynamic_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
      return OnMove(*dynamic_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return OnRelease(*dynamic_cast<QMouseEvent*>(event));
    default:
      return false;
  }
}

bool WaveformPlot::OnWheel(const QWheelEvent& event) {
  constexpr double kNotch = 120;
  const double factor = std::pow(kWheelStep, event.angleDelta().y() / kNotch);
  if ((event.modifiers() & Qt::ControlModifier) != 0) {
    view_->ZoomValues(factor);
  } else {
    view_->ZoomTimes(factor, TimeAt(event.position().x()));
  }
  ShowView();
  emit Changed();
  return true;
}

bool WaveformPlot::OnPress(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) {
    return false;
  }
  is_pressed_ = true;
  is_dragging_ = false;
  press_x_ = event.position().x();
  press_times_ = view_->VisibleTimes();
  return true;
}

bool WaveformPlot::OnMove(const QMouseEvent& event) {
  if (!is_pressed_) {
    return false;
  }
  const double moved = event.position().x() - press_x_;
  is_dragging_ = is_dragging_ || std::fabs(moved) >= kDragStart;
  if (is_dragging_) {
    const double seconds = (press_times_.high - press_times_.low) * moved / PlotWidth();
    view_->ShowTimes(press_times_.low - seconds, press_times_.high - seconds);
    ShowView();
    emit Changed();
  }
  return true;
}

bool WaveformPlot::OnRelease(const QMouseEvent& event) {
  if (!is_pressed_ || event.button() != Qt::LeftButton) {
    return false;
  }
  is_pressed_ = false;
  if (!is_dragging_) {
    const bool is_second = (event.modifiers() & Qt::ShiftModifier) != 0;
    view_->SetCursor(is_second ? WaveformView::kSecondCursor : WaveformView::kFirstCursor,
                     TimeAt(event.position().x()));
    ShowView();
    emit Changed();
  }
  return true;
}

}  // namespace orvane
