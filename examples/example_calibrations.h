// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXAMPLES_EXAMPLE_CALIBRATIONS_H_
#define ORVANE_EXAMPLES_EXAMPLE_CALIBRATIONS_H_

#include <filesystem>

namespace orvane::examples {

/// Writes the calibrations of the survey's units into `folder`: the box 2417.CLB and an older one
/// of it, 2417-2024.CLB, the coils 2041.CLC and 2042.CLC, the current sensor 1043.CLC. False, with
/// a message, where that fails.
bool WriteCalibrations(const std::filesystem::path& folder);

}  // namespace orvane::examples

#endif  // ORVANE_EXAMPLES_EXAMPLE_CALIBRATIONS_H_
