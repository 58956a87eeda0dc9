// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_DECAY_RUN_H_
#define ORVANE_SPECTRA_DECAY_RUN_H_

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

#include "spectra/frequency_points.h"
#include "timeseries/decay_file.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// What the decays, or the amplitudes and phases, of a recording are to be made of.
struct DecayChoice {
  std::filesystem::path path;
  TsFile::Options headers = {};
  RecordNumbers left_out = {};
  WaveformUnits units = {};
  std::vector<DecayWindow> windows = {};  ///< of the time domain; empty: by the stepping rule
  std::size_t reference = 0;              ///< channel from 1: what phases refer to; 0: none
};

/// One of both, as the recording's method is; neither: then the reason says why.
struct DecayOutcome {
  std::optional<FileDecay> decay;
  std::optional<FrequencyPoints> points;
  std::string reason;
};

/// Made on a thread of its own. To be used from one thread.
class DecayRun {
 public:
  explicit DecayRun(DecayChoice choice);
  DecayRun(const DecayRun&) = delete;
  DecayRun& operator=(const DecayRun&) = delete;
  /// Stops, and waits for the end: at most the work on a record.
  ~DecayRun();

  bool IsDone() const { return is_done_; }
  /// Of the file's bytes.
  int Percent() const;
  /// Once it is done, and once only.
  DecayOutcome Take() { return std::move(outcome_); }

 private:
  void Run();
  DecayOutcome Work();

  DecayChoice choice_;
  TsProgress opening_;
  std::atomic<bool> is_done_ = false;
  std::atomic<std::uint64_t> at_ = 0;  // bytes
  std::atomic<std::uint64_t> end_ = 0;
  DecayOutcome outcome_{{}, {}, "not enough memory"};
  std::thread thread_;  // the last: it uses the others
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_DECAY_RUN_H_
