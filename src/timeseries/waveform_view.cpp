// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_view.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "files/path_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr double kMargin = 0.05;   // above and below a trace, of its span
constexpr double kOneCount = 256;  // as held value
constexpr int kUsualSampleWidth = 3;
constexpr int kGainDigits = 6;
constexpr double kNearFullScale = 0.98 * kFullScale;

}  // namespace

Result<> WaveformView::Open(const std::filesystem::path& path, const TsFile::Options& options) {
  Close();
  options_ = options;
  Result<> opened = file_->Open(path, options);
  if (opened) {
    is_open_ = true;
    First();  // an empty file shows none
  }
  return opened;
}

void WaveformView::Take(std::unique_ptr<TsFile> file, const TsFile::Options& options) {
  Close();
  options_ = options;
  file_ = std::move(file);
  is_open_ = true;
  First();
}

Result<> WaveformView::Reload() {
  auto fresh = std::make_unique<TsFile>();
  Result<> opened = fresh->Open(file_->Path(), options_);
  if (opened) {
    TakeAgain(std::move(fresh));
  }
  return opened;
}

void WaveformView::TakeAgain(std::unique_ptr<TsFile> fresh) {
  file_ = std::move(fresh);
  if (Count() == 0) {
    Close();
    is_open_ = true;
    return;
  }
  ShowRecord(std::clamp<std::uint64_t>(number_, 1, Count()));
  for (std::optional<double>& cursor : cursors_) {
    if (cursor > EndTime()) {
      cursor.reset();
    }
  }
}

TsIndex::Growth WaveformView::Extend(std::uint64_t most) {
  const TsIndex::Growth growth = file_->Extend(most);
  if (growth.is_last_whole_now || (number_ == 0 && growth.more > 0)) {
    ShowRecord(std::max<std::uint64_t>(number_, 1));
  }
  return growth;
}

void WaveformView::Close() {
  is_open_ = false;
  number_ = 0;
  record_ = {};
  problem_.clear();
  channels_.clear();
  beyond_.clear();
  gains_.clear();
  gains_of_all_.reset();
  pan_ = 0;
  shape_ = {};
  shaped_ = {};
  whole_.clear();
  scales_.clear();
  visible_ = {};
  cursors_ = {};
}

bool WaveformView::GoTo(std::uint64_t number) {
  if (!is_open_ || number == 0 || number > Count()) {
    return false;
  }
  ShowRecord(number);
  return true;
}

void WaveformView::ShowRecord(std::uint64_t number) {
  const bool is_first = number_ == 0;
  const bool showed_all = visible_.low <= 0 && visible_.high >= EndTime();
  const ValueRange visible = visible_;
  const std::vector<WaveformChannel> before = channels_;
  number_ = number;
  CTsRec* record = &record_;
  problem_ = file_->Read(number, record).Message();
  if (!file_->Find(number)) {
    record_ = {};
  }
  if (problem_.empty() && record_.Scans() < record_.Header().scans) {
    problem_ = "the file ends within this record: " + FormatInt(record_.Scans()) + " of " +
               FormatInt(record_.Header().scans) + " scans";
  }
  const double rate = SampleRate(record_.Header());
  const double frequency =
      file_->HeaderSize() == TsHeaderSize::kFull ? double{record_.Header().frequency} : 0;
  why_no_fold_ = orvane::WhyNoFold(record_, frequency);
  shaped_ = orvane::Shape(shape_, frequency, &record_);
  seconds_per_scan_ = shaped_.seconds_per_scan > 0 ? shaped_.seconds_per_scan
                      : rate > 0                   ? 1 / rate
                                                   : 1;
  UpdateChannels();
  whole_ = ExtremesOf({0, record_.Scans()});
  if (is_first || showed_all) {
    visible_ = {0, EndTime()};
  } else {
    ShowTimes(visible.low, visible.high);
  }
  if (settings_.auto_scale || !HasSameChannels(before)) {
    UpdateScales();
  }
}

bool WaveformView::HasSameChannels(const std::vector<WaveformChannel>& before) const {
  return std::equal(
      before.begin(), before.end(), channels_.begin(), channels_.end(),
      [](const WaveformChannel& a, const WaveformChannel& b) { return a.Label() == b.Label(); });
}

void WaveformView::UpdateChannels() {
  const TsCompanion* companion = file_->Companion().IsLoaded() ? &file_->Companion() : nullptr;
  units_.gains = OwnGains();
  units_.has_counts = settings_.has_counts;
  channels_ = WaveformChannels(record_.Header(), companion, units_);
  beyond_.clear();
  for (std::size_t i = kMaxTraces; i < channels_.size(); ++i) {
    beyond_.push_back(channels_[i].name);
  }
  channels_.resize(std::min(channels_.size(), kMaxTraces));
}

// A trace that comes near its limits is seen with them.
void WaveformView::UpdateScales() {
  scales_ = ExtremesOf(VisibleScans());
  for (Extremes& scale : scales_) {
    if (record_.Header().sample_width == kUsualSampleWidth) {
      scale.low = scale.low <= -kNearFullScale ? std::min(scale.low, -kFullScale) : scale.low;
      scale.high = scale.high >= kNearFullScale ? kFullScale : scale.high;
    }
  }
}

void WaveformView::SetSettings(const WaveformSettings& settings) {
  const auto within = [](double value, double low, double high) {
    return std::isnan(value) ? low : std::clamp(value, low, high);
  };
  settings_ = settings;
  settings_.zoom = within(settings.zoom, WaveformSettings::kMinZoom, WaveformSettings::kMaxZoom);
  settings_.timer_seconds =
      within(settings.timer_seconds, WaveformSettings::kMinTimer, WaveformSettings::kMaxTimer);
  UpdateChannels();
  if (settings_.auto_scale) {
    UpdateScales();
  }
}

void WaveformView::SetShape(const RecordShape& shape) {
  const bool is_other_time = shape.folds != shape_.folds || shape.halves != shape_.halves;
  shape_ = shape;
  if (number_ > 0) {
    ShowRecord(number_);
    if (is_other_time) {
      cursors_ = {};
      ShowAllTimes();
    }
    UpdateScales();
  }
}

std::vector<double> WaveformView::Values(std::size_t trace) const {
  std::vector<double> values(record_.Scans());
  for (std::size_t scan = 0; scan < values.size(); ++scan) {
    values[scan] = Value(scan, trace);
  }
  return values;
}

void WaveformView::ZoomValues(double factor) {
  WaveformSettings settings = settings_;
  settings.zoom *= factor;
  SetSettings(settings);
}

void WaveformView::PanValues(double share) {
  pan_ = std::clamp(pan_ + share / settings_.zoom, -1.0, 1.0);
}

void WaveformView::ResetViews() {
  pan_ = 0;
  settings_.zoom = 1;
  ShowAllTimes();
  UpdateScales();
}

void WaveformView::SetSmallUnit(bool has_small_unit) {
  units_.has_small_unit = has_small_unit;
  UpdateChannels();
}

std::optional<WaveformGains> WaveformView::OwnGains() const {
  const auto own = gains_.find(number_);
  const bool has_own = own != gains_.end() &&
                       std::ranges::equal(BytesOf(own->second.header), BytesOf(record_.Header()));
  return has_own ? own->second.gains : gains_of_all_;
}

std::string WaveformView::WhyNoGains() const {
  return HasGains()     ? std::string()
         : Count() == 0 ? EmptyText()
                        : "Without its parameter table a waveform is shown in counts";
}

WaveformGains WaveformView::Gains() const {
  return OwnGains().value_or(GainsOf(file_->Companion().Table()));
}

void WaveformView::SetGains(std::uint64_t number, const WaveformGains& gains, bool for_all) {
  if (for_all) {
    gains_.clear();
    gains_of_all_ = gains;
  } else if (number == number_) {
    gains_[number] = {record_.Header(), gains};
  }
  UpdateChannels();
}

std::string WaveformView::TitleText() const {
  return number_ == 0 ? std::string() : WaveformTitle(record_.Header(), number_, Count());
}

std::string WaveformView::StatusBarText() const {
  std::string text = FormatInt(number_).append(" / ").append(FormatInt(Count()));
  if (file_->BadCount() > 0) {
    text.append(", first bad at ").append(FormatInt(file_->FirstBad()));
  }
  text.append(file_->CompanionNote().empty() ? "" : ", ").append(file_->CompanionNote());
  return text;
}

std::string WaveformView::StatusText(std::size_t trace) const {
  const Extremes& whole = whole_[trace];
  return WaveformStatus(record_.Header(), !file_->IsBandFile(),
                        (whole.high - whole.low) * std::abs(channels_[trace].scale));
}

std::string WaveformView::EmptyText() const {
  if (!is_open_ || record_.Scans() > 0) {
    return {};
  }
  return Count() == 0       ? PathText(file_->Path().filename()) + " has no segments"
         : problem_.empty() ? "no scans"
                            : problem_;
}

std::string WaveformView::NoteText() const {
  std::string text = IsBad() ? "bad record" : "";
  const auto append = [&text](std::string_view more) {
    text.append(text.empty() || more.empty() ? "" : ", ").append(more);
  };
  append(EmptyText());
  append(shaped_.note);
  if (const WaveformGains gains = Gains();
      HasGains() && gains != GainsOf(file_->Companion().Table())) {
    append("gains as entered: E x " + FormatReal(gains.electric, kGainDigits) + ", others x " +
           FormatReal(gains.other, kGainDigits));
  }
  return text;
}

std::string WaveformView::TimeLabel() const {
  return ShowsClock() ? "Time of day" : SampleRate(record_.Header()) > 0 ? "Time (s)" : "Scan";
}

bool WaveformView::ShowsClock() const {
  return settings_.has_clock && shaped_.seconds_per_scan == 0 && SampleRate(record_.Header()) > 0 &&
         IsValid(record_.Header().time);
}

double WaveformView::EndTime() const {
  return TimeOf(std::max<std::size_t>(record_.Scans(), 2) - 1);
}

void WaveformView::ShowTimes(double from, double to) {
  const double end = EndTime();
  if (!std::isfinite(from) || !std::isfinite(to)) {
    return;
  }
  const double span = std::clamp(to - from, seconds_per_scan_, end);
  const double low = std::clamp(from + (to - from - span) / 2, 0.0, end - span);
  visible_ = {low, std::min(low + span, end)};
  if (settings_.auto_scale) {
    UpdateScales();
  }
}

void WaveformView::ZoomTimes(double factor, double center) {
  if (factor > 0) {
    ShowTimes(center - (center - visible_.low) / factor,
              center + (visible_.high - center) / factor);
  }
}

void WaveformView::PanTimes(double seconds) {
  ShowTimes(visible_.low + seconds, visible_.high + seconds);
}

ScanRange WaveformView::VisibleScans() const {
  // A time that was computed from a scan must give that scan again.
  constexpr double kSlack = 1e-6;
  const auto scans = static_cast<double>(record_.Scans());
  const double begin = std::ceil(visible_.low / seconds_per_scan_ - kSlack);
  const double end = std::floor(visible_.high / seconds_per_scan_ + kSlack) + 1;
  return {static_cast<std::size_t>(std::clamp(begin, 0.0, scans)),
          static_cast<std::size_t>(std::clamp(end, 0.0, scans))};
}

std::vector<WaveformView::Extremes> WaveformView::ExtremesOf(ScanRange scans) const {
  std::vector<Extremes> extremes(channels_.size());
  for (std::size_t scan = scans.begin; scan < scans.end; ++scan) {
    const CTsRecRow row = record_.Row(scan);
    for (std::size_t trace = 0; trace < extremes.size(); ++trace) {
      const double held = row.Held(trace);
      Extremes& of = extremes[trace];
      of = scan == scans.begin ? Extremes{held, held}
                               : Extremes{std::min(of.low, held), std::max(of.high, held)};
    }
  }
  return extremes;
}

ValueRange WaveformView::ValuesOf(std::size_t trace) const {
  const auto span_of = [this](std::size_t i) {
    const double span = std::max(scales_[i].high - scales_[i].low, 2 * kOneCount);
    return span * std::abs(channels_[i].scale);
  };
  double span = span_of(trace);
  if (!settings_.auto_scale) {
    for (std::size_t i = 0; i < channels_.size(); ++i) {
      span = channels_[i].unit == channels_[trace].unit ? std::max(span, span_of(i)) : span;
    }
  }
  const double middle =
      (scales_[trace].low / 2 + scales_[trace].high / 2) * channels_[trace].scale +
      pan_ * span * (1 + 2 * kMargin);
  const double half = span * (0.5 + kMargin) / settings_.zoom;
  return {middle - half, middle + half};
}

std::vector<double> WaveformView::FullScaleLines(std::size_t trace) const {
  std::vector<double> lines;
  if (record_.Header().sample_width == kUsualSampleWidth) {
    const double scale = channels_[trace].scale;
    if (whole_[trace].low <= -kNearFullScale) {
      lines.push_back(-kFullScale * scale);
    }
    if (whole_[trace].high >= kNearFullScale) {
      lines.push_back(kFullScale * scale);
    }
  }
  return lines;
}

bool WaveformView::HasDots(int pixels) const {
  constexpr std::size_t kRoom = 6;
  const ScanRange scans = VisibleScans();
  return record_.Scans() > 1 &&
         (scans.end - scans.begin) * kRoom <= static_cast<std::size_t>(pixels);
}

double WaveformView::Value(std::size_t scan, std::size_t trace) const {
  return record_.Row(scan).Held(trace) * channels_[trace].scale;
}

std::vector<WaveformTrace> WaveformView::Traces(int pixels) const {
  std::vector<WaveformTrace> traces(channels_.size());
  ScanRange scans = VisibleScans();
  // One scan beyond each edge, so that the line reaches it.
  scans.begin -= scans.begin > 0 ? 1 : 0;
  scans.end += scans.end < record_.Scans() ? 1 : 0;
  ThinScans(record_, scans, traces.size(), pixels, [&](std::size_t scan, std::size_t trace) {
    traces[trace].times.push_back(TimeOf(scan));
    traces[trace].values.push_back(Value(scan, trace));
  });
  for (WaveformTrace& trace : traces) {
    if (record_.Scans() == 1) {
      trace.times.push_back(EndTime());
      trace.values.push_back(trace.values.front());
    }
  }
  return traces;
}

std::optional<WaveformReading> WaveformView::Reading(Cursor cursor) const {
  if (!cursors_[cursor] || record_.Scans() == 0) {
    return std::nullopt;
  }
  const auto last = static_cast<double>(record_.Scans() - 1);
  WaveformReading reading;
  reading.scan = static_cast<std::size_t>(
      std::clamp(std::round(*cursors_[cursor] / seconds_per_scan_), 0.0, last));
  reading.time = TimeOf(reading.scan);
  for (std::size_t trace = 0; trace < channels_.size(); ++trace) {
    reading.values.push_back(Value(reading.scan, trace));
  }
  return reading;
}

}  // namespace orvane
