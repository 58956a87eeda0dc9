// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_RECORDING_SIZE_H_
#define ORVANE_TABLE_RECORDING_SIZE_H_

#include <cstdint>

#include "table/clock.h"
#include "table/param_table.h"

namespace orvane {

/// Seconds since 1970-01-01 00:00:00 UTC.
struct TimeSpan {
  std::uint32_t start = 0;
  std::uint32_t end = 0;

  /// Negative where the end lies before the start.
  std::int32_t Seconds() const { return static_cast<std::int32_t>(end - start); }
  friend bool operator==(const TimeSpan&, const TimeSpan&) = default;
};

/// The scheduled recording, "STIM" to "ETIM". Times without a date get one from `now`, which is UTC
/// like the times.
TimeSpan RecordingSpan(const ParamTable& table, const Clock& now);

/// The window of high rates of an MT/AMT recording.
struct HighRateSpan {
  TimeSpan asked;  ///< as "HTIM" and "ETMH" say
  TimeSpan kept;   ///< what of it lies in the recording; its end may lie before its start

  bool IsEmpty() const { return kept.end < kept.start; }
};
/// Equal times, but for the weekday, mean the whole recording.
HighRateSpan HighRateWindow(const ParamTable& table, const TimeSpan& recording, const Clock& now);

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
