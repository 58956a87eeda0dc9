// SPDX-License-Identifier: GPL-3.0-or-later
// The decays of a time-domain recording: of each record and channel, and over the records.
#ifndef ORVANE_TIMESERIES_DECAY_FILE_H_
#define ORVANE_TIMESERIES_DECAY_FILE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "timeseries/decay.h"
#include "timeseries/leave_out.h"
#include "timeseries/record_pass.h"
#include "timeseries/robust.h"
#include "timeseries/ts_file.h"
#include "timeseries/waveform_channels.h"

namespace orvane {

/// How the decays of a recording are to be taken.
struct DecayPlan {
  double off_share = 0;            ///< see `DecayTiming`
  bool has_chargeability = false;  ///< of the electric channels
  std::vector<DecayWindow> windows;
};

struct DecayFileOptions {
  DecayPlan plan;
  LeaveOut leave_out = {};
  std::uint64_t record = 0;      ///< this one alone; 0: all
  std::size_t edge_channel = 0;  ///< from 1: where edges are looked for; 0: where they are clearest
  WaveformUnits units = {};
  PassOptions pass = {};
  /// Called with the bytes of each record that is done, from one thread at a time; may be empty.
  std::function<void(std::uint64_t bytes)> advance = {};
};

struct RecordDecay {
  std::uint64_t number = 0;
  ParamTime time;
  std::string reason;  ///< why the record has no decay; mostly empty
  /// One for each channel of the file; none where the channel's unit is not known.
  std::vector<std::optional<Decay>> channels;
};

/// Values of a decay in a row: the voltage with current, the windows, and last the chargeability.
struct FileDecay {
  TsHeader header;  ///< of the first record
  DecayPlan plan;
  std::vector<WaveformChannel> channels;
  std::size_t edge_channel = 0;  ///< from 0, whose edges are those of all channels
  std::vector<RecordDecay> records;
  /// Of each row of each channel, over the records that have a decay.
  std::vector<std::vector<RobustStats>> stacked;
  std::string note;  ///< what a user should know; mostly empty

  /// With the chargeability, which some channels have not.
  std::size_t Rows() const { return plan.windows.size() + 2; }
  std::optional<DecayValue> Value(const RecordDecay& record, std::size_t channel,
                                  std::size_t row) const;
  /// Whether it lies beyond 3.5 spreads from the median of the records; see `RobustStats`.
  bool IsOutlier(const RecordDecay& record, std::size_t channel, std::size_t row) const;
};

/// The first record that is not left out, and not cut, which decides what the others have to be
/// like; its frequency is what windows are made for. Fails where there is none.
Result<TsPlace> FirstForDecay(const TsFile& file, const LeaveOut& leave_out, std::uint64_t record);
/// The same, and its channels. Fails, with a reason for the user, also without the recording's
/// table and where no channel has a unit.
Result<TsPlace> FirstWithUnits(const TsFile& file, const LeaveOut& leave_out, std::uint64_t record,
                               const WaveformUnits& units, std::vector<WaveformChannel>* channels);

/// Decays of the records that have length, rate, frequency and channels of the first; the same on
/// any number of threads. Fails, with a reason for the user, where nothing can be said: no table
/// with gains, no frequency, no channel with a unit, no record with edges. A pass that was stopped
/// gives what it had, to be thrown away.
Result<FileDecay> DecayOfFile(const TsFile& file, const DecayFileOptions& options);

/// As many values as are kept: 64 MiB.
inline constexpr std::size_t kMostDecayValues = std::size_t{4} << 20U;

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_DECAY_FILE_H_
