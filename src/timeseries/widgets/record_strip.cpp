// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/record_strip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr double kMarkRow = 8;  // triangles of saturated records
constexpr double kFrequencyRow = 12;
constexpr double kLane = 9;
constexpr double kLowLane = 5;  // where there are many
constexpr int kMostLanes = 12;
constexpr double kFrameWidth = 5;  // at least
constexpr double kDeadMark = 3;
constexpr double kLeastLine = 1.5;

}  // namespace

RecordStrip::RecordStrip(const RecordBook* book, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), book_(book) {
  setObjectName(QStringLiteral("record-strip"));
  setAccessibleName(QStringLiteral("All records"));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
  connect(book, &RecordBook::restarted, this, &RecordStrip::Restart);
  connect(book, &RecordBook::grown, this, [this] {
    book_->Records() == static_cast<std::uint64_t>(maximum()) ? Forget() : Restart();
  });
  connect(book, &RecordBook::leftOutChanged, this, &RecordStrip::Forget);
  connect(this, &QSlider::valueChanged, this, [this](int number) {
    SayRecord();
    emit chosen(static_cast<std::uint64_t>(number));
  });
}

void RecordStrip::Restart() {
  const QSignalBlocker once(this);
  const auto most =
      static_cast<int>(std::min<std::uint64_t>(book_->Records(), std::numeric_limits<int>::max()));
  setRange(most == 0 ? 0 : 1, most);
  setVisible(most > 1);
  Forget();
  updateGeometry();
}

void RecordStrip::Forget() {
  const int lanes = static_cast<int>(model_ ? model_->Columns().size() : 0);
  model_.reset();
  SayRecord();
  if (lanes == 0) {
    updateGeometry();
  }
  update();
}

void RecordStrip::SetShown(std::uint64_t number) {
  const QSignalBlocker once(this);
  setValue(static_cast<int>(std::min<std::uint64_t>(number, std::numeric_limits<int>::max())));
  SayRecord();
  update();
}

void RecordStrip::SayRecord() {
  setAccessibleDescription(book_->Describe(static_cast<std::uint64_t>(value())));
}

QSize RecordStrip::sizeHint() const {
  const auto lanes = std::clamp(static_cast<int>(book_->List().Channels()), 2, kMostLanes);
  const double lane = lanes > kMostLanes / 2 ? kLowLane : kLane;
  return {400, static_cast<int>(kMarkRow + kFrequencyRow + lanes * lane)};
}

QRectF RecordStrip::Inside() const { return QRectF(rect()).adjusted(3, 2, -3, -2); }

const RecordStripModel& RecordStrip::Model() const {
  if (!model_) {
    model_.emplace(book_->List(), book_->LeftOut(), book_->Records(),
                   static_cast<int>(Inside().width()));
  }
  return *model_;
}

QRectF RecordStrip::PlaceOf(std::size_t column) const {
  const QRectF inside = Inside();
  const double width =
      inside.width() / static_cast<double>(std::max<std::size_t>(Model().Count(), 1));
  return {inside.left() + width * static_cast<double>(column), inside.top(), width,
          inside.height()};
}

void RecordStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  for (std::size_t column = 0; column < Model().Columns().size(); ++column) {
    PaintColumn(column, &painter);
  }
  PaintShown(&painter);
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void RecordStrip::PaintColumn(std::size_t at, QPainter* painter) const {
  const StripColumn& column = Model().Columns()[at];
  const QRectF place = PlaceOf(at);
  if (column.has_bad) {
    QColor ground = WarningColor(palette());
    ground.setAlphaF(0.3F);
    painter->fillRect(place, ground);
    painter->fillRect(
        QRectF(place.left(), place.bottom() - kDeadMark, std::max(place.width(), 2.0), kDeadMark),
        WarningColor(palette()));
  }
  painter->setOpacity(column.is_left_out ? 0.25 : 1);
  for (std::size_t channel = 0; channel < column.channels.size(); ++channel) {
    PaintLane(column, channel, place, painter);
  }
  PaintFrequency(at, place, painter);
  if (column.has_saturated) {
    const double x = place.center().x();
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette().color(QPalette::WindowText));
    painter->drawPolygon(
        QPolygonF({{x - 4, place.top()}, {x + 4, place.top()}, {x, place.top() + kMarkRow - 1}}));
  }
  painter->setOpacity(1);
}

void RecordStrip::PaintLane(const StripColumn& column, std::size_t channel, const QRectF& place,
                            QPainter* painter) const {
  if (!column.channels[channel]) {
    return;
  }
  const double height =
      (place.height() - kMarkRow - kFrequencyRow) / static_cast<double>(column.channels.size());
  const double foot = place.top() + kMarkRow + height * static_cast<double>(channel + 1) - 1;
  const double room = height - 2;
  const StripPeaks& peaks = *column.channels[channel];
  const double low = foot - room * Model().HeightOf(channel, peaks.least);
  const double high = foot - room * Model().HeightOf(channel, peaks.most);
  const QColor color = TraceColor(static_cast<int>(channel), palette());
  QColor below = color;
  below.setAlphaF(0.25F);
  painter->fillRect(QRectF(place.left(), high, place.width(), foot - high), below);
  painter->fillRect(QRectF(place.left(), high, place.width(), std::max(low - high, kLeastLine)),
                    color);
  if (peaks.least == 0) {
    painter->fillRect(
        QRectF(place.left(), foot - kDeadMark, std::max(place.width(), 2.0), kDeadMark + 1),
        WarningColor(palette()));
  }
}

void RecordStrip::PaintFrequency(std::size_t at, const QRectF& place, QPainter* painter) const {
  const auto y_of = [&](const StripColumn& column) {
    const auto height = Model().HeightOf(column.frequency);
    return height ? std::optional(place.bottom() - 2 - (kFrequencyRow - 5) * *height)
                  : std::nullopt;
  };
  const auto y = y_of(Model().Columns()[at]);
  if (!y) {
    return;
  }
  painter->setPen(MarkerPen(palette().color(QPalette::WindowText)));
  painter->drawLine(QPointF(place.left(), *y), QPointF(place.right(), *y));
  const auto before = at == 0 ? std::nullopt : y_of(Model().Columns()[at - 1]);
  if (before) {
    painter->drawLine(QPointF(place.left(), *before), QPointF(place.left(), *y));
  }
}

void RecordStrip::PaintShown(QPainter* painter) const {
  if (value() < 1 || book_->Records() == 0) {
    return;
  }
  const QRectF inside = Inside();
  const double one = inside.width() / static_cast<double>(book_->Records());
  const double width = std::max(one, kFrameWidth);
  const double center = inside.left() + one * (value() - 0.5);
  QPen pen(palette().color(QPalette::WindowText), 2);
  pen.setJoinStyle(Qt::MiterJoin);
  painter->setPen(pen);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(QRectF(center - width / 2, rect().top() + 1, width, rect().height() - 2));
}

void RecordStrip::GoTo(double x) {
  const QRectF inside = Inside();
  setValue(static_cast<int>(RecordAtShare((x - inside.left()) / inside.width(), book_->Records())));
}

void RecordStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    GoTo(event->position().x());
  }
}

void RecordStrip::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0) {
    GoTo(event->position().x());
  }
}

void RecordStrip::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void RecordStrip::wheelEvent(QWheelEvent* event) { event->ignore(); }

void RecordStrip::resizeEvent(QResizeEvent* event) {
  QSlider::resizeEvent(event);
  model_.reset();
}

bool RecordStrip::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) {
    return QSlider::event(event);
  }
  const auto* help = dynamic_cast<QHelpEvent*>(event);
  const QRectF inside = Inside();
  const auto number =
      RecordAtShare((help->pos().x() - inside.left()) / inside.width(), book_->Records());
  QToolTip::showText(help->globalPos(), book_->Describe(number), this);
  return true;
}

}  // namespace orvane
