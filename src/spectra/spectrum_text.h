// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRUM_TEXT_H_
#define ORVANE_SPECTRA_SPECTRUM_TEXT_H_

#include <filesystem>
#include <functional>
#include <string_view>

#include "spectra/spectrum.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_listing.h"

namespace orvane {

inline constexpr const char* kSpectrumSuffix = "_spectrum.tsv";

struct SpectrumOptions {
  bool is_density = true;    ///< its root, per root Hz; else amplitudes
  std::uint64_t record = 0;  ///< this one alone; 0: averaged over all
  std::size_t segment = 0;   ///< scans at most; 0: the whole record
  /// Not empty: corrected by the calibrations there.
  std::filesystem::path calibration_folder = {};
  LeaveOutChoice leave_out = {};
  TsFile::Options headers = {};
};

/// A spectrum piece by piece, tab-separated: a line of titles with units, then one for each bin.
void PutSpectrum(const Spectrum& spectrum, bool is_density,
                 const std::function<void(std::string_view piece)>& put);

/// The spectrum of a file, tab-separated: a line of titles with units, then one for each bin.
/// docs/formats/spectrum.md describes it.
TsListing SpectrumListing(SpectrumOptions options);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRUM_TEXT_H_
