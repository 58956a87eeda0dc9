// SPDX-License-Identifier: GPL-3.0-or-later
// What people see of the model that was fitted to a box calibration.
#ifndef ORVANE_RESPONSE_FIT_REPORT_H_
#define ORVANE_RESPONSE_FIT_REPORT_H_

#include <array>
#include <string>
#include <vector>

#include "calibration/cal_curves.h"
#include "response/cal_file.h"
#include "response/uncertainty.h"

namespace orvane {

/// A row for each quantity, the first cell its name, then a cell for each channel: how well the
/// model fits, then the parts of the circuit, the verdict, and to how many percent the amplitude is
/// known in each setting, without a source and by the wider of both bands.
std::vector<std::vector<std::string>> FitTable(const CalData& cal);

/// The name of a part without its unit.
std::string PartName(std::size_t part);

/// The verdicts on the channels that are not well, those alike together, with the reasons that they
/// share: "Channels 1, 2: usable with care (filter 3): pass 14 (x 1, filter 3) is missing". Empty
/// without any.
std::string FitWarning(const CalData& cal);

/// A line for each channel that is not well, with all that speaks against it.
std::vector<std::string> FitReasons(const CalData& cal);

/// The model of a channel in the settings of the passes that it has records of: at their
/// frequencies, and so many between that lines look smooth. Phases are turned like the measured
/// ones.
CalCurve ModelCurve(const CalData& cal, std::size_t channel, double turn);

/// Both sides of the band around a model's curve: where the response may be if drive resistors are
/// 1 % off and gains drift, too.
std::array<CalCurve, 2> BandAround(const CalCurve& model, const CalData& cal, std::size_t channel,
                                   const ModelUncertainty& known);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_FIT_REPORT_H_
