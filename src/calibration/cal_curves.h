// SPDX-License-Identifier: GPL-3.0-or-later
// A calibration file as curves over frequency. The file is read by rules of its own, more leniently
// than for computing: every kind, whatever its passes.
#ifndef ORVANE_CALIBRATION_CAL_CURVES_H_
#define ORVANE_CALIBRATION_CAL_CURVES_H_

#include <filesystem>
#include <string>
#include <vector>

#include "base/result.h"
#include "calibration/cal_header.h"

namespace orvane {

/// One channel: as many values of each as the file has records, frequencies falling.
struct CalCurve {
  std::vector<double> frequency;  ///< Hz
  std::vector<double> amplitude;
  std::vector<double> phase;  ///< degrees; those of a reversed channel are turned by 180
  std::vector<int> sweep;     ///< the pass that each point belongs to, from 0
  double turn = 0;            ///< what was added to the measured phases
};

struct CalCurves {
  std::filesystem::path path;
  CalHeader header;
  std::vector<CalCurve> channels;
  /// What of the file is not shown, or shown otherwise than a user may expect; may be empty.
  std::string note;
};

/// Loads at most 500 records; a second series of records of kind 2 ends the reading. A failure
/// has the message for the user.
Result<CalCurves> LoadCalCurves(const std::filesystem::path& path);

/// Turns all phases by 180 degrees where their mean is beyond 150 or -150. Returns what it added.
double FoldPhases(std::vector<double>* phases);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_CURVES_H_
