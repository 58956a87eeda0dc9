// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_H_
#define ORVANE_TIMESERIES_RESTACK_H_

#include <functional>
#include <string>
#include <string_view>

#include "files/batch.h"
#include "timeseries/restack_plan.h"

namespace orvane {

/// The path of a waveform file's stack: in upper case (by `UpperCasedPath`), ".TSS" in its last
/// component replaced by ".TSK".
std::string RestackName(std::string_view path);

struct RestackOptions {
  LeaveOutChoice leave_out = {};
  /// Asked by a worker at the first file with bad records that would be added, for all files of the
  /// batch: whether to leave such records out. Null: they are added.
  std::function<bool(const std::string& question, const BatchTask& task)> ask_about_bad = nullptr;
  /// Sums held at a time; the sums of one frequency in any case.
  std::uint64_t most_memory = std::uint64_t{256} << 20U;
};

/// The records of each frequency averaged into one, in a stacked file of full headers and 3-byte
/// samples. Sums are exact; the result takes the header, scans and channels of the frequency's
/// first record. Frequencies keep the file's own direction, ascending or descending.
///
/// - Equal means equal as doubles; a frequency that is not a number is left out.
/// - A record with fewer scans or channels than the first of its frequency is left out of sum and
///   divisor, and noted; of a larger one the surplus counts for nothing.
/// - Records that are chosen are left out. Bad ones are added or left out, and noted. A file of
///   which nothing is left fails.
/// - A cut last record is dropped.
/// - In a folder of its own the stack gets a copy of the companion table beside it.
/// - kept: headers are always taken as full ones, as boxes do; a companion table of an older
///   version is noted.
///
/// Memory: one record for each frequency, in several passes where these exceed `most_memory` bytes.
Conversion Restack(RestackOptions options = {});

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_H_
