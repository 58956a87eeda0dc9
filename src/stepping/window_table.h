// SPDX-License-Identifier: GPL-3.0-or-later
// The windows in which a time-domain method looks at the decay. Shown only: boxes have their own.
#ifndef ORVANE_STEPPING_WINDOW_TABLE_H_
#define ORVANE_STEPPING_WINDOW_TABLE_H_

#include <vector>

#include "table/tech.h"

namespace orvane {

struct WindowRow {
  double start;   ///< ms after the current is switched off
  double width;   ///< ms
  double repeat;  ///< Hz
  double rate;    ///< samples per second
  double samples_per_cycle;
};

/// `count` windows, at most 199, over the time without current: of equal widths for TDIP, else of
/// widths that grow by a constant factor from the first sample on. `waveform` is a code of
/// `kWaveforms` and decides how long the current is off: of a half period a half ("TD50" and all
/// others), two thirds ("TD33") or three quarters ("TD25"). None where `repeat` (Hz) or `count` is
/// not above 0, or where no sample rate fits.
std::vector<WindowRow> CalculateWindows(Tech tech, int waveform, double repeat, int count);

/// The share of the period that passes without current before it flows the other way, as above.
double OffShareOf(int waveform);

}  // namespace orvane

#endif  // ORVANE_STEPPING_WINDOW_TABLE_H_
