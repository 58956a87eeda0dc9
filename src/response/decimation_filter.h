// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_DECIMATION_FILTER_H_
#define ORVANE_RESPONSE_DECIMATION_FILTER_H_

#include "response/complex.h"

namespace orvane {

/// What a box's digital filters do to a recording: moving averages from the converter's rate down
/// to the recording's, and a comb that takes out the odd harmonics of the power line. Time stamps
/// refer to the middle of the averages, so only the comb has a phase. At 0 Hz the response is 1.
struct DecimationFilter {
  double sample_rate = 0;   ///< Hz; 0: not known, then no averages are taken into account
  int stages = 0;           ///< "TALS": 1 to 8, else no averages
  int sharpness = 0;        ///< "TCMB": 1 to 15, else no comb
  int line_frequency = 0;   ///< "LFRQ": 50 or 0, 60 or 1; else no comb
  int older_base_rate = 0;  ///< "Q2SR": the converter's rate in Hz; not above 0: 24000

  Complex Response(double frequency) const;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_DECIMATION_FILTER_H_
