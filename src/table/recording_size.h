// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_RECORDING_SIZE_H_
#define ORVANE_TABLE_RECORDING_SIZE_H_

#include <cstdint>

#include "table/clock.h"
#include "table/param_table.h"

namespace orvane {

/// Seconds since 1970 in UTC; `end` before `start`: empty.
struct RecordingSpan {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
};

/// From "STIM" to "ETIM". Times without a date get one as a box gives it, from `now` (UTC).
RecordingSpan RecordingOf(const ParamTable& table, const Clock& now);
/// The part of a recording in which high rates are recorded too: "HTIM" to "ETMH", or all of it
/// where these two are equal.
RecordingSpan HighRateWindow(const ParamTable& table, const RecordingSpan& recording,
                             const Clock& now);

/// Megabytes of 2^20 bytes.
struct RecordingSize {
  double stated = 0;  ///< as the boxes count: bytes in 32 bits, so beyond 4096 it starts again
  double exact = 0;   ///< counted without that limit
};

/// What an MT/AMT recording of `channels` channels will fill, by the schedule in the table ("MTSR",
/// "HSMP", "L2NS" to "L4NS", "STIM", "ETIM", "HTIM", "ETMH"). A second of one band takes
/// channels x rate x 3 bytes and a record header of 32. Times without a date get one from `now`,
/// which is UTC like the times. 0 where the recording, or its window of high rates, is empty.
RecordingSize EstimateRecordingSize(const ParamTable& table, int channels, const Clock& now);

}  // namespace orvane

#endif  // ORVANE_TABLE_RECORDING_SIZE_H_
