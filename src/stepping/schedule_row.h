// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_SCHEDULE_ROW_H_
#define ORVANE_STEPPING_SCHEDULE_ROW_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/number_text.h"
#include "base/wire.h"

namespace orvane {

/// One step of a schedule, as in memory so in a TFS file.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 4 | end time: seconds from the start of the cycle; 0 ends the table |
/// | 4 | 2 | waveform: index into `kWaveforms` |
/// | 6 | 8 | frequency, Hz |
/// | 14 | 8 | transmitter current, A |
struct ScheduleRow {
  Le<std::int32_t> end_time;
  Le<std::int16_t> waveform;
  Le<double> frequency;
  Le<double> current;
};
static_assert(sizeof(ScheduleRow) == 22 && alignof(ScheduleRow) == 1);
static_assert(offsetof(ScheduleRow, waveform) == 4 && offsetof(ScheduleRow, frequency) == 6);
static_assert(offsetof(ScheduleRow, current) == 14);

/// Nothing in it: where a file being written ends.
inline bool IsEmpty(const ScheduleRow& row) {
  return row.end_time == 0 && row.waveform == 0 && row.frequency == 0.0 && row.current == 0.0;
}

inline constexpr int kMostSteps = 200;
/// The steps and a row that ends the table.
using ScheduleTable = std::array<ScheduleRow, kMostSteps + 1>;

/// Names of the waveform codes, of "WFRM" too.
inline constexpr std::array<std::string_view, 13> kWaveforms = {
    "NONE",  "TD50",  "TD33",  "TD25",  "FD",    "FD9",   "TD50P",
    "TD33P", "TD25P", "TD50N", "TD33N", "TD25N", "EXTCLK"};
/// The name of a code; the code itself where it has none.
inline std::string WaveformName(int code) {
  return code >= 0 && code < static_cast<int>(kWaveforms.size())
             ? std::string(kWaveforms[static_cast<std::size_t>(code)])
             : FormatInt(code);
}
inline constexpr std::int16_t kTimeDomainWaveform = 1;       // "TD50"
inline constexpr std::int16_t kFrequencyDomainWaveform = 4;  // "FD"

/// The rows before the first that is empty: what a file takes.
inline std::span<const ScheduleRow> WrittenRows(const ScheduleTable& table) {
  std::size_t count = 0;
  while (count < static_cast<std::size_t>(kMostSteps) && !IsEmpty(table[count])) {
    ++count;
  }
  return std::span(table).first(count);
}

}  // namespace orvane

#endif  // ORVANE_STEPPING_SCHEDULE_ROW_H_
