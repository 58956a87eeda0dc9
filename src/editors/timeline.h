// SPDX-License-Identifier: GPL-3.0-or-later
// When a box records what: for a picture and in words.
#ifndef ORVANE_EDITORS_TIMELINE_H_
#define ORVANE_EDITORS_TIMELINE_H_

#include <optional>
#include <string>
#include <vector>

#include "stepping/schedule_file.h"
#include "table/clock.h"
#include "table/param_table.h"

namespace orvane {

/// A part of a lane, in seconds.
struct LanePart {
  double start = 0;
  double end = 0;
  std::string what;      ///< "16 Hz, 5 A"; empty: nothing to say
  bool is_band = false;  ///< several that are too narrow to be told apart
};

/// One row of the picture.
struct TimeLane {
  std::string name;
  double start = 0;
  double end = 0;
  double period = 0;            ///< the parts come again after it; 0: once
  std::vector<LanePart> parts;  ///< counted from `start`
  std::string note = {};        ///< why there are no parts
};

/// Seconds since 1970 on the clock of the zone shown, or from the start of the schedule where no
/// dates are set. Nothing is between `start` and `end` where they are equal.
struct Timeline {
  bool has_dates = false;
  double start = 0;
  double end = 0;
  std::vector<TimeLane> lanes;
  std::vector<double> midnights;  ///< in between; none where there are more than 60
  std::optional<double> now;      ///< where there are dates
  std::string plan;               ///< in words, without what follows from now
  std::string text;               ///< all of it in words
};

/// `now` is UTC, `hours` what the zone shown adds to it. MT/AMT: record and window of high rates
/// with its slots. The others: the cycles of the stepping parameters over the record, or one from 0
/// where start or end is not set. `steps` is the table's schedule file; null where nobody looked.
Timeline TimelineOf(const ParamTable& table, const Clock& now, int hours,
                    const ScheduleFile* steps = nullptr);

/// The parts of a lane; those shorter than `least` seconds are joined with their neighbours into
/// bands. So there are no more than about length / `least` of them, whatever the table holds.
std::vector<LanePart> SpansOf(const TimeLane& lane, double least);

/// A time of the line as text: "2026/11/24 17:00:00", or seconds from its beginning.
std::string TimeTextOf(const Timeline& line, double seconds);

}  // namespace orvane

#endif  // ORVANE_EDITORS_TIMELINE_H_
