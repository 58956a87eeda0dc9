// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_readings.h"

#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "timeseries/measure.h"
#include "timeseries/waveform_text.h"
#include "ui/byte_text.h"
#include "ui/list_item.h"

namespace orvane {
namespace {

constexpr int kCursorColumns = 4;  // label, both cursors, difference

using Readings = std::array<std::optional<WaveformReading>, 2>;

QString Number(double value) { return QString::fromStdString(FormatReal(value, 7)); }

Result<Measurement> Measured(const WaveformView& view, std::size_t trace, const Readings& at) {
  return Measure(view.Values(trace), 1 / view.SecondsPerScan(), at[0]->time, at[1]->time);
}

QStringList TimeRow(const WaveformView& view, const Readings& at) {
  const auto text = [&view](const std::optional<WaveformReading>& reading) {
    return !reading            ? QString()
           : view.ShowsClock() ? TextFromBytes(TimeText(view, reading->time))
                               : Number(reading->time);
  };
  return {TextFromBytes(view.TimeLabel()), text(at[0]), text(at[1]),
          at[0] && at[1] ? Number(at[1]->time - at[0]->time) : QString()};
}

QStringList TraceRow(const WaveformView& view, std::size_t trace, const Readings& at) {
  QStringList texts{TextFromBytes(view.Channel(trace).Label()),
                    at[0] ? Number(at[0]->values[trace]) : QString(),
                    at[1] ? Number(at[1]->values[trace]) : QString()};
  if (at[0] && at[1]) {
    texts << Number(at[1]->values[trace] - at[0]->values[trace]);
    if (const auto m = Measured(view, trace, at)) {
      texts << Number(m->mean) << Number(m->rms) << Number(m->min) << Number(m->max)
            << Number(m->slope);
    }
  }
  return texts;
}

QStringList DistanceRow(const Readings& at) {
  const double distance = at[1]->time - at[0]->time;
  return {QStringLiteral("1 / dt (Hz)"), QString(), QString(),
          distance == 0 ? QString() : Number(1 / std::abs(distance))};
}

Readings ReadingsOf(const WaveformView& view) {
  return {view.Reading(WaveformView::kFirstCursor), view.Reading(WaveformView::kSecondCursor)};
}

}  // namespace

void PrepareReadings(QTableWidget* table) {
  const QStringList titles{QString(),
                           QStringLiteral("Cursor 1"),
                           QStringLiteral("Cursor 2"),
                           QStringLiteral("Difference"),
                           QStringLiteral("Mean"),
                           QStringLiteral("RMS"),
                           QStringLiteral("Minimum"),
                           QStringLiteral("Maximum"),
                           QStringLiteral("Slope (per s)")};
  table->setColumnCount(static_cast<int>(titles.size()));
  table->setHorizontalHeaderLabels(titles);
}

void FillReadings(const WaveformView& view, QTableWidget* table) {
  const Readings at = ReadingsOf(view);
  const bool has_both = at[0] && at[1];
  for (int column = kCursorColumns; column < table->columnCount(); ++column) {
    table->setColumnHidden(column, !has_both);
  }
  const int traces = static_cast<int>(view.TraceCount());
  table->setRowCount(at[0] || at[1] ? traces + (has_both ? 2 : 1) : 0);
  for (int row = 0; row < table->rowCount(); ++row) {
    const QStringList texts = row == 0 ? TimeRow(view, at)
                              : row > traces
                                  ? DistanceRow(at)
                                  : TraceRow(view, static_cast<std::size_t>(row) - 1, at);
    for (int column = 0; column < table->columnCount(); ++column) {
      auto* item = OnlyShown(new QTableWidgetItem(texts.value(column)));
      item->setTextAlignment(column == 0 ? Qt::AlignLeft | Qt::AlignVCenter
                                         : Qt::AlignRight | Qt::AlignVCenter);
      table->setItem(row, column, item);
    }
  }
}

std::string ReadingsText(const WaveformView& view) {
  const Readings at = ReadingsOf(view);
  std::string text = CursorText(view);
  if (at[0] && at[1]) {
    std::vector<MeasuredTrace> measured;
    for (std::size_t trace = 0; trace < view.TraceCount(); ++trace) {
      const auto m = Measured(view, trace, at);
      measured.push_back({view.Channel(trace).Label(), m ? *m : Measurement()});
    }
    text += MeasurementText(at[0]->time, at[1]->time, measured);
  }
  return text;
}

}  // namespace orvane
