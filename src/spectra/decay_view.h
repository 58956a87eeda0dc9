// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_DECAY_VIEW_H_
#define ORVANE_SPECTRA_DECAY_VIEW_H_

#include <memory>
#include <string>
#include <vector>

#include "spectra/decay_run.h"
#include "timeseries/stack_lines.h"
#include "timeseries/waveform_view.h"

namespace orvane {

/// What a picture of one channel has.
struct DecayLines {
  std::vector<StackMarks> records;  ///< decays of single records; at most kMostStackCurves
  StackMarks repeats;               ///< points of single records
  StackMarks stacked;               ///< medians over the records, with their spreads
  StackMarks outliers;
  std::string x_text;
  std::string y_text;

  bool IsEmpty() const { return stacked.IsEmpty() && records.empty() && repeats.IsEmpty(); }
};

/// Decays of the recording on display, or its amplitudes and phases by frequency, all but the
/// drawing. Numbers are those of `DecayOfFile()` and `FrequencyPointsOf()`.
class DecayView {
 public:
  enum class Quantity { kAmplitude, kPhase };

  /// Takes what is on display and which of its records are left out. False where all stays as it
  /// was; else a run has begun.
  bool Follow(const WaveformView& waveform, const RecordNumbers& left_out);
  /// No waveform is shown any more; what was under way is cancelled. Settings stay.
  void Leave();

  // After one of these `Follow()` makes all anew.
  /// In ms, such as "40-80,80-160"; empty: by the stepping rule. Fails, and nothing changes, with
  /// what is wrong.
  Result<> SetWindows(const std::string& text);
  /// The channel that phases refer to, from 1; 0: none.
  void SetReference(std::size_t channel);
  std::size_t Reference() const { return reference_; }

  bool IsRunning() const { return run_ != nullptr; }
  int Percent() const { return run_ == nullptr ? 0 : run_->Percent(); }
  /// Takes the whole result once it is there; false: not yet.
  bool TakeResult();

  bool HasDecay() const { return outcome_.decay.has_value(); }
  bool HasPoints() const { return outcome_.points.has_value(); }
  /// Why there is neither; empty where there is, or while it is being made.
  const std::string& Reason() const { return outcome_.reason; }
  /// Of the channels, with their units; empty without a result.
  std::vector<std::string> Channels() const;
  /// The first channel that has anything, from 0.
  std::size_t FirstChannel() const;

  DecayLines Lines(std::size_t channel, Quantity quantity, const StackPicture& picture) const;
  /// "Stack of 12 records; 16 windows by the stepping rule, 0 to 2000 ms; chargeability over them
  /// 12.3 mV/V, spread 0.1; 2 records left out" and what else a user should know.
  std::string Caption(std::size_t channel) const;
  /// What is stacked of a channel, tab-separated, with a line of titles.
  std::string Text(std::size_t channel) const;

 private:
  DecayLines LinesOfDecay(std::size_t channel, const StackPicture& picture) const;
  DecayLines LinesOfPoints(std::size_t channel, Quantity quantity,
                           const StackPicture& picture) const;
  std::string WindowsText() const;
  std::string TextOfPoints(std::size_t channel) const;

  struct Source {
    std::filesystem::path path;
    std::uint64_t records = 0;
    std::uint64_t end = 0;
    RecordNumbers left_out;
    WaveformUnits units;
    bool has_single_gains = false;

    bool operator==(const Source&) const = default;
  };
  Source source_;
  bool is_stale_ = true;
  std::vector<DecayWindow> windows_;
  std::size_t reference_ = 0;
  std::unique_ptr<DecayRun> run_;
  DecayOutcome outcome_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_DECAY_VIEW_H_
