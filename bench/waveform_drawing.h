// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BENCH_WAVEFORM_DRAWING_H_
#define ORVANE_BENCH_WAVEFORM_DRAWING_H_

#include <filesystem>

namespace orvane::bench {

/// Records of noise in 12 channels of 2400 scans a second, which fills every strip.
void WriteNoise(const std::filesystem::path& path, int scans, int records);

/// Prints how long the heaviest waveform takes to draw on a screen of twice the points, in thin and
/// in thick lines, against the plotting library's thinnest. Writes its file into `folder`.
void TimeWaveforms(const std::filesystem::path& folder);

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_WAVEFORM_DRAWING_H_
