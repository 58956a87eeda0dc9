// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_DECAY_LISTING_H_
#define ORVANE_SPECTRA_DECAY_LISTING_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "timeseries/decay.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_listing.h"

namespace orvane {

inline constexpr const char* kDecaySuffix = "_decay.tsv";

struct DecayListingOptions {
  std::vector<DecayWindow> windows = {};  ///< empty: by the stepping rule
  std::uint64_t record = 0;               ///< this one alone; 0: all, then stacked
  /// Channel from 1: in the time domain where edges are looked for, in the frequency domain what
  /// phases refer to. 0: where edges are clearest, and no phases.
  std::size_t reference = 0;
  int most_harmonics = 1;  ///< odd ones; in the frequency domain
  LeaveOutChoice leave_out = {};
  TsFile::Options headers = {};
};

/// Decays of TDIP and TDEM, amplitudes and phases of SIP, CSAMT and FDEM, tab-separated behind a
/// line of titles: of each record, then stacked. docs/formats/decay.md describes them.
TsListing DecayListing(DecayListingOptions options);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_DECAY_LISTING_H_
