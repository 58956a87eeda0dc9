// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/decay_view.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr double kMilliseconds = 1000;

std::string Number(double value) {
  constexpr int kDigits = 6;
  return FormatReal(value, kDigits);
}

double Centre(const DecayWindow& window) { return (window.start + window.end) / 2 * kMilliseconds; }

void AddStacked(double x, const RobustStats& stats, const StackPicture& picture,
                StackMarks* marks) {
  const std::size_t before = marks->x.size();
  if (stats.count > 0) {
    marks->Add(x, stats.median, picture);
  }
  if (marks->x.size() > before) {
    marks->spread.push_back(stats.spread);
  }
}

std::string Records(std::size_t count) {
  return FormatInt(count).append(count == 1 ? " record" : " records");
}

// Those records that have a decay of the channel.
std::vector<const RecordDecay*> WithDecay(const FileDecay& decay, std::size_t channel) {
  std::vector<const RecordDecay*> records;
  for (const RecordDecay& record : decay.records) {
    if (channel < record.channels.size() && record.channels[channel]) {
      records.push_back(&record);
    }
  }
  return records;
}

}  // namespace

bool DecayView::Follow(const WaveformView& waveform, const RecordNumbers& left_out) {
  const WaveformUnits units{.has_small_unit = waveform.HasSmallUnit(),
                            .has_counts = false,
                            .gains = waveform.GainsOfAll()};
  const Source source{
      waveform.File().Path(),     waveform.Count(), waveform.File().End(), left_out, units,
      waveform.HasGainsOfSingle()};
  if (source == source_ && !is_stale_) {
    return false;
  }
  source_ = source;
  is_stale_ = false;
  run_.reset();
  outcome_ = {};
  run_ = std::make_unique<DecayRun>(
      DecayChoice{source.path, waveform.Options(), left_out, units, windows_, reference_});
  return true;
}

void DecayView::Leave() {
  run_.reset();
  outcome_ = {};
  is_stale_ = true;
}

Result<> DecayView::SetWindows(const std::string& text) {
  const auto windows = text.empty() ? Result<std::vector<DecayWindow>>(std::vector<DecayWindow>())
                                    : DecayWindowsOf(text);
  if (!windows) {
    return Failure(windows.Message());
  }
  is_stale_ = is_stale_ || *windows != windows_;
  windows_ = *windows;
  return {};
}

void DecayView::SetReference(std::size_t channel) {
  is_stale_ = is_stale_ || channel != reference_;
  reference_ = channel;
}

bool DecayView::TakeResult() {
  if (run_ == nullptr || !run_->IsDone()) {
    return false;
  }
  outcome_ = run_->Take();
  run_.reset();
  return true;
}

std::vector<std::string> DecayView::Channels() const {
  std::vector<std::string> labels;
  for (const WaveformChannel& channel : HasDecay()    ? outcome_.decay->channels
                                        : HasPoints() ? outcome_.points->channels
                                                      : std::vector<WaveformChannel>()) {
    labels.push_back(channel.Label());
  }
  return labels;
}

std::size_t DecayView::FirstChannel() const {
  const std::size_t count = Channels().size();
  for (std::size_t channel = 0; channel < count; ++channel) {
    if (!Lines(channel, Quantity::kAmplitude, {}).IsEmpty()) {
      return channel;
    }
  }
  return 0;
}

DecayLines DecayView::Lines(std::size_t channel, Quantity quantity,
                            const StackPicture& picture) const {
  return channel >= Channels().size() ? DecayLines()
         : HasDecay()                 ? LinesOfDecay(channel, picture)
                                      : LinesOfPoints(channel, quantity, picture);
}

DecayLines DecayView::LinesOfDecay(std::size_t channel, const StackPicture& picture) const {
  const FileDecay& decay = *outcome_.decay;
  const std::vector<const RecordDecay*> records = WithDecay(decay, channel);
  const std::size_t windows = decay.plan.windows.size();
  DecayLines lines;
  const std::size_t count = std::min(records.size(), kMostStackCurves);
  for (std::size_t i = 0; i < count; ++i) {
    const RecordDecay& record = *records[i * records.size() / count];
    StackMarks curve;
    for (std::size_t row = 1; row <= windows; ++row) {
      curve.Add(Centre(decay.plan.windows[row - 1]), decay.Value(record, channel, row)->value,
                picture);
    }
    lines.records.push_back(std::move(curve));
  }
  for (std::size_t row = 1; row <= windows; ++row) {
    const double x = Centre(decay.plan.windows[row - 1]);
    AddStacked(x, decay.stacked[channel][row], picture, &lines.stacked);
    for (const RecordDecay* record : records) {
      if (decay.IsOutlier(*record, channel, row)) {
        lines.outliers.Add(x, decay.Value(*record, channel, row)->value, picture);
      }
    }
  }
  lines.x_text = "Time after the current (ms)";
  lines.y_text = decay.channels[channel].Label();
  if (picture.has_log_y) {
    lines.y_text.insert(0, 1, '|').push_back('|');
  }
  return lines;
}

DecayLines DecayView::LinesOfPoints(std::size_t channel, Quantity quantity,
                                    const StackPicture& picture) const {
  const FrequencyPoints& points = *outcome_.points;
  const bool is_phase = quantity == Quantity::kPhase;
  DecayLines lines;
  for (const FrequencyLine& line : points.lines) {
    const auto& point = line.channels[channel];
    if (!point || (is_phase && !point->phase)) {
      continue;
    }
    const double value = is_phase ? *point->phase : point->amplitude;
    const FrequencyStack* stack = points.StackOf(line);
    const bool is_outlier = stack != nullptr && stack->IsOutlier(channel, *point);
    (is_outlier ? lines.outliers : lines.repeats).Add(line.Frequency(), value, picture);
  }
  for (const FrequencyStack& stack : points.stacks) {
    const FrequencyStack::Channel& of = stack.channels[channel];
    AddStacked(stack.Frequency(), is_phase ? of.phase : of.amplitude, picture, &lines.stacked);
  }
  lines.x_text = "Frequency (Hz)";
  lines.y_text = is_phase ? "Phase (degrees) of " + points.channels[channel].name + " against " +
                                (reference_ == 0 ? "none" : points.channels[reference_ - 1].name)
                          : points.channels[channel].Label();
  return lines;
}

std::string DecayView::WindowsText() const {
  const std::vector<DecayWindow>& windows = outcome_.decay->plan.windows;
  std::string text = FormatInt(windows.size());
  text.append(windows_.empty() ? " windows by the stepping rule, " : " windows as chosen, ");
  return text.append(Number(windows.front().start * kMilliseconds))
      .append(" to ")
      .append(Number(windows.back().end * kMilliseconds))
      .append(" ms");
}

std::string DecayView::Caption(std::size_t channel) const {
  std::string text;
  if (IsRunning() || channel >= Channels().size()) {
    return Reason();
  }
  if (HasPoints()) {
    text = "Amplitude and phase of ";
    text.append(FormatInt(outcome_.points->stacks.size()))
        .append(outcome_.points->stacks.size() == 1 ? " frequency, " : " frequencies, ")
        .append(Records(outcome_.points->lines.size()));
  } else {
    const FileDecay& decay = *outcome_.decay;
    text = "Stack of ";
    text.append(Records(WithDecay(decay, channel).size())).append("; ");
    text.append(WindowsText());
    const RobustStats& chargeability = decay.stacked[channel].back();
    if (chargeability.count > 0) {
      text.append("; chargeability over them ")
          .append(Number(chargeability.median))
          .append(" mV/V, spread ")
          .append(Number(chargeability.spread));
    }
  }
  const std::string& note = HasDecay() ? outcome_.decay->note : outcome_.points->note;
  text.append(note.empty() ? "" : "; ").append(note);
  text.append(source_.units.gains ? "; gains as entered" : "");
  return text.append(
      source_.has_single_gains ? "; gains entered for single records are not used here" : "");
}

std::string DecayView::TextOfPoints(std::size_t channel) const {
  const FrequencyPoints& points = *outcome_.points;
  const auto cell = [](std::size_t count, double value) {
    std::string tabbed(1, '\t');
    return count > 0 ? tabbed.append(FormatReal(value)) : tabbed;
  };
  std::string text = "Frequency (Hz)\t" + points.channels[channel].Label() +
                     "\tspread\tphase (degrees)\tphase spread\n";
  for (const FrequencyStack& stack : points.stacks) {
    const auto& [amplitude, phase] = stack.channels[channel];
    text.append(FormatReal(stack.Frequency()))
        .append(cell(amplitude.count, amplitude.median))
        .append(cell(amplitude.count, amplitude.spread))
        .append(cell(phase.count, phase.median))
        .append(cell(phase.count, phase.spread))
        .append("\n");
  }
  return text;
}

std::string DecayView::Text(std::size_t channel) const {
  if (HasPoints() && channel < Channels().size()) {
    return TextOfPoints(channel);
  }
  const StackPicture plain;
  const DecayLines lines = Lines(channel, Quantity::kAmplitude, plain);
  std::string text = lines.x_text;
  text.append("\t").append(lines.y_text).append("\tspread\n");
  for (std::size_t i = 0; i < lines.stacked.x.size(); ++i) {
    text.append(FormatReal(lines.stacked.x[i]))
        .append("\t")
        .append(FormatReal(lines.stacked.y[i]))
        .append("\t")
        .append(FormatReal(lines.stacked.spread[i]))
        .append("\n");
  }
  return text;
}

}  // namespace orvane
