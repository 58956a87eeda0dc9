// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/calibration_plot.h"

#include <qcustomplot.h>

#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "response/cal_lines.h"
#include "ui/plot_theme.h"
#include "ui/themes.h"

namespace orvane {
namespace {

constexpr double kDecade = 10;

// Grid lines that divide the axis into equal parts; numbers only at so many that they do not touch.
class PartsTicker : public QCPAxisTicker {
 public:
  PartsTicker(int parts, const QCPAxisRect* axes) : parts_(parts), axes_(axes) {}

  void generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                int /*precision*/, QVector<double>& ticks, QVector<double>* sub_ticks,
                QVector<QString>* labels) override {
    constexpr int kLabelHeight = 24;
    const int most = std::clamp(axes_->height() / kLabelHeight, 1, 10);
    const int step = (parts_ + most - 1) / most;
    ticks.clear();
    if (labels != nullptr) {
      labels->clear();
    }
    for (int i = 0; i <= parts_; ++i) {
      ticks.append(range.lower + range.size() * i / parts_);
      if (labels != nullptr) {
        labels->append(i % step == 0 ? QString::number(ticks.back(), 'g', 6) : QString());
      }
    }
    if (sub_ticks != nullptr) {
      sub_ticks->clear();
    }
  }

 private:
  int parts_;
  const QCPAxisRect* axes_;
};

// Within one decade a logarithmic axis has no decades to number.
void SetLogRange(QCPAxis* axis, double low, double high) {
  QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
  ticker->setTickCount(4);
  if (high / low > kDecade) {
    auto* decades = new QCPAxisTickerLog;
    decades->setTickCount(12);
    decades->setSubTickCount(8);
    ticker.reset(decades);
  }
  axis->setScaleType(QCPAxis::stLogarithmic);
  axis->setTicker(ticker);
  axis->setRange(low, high);
}

void SetLinearRange(QCPAxis* axis, double low, double high) {
  QSharedPointer<QCPAxisTicker> ticker(new QCPAxisTicker);
  ticker->setTickCount(4);
  axis->setScaleType(QCPAxis::stLinear);
  axis->setTicker(ticker);
  axis->setRange(low, high);
}

void SetUpLog(QCPAxis* axis) {
  axis->setScaleType(QCPAxis::stLogarithmic);
  axis->setNumberFormat(QStringLiteral("g"));
  axis->setNumberPrecision(6);
}

// A different mark for each of 13 passes; models have none.
QCPScatterStyle MarkOf(CalTrace::Kind kind, int mark, const QColor& color,
                       const QBrush& inside = Qt::NoBrush) {
  const double size = HasThickLines() ? 9 : 6;
  constexpr auto kShapes = std::to_array<QCPScatterStyle::ScatterShape>(
      {QCPScatterStyle::ssCircle, QCPScatterStyle::ssSquare, QCPScatterStyle::ssTriangle,
       QCPScatterStyle::ssDiamond, QCPScatterStyle::ssCross, QCPScatterStyle::ssPlus,
       QCPScatterStyle::ssTriangleInverted, QCPScatterStyle::ssStar, QCPScatterStyle::ssCrossSquare,
       QCPScatterStyle::ssPlusSquare, QCPScatterStyle::ssCrossCircle, QCPScatterStyle::ssPlusCircle,
       QCPScatterStyle::ssPeace});
  if (kind == CalTrace::kModel || kind == CalTrace::kBand || mark < 0) {
    return QCPScatterStyle::ssNone;
  }
  const bool is_reference = kind == CalTrace::kReference;
  const auto shape = is_reference ? QCPScatterStyle::ssDisc
                                  : kShapes[static_cast<std::size_t>(mark) % kShapes.size()];
  // A thin outline: a wider one is drawn as a filled shape, which takes many times as long.
  return {shape, QPen(color, 0), is_reference ? QBrush(color) : inside,
          is_reference ? size / 2 : size};
}

QPen PenOf(CalTrace::Kind kind, const QColor& color) {
  QPen pen = TracePen(color, kind == CalTrace::kReference ? Qt::DashLine
                             : kind == CalTrace::kBand    ? Qt::DotLine
                                                          : Qt::SolidLine);
  pen.setWidthF(kind == CalTrace::kMeasured ? pen.widthF() : pen.widthF() / 1.5);
  return pen;
}

QVector<double> Vector(const std::vector<double>& values) { return {values.begin(), values.end()}; }

}  // namespace

CalibrationPlot::CalibrationPlot(CalView* view, QWidget* parent)
    : QWidget(parent), view_(view), plot_(new QCustomPlot(this)) {
  setObjectName(QStringLiteral("calibration-picture"));
  plot_->setObjectName(QStringLiteral("calibration-plot"));
  plot_->setFocusPolicy(Qt::NoFocus);
  plot_->setNotAntialiasedElements(QCP::aeScatters);
  plot_->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_);
  setMinimumSize(240, 200);
  plot_->setAutoAddPlottableToLegend(false);
  plot_->plotLayout()->clear();
  amplitude_ = MakeAxes(1);
  phase_ = MakeAxes(2);
  SetUpLog(amplitude_->axis(QCPAxis::atLeft));
  auto* margins = new QCPMarginGroup(plot_);
  amplitude_->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
  phase_->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
  AddTexts();
  plot_->addLayer(QStringLiteral("cursors"));
  cursors_ = plot_->layer(QStringLiteral("cursors"));
  cursors_->setMode(QCPLayer::lmBuffered);
  connect(plot_, &QCustomPlot::afterReplot, this, [this] { is_drawn_ = true; });
  amplitude_cursor_ = NewUprightLine(amplitude_, cursors_);
  phase_cursor_ = NewUprightLine(phase_, cursors_);
}

QCPAxisRect* CalibrationPlot::MakeAxes(int row) {
  auto* axes = new QCPAxisRect(plot_);
  axes->setLayer(QStringLiteral("background"));  // or its ground would cover the grid
  axes->setupFullAxesBox();
  axes->setMinimumSize(50, 40);
  for (QCPAxis* axis : axes->axes()) {
    axis->setLayer(QStringLiteral("axes"));
    axis->grid()->setLayer(QStringLiteral("grid"));
  }
  axes->axis(QCPAxis::atTop)->setTicks(false);
  axes->axis(QCPAxis::atRight)->setTicks(false);
  SetUpLog(axes->axis(QCPAxis::atBottom));
  axes->axis(QCPAxis::atBottom)->setLabel(QStringLiteral("Frequency (Hz)"));
  plot_->plotLayout()->addElement(row, 0, axes);
  return axes;
}

void CalibrationPlot::AddTexts() {
  constexpr double kNoMore = 0.001;  // than the height that its text needs
  title_ = new QCPTextElement(plot_);
  plot_->plotLayout()->addElement(0, 0, title_);
  plot_->plotLayout()->setRowStretchFactor(0, kNoMore);
  legend_ = new QCPLegend;
  plot_->plotLayout()->addElement(3, 0, legend_);
  plot_->plotLayout()->setRowStretchFactor(3, kNoMore);
  legend_->setLayer(QStringLiteral("legend"));
  legend_->setBorderPen(Qt::NoPen);
  legend_->setBrush(Qt::NoBrush);
  constexpr int kAnySize = 100000;  // an empty legend would limit its column to no width
  legend_->setMaximumSize(kAnySize, kAnySize);
  nothing_ = new QCPItemText(plot_);
  nothing_->setClipAxisRect(amplitude_);
  nothing_->position->setAxisRect(amplitude_);
  nothing_->position->setType(QCPItemPosition::ptAxisRectRatio);
  nothing_->position->setCoords(0.5, 0.5);
}

QColor CalibrationPlot::ColorOf(int color) const {
  return color < 0 ? palette().color(QPalette::WindowText) : TraceColor(color, palette());
}

// What marks are filled with, so that their lines do not show through; thousands would take long.
QBrush CalibrationPlot::InMarks(const std::vector<CalLine>& lines) const {
  constexpr std::size_t kMostPoints = std::size_t{12} * 15 * 33;  // channels, passes, frequencies
  std::size_t points = 0;
  for (const CalLine& line : lines) {
    points += line.frequencies.size();
  }
  return points <= kMostPoints ? palette().color(QPalette::Base) : QBrush(Qt::NoBrush);
}

void CalibrationPlot::AddLine(const CalLine& line, const QBrush& in_marks) {
  const QColor color = ColorOf(line.color);
  for (QCPAxisRect* axes : {amplitude_, phase_}) {
    QCPGraph* graph = plot_->addGraph(axes->axis(QCPAxis::atBottom), axes->axis(QCPAxis::atLeft));
    graph->setData(Vector(line.frequencies),
                   Vector(axes == amplitude_ ? line.amplitudes : line.phases));
    graph->setPen(PenOf(line.kind, color));
    graph->setScatterStyle(MarkOf(line.kind, line.mark, color, in_marks));
    if (line.kind == CalTrace::kMeasured && view_->ShowsModel()) {
      graph->setLineStyle(QCPGraph::lsNone);
    }
  }
}

// Four lines: where a ratio may be.
void CalibrationPlot::AddTolerance() {
  const CalTolerance& tolerance = view_->Tolerance();
  const QPen pen = MarkerPen(WarningColor(palette()), Qt::DashLine);
  const CalDisplay& display = view_->Display();
  constexpr double kPercent = 100;
  const auto add = [&](QCPAxisRect* axes, double value) {
    QCPGraph* line = plot_->addGraph(axes->axis(QCPAxis::atBottom), axes->axis(QCPAxis::atLeft));
    line->setData({display.min_frequency, display.max_frequency}, {value, value});
    line->setPen(pen);
  };
  for (const int side : {-1, 1}) {
    add(amplitude_, kPercent * (1 + side * tolerance.amplitude));
    add(phase_, side * tolerance.phase);
  }
}

// A graph without points for each row.
void CalibrationPlot::FillLegend() {
  for (const CalLegendRow& row : LegendOf(*view_)) {
    const QColor color = ColorOf(row.color);
    QCPGraph* sample =
        plot_->addGraph(amplitude_->axis(QCPAxis::atBottom), amplitude_->axis(QCPAxis::atLeft));
    sample->setName(QString::fromStdString(row.text));
    sample->setPen(PenOf(row.kind, color));
    const bool has_points_only = view_->ShowsModel() && row.kind == CalTrace::kMeasured;
    const bool has_line = !has_points_only && (row.color >= 0 || row.mark < 0);
    sample->setLineStyle(has_line ? QCPGraph::lsLine : QCPGraph::lsNone);
    sample->setScatterStyle(
        MarkOf(row.kind, has_points_only ? std::max(row.mark, 0) : row.mark, color));
    sample->addToLegend(legend_);
  }
}

// As many in a line as fit there with their whole names.
void CalibrationPlot::FitLegend() {
  constexpr int kBesideName = 52;  // the picture of the line, margins
  int widest = 1;
  for (int i = 0; i < legend_->itemCount(); ++i) {
    if (auto* item = dynamic_cast<QCPPlottableLegendItem*>(legend_->item(i)); item != nullptr) {
      widest = std::max(widest, fontMetrics().horizontalAdvance(item->plottable()->name()));
    }
  }
  legend_->setWrap(std::max(plot_->width() / (widest + kBesideName), 1));
  legend_->setFillOrder(QCPLayoutGrid::foColumnsFirst, true);
}

void CalibrationPlot::SetRanges() {
  const CalDisplay& display = view_->Display();
  const std::string why = WhyEmpty(display);
  const bool is_empty = !why.empty();
  for (QCPAxisRect* axes : {amplitude_, phase_}) {
    for (QCPAxis* axis : axes->axes()) {
      const bool is_numbered =
          axis->axisType() == QCPAxis::atLeft || axis->axisType() == QCPAxis::atBottom;
      axis->setTicks(is_numbered && !is_empty);
      axis->setTickLabels(is_numbered && !is_empty);
      axis->grid()->setVisible(is_numbered && !is_empty);
    }
  }
  const CalCurves& curves = view_->Curves();
  const bool has_points = !curves.channels.empty() && !curves.channels.front().frequency.empty();
  nothing_->setVisible(is_empty || !has_points);
  QString none = QStringLiteral("No curves");
  if (!curves.note.empty()) {
    none += QStringLiteral(": ") + QString::fromStdString(curves.note);
  }
  nothing_->setText(is_empty ? QString::fromStdString(why) : none);
  if (is_empty) {
    return;
  }
  for (QCPAxisRect* axes : {amplitude_, phase_}) {
    SetLogRange(axes->axis(QCPAxis::atBottom), display.min_frequency, display.max_frequency);
  }
  const auto set_range = view_->ShowsRatio() ? &SetLinearRange : &SetLogRange;
  set_range(amplitude_->axis(QCPAxis::atLeft), display.min_amplitude, display.max_amplitude);
  QCPAxis* phase = phase_->axis(QCPAxis::atLeft);
  phase->setTicker(
      QSharedPointer<QCPAxisTicker>(new PartsTicker(display.phase_grid_lines, phase_)));
  phase->setRange(display.min_phase, display.max_phase);
}

void CalibrationPlot::ShowView() {
  legend_->clearItems();
  legend_->simplify();
  plot_->clearGraphs();
  const QString title = QString::fromStdString(view_->Title());
  title_->setText(title);
  plot_->setAccessibleName(QStringLiteral("Calibration: ") + title);
  setAccessibleName(plot_->accessibleName());
  SetRanges();
  if (WhyEmpty(view_->Display()).empty()) {
    const std::vector<CalLine> lines = LinesOf(*view_);
    const QBrush in_marks = InMarks(lines);
    for (const CalLine& line : lines) {
      AddLine(line, in_marks);
    }
    if (view_->ShowsRatio()) {
      AddTolerance();
    }
    FillLegend();
  }
  FitHeight();
  FollowTheme();
  MoveCursorLines();
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

Result<> CalibrationPlot::Save(const QString& path, const QSize& size) const {
  CalibrationPlot picture(view_, nullptr);
  picture.setPalette(palette());
  picture.setFont(font());
  picture.resize(size);
  picture.plot_->resize(size);
  picture.plot_->setViewport(QRect(QPoint(), size));
  picture.ShowView();
  return SavePlot(picture.plot_, path, size);
}

void CalibrationPlot::MoveCursorLines() {
  const auto cursor = view_->Cursor();
  for (QCPItemStraightLine* line : {amplitude_cursor_, phase_cursor_}) {
    line->setVisible(cursor.has_value() && !nothing_->visible());
    line->point1->setCoords(cursor.value_or(1), 0);
    line->point2->setCoords(cursor.value_or(1), 1);
  }
}

// The curves of 12 channels and 15 passes take longer to draw than a step of the cursor may.
void CalibrationPlot::ShowCursor() {
  MoveCursorLines();
  if (is_drawn_) {
    cursors_->replot();
  }
}

void CalibrationPlot::FollowTheme() {
  ThemePlot(plot_, palette(), font());
  const QColor text = palette().color(QPalette::WindowText);
  QFont bold = font();
  bold.setBold(true);
  title_->setFont(bold);
  title_->setTextColor(text);
  legend_->setFont(font());
  legend_->setTextColor(text);
  for (int i = 0; i < legend_->itemCount(); ++i) {
    if (QCPAbstractLegendItem* item = legend_->item(i); item != nullptr) {  // a cell may be empty
      item->setFont(font());
      item->setTextColor(text);
    }
  }
  nothing_->setFont(font());
  nothing_->setColor(text);
  const QPen cursor = MarkerPen(StandOut(palette().color(QPalette::Highlight), palette()));
  amplitude_cursor_->setPen(cursor);
  phase_cursor_->setPen(cursor);
}

bool CalibrationPlot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const auto& press = static_cast<const QMouseEvent&>(*event);
    const QPoint at = press.position().toPoint();
    const bool is_inside = amplitude_->rect().contains(at) || phase_->rect().contains(at);
    if (press.button() == Qt::LeftButton && is_inside && !nothing_->visible()) {
      view_->SetCursor(amplitude_->axis(QCPAxis::atBottom)->pixelToCoord(press.position().x()));
      ShowCursor();
      emit cursorMoved();
    }
  }
  return QWidget::eventFilter(watched, event);
}

// Where there is little height the upper frequency axis, the same as the lower, does without text.
void CalibrationPlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitHeight();
}

void CalibrationPlot::FitHeight() {
  constexpr int kLittle = 300;
  const bool is_low = height() < kLittle;
  QCPAxis* upper = amplitude_->axis(QCPAxis::atBottom);
  upper->setLabel(is_low ? QString() : QStringLiteral("Frequency (Hz)"));
  upper->setTickLabels(!is_low && WhyEmpty(view_->Display()).empty());
  FitLegend();
  legend_->setVisible(legend_->itemCount() > 0 && !is_low);
  const auto label = [is_low](const std::string& text) {
    const QString whole = QString::fromStdString(text);
    return is_low ? whole.section(QLatin1Char(' '), 0, 0) : whole;
  };
  amplitude_->axis(QCPAxis::atLeft)->setLabel(label(view_->AmplitudeLabel()));
  phase_->axis(QCPAxis::atLeft)->setLabel(label(view_->PhaseLabel()));
}

void CalibrationPlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    ShowView();
  }
}

}  // namespace orvane
