// SPDX-License-Identifier: GPL-3.0-or-later
// What a frequency-domain recording has at the frequencies of its transmitter: amplitudes, and
// phases against a channel that the user chooses, because the current is not in these files.
#ifndef ORVANE_SPECTRA_FREQUENCY_POINTS_H_
#define ORVANE_SPECTRA_FREQUENCY_POINTS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "timeseries/leave_out.h"
#include "timeseries/record_pass.h"
#include "timeseries/robust.h"
#include "timeseries/ts_file.h"
#include "timeseries/waveform_channels.h"

namespace orvane {

struct FrequencyPoint {
  double amplitude = 0;         ///< of the sine, in the channel's unit
  std::optional<double> phase;  ///< degrees in -180 to 180, against the reference
};

/// A line of a record: base frequency times an odd number.
struct FrequencyLine {
  std::uint64_t record = 0;
  double base = 0;  ///< Hz, the record's frequency
  int number = 1;
  /// One for each channel; none where its unit is not known.
  std::vector<std::optional<FrequencyPoint>> channels;

  double Frequency() const { return base * number; }
};

/// The repeats of a line: records of the same base frequency.
struct FrequencyStack {
  double base = 0;
  int number = 1;
  struct Channel {
    RobustStats amplitude;
    /// Of phases about their common direction; the median in -180 to 180 degrees. Count 0: none.
    RobustStats phase;
  };
  std::vector<Channel> channels;

  double Frequency() const { return base * number; }
  /// Whether the amplitude or phase of a repeat lies beyond 3.5 spreads; see `RobustStats`.
  bool IsOutlier(std::size_t channel, const FrequencyPoint& point) const;
};

struct FrequencyPointsOptions {
  LeaveOut leave_out = {};
  std::uint64_t record = 0;   ///< this one alone; 0: all
  std::size_t reference = 0;  ///< channel from 1; 0: none, and no phases
  int most_harmonics = 1;     ///< odd ones, of each record
  WaveformUnits units = {};
  PassOptions pass = {};
  /// Called with the bytes of each record that is done, from one thread at a time; may be empty.
  std::function<void(std::uint64_t bytes)> advance = {};
};

struct FrequencyPoints {
  std::vector<WaveformChannel> channels;
  std::vector<FrequencyLine> lines;    ///< in the order of the records
  std::vector<FrequencyStack> stacks;  ///< in ascending order of base frequency and number
  std::string note;                    ///< what a user should know; mostly empty

  const FrequencyStack* StackOf(const FrequencyLine& line) const;
};

/// Fourier coefficients over the whole periods of each record (`HarmonicPlan`), without the drift
/// that a line fitted together with the waveform has, and corrected where a period is no whole
/// number of scans. Records with another count of channels than the first are left out, and such
/// without a frequency or without two whole periods; the note names them. Fails, with a reason for
/// the user, where nothing can be said. The same on any number of threads.
Result<FrequencyPoints> FrequencyPointsOf(const TsFile& file,
                                          const FrequencyPointsOptions& options);

/// As many points as are kept.
inline constexpr std::size_t kMostFrequencyPoints = std::size_t{2} << 20U;

}  // namespace orvane

#endif  // ORVANE_SPECTRA_FREQUENCY_POINTS_H_
