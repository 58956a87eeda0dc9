// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/cal_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "base/number_text.h"
#include "files/path_text.h"
#include "response/fit_report.h"

namespace orvane {
namespace {

constexpr double kPercent = 100;
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

std::string ChannelNumber(std::size_t channel) { return FormatInt(channel + 1); }

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

// The least round step of which so many make a range around a span, which begins at a multiple;
// with room for half a mark.
void FitTightly(Span span, int parts, double* low, double* high) {
  constexpr int kFirst = -6;  // steps of 0.01
  constexpr int kLast = 30;
  constexpr double kMargin = 0.02;
  const double margin = kMargin * (span.high - span.low);
  if (span.low <= span.high) {
    for (int number = kFirst; number < kLast; ++number) {
      const double step = LogStep(number);
      *low = step * std::floor((span.low - margin) / step);
      *high = *low + step * parts;
      if (*high >= span.high + margin) {
        return;
      }
    }
  }
}

// The values that have a place in a plot.
struct Spans {
  Span frequency;
  Span amplitude;
  Span phase;

  void Add(const CalCurve& curve) {
    const auto add = [](double value, bool is_drawable, Span* span) {
      if (is_drawable && std::isfinite(value)) {
        span->Add(value);
      }
    };
    for (std::size_t i = 0; i < curve.frequency.size(); ++i) {
      add(curve.frequency[i], curve.frequency[i] > 0, &frequency);
      add(curve.amplitude[i], curve.amplitude[i] > 0, &amplitude);
      add(curve.phase[i], true, &phase);
    }
  }
};

void Fit(const Spans& spans, bool is_tight, bool is_ratio, CalDisplay* display) {
  constexpr CalDisplay kWidest = {1e10, 1e10, 360, 1e-10, 1e-10, -360};
  constexpr int kRatioParts = 4;
  FitLog(spans.frequency, &display->min_frequency, &display->max_frequency);
  if (is_ratio) {
    FitTightly(spans.amplitude, kRatioParts, &display->min_amplitude, &display->max_amplitude);
  } else {
    FitLog(spans.amplitude, &display->min_amplitude, &display->max_amplitude);
  }
  if (is_tight) {
    FitTightly(spans.phase, display->phase_grid_lines, &display->min_phase, &display->max_phase);
  } else if (spans.phase.low <= spans.phase.high) {
    // So that the grid lines are at whole numbers unless there are very many.
    const double step = 5.0 * display->phase_grid_lines;
    constexpr double kTen = 10;
    display->min_phase = kTen * std::floor(spans.phase.low / kTen);
    display->max_phase =
        std::max(kWidest.min_phase, display->min_phase) +
        std::max(std::ceil((spans.phase.high - display->min_phase) / step), 1.0) * step;
  }
  for (const auto member : {&CalDisplay::min_phase, &CalDisplay::min_amplitude}) {
    display->*member = std::max(display->*member, kWidest.*member);
  }
  for (const auto member : {&CalDisplay::max_phase, &CalDisplay::max_amplitude}) {
    display->*member = std::min(display->*member, kWidest.*member);
  }
}

}  // namespace

std::string CalTrace::Label() const {
  std::string label = "Channel " + ChannelNumber(channel);
  switch (kind) {
    case kMeasured:
      return label;
    case kReference:
      return label.append(", reference");
    case kModel:
      return label.append(", model");
    case kBand:
      return label.append(", 95 % of responses");
  }
  return label;
}

Result<> CalView::Open(const std::filesystem::path& path) {
  auto curves = LoadCalCurves(path);
  curves_ = curves ? std::move(*curves) : CalCurves();
  cursor_.reset();
  traces_.reset();
  shown_.assign(curves_.channels.empty() ? 0 : 1, 0);
  LoadModel();
  FollowShown();
  return curves ? Result<>() : Failure(curves.Message());
}

Result<> CalView::Reload() {
  auto curves = LoadCalCurves(curves_.path);
  if (!curves) {
    return Failure(curves.Message());
  }
  if (reference_) {
    auto reference = LoadCalCurves(reference_->path);
    if (!reference) {
      return Failure(reference.Message());
    }
    reference_ = std::move(*reference);
  }
  curves_ = std::move(*curves);
  std::erase_if(shown_, [this](std::size_t channel) { return channel >= Count(); });
  shown_.resize(std::max<std::size_t>(shown_.size(), 1));  // the first, where none is left
  traces_.reset();
  LoadModel();
  SetCursor(cursor_);
  return {};
}

bool CalView::FitsDisplay() const {
  Spans spans;
  for (const CalCurve& curve : curves_.channels) {
    spans.Add(curve);
  }
  const auto fits = [](const Span& span, double low, double high) {
    return span.low >= low && span.high <= high;
  };
  return fits(spans.frequency, display_->min_frequency, display_->max_frequency) &&
         fits(spans.amplitude, display_->min_amplitude, display_->max_amplitude) &&
         fits(spans.phase, display_->min_phase, display_->max_phase);
}

// The ranges for what is shown now. Of a file alone they are those of all its channels, so that
// they stay from channel to channel.
void CalView::FollowShown() {
  own_.reset();
  traces_.reset();
  if (shown_.empty() || (!reference_ && (FitsDisplay() || !WhyEmpty(*display_).empty()))) {
    return;
  }
  own_ = *display_;
  Spans spans;
  for (const CalTrace& trace : reference_ ? Traces() : std::vector<CalTrace>()) {
    spans.Add(trace.curve);
  }
  for (const CalCurve& curve : reference_ ? std::vector<CalCurve>() : curves_.channels) {
    spans.Add(curve);
  }
  Fit(spans, reference_.has_value(), is_ratio_, &*own_);
}

void CalView::SetRatio(bool is_ratio) {
  is_ratio_ = is_ratio && HasReference();
  FollowShown();
}

void CalView::SetDisplay(const CalDisplay& display) {
  if (reference_) {
    own_ = display;
  } else {
    own_.reset();
    *display_ = display;
  }
}

std::string CalView::RangesText() const {
  return own_ && !reference_ ? "ranges fitted to the file, which goes beyond the ranges set" : "";
}

void CalView::LoadModel() {
  model_.reset();
  known_.clear();
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
    ShowOthers();
  }
}

void CalView::ShowAll() {
  shown_.resize(Count());
  std::iota(shown_.begin(), shown_.end(), std::size_t{0});
  ShowOthers();
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
  ShowOthers();
  return true;
}

void CalView::ShowOthers() {
  traces_.reset();
  if (reference_) {
    FollowShown();
  }
}

Result<> CalView::OpenReference(const std::filesystem::path& path) {
  auto reference = LoadCalCurves(path);
  if (!reference) {
    return Failure(reference.Message());
  }
  reference_ = std::move(*reference);
  FollowShown();
  return {};
}

void CalView::RemoveReference() {
  reference_.reset();
  is_ratio_ = false;
  FollowShown();
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

const ModelUncertainty& CalView::KnownOf(std::size_t channel) const {
  return known_.try_emplace(channel, *model_, channel).first->second;
}

std::vector<CalTrace> CalView::MakeTraces() const {
  std::vector<CalTrace> traces;
  for (const std::size_t channel : shown_) {
    const CalCurve& curve = curves_.channels[channel];
    const CalCurve* reference = ReferenceOf(channel);
    if (is_ratio_) {
      traces.push_back({channel, CalTrace::kMeasured,
                        reference == nullptr ? CalCurve() : RatioOf(curve, *reference)});
      for (double& amplitude : traces.back().curve.amplitude) {
        amplitude *= kPercent;
      }
      continue;
    }
    traces.push_back({channel, CalTrace::kMeasured, curve});
    if (reference != nullptr) {
      traces.push_back({channel, CalTrace::kReference, *reference});
    }
    if (ShowsModel()) {
      traces.push_back({channel, CalTrace::kModel, ModelCurve(*model_, channel, curve.turn)});
      if (shown_.size() == 1) {
        for (CalCurve& side : BandAround(traces.back().curve, *model_, channel, KnownOf(channel))) {
          traces.push_back({channel, CalTrace::kBand, std::move(side)});
        }
      }
    }
  }
  return traces;
}

void CalView::FitDisplay() {
  CalDisplay display = Display();
  Spans spans;
  for (const CalTrace& trace : Traces()) {
    spans.Add(trace.curve);
  }
  Fit(spans, reference_.has_value(), is_ratio_, &display);
  SetDisplay(display);
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
    if (trace.kind == CalTrace::kBand) {
      continue;
    }
    const CalCurve& curve = trace.curve;
    const std::size_t nearest = NearestPoint(curve, *cursor_);
    for (std::size_t i = nearest; i < curve.frequency.size(); ++i) {
      if (curve.frequency[i] == curve.frequency[nearest]) {
        readings.push_back({trace.Label(), curve.sweep[i], curve.frequency[i], curve.amplitude[i],
                            curve.phase[i], std::nullopt});
        if (trace.kind == CalTrace::kModel) {
          const auto pass = static_cast<std::size_t>(curve.sweep[i]);
          readings.back().known =
              KnownOf(trace.channel)
                  .At(PassSetting(pass, ParametersOf(*model_, trace.channel)[kDrive]),
                      curve.frequency[i]);
        }
      }
    }
  }
  return readings;
}

}  // namespace orvane
