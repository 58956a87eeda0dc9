// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_READINGS_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_READINGS_H_

#include <QTableWidget>

#include "timeseries/waveform_view.h"

namespace orvane {

/// Gives a table its columns for what cursors read.
void PrepareReadings(QTableWidget* table);
/// A row for the time and one for each trace; between two cursors also what is measured there.
void FillReadings(const WaveformView& view, QTableWidget* table);
/// The same as text to copy; empty without cursors.
std::string ReadingsText(const WaveformView& view);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_READINGS_H_
