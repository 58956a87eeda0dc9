// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CALIBRATION_BOX_MODEL_H_
#define ORVANE_CALIBRATION_BOX_MODEL_H_

#include "calibration/cal_file.h"

namespace orvane {

/// Gives a box calibration of three passes or more, whose channel flags are set, its front-end
/// model: buffers and parameters. The parameters are those that a fit starts from.
void FitBoxModel(CalData* cal);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_BOX_MODEL_H_
