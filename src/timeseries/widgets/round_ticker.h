// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_ROUND_TICKER_H_
#define ORVANE_TIMESERIES_WIDGETS_ROUND_TICKER_H_

#include <qcustomplot.h>

#include "timeseries/waveform_view.h"

namespace orvane {

/// Ticks by the rule of the display: round steps, as many decimals as they differ by. An upright
/// axis has values, a level one times, of day where the view shows these. Both must outlive it.
class RoundTicker : public QCPAxisTicker {
 public:
  static QSharedPointer<QCPAxisTicker> Of(const QCPAxis* axis, const WaveformView* view) {
    return QSharedPointer<QCPAxisTicker>(new RoundTicker(axis, view));
  }

  void generate(const QCPRange& range, const QLocale& locale, QChar format, int precision,
                QVector<double>& ticks, QVector<double>* sub_ticks,
                QVector<QString>* labels) override;

 private:
  RoundTicker(const QCPAxis* axis, const WaveformView* view) : axis_(axis), view_(view) {}

  AxisTicks TimesBetween(const QCPRange& range, int most) const;
  AxisTicks TimeTicks(const QCPRange& range) const;
  QString Label(double value, int precision) const;

  const QCPAxis* axis_;
  const WaveformView* view_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_ROUND_TICKER_H_
