// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RECORD_SHAPE_H_
#define ORVANE_TIMESERIES_RECORD_SHAPE_H_

#include <string>
#include <vector>

#include "timeseries/ts_rec.h"
#include "timeseries/view_filter.h"

namespace orvane {

/// What is done to a record before it is shown, never to the file: first the filter, then the fold.
struct RecordShape {
  ViewFilter filter = {};
  bool folds = false;   ///< its periods laid over each other, as their mean
  bool halves = false;  ///< folds half periods, the second of each with the opposite sign

  bool IsOff() const { return filter.IsOff() && !folds; }
  bool operator==(const RecordShape&) const = default;
};

/// What came of it.
struct ShapedRecord {
  /// For the title, such as "low pass 100 Hz, mean of 12 periods"; also what was not done, and why.
  std::string note = {};
  double seconds_per_scan = 0;  ///< of a folded record; 0: as before
  /// Of a folded record the standard deviation at each scan, per channel, as held values.
  std::vector<std::vector<double>> spreads = {};
};

/// Why a record cannot be folded at its frequency, or its half periods; empty where it can.
std::string WhyNoFold(const CTsRec& record, double frequency, bool halves = false);

/// Shapes a record in place. Its values stay held values, rounded to 1/256 of a count.
ShapedRecord Shape(const RecordShape& shape, double frequency, CTsRec* record);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_SHAPE_H_
