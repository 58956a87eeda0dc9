// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_FILE_SPECTRUM_H_
#define ORVANE_SPECTRA_FILE_SPECTRUM_H_

#include <cstdint>
#include <functional>
#include <string>

#include "spectra/spectrum.h"
#include "timeseries/leave_out.h"
#include "timeseries/record_pass.h"
#include "timeseries/restack_plan.h"
#include "timeseries/ts_file.h"

namespace orvane {

struct FileSpectrumOptions {
  LeaveOut leave_out = {};
  std::uint64_t record = 0;  ///< this one alone, as one segment; 0: all
  std::size_t segment = 0;   ///< scans at most; 0: the quick length that fits the first record
  PassOptions pass = {};
  /// Called with the bytes of each record that is done, from one thread at a time; may be empty.
  std::function<void(std::uint64_t bytes)> advance = {};
};

/// A spectrum in held values, and what it is of.
struct FileSpectrum {
  Spectrum spectrum;
  TsHeader header;             ///< of the first record
  std::uint64_t records = 0;   ///< averaged
  std::uint64_t left_out = 0;  ///< as the user chose
  NamedFew bad;                ///< averaged although their box marked them bad
  NamedFew others;             ///< left out: of another length, rate or count of channels
  std::uint64_t cut = 0;       ///< left out: the record within which the file ends

  /// What a user should know; empty: nothing.
  std::string Note(const LeaveOut& leave_out) const;
};

/// The spectrum of a file, averaged over the records that have length, rate and channels of the
/// first; each counts by its segments. The same result on any number of threads. Fails where no
/// record can be transformed; a pass that was stopped gives what it had, to be thrown away.
Result<FileSpectrum> SpectrumOfFile(const TsFile& file, const FileSpectrumOptions& options);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_FILE_SPECTRUM_H_
