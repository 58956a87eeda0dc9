// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_WAVEFORM_EXPORT_H_
#define ORVANE_TIMESERIES_WIDGETS_WAVEFORM_EXPORT_H_

#include <QString>
#include <QWidget>

#include "timeseries/waveform_view.h"

namespace orvane {

/// Asks for a file and saves what is seen of these traces as CSV. What is to be told of it; empty
/// where the user cancelled. A fault is shown in a box.
QString AskAndSaveCsv(const WaveformView& view, const std::vector<std::size_t>& traces,
                      QWidget* parent);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_WAVEFORM_EXPORT_H_
