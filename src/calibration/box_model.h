// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CALIBRATION_BOX_MODEL_H_
#define ORVANE_CALIBRATION_BOX_MODEL_H_

#include "calibration/cal_file.h"
#include "calibration/front_end.h"

namespace orvane {

/// The values that a channel's circuit has on paper, by its flags.
FrontEndParameters NominalParameters(std::uint32_t flags);

/// The circuit of one channel of a calibration: fitted, or on paper where it has no model.
FrontEndParameters ParametersOf(const CalData& cal, std::size_t channel);

/// Whether the model has a setting for a pass of the calibration, counted from 0.
bool IsModelPass(std::size_t pass);
/// How a box was switched while it swept such a pass; docs/response.md lists them. `drive`: the
/// resistors that some passes are driven through, ohms for both legs.
FrontEndSetting PassSetting(std::size_t pass, double drive);

/// The passes in the order in which they are copied into the buffers, one for each slot.
inline constexpr auto kSlotPasses =
    std::to_array<std::size_t>({4, 5, 6, 3, 7, 8, 13, 14, 3, 9, 10, 11, 12, 5, 6, 3});

/// Gives a box calibration of three passes or more, whose channel flags are set, its front-end
/// model: buffers, parameters, reports. It cannot fail: a channel that no circuit fits keeps the
/// parameters that the fit starts from.
void FitBoxModel(CalData* cal);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_BOX_MODEL_H_
