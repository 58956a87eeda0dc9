// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BENCH_SPECTRUM_DRAWING_H_
#define ORVANE_BENCH_SPECTRUM_DRAWING_H_

#include <filesystem>

namespace orvane::bench {

/// Prints how long the spectrum of a record takes, transformed and painted, and how long paging
/// does with it open. Writes its files into `folder`.
void TimeSpectra(const std::filesystem::path& folder);

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_SPECTRUM_DRAWING_H_
