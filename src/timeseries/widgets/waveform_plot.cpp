// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_plot.h"

#include <qcustomplot.h>

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "timeseries/widgets/trace_graph.h"
#include "ui/byte_text.h"
#include "ui/plot_theme.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

constexpr double kWheelStep = 1.25;
constexpr int kDragStart = 4;   // pixels
constexpr int kTextMargin = 8;  // pixels
constexpr int kMostTimeTicks = 10;
constexpr double kDot = 5;
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

// Ticks by the rule of the display: round steps, as many decimals as they differ by.
class RoundTicker : public QCPAxisTicker {
 public:
  explicit RoundTicker(const QCPAxis* axis) : axis_(axis) {}

  void generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                int /*precision*/, QVector<double>& ticks, QVector<double>* sub_ticks,
                QVector<QString>* labels) override {
    const bool is_value = axis_->orientation() == Qt::Vertical;
    const AxisTicks round =
        is_value ? StripTicks(range.lower, range.upper, std::max(axis_->axisRect()->height(), 1),
                              QFontMetrics(axis_->tickLabelFont()).ascent())
                 : TimeTicks(range);
    ticks = QVector<double>(round.values.begin(), round.values.end());
    if (sub_ticks != nullptr) {
      sub_ticks->clear();
    }
    if (labels != nullptr) {
      labels->clear();
      for (const double value : round.values) {
        labels->append(Label(value, round.precision));
      }
    }
  }

 private:
  static QString Label(double value, int precision) {
    return TextFromBytes(TickText(value, precision)).trimmed();
  }

  // As many as do not touch.
  AxisTicks TimeTicks(const QCPRange& range) const {
    const QFontMetrics metrics(axis_->tickLabelFont());
    const double pixels = axis_->axisRect()->width();
    for (int most = kMostTimeTicks; most > 2; --most) {
      AxisTicks round = TicksBetween(range.lower, range.upper, most);
      int widest = 0;
      for (const double value : round.values) {
        widest = std::max(widest, metrics.horizontalAdvance(Label(value, round.precision) + "  "));
      }
      if (widest <= round.step / range.size() * pixels) {
        return round;
      }
    }
    return TicksBetween(range.lower, range.upper, 2);
  }

  const QCPAxis* axis_;
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
  MakeHeader();
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
      ->setTicker(
          QSharedPointer<QCPAxisTicker>(new RoundTicker(strip.axes->axis(QCPAxis::atLeft))));
  strip.axes->axis(QCPAxis::atBottom)
      ->setTicker(
          QSharedPointer<QCPAxisTicker>(new RoundTicker(strip.axes->axis(QCPAxis::atBottom))));
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
  const std::string not_drawn = view_->NotDrawnText(count);
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
  axis->setTicker(QSharedPointer<QCPAxisTicker>(new RoundTicker(axis)));
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
  strip.label->setTextColor(TraceColor(static_cast<int>(trace), palette()));
  strip.graph->setScatterStyle(view_->HasDots(PlotWidth())
                                   ? QCPScatterStyle(QCPScatterStyle::ssDisc, kDot)
                                   : QCPScatterStyle(QCPScatterStyle::ssNone));
  strip.graph->setData(Vector(std::move(line.times)), Vector(std::move(line.values)), true);
  const ValueRange times = view_->VisibleTimes();
  const ValueRange values = view_->ValuesOf(trace);
  strip.axes->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
  strip.axes->axis(QCPAxis::atLeft)->setRange(values.low, values.high);
  ShowExtras(trace);
  ShowCursors(strip);
  ShowLimits(trace);
}

// A fold has few scans: its spread needs no thinning.
void WaveformPlot::ShowExtras(std::size_t trace) {
  const Strip& strip = strips_[trace];
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
      label->position->setCoords(reading->time, 0);
      label->setText(
          QStringLiteral(" %1: %2").arg(cursor + 1).arg(QString::number(reading->time, 'g', 6)));
    }
  }
}

void WaveformPlot::ShowLimits(std::size_t trace) {
  const std::vector<double> values = view_->FullScaleLines(trace);
  const Strip& strip = strips_[trace];
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
      line->point1->setCoords(reading->time, 0);
      line->point2->setCoords(reading->time, 1);
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
  return std::min(view_->TraceCount(), most);
}

void WaveformPlot::ShowHeader() {
  const QString note = TextFromBytes(view_->NoteText());
  note_->setText(view_->Number() == 0 ? QString() : note);
  const QFontMetrics metrics(title_->font());
  const int room = plot_->width() - metrics.horizontalAdvance(note_->text()) - 3 * kTextMargin;
  const std::string title =
      view_->Number() == 0
          ? view_->EmptyText()
          : BrokenTitle(view_->TitleText(), [&metrics, room](std::string_view text) {
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
  const std::size_t count = StripsWithRoom();
  const QString not_drawn = not_drawn_ == nullptr ? QString() : not_drawn_->text();
  if (strips_.size() != count || not_drawn != TextFromBytes(view_->NotDrawnText(count))) {
    MakeStrips(count);
  }
  if (!strips_.empty()) {
    for (std::size_t trace = 0; trace < strips_.size(); ++trace) {
      ShowLabel(trace);
    }
    SizeLabels();
    const ValueRange times = view_->VisibleTimes();
    time_axes_->axis(QCPAxis::atBottom)->setRange(times.low, times.high);
    time_axes_->axis(QCPAxis::atBottom)->setLabel(TextFromBytes(view_->TimeLabel()));
    GivePlaces();
    for (std::size_t trace = 0; trace < strips_.size(); ++trace) {
      ShowLabel(trace);  // in as many lines as have room
    }
    SizeLabels();
    GivePlaces();
    std::vector<WaveformTrace> lines = view_->Traces(PlotWidth());
    for (std::size_t trace = 0; trace < strips_.size(); ++trace) {
      ShowStrip(trace, std::move(lines[trace]));
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

void WaveformPlot::ShowLabel(std::size_t trace) {
  const Strip& strip = strips_[trace];
  QString text = TextFromBytes(view_->Channel(trace).Label()).simplified();
  text += TextFromBytes(view_->StatusText(trace));
  const int height = strip.axes->height();
  if (height > 0 && height < 2 * QFontMetrics(strip.label->font()).height()) {
    text = text.simplified();  // one line
  }
  strip.label->setText(text);
}

Result<> WaveformPlot::Save(const QString& path, const QSize& size) const {
  WaveformPlot picture(view_, nullptr);
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
      label->setBrush(palette().color(QPalette::Base));
    }
  }
  for (std::size_t i = 0; i < strips_.size(); ++i) {
    for (QCPGraph* extra : strips_[i].extras) {
      QColor pale = palette().color(QPalette::WindowText);
      pale.setAlphaF(0.5F);
      extra->setPen(MarkerPen(pale));
    }
    strips_[i].label->setFont(LabelFont(*this));
    strips_[i].graph->setPen(TracePen(TraceColor(static_cast<int>(i), palette())));
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

double WaveformPlot::TimeAt(double pixel) const {
  return strips_.front().axes->axis(QCPAxis::atBottom)->pixelToCoord(pixel);
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
      emit menuRequested(dynamic_cast<QContextMenuEvent*>(event)->globalPos());
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
  emit changed();
  return true;
}

bool WaveformPlot::OnPress(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) {
    return false;
  }
  is_pressed_ = true;
  is_dragging_ = false;
  press_ = event.position();
  panned_ = 0;
  press_times_ = view_->VisibleTimes();
  return true;
}

bool WaveformPlot::OnMove(const QMouseEvent& event) {
  if (!is_pressed_) {
    return false;
  }
  const QPointF moved = event.position() - press_;
  is_dragging_ = is_dragging_ || moved.manhattanLength() >= kDragStart;
  if (is_dragging_) {
    if ((event.modifiers() & Qt::ControlModifier) != 0) {
      const double share = moved.y() / std::max(strips_.front().axes->height(), 1);
      view_->PanValues(share - panned_);
      panned_ = share;
    } else {
      const double seconds = (press_times_.high - press_times_.low) * moved.x() / PlotWidth();
      view_->ShowTimes(press_times_.low - seconds, press_times_.high - seconds);
    }
    ShowView();
    emit changed();
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
    emit changed();
  }
  return true;
}

}  // namespace orvane
