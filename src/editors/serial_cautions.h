// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_SERIAL_CAUTIONS_H_
#define ORVANE_EDITORS_SERIAL_CAUTIONS_H_

#include <array>
#include <span>

#include "forms/form_model.h"

namespace orvane {

/// Cautions beside the fields of serial numbers, none of which keeps OK from storing them: two
/// boxes of one number, and an empty place among the auxiliary boxes, after which no box gets a
/// start-up file. `auxiliaries`: the fields of auxiliary boxes 1 to 5; `others`: of all other
/// boxes.
void CautionSerials(std::span<const int, 5> auxiliaries, std::span<const int> others,
                    FormModel* model);

}  // namespace orvane

#endif  // ORVANE_EDITORS_SERIAL_CAUTIONS_H_
