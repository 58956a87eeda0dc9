// SPDX-License-Identifier: GPL-3.0-or-later
// How the curves of a calibration are drawn: which points a line joins, what makes the lines
// differ.
#ifndef ORVANE_RESPONSE_CAL_LINES_H_
#define ORVANE_RESPONSE_CAL_LINES_H_

#include <string>
#include <vector>

#include "response/cal_view.h"

namespace orvane {

/// The points of one pass, which a line joins: other passes are measured with another setting of
/// the box. What has no place is not a number: an amplitude not above 0, and a point without a
/// value between two phases more than half a turn apart, where the phase wraps.
struct CalLine {
  CalTrace::Kind kind = CalTrace::kMeasured;
  int sweep = 0;
  int color = 0;  ///< that of the channel, where there is only one that of the pass
  int mark = 0;   ///< that of the pass
  std::vector<double> frequencies;
  std::vector<double> amplitudes;
  std::vector<double> phases;
};

/// The lines of what a view shows, channel after channel.
std::vector<CalLine> LinesOf(const CalView& view);

/// What the legend says of a line; -1: no colour of its own, no mark.
struct CalLegendRow {
  std::string text;
  CalTrace::Kind kind = CalTrace::kMeasured;
  int color = -1;
  int mark = -1;
};

/// The channels with what is drawn beside them, where there is more than one curve; then the
/// passes, where there is more than one, of a box with the gain and the filter of each.
std::vector<CalLegendRow> LegendOf(const CalView& view);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CAL_LINES_H_
