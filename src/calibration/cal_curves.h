// SPDX-License-Identifier: GPL-3.0-or-later
// A calibration file as curves over frequency. The file is read by rules of its own, more leniently
// than for computing: every kind, whatever its passes.
#ifndef ORVANE_CALIBRATION_CAL_CURVES_H_
#define ORVANE_CALIBRATION_CAL_CURVES_H_

#include <filesystem>
#include <string>
#include <vector>

#include "calibration/cal_header.h"

namespace orvane {

/// One channel: as many values of each as the file has records, frequencies falling.
struct CalCurve {
  std::vector<double> frequency;  ///< Hz
  std::vector<double> amplitude;
  std::vector<double> phase;  ///< degrees; those of a reversed channel are turned by 180
};

struct CalCurves {
  std::filesystem::path path;
  CalHeader header;
  std::vector<CalCurve> channels;
  /// What of the file is not shown, or shown otherwise than a user may expect; may be empty.
  std::string note;
};

/// Loads at most 500 records; a second series of records of kind 2 ends the reading. An empty
/// string, or the message for the user; `curves` is then as before.
[[nodiscard]] std::string LoadCalCurves(const std::filesystem::path& path, CalCurves* curves);

/// The steps of the loading, in their order.
/// Brings records into falling order of frequency; those of equal frequency keep theirs. A record
/// whose frequency is no number stays where it is, and the others do not pass it.
void SortByFrequency(std::vector<CalFileRecord>* records);
/// Frequency, amplitude and phase of one channel, in the order of the records.
CalCurve CurveOf(const std::vector<CalFileRecord>& records, std::size_t channel);
/// Turns all phases by 180 degrees where their mean is beyond 150 or -150.
void FoldPhases(std::vector<double>* phases);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_CURVES_H_
