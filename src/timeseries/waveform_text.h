// SPDX-License-Identifier: GPL-3.0-or-later
// What is seen of a waveform, as text to copy and to save. Numbers have decimal points.
#ifndef ORVANE_TIMESERIES_WAVEFORM_TEXT_H_
#define ORVANE_TIMESERIES_WAVEFORM_TEXT_H_

#include <string>
#include <vector>

#include "timeseries/waveform_view.h"

namespace orvane {

/// A time of the record as its axis counts it: seconds, scans, or a time of day.
std::string TimeText(const WaveformView& view, double time);

/// What both cursors read and the difference, a line for the time and for each trace, with tabs;
/// empty without cursors.
std::string CursorText(const WaveformView& view);

/// The scans in the visible times as text: a line of labels, then one for each scan, with tabs.
std::string VisibleText(const WaveformView& view);

/// The same of these traces alone as comma-separated values. Lines with "# " before them say of
/// which file and record they are, when it began, and what was done to it. Labels with a comma or
/// quotation mark are quoted.
std::string VisibleCsv(const WaveformView& view, const std::vector<std::size_t>& traces);

/// Writes it into a file. Fails with the file's name; the waveform and its parameter table are
/// never written over.
Result<> SaveVisibleCsv(const WaveformView& view, const std::vector<std::size_t>& traces,
                        const std::filesystem::path& path);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WAVEFORM_TEXT_H_
