// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXAMPLES_EXAMPLE_WAVEFORMS_H_
#define ORVANE_EXAMPLES_EXAMPLE_WAVEFORMS_H_

#include <filesystem>
#include <string_view>

#include "table/param_table.h"

namespace orvane::examples {

/// Writes the waveform of a method's day, 2417.TSS, and its companion table into `folder`, for MT
/// also the band files 2417.TS1 to 2417.TS4, for SIP a file of the older recording version. TDIP's
/// third record is bad. False, with a message, where that fails.
bool WriteWaveforms(const std::filesystem::path& folder, const ParamTable& day);

}  // namespace orvane::examples

#endif  // ORVANE_EXAMPLES_EXAMPLE_WAVEFORMS_H_
