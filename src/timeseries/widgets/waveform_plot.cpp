// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_plot.h"

#include <qcustomplot.h>

#include <QContextMenuEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "timeseries/waveform_text.h"
#include "timeseries/widgets/round_ticker.h"
#include "timeseries/widgets/trace_graph.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr int kTextMargin = 8;  // pixels
constexpr double kDot = 5;
constexpr int kVeil = 140;         // of 255
constexpr double kNoMore = 0.001;  // stretch of a row that is as high as its text

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

QVector<double> Vector(std::vector<double> values) { return {values.begin(), values.end()}; }

}  // namespace

WaveformPlot::WaveformPlot(WaveformView* view, TraceArrangement* traces, QWidget* parent)
    : QWidget(parent),
      view_(view),
      traces_(traces),
      plot_(new QCustomPlot(this)),
      mouse_(new WaveformMouse(view, traces, this, plot_)) {
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
  setMinimumSize(320, 80);
  plot_->plotLayout()->clear();
  MakeHeader();
  FollowTheme();
  connect(mouse_, &WaveformMouse::changed, this, [this] {
    ShowView();
    emit changed();
  });
  // Ticks are chosen before the strips get their heights: a new height needs a second drawing.
  connect(plot_, &QCustomPlot::afterReplot, this, [this] {
    const int height = strips_.empty() ? 0 : strips_.front().axes->height();
    if (height != drawn_height_) {
      drawn_height_ = height;
      plot_->replot(QCustomPlot::rpQueuedReplot);
    }
  });
}

// The note comes right after the title.
void WaveformPlot::MakeHeader() {
  auto* header = new QCPLayoutGrid;
  title_ = new QCPTextElement(plot_);
  note_ = new QCPTextElement(plot_);
  for (QCPTextElement* text : {title_, note_}) {
    text->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
    header->addElement(0, text == title_ ? 0 : 1, text);
  }
  header->setColumnStretchFactor(0, kNoMore);
  plot_->plotLayout()->addElement(0, 0, header);
  plot_->plotLayout()->setRowStretchFactor(0, kNoMore);
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
      ->setTicker(RoundTicker::Of(strip.axes->axis(QCPAxis::atLeft), view_));
  strip.axes->axis(QCPAxis::atBottom)
      ->setTicker(RoundTicker::Of(strip.axes->axis(QCPAxis::atBottom), view_));
  for (QCPAxis* axis : strip.axes->axes()) {
    axis->setLayer(QStringLiteral("axes"));
    axis->grid()->setLayer(QStringLiteral("grid"));
  }
  line->addElement(0, 0, strip.label);
  line->addElement(0, 1, strip.axes);
  plot_->plotLayout()->addElement(row, 0, line);
  strip.graph =
      new TraceGraph(strip.axes->axis(QCPAxis::atBottom), strip.axes->axis(QCPAxis::atLeft));
  for (QCPGraph*& extra : strip.extras) {
    extra = new TraceGraph(strip.axes->axis(QCPAxis::atBottom), strip.axes->axis(QCPAxis::atLeft));
    extra->setAdaptiveSampling(false);
  }
  strip.graph->setAdaptiveSampling(false);  // the view has thinned the line already
  for (std::size_t i = 0; i < 2; ++i) {
    strip.cursors[i] = MakeLine(strip);
    strip.limits[i] = MakeLine(strip);
  }
  return strip;
}

QCPItemStraightLine* WaveformPlot::MakeLine(const Strip& strip) {
  auto* line = new QCPItemStraightLine(plot_);
  line->setClipAxisRect(strip.axes);
  for (QCPItemPosition* position : {line->point1, line->point2}) {
    position->setAxisRect(strip.axes);
    position->setAxes(strip.axes->axis(QCPAxis::atBottom), strip.axes->axis(QCPAxis::atLeft));
  }
  return line;
}

void WaveformPlot::MakeStrips(std::size_t count) {
  const std::string not_drawn = traces_->NotDrawnText(*view_, count);
  not_drawn_ = nullptr;
  plot_->clearItems();
  cursor_labels_ = {};
  plot_->clearPlottables();
  strips_.clear();
  while (plot_->plotLayout()->rowCount() > 1) {
    plot_->plotLayout()->removeAt(plot_->plotLayout()->rowColToIndex(1, 0));
    plot_->plotLayout()->simplify();
  }
  auto* margins = new QCPMarginGroup(plot_);
  for (std::size_t i = 0; i < count; ++i) {
    strips_.push_back(MakeStrip(static_cast<int>(i) + 1));
    strips_.back().trace = shown_[i];
    QCPAxisRect* axes = strips_.back().axes;
    axes->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    axes->axis(QCPAxis::atBottom)->setTickLabels(false);
    axes->setMinimumMargins(QMargins(0, 0, 12, 0));
    axes->setAutoMargins(QCP::msLeft | QCP::msRight);
    axes->setMargins(QMargins(0, 0, 0, 0));
  }
  for (std::size_t i = 0; count > 0 && i < cursor_labels_.size(); ++i) {
    auto* label = cursor_labels_[i] = new QCPItemText(plot_);
    label->setClipAxisRect(strips_[0].axes);
    label->position->setAxisRect(strips_[0].axes);
    label->position->setAxes(strips_[0].axes->axis(QCPAxis::atBottom), nullptr);
    label->position->setTypeX(QCPItemPosition::ptPlotCoords);
    label->position->setTypeY(QCPItemPosition::ptAxisRectRatio);
    label->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
  }
  if (count > 0) {
    MakeTimeAxis(static_cast<int>(count) + 1, margins);
    if (!not_drawn.empty()) {
      const int row = static_cast<int>(count) + 2;
      not_drawn_ = new QCPTextElement(plot_, TextFromBytes(not_drawn));
      not_drawn_->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
      plot_->plotLayout()->addElement(row, 0, not_drawn_);
      plot_->plotLayout()->setRowStretchFactor(row, kNoMore);
    }
  }
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
  axis->setTicker(RoundTicker::Of(axis, view_));
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

void WaveformPlot::ShowStrip(const Strip& strip, WaveformTrace line) {
  const std::size_t trace = strip.trace;
  strip.label->setTextColor(TraceColor(static_cast<int>(trace), palette()));
  strip.graph->setScatterStyle(view_->HasDots(PlotWidth())
                                   ? QCPScatterStyle(QCPScatterStyle::ssDisc, kDot)
                                   : QCPScatterStyle(QCPScatterStyle::ssNone));
  strip.graph->setData(Vector(std::move(line.times)), Vector(std::move(line.values)), true);
  const ValueRange times = view_->VisibleTimes();
  const ValueRange values = traces_->Values(trace, view_->ValuesOf(trace));
  strip.axes->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
  strip.axes->axis(QCPAxis::atLeft)->setRange(values.low, values.high);
  ShowExtras(strip);
  ShowCursors(strip);
  ShowLimits(strip);
}

// A fold has few scans: its spread needs no thinning.
void WaveformPlot::ShowExtras(const Strip& strip) {
  const std::size_t trace = strip.trace;
  const auto& spreads = view_->Shaped().spreads;
  const std::vector<double> means =
      trace < spreads.size() ? view_->Values(trace) : std::vector<double>();
  for (const std::size_t i : {0U, 1U}) {
    strip.extras[i]->data()->clear();
    const double sign = i == 0 ? -1 : 1;
    for (std::size_t scan = 0; scan < means.size(); ++scan) {
      const double spread = spreads[trace][scan] * view_->Channel(trace).scale;
      if (!std::isnan(spread)) {
        strip.extras[i]->addData(view_->TimeOf(scan), means[scan] + sign * spread);
      }
    }
  }
  if (other_ != nullptr && trace < other_->TraceCount()) {
    const ValueRange times = view_->VisibleTimes();
    other_->ShowTimes(times.low, times.high);
    WaveformTrace line = std::move(other_->Traces(PlotWidth())[trace]);
    strip.extras[0]->setData(Vector(std::move(line.times)), Vector(std::move(line.values)), true);
  }
}

// Which cursor is which, at the top of the first strip.
void WaveformPlot::LabelCursors() {
  for (const auto cursor : {WaveformView::kFirstCursor, WaveformView::kSecondCursor}) {
    const auto reading = view_->Reading(cursor);
    QCPItemText* label = cursor_labels_[cursor];
    label->setVisible(reading.has_value());
    if (reading) {
      const ValueRange times = view_->VisibleTimes();
      const bool is_left = reading->time > (times.low + times.high) / 2;  // where there is room
      label->position->setCoords(reading->time, 0);
      label->setPositionAlignment((is_left ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop);
      label->setText(QStringLiteral(" %1: %2 ")
                         .arg(cursor + 1)
                         .arg(view_->ShowsClock() ? TextFromBytes(TimeText(*view_, reading->time))
                                                  : QString::number(reading->time, 'g', 6)));
    }
  }
}

void WaveformPlot::ShowLimits(const Strip& strip) {
  const std::vector<double> values = view_->FullScaleLines(strip.trace);
  for (std::size_t i = 0; i < strip.limits.size(); ++i) {
    strip.limits[i]->setVisible(i < values.size());
    if (i < values.size()) {
      strip.limits[i]->point1->setCoords(0, values[i]);
      strip.limits[i]->point2->setCoords(1, values[i]);
    }
  }
}

void WaveformPlot::ShowCursors(const Strip& strip) {
  for (const auto cursor : {WaveformView::kFirstCursor, WaveformView::kSecondCursor}) {
    const auto reading = view_->Reading(cursor);
    QCPItemStraightLine* line = strip.cursors[cursor];
    line->setVisible(reading.has_value());
    if (reading) {
      // The last scan lies on the frame, which would hide it.
      const QCPRange times = strip.axes->axis(QCPAxis::atBottom)->range();
      const double pixel = times.size() / std::max(strip.axes->width(), 1);
      const double at =
          std::abs(reading->time - times.upper) < pixel ? times.upper - pixel : reading->time;
      line->point1->setCoords(at, 0);
      line->point2->setCoords(at, 1);
    }
  }
}

// Of the traces those that have room for a line of text.
std::size_t WaveformPlot::StripsWithRoom() const {
  constexpr int kLeast = 24;
  constexpr int kAxisLines = 5;  // ticks, label, what is not drawn, margins
  const int line = fontMetrics().height();
  const int title_lines = static_cast<int>(title_->text().count(QLatin1Char('\n'))) + 1;
  const int room = plot_->height() - (kAxisLines + title_lines) * line;
  const auto most = static_cast<std::size_t>(std::max(room / std::max(kLeast, line + 4), 1));
  return std::min(shown_.size(), most);
}

std::string WaveformPlot::OverlayText() const {
  return other_ == nullptr ? std::string()
                           : ",  over it segment " + std::to_string(other_->Number()) + " (pale)";
}

void WaveformPlot::ShowHeader() {
  const QString note = TextFromBytes(view_->NoteText());
  note_->setText(view_->Number() == 0 ? QString() : note);
  const QFontMetrics metrics(title_->font());
  const int room = plot_->width() - metrics.horizontalAdvance(note_->text()) - 3 * kTextMargin;
  const std::string title =
      view_->Number() == 0
          ? view_->EmptyText()
          : BrokenTitle(view_->TitleText() + OverlayText(),
                        [&metrics, room](std::string_view text) {
                          return metrics.horizontalAdvance(TextFromBytes(text)) <= room;
                        });
  const QString name = TextFromPath(view_->File().Path().filename()) + QLatin1Char('\n');
  title_->setText((has_file_name_ ? name : QString()) + TextFromBytes(title));
}

// For those who cannot see it.
void WaveformPlot::SayWhatIsShown() {
  QStringList spoken{title_->text().simplified(), note_->text()};
  for (const Strip& strip : strips_) {
    spoken << strip.label->text().simplified();
  }
  spoken.removeAll(QString());
  plot_->setAccessibleDescription(spoken.join(QStringLiteral("; ")));
}

void WaveformPlot::ShowView() {
  ShowHeader();
  shown_ = traces_->Shown(view_->TraceCount());
  const std::size_t count = StripsWithRoom();
  const QString not_drawn = not_drawn_ == nullptr ? QString() : not_drawn_->text();
  const bool are_same =
      std::equal(strips_.begin(), strips_.end(), shown_.begin(),
                 shown_.begin() + static_cast<std::ptrdiff_t>(count),
                 [](const Strip& strip, std::size_t trace) { return strip.trace == trace; });
  if (!are_same || not_drawn != TextFromBytes(traces_->NotDrawnText(*view_, count))) {
    MakeStrips(count);
  }
  if (!strips_.empty()) {
    for (std::size_t i = 0; i < strips_.size(); ++i) {
      ShowLabel(strips_[i]);
      plot_->plotLayout()->setRowStretchFactor(static_cast<int>(i) + 1,
                                               traces_->Height(strips_[i].trace));
    }
    SizeLabels();
    const ValueRange times = view_->VisibleTimes();
    time_axes_->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
    time_axes_->axis(QCPAxis::atBottom)->setLabel(TextFromBytes(view_->TimeLabel()));
    GivePlaces();
    for (const Strip& strip : strips_) {
      ShowLabel(strip);  // in as many lines as have room
    }
    SizeLabels();
    GivePlaces();
    std::vector<WaveformTrace> lines = view_->Traces(PlotWidth());
    for (const Strip& strip : strips_) {
      ShowStrip(strip, std::move(lines[strip.trace]));
    }
    LabelCursors();
  }
  SayWhatIsShown();
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

// Ticks, labels and lines depend on the places of the strips, which a drawing would give them only
// after it has chosen the ticks.
void WaveformPlot::GivePlaces() {
  for (const auto phase :
       {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins, QCPLayoutElement::upLayout}) {
    plot_->plotLayout()->update(phase);
  }
}

void WaveformPlot::ShowLabel(const Strip& strip) {
  const std::size_t trace = strip.trace;
  QString text = TextFromBytes(view_->Channel(trace).Label()).simplified();
  text += TextFromBytes(view_->StatusText(trace));
  const int height = strip.axes->height();
  if (height > 0 && height < 2 * QFontMetrics(strip.label->font()).height()) {
    text = text.simplified();  // one line
  }
  strip.label->setText(text);
  QFont font = LabelFont(*this);
  font.setBold(shown_.size() > 1 && trace == traces_->Selected());
  strip.label->setFont(font);
}

Result<> WaveformPlot::Save(const QString& path, const QSize& size) const {
  WaveformPlot picture(view_, traces_, nullptr);
  picture.setPalette(palette());
  picture.setFont(font());
  picture.has_file_name_ = true;
  picture.other_ = other_;
  picture.resize(size);
  picture.plot_->resize(size);
  picture.plot_->setViewport(QRect(QPoint(), size));
  picture.ShowView();
  return SavePlot(picture.plot_, path, size);
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
  note_->setFont(title);
  note_->setTextColor(WarningColor(palette()));
  if (not_drawn_ != nullptr) {
    not_drawn_->setFont(LabelFont(*this));
    not_drawn_->setTextColor(palette().color(QPalette::WindowText));
  }
  for (QCPItemText* label : cursor_labels_) {
    if (label != nullptr) {
      label->setFont(NumberFont(*this));
      label->setColor(palette().color(QPalette::WindowText));
      QColor veil = palette().color(QPalette::Base);
      veil.setAlpha(kVeil);
      label->setBrush(veil);  // the text is read, and the trace behind it still seen
    }
  }
  for (std::size_t i = 0; i < strips_.size(); ++i) {
    for (QCPGraph* extra : strips_[i].extras) {
      QColor pale = palette().color(QPalette::WindowText);
      pale.setAlphaF(0.5F);
      extra->setPen(MarkerPen(pale));
    }
    strips_[i].graph->setPen(TracePen(TraceColor(static_cast<int>(strips_[i].trace), palette())));
    for (QCPItemStraightLine* limit : strips_[i].limits) {
      limit->setPen(MarkerPen(WarningColor(palette()), Qt::DashLine));
    }
    const QColor line = palette().color(QPalette::WindowText);
    strips_[i].cursors[0]->setPen(MarkerPen(line));
    strips_[i].cursors[1]->setPen(MarkerPen(line, Qt::DashLine));
  }
}

void WaveformPlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    FollowTheme();
    ShowView();
  }
}

std::optional<std::size_t> WaveformPlot::TraceAt(double y) const {
  for (const Strip& strip : strips_) {
    if (y >= strip.axes->top() && y <= strip.axes->bottom()) {
      return strip.trace;
    }
  }
  return std::nullopt;
}

QRectF WaveformPlot::PlaceOf(std::optional<std::size_t> trace) const {
  for (const Strip& strip : strips_) {
    if (!trace || strip.trace == *trace) {
      return strip.axes->rect();
    }
  }
  return {};
}

bool WaveformPlot::eventFilter(QObject* watched, QEvent* event) {
  if (strips_.empty() && event->type() != QEvent::Resize) {
    return QWidget::eventFilter(watched, event);
  }
  switch (event->type()) {
    case QEvent::Resize:
      QMetaObject::invokeMethod(this, &WaveformPlot::ShowView, Qt::QueuedConnection);
      return false;
    case QEvent::ContextMenu:
      if (const auto trace = TraceAt(dynamic_cast<QContextMenuEvent*>(event)->pos().y())) {
        traces_->Select(*trace);
      }
      emit menuRequested(dynamic_cast<QContextMenuEvent*>(event)->globalPos());
      return true;
    default:
      return mouse_->Take(event);
  }
}

}  // namespace orvane
