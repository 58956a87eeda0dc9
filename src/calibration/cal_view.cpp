// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "calibration/fit_report.h"
#include "core/number_text.h"
#include "core/path_text.h"

namespace orvane {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

std::string ChannelNumber(std::size_t channel) {
  return FormatInt(static_cast<std::int64_t>(channel) + 1);
}

// The point nearest on a logarithmic axis; kNone where no point has a place there.
std::size_t NearestPoint(const CalCurve& curve, double frequency) {
  std::size_t nearest = kNone;
  double least = HUGE_VAL;
  for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
    const double distance = std::abs(std::log(curve.frequency[i] / frequency));
    if (curve.frequency[i] > 0 && distance < least) {
      nearest = i;
      least = distance;
    }
  }
  return nearest;
}

struct Span {
  double low = HUGE_VAL;
  double high = -HUGE_VAL;

  void Add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
};

// The steps of a logarithmic axis: 1, 2, 5, 10, 20 ... by their number.
double LogStep(int number) {
  constexpr std::array<double, 3> kSteps = {1, 2, 5};
  const int decade = static_cast<int>(std::floor(number / 3.0));
  return kSteps[static_cast<std::size_t>(number - 3 * decade)] * std::pow(10, decade);
}

// Outwards to such steps, within what the dialog accepts.
void FitLog(const Span& span, double* low, double* high) {
  constexpr int kFirst = -30;  // 1e-10
  constexpr int kLast = 30;    // 1e10
  if (span.low <= span.high) {
    int from = kLast - 1;
    while (from > kFirst && LogStep(from) > span.low) {
      --from;
    }
    int to = from + 1;
    while (to < kLast && LogStep(to) < span.high) {
      ++to;
    }
    *low = LogStep(from);
    *high = LogStep(to);
  }
}

}  // namespace

std::string CalTrace::Label() const {
  const std::string label = "Channel " + ChannelNumber(channel);
  return kind == kReference ? label + ", reference" : kind == kModel ? label + ", model" : label;
}

std::string CalView::Open(const std::filesystem::path& path) {
  curves_ = {};
  cursor_.reset();
  traces_.reset();
  std::string message = LoadCalCurves(path, &curves_);
  shown_.assign(curves_.channels.empty() ? 0 : 1, 0);
  LoadModel();
  return message;
}

void CalView::LoadModel() {
  model_.reset();
  why_no_model_ = "Only boxes have a model";
  if (curves_.channels.empty() || curves_.header.ctyp != kBoxCal) {
    return;
  }
  CalReport report;
  model_ = ReadCalFileAt(kBoxCal, curves_.path, &report);
  if (model_ == nullptr) {
    why_no_model_ = report.message;
  } else if (model_->model.parameter_count == 0) {
    model_.reset();
    why_no_model_ = "A calibration of fewer than 3 passes has no model";
  }
}

void CalView::Show(std::vector<std::size_t> channels) {
  std::erase_if(channels, [this](std::size_t channel) { return channel >= Count(); });
  std::sort(channels.begin(), channels.end());
  channels.erase(std::unique(channels.begin(), channels.end()), channels.end());
  if (!channels.empty()) {
    shown_ = std::move(channels);
    traces_.reset();
  }
}

void CalView::ShowAll() {
  traces_.reset();
  shown_.resize(Count());
  std::iota(shown_.begin(), shown_.end(), std::size_t{0});
}

bool CalView::Step(int by) {
  if (shown_.empty()) {
    return false;
  }
  const std::size_t from = by < 0 ? shown_.front() : shown_.back();
  if (by < 0 ? from == 0 : from + 1 >= Count()) {
    return false;
  }
  shown_ = {by < 0 ? from - 1 : from + 1};
  traces_.reset();
  return true;
}

std::string CalView::OpenReference(const std::filesystem::path& path) {
  CalCurves reference;
  std::string message = LoadCalCurves(path, &reference);
  if (message.empty()) {
    reference_ = std::move(reference);
    traces_.reset();
  }
  return message;
}

void CalView::RemoveReference() {
  reference_.reset();
  is_ratio_ = false;
  traces_.reset();
}

// A file of one channel, as of a sensor, serves every channel.
const CalCurve* CalView::ReferenceOf(std::size_t channel) const {
  if (!reference_) {
    return nullptr;
  }
  const auto& channels = reference_->channels;
  return channels.size() == 1        ? &channels.front()
         : channel < channels.size() ? &channels[channel]
                                     : nullptr;
}

std::string CalView::Title() const {
  std::string title = PathText(curves_.path.filename());
  if (shown_.empty()) {
    return title;
  }
  title += shown_.size() == 1 ? " Channel: " : " Channels: ";
  for (const std::size_t channel : shown_) {
    title.append(channel == shown_.front() ? "" : ", ").append(ChannelNumber(channel));
  }
  if (reference_) {
    title.append(is_ratio_ ? " / " : ", reference: ").append(PathText(reference_->path.filename()));
  }
  return title;
}

const std::vector<CalTrace>& CalView::Traces() const {
  if (!traces_) {
    traces_ = MakeTraces();
  }
  return *traces_;
}

std::vector<CalTrace> CalView::MakeTraces() const {
  std::vector<CalTrace> traces;
  for (const std::size_t channel : shown_) {
    const CalCurve& curve = curves_.channels[channel];
    const CalCurve* reference = ReferenceOf(channel);
    if (is_ratio_) {
      traces.push_back({channel, CalTrace::kMeasured,
                        reference == nullptr ? CalCurve() : RatioOf(curve, *reference)});
      continue;
    }
    traces.push_back({channel, CalTrace::kMeasured, curve});
    if (reference != nullptr) {
      traces.push_back({channel, CalTrace::kReference, *reference});
    }
    if (ShowsModel()) {
      traces.push_back({channel, CalTrace::kModel, ModelCurve(*model_, channel, curve.turn)});
    }
  }
  return traces;
}

void CalView::FitDisplay() {
  Span frequency;
  Span amplitude;
  Span phase;
  for (const CalTrace& trace : Traces()) {
    for (std::size_t i = 0; i < trace.curve.frequency.size(); ++i) {
      const auto add = [](double value, bool is_drawable, Span* span) {
        if (is_drawable && std::isfinite(value)) {
          span->Add(value);
        }
      };
      add(trace.curve.frequency[i], trace.curve.frequency[i] > 0, &frequency);
      add(trace.curve.amplitude[i], trace.curve.amplitude[i] > 0, &amplitude);
      add(trace.curve.phase[i], true, &phase);
    }
  }
  FitLog(frequency, &display_->min_frequency, &display_->max_frequency);
  FitLog(amplitude, &display_->min_amplitude, &display_->max_amplitude);
  if (phase.low <= phase.high) {
    // So that the grid lines stand at whole numbers where there are not very many.
    const double step = 5.0 * display_->phase_grid_lines;
    constexpr double kTen = 10;
    display_->min_phase = std::max(kTen * std::floor(phase.low / kTen), -360.0);
    const double span = std::max(std::ceil((phase.high - display_->min_phase) / step), 1.0) * step;
    display_->max_phase = std::min(display_->min_phase + span, 360.0);
  }
}

void CalView::SetCursor(std::optional<double> frequency) {
  cursor_.reset();
  if (!frequency || !(*frequency > 0) || shown_.empty()) {
    return;
  }
  const CalCurve& curve = Traces().front().curve;
  if (const std::size_t at = NearestPoint(curve, *frequency); at != kNone) {
    cursor_ = curve.frequency[at];
  }
}

void CalView::MoveCursor(int by) {
  if (shown_.empty()) {
    return;
  }
  std::vector<double> frequencies = Traces().front().curve.frequency;
  std::erase_if(frequencies, [](double f) { return !(f > 0) || !std::isfinite(f); });
  std::sort(frequencies.begin(), frequencies.end());
  if (frequencies.empty()) {
    return;
  }
  if (!cursor_) {
    cursor_ = by > 0 ? frequencies.front() : frequencies.back();
  } else if (by > 0) {
    const auto next = std::upper_bound(frequencies.begin(), frequencies.end(), *cursor_);
    cursor_ = next == frequencies.end() ? frequencies.back() : *next;
  } else {
    const auto at = std::lower_bound(frequencies.begin(), frequencies.end(), *cursor_);
    cursor_ = at == frequencies.begin() ? frequencies.front() : *(at - 1);
  }
}

std::vector<CalReading> CalView::Readings() const {
  std::vector<CalReading> readings;
  if (!cursor_) {
    return readings;
  }
  for (const CalTrace& trace : Traces()) {
    const CalCurve& curve = trace.curve;
    const std::size_t nearest = NearestPoint(curve, *cursor_);
    for (std::size_t i = nearest; i < curve.frequency.size(); ++i) {
      if (curve.frequency[i] == curve.frequency[nearest]) {
        readings.push_back({trace.Label(), curve.sweep[i], curve.frequency[i], curve.amplitude[i],
                            curve.phase[i]});
      }
    }
  }
  return readings;
}

}  // namespace orvane
