// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/round_ticker.h"

#include <QFontMetrics>
#include <algorithm>

#include "timeseries/clock_time.h"
#include "ui/byte_text.h"

namespace orvane {

void RoundTicker::generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*format*/,
                           int /*precision*/, QVector<double>& ticks, QVector<double>* sub_ticks,
                           QVector<QString>* labels) {
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

QString RoundTicker::Label(double value, int precision) const {
  const bool is_clock = axis_->orientation() == Qt::Horizontal && view_->ShowsClock();
  return TextFromBytes(is_clock ? ClockText(view_->Record().Header().time, value, precision)
                                : TickText(value, precision))
      .trimmed();
}

AxisTicks RoundTicker::TimesBetween(const QCPRange& range, int most) const {
  return view_->ShowsClock()
             ? ClockTicks(view_->Record().Header().time, range.lower, range.upper, most)
             : TicksBetween(range.lower, range.upper, most);
}

// As many as do not touch.
AxisTicks RoundTicker::TimeTicks(const QCPRange& range) const {
  constexpr int kMost = 10;
  const QFontMetrics metrics(axis_->tickLabelFont());
  const double pixels = axis_->axisRect()->width();
  for (int most = kMost; most > 2; --most) {
    AxisTicks round = TimesBetween(range, most);
    int widest = 0;
    for (const double value : round.values) {
      widest = std::max(widest, metrics.horizontalAdvance(Label(value, round.precision) + "  "));
    }
    if (widest <= round.step / range.size() * pixels) {
      return round;
    }
  }
  return TimesBetween(range, 2);
}

}  // namespace orvane
