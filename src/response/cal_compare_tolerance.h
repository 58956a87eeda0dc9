// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_CAL_COMPARE_TOLERANCE_H_
#define ORVANE_RESPONSE_CAL_COMPARE_TOLERANCE_H_

namespace orvane {

/// By how much calibrations may differ.
struct CalTolerance {
  double amplitude = 0.02;  ///< relative
  double phase = 1;         ///< degrees
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CAL_COMPARE_TOLERANCE_H_
