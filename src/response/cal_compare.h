// SPDX-License-Identifier: GPL-3.0-or-later
// Two calibrations of one box or sensor: has it drifted?
#ifndef ORVANE_RESPONSE_CAL_COMPARE_H_
#define ORVANE_RESPONSE_CAL_COMPARE_H_

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "calibration/cal_curves.h"
#include "response/cal_compare_tolerance.h"
#include "response/cal_file.h"

namespace orvane {

/// The worst of a curve over another: relative amplitude and degrees, each at its frequency in Hz.
struct WorstDeviation {
  double amplitude = 0;
  double amplitude_at = 0;
  double phase = 0;
  double phase_at = 0;
};

/// By how much one channel in one pass, which is one setting of a box, differs.
struct CalDeviation {
  std::size_t channel = 0;  ///< from 0
  int sweep = 0;            ///< the pass, from 0
  std::string setting;      ///< "x 1, filter 0"; empty of a pass that the model has none for
  WorstDeviation measured;
  std::optional<WorstDeviation> model;  ///< where both have one and the pass has a setting
};

struct CalComparison {
  std::vector<CalDeviation> rows;  ///< channel after channel, passes rising
  std::string note;                ///< passes that only one of both has; may be empty
};

/// One calibration file to compare.
struct ComparedCal {
  CalCurves curves;
  std::unique_ptr<CalData> model;  ///< null of a sensor, and of a box without a model
};

Result<ComparedCal> ReadComparedCal(const std::filesystem::path& path);

/// The first against the second. Fails where their kinds or numbers of channels differ, or they
/// have no pass and frequencies in common.
Result<CalComparison> Compare(const ComparedCal& one, const ComparedCal& other);

/// Whether measured and model both stay within; what is not a number does not.
bool IsWithin(const CalDeviation& deviation, const CalTolerance& tolerance);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CAL_COMPARE_H_
