// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_FILE_CLOSE_H_
#define ORVANE_EDITORS_FILE_CLOSE_H_

#include <array>

#include "forms/form_field.h"

namespace orvane {

/// "FLEN": when a box closes a waveform file and begins the next, in hours; 0 by the schedule.
inline constexpr std::array<int, 9> kFileCloseHours = {0, 1, 2, 3, 4, 6, 8, 12, 24};
inline constexpr std::array<Choice, 9> kFileCloseTimes = {{{"By schedule"},
                                                           {"Every 1 hour"},
                                                           {"Every 2 hours"},
                                                           {"Every 3 hours"},
                                                           {"Every 4 hours"},
                                                           {"Every 6 hours"},
                                                           {"Every 8 hours"},
                                                           {"Every 12 hours"},
                                                           {"Every 24 hours"}}};

}  // namespace orvane

#endif  // ORVANE_EDITORS_FILE_CLOSE_H_
