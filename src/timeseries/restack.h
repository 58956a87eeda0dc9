// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_H_
#define ORVANE_TIMESERIES_RESTACK_H_

#include <string>
#include <string_view>

#include "core/batch.h"

namespace orvane {

/// The path of a waveform file's stack: in upper case (by `UpperCasedPath`), ".TSS" in its last
/// component replaced by ".TSK".
std::string RestackName(std::string_view path);

/// The records of each frequency averaged into one, in a stacked file of full headers and 3-byte
/// samples. Held values are added with wrapping and the sum divided toward zero; the result takes
/// the header, scans and channels of the frequency's first record. Frequencies keep the file's own
/// direction, ascending or descending.
///
/// - Equal means equal as doubles; a frequency that is no number yields nothing.
/// - A record with fewer scans or channels than the first of its frequency is left out of sum and
///   divisor, and noted; of a larger one the surplus counts for nothing. Bad records are included.
/// - A cut last record is dropped.
/// - kept: headers are always taken as full ones, as boxes do; a companion table of an older
/// version
///   is noted.
///
/// Memory: one record for each frequency, in several passes where these exceed `most_memory` bytes.
Conversion Restack(std::uint64_t most_memory = std::uint64_t{256} << 20U);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_H_
