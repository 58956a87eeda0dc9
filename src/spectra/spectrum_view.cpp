// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectrum_view.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/latin1.h"
#include "base/number_text.h"
#include "spectra/spectrum_calibration.h"

namespace orvane {
namespace {

constexpr int kDigits = 6;
constexpr std::size_t kLeap = 10;  // bins, where no harmonics are known

std::vector<WaveformChannel> ChannelsOf(const WaveformView& waveform, const TsHeader& header) {
  WaveformUnits units{.has_small_unit = waveform.HasSmallUnit(), .gains = {}};
  if (waveform.HasGains()) {
    units.gains = waveform.Gains();
  }
  return WaveformChannels(header, &waveform.File().Companion(), units);
}

double FundamentalOf(const TsFile& file, const TsHeader& header) {
  const double frequency = file.HeaderSize() == TsHeaderSize::kFull ? double(header.frequency) : 0;
  return std::isfinite(frequency) && frequency > 0 ? frequency : 0;
}

std::vector<double> ScalesOf(const std::vector<WaveformChannel>& channels) {
  std::vector<double> scales;
  for (const WaveformChannel& channel : channels) {
    scales.push_back(channel.scale);
  }
  return scales;
}

}  // namespace

SpectrumView::SpectrumView() = default;
SpectrumView::~SpectrumView() = default;

bool SpectrumView::Source::operator==(const Source& other) const {
  const auto is_alike = [](const WaveformChannel& a, const WaveformChannel& b) {
    return a.scale == b.scale && a.name == b.name && a.unit == b.unit;
  };
  return file == other.file && number == other.number && begin == other.begin && end == other.end &&
         end_of_file == other.end_of_file && shape == other.shape &&
         std::ranges::equal(channels, other.channels, is_alike);
}

SpectrumView::Source SpectrumView::SourceOf(const WaveformView& waveform) const {
  Source source;
  source.file = &waveform.File();
  source.number = part_ == Part::kFile ? 0 : waveform.Number();
  source.channels = ChannelsOf(waveform, waveform.Record().Header());
  source.shape = part_ == Part::kFile ? RecordShape() : waveform.Shape();
  if (part_ == Part::kVisible && !source.shape.folds) {
    constexpr double kSlack = 1e-6;
    const ValueRange times = waveform.VisibleTimes();
    const double step = waveform.TimeOf(1);
    const auto scans = static_cast<double>(waveform.Record().Scans());
    const auto within = [scans](double scan) {
      return static_cast<std::size_t>(std::clamp(scan, 0.0, scans));
    };
    source.begin = within(std::ceil(times.low / step - kSlack));
    source.end = within(std::floor(times.high / step + kSlack) + 1);
  } else if (part_ != Part::kFile) {
    source.end = std::numeric_limits<std::size_t>::max();  // the whole record
  } else {
    source.end_of_file = waveform.File().End();
  }
  return source;
}

bool SpectrumView::Follow(const WaveformView& waveform) {
  Source source = SourceOf(waveform);
  if (run_ != nullptr && !is_stale_ && source.file == source_.file) {
    source.end_of_file = source_.end_of_file;  // of a file that grows the average comes to an end
  }
  if (source == source_ && !is_stale_ && !is_unfinished_) {
    return false;
  }
  const bool is_other_file = source.file != source_.file;
  const bool has_result = part_ == Part::kFile && !is_other_file && !is_stale_ &&
                          source.end_of_file == source_.end_of_file;
  if (is_other_file) {
    calibration_.reset();
  }
  source_ = std::move(source);
  is_stale_ = false;
  is_unfinished_ = false;
  if (part_ != Part::kFile) {
    run_.reset();
    Transform(waveform);
  } else if (!has_result) {
    raw_ = {};
    empty_ = "The whole file is being averaged";
    run_ = std::make_unique<FileSpectrumRun>(waveform.File().Path(), waveform.Options(), left_out_);
  }
  Finish(waveform);
  return true;
}

void SpectrumView::Leave() {
  run_.reset();
  source_ = {};
  raw_ = {};
  spectrum_ = {};
  is_stale_ = true;
  calibration_.reset();
}

void SpectrumView::SetPart(Part part) {
  is_stale_ = is_stale_ || part != part_;
  part_ = part;
}

void SpectrumView::SetLeftOut(const RecordNumbers& left_out) {
  if (left_out_ != left_out) {
    left_out_ = left_out;
    is_stale_ = is_stale_ || part_ == Part::kFile;
  }
}

void SpectrumView::SetCalibrationFolder(const std::filesystem::path& folder) {
  folder_ = folder;
  calibration_.reset();
  is_unfinished_ = true;
}

void SpectrumView::Transform(const WaveformView& waveform) {
  CTsRec unshaped;
  if (!source_.shape.IsOff()) {
    // What this reading would fail for is told by the waveform itself.
    (void)waveform.File().Read(waveform.Number(), &unshaped);
  }
  const CTsRec& record = source_.shape.IsOff() ? waveform.Record() : unshaped;
  const std::size_t channels = record.Channels();
  const std::size_t end = std::min(source_.end, record.Scans());
  const std::size_t scans = end - std::min(source_.begin, end);
  header_ = record.Header();
  raw_ = {};
  note_.clear();
  empty_ = waveform.EmptyText();
  if (!empty_.empty()) {
    return;
  }
  const bool is_whole = scans == record.Scans();
  // A part is cut to a length that is quickly transformed.
  auto spectrum = SpectrumOfScans(record.Held().subspan(source_.begin * channels, scans * channels),
                                  channels, SampleRate(header_), is_whole ? 0 : scans);
  if (!spectrum) {
    empty_ = "No spectrum: " + spectrum.Message();
    return;
  }
  raw_ = std::move(*spectrum);
  what_ = (is_whole ? "Record " : "Part of record ") + FormatInt(waveform.Number()) + ", " +
          FormatInt(raw_.length) + " scans";
  note_ = waveform.IsBad() ? "marked bad by the box" : "";
  if (!source_.shape.IsOff()) {
    note_.append(note_.empty() ? "" : "; ").append("without the view's filters and folding");
  }
}

bool SpectrumView::TakeResult(const WaveformView& waveform) {
  if (run_ == nullptr || !run_->IsDone()) {
    return false;
  }
  const auto run = std::move(run_);
  note_ = run->Note();
  if (run->Outcome()) {
    raw_ = run->Outcome()->spectrum;
    header_ = run->Outcome()->header;
    what_ = "Average of " + FormatInt(run->Outcome()->records) + " records, " +
            FormatInt(raw_.segments) + " segments of " + FormatInt(raw_.length) + " scans";
    empty_.clear();
  } else {
    empty_ = "No spectrum: " + run->Outcome().Message();
  }
  Finish(waveform);
  return true;
}

void SpectrumView::Finish(const WaveformView& waveform) {
  spectrum_ = raw_;
  fundamental_ = FundamentalOf(waveform.File(), header_);
  uncorrected_.clear();
  if (spectrum_.channels.empty()) {
    return;
  }
  if (folder_.empty()) {
    uncorrected_ = "not corrected: no calibration folder is chosen";
  }
  if (!uncorrected_.empty() || !Correct(waveform)) {
    TakeUnits(ChannelsOf(waveform, header_), &spectrum_);
  }
  for (SpectrumChannel& channel : spectrum_.channels) {
    channel.name = PrintableLatin1(channel.name);
  }
}

// The correction depends on rate and length only, so that paging multiplies by what is known.
bool SpectrumView::PrepareFactors(const WaveformView& waveform) {
  const auto channels = ChannelsOf(waveform, header_);
  const bool is_loaded = calibration_ != nullptr;
  if (is_loaded && factors_.rate == raw_.rate && factors_.length == raw_.length &&
      factor_scales_ == ScalesOf(channels) && factors_.channels.size() == raw_.channels.size()) {
    return true;
  }
  Result<> made;
  if (!is_loaded) {
    CalLibrary library;
    calibration_ = std::make_unique<SpectrumCalibration>();
    made = calibration_->Load(folder_, waveform.File(), header_, &library);
  }
  factors_ = {raw_.rate, raw_.length, 1, std::vector<SpectrumChannel>(raw_.channels.size())};
  for (SpectrumChannel& channel : factors_.channels) {
    channel.powers.assign(raw_.Bins(), 1);
  }
  factor_scales_ = ScalesOf(channels);
  made = made ? calibration_->Correct(channels, &factors_) : made;
  if (!made) {
    calibration_.reset();
    uncorrected_ = "not corrected: " + made.Message();
  }
  return static_cast<bool>(made);
}

bool SpectrumView::Correct(const WaveformView& waveform) {
  if (!PrepareFactors(waveform)) {
    return false;
  }
  for (std::size_t c = 0; c < spectrum_.channels.size(); ++c) {
    SpectrumChannel& channel = spectrum_.channels[c];
    const SpectrumChannel& factor = factors_.channels[c];
    channel.name = factor.name;
    channel.unit = factor.unit;
    channel.powers.resize(factor.powers.size());
    for (std::size_t bin = 0; bin < channel.powers.size(); ++bin) {
      channel.powers[bin] *= factor.powers[bin];
    }
  }
  return true;
}

void SpectrumView::SetDrawn(std::size_t channel, bool is_drawn) {
  if (is_drawn) {
    hidden_.erase(channel);
  } else {
    hidden_.insert(channel);
  }
}

double SpectrumView::Value(std::size_t channel, std::size_t bin) const {
  return is_density_ ? spectrum_.RootDensity(channel, bin) : spectrum_.Amplitude(channel, bin);
}

ValueRange SpectrumView::Frequencies() const {
  return {spectrum_.BinWidth(),
          spectrum_.Frequency(std::max<std::size_t>(spectrum_.Bins(), 2) - 1)};
}

std::vector<SpectrumCurve> SpectrumView::Curves(int columns) const {
  std::vector<SpectrumCurve> curves;
  const std::size_t bins = spectrum_.Bins();
  if (bins < 2) {
    return curves;
  }
  const double per_unit = std::max(columns, 1) / std::log(static_cast<double>(bins));
  std::vector<std::size_t> begins;  // of the columns, then the end
  int last = -1;
  for (std::size_t bin = 1; bin < bins; ++bin) {
    const int column = static_cast<int>(std::log(static_cast<double>(bin)) * per_unit);
    if (column != last) {
      begins.push_back(bin);
      last = column;
    }
  }
  begins.push_back(bins);
  for (std::size_t c = 0; c < spectrum_.channels.size(); ++c) {
    if (!IsDrawn(c)) {
      continue;
    }
    SpectrumCurve& curve = curves.emplace_back();
    curve.channel = c;
    const auto put = [&](std::size_t bin, bool is_alone) {
      const double value = Value(c, bin);
      const bool has_place = value > 0 && std::isfinite(value);
      if (has_place || is_alone) {
        curve.frequencies.push_back(spectrum_.Frequency(bin));
        curve.values.push_back(has_place ? value : std::numeric_limits<double>::quiet_NaN());
      }
    };
    const std::vector<double>& powers = spectrum_.channels[c].powers;
    for (std::size_t i = 0; i + 1 < begins.size(); ++i) {
      const auto at = [&powers](std::size_t bin) {
        return powers.begin() + static_cast<std::ptrdiff_t>(bin);
      };
      const auto [low, high] = std::minmax_element(at(begins[i]), at(begins[i + 1]));
      const auto first = static_cast<std::size_t>(std::min(low, high) - powers.begin());
      const auto second = static_cast<std::size_t>(std::max(low, high) - powers.begin());
      put(first, begins[i + 1] - begins[i] == 1);
      if (second != first) {
        put(second, false);
      }
    }
  }
  return curves;
}

std::vector<SpectrumMark> SpectrumView::Marks() const {
  std::vector<SpectrumMark> marks;
  const ValueRange range = Frequencies();
  const auto add = [&](SpectrumMark::Kind kind, double frequency) {
    if (frequency >= range.low && frequency <= range.high) {
      marks.push_back({kind, frequency});
    }
  };
  const HarmonicTableOptions options;
  for (const double mains : options.mains) {
    add(SpectrumMark::kMains, mains);
  }
  for (int k = 0; fundamental_ > 0 && k < options.most; ++k) {
    add(k == 0 ? SpectrumMark::kFundamental : SpectrumMark::kHarmonic, (2 * k + 1) * fundamental_);
  }
  return marks;
}

std::vector<HarmonicRow> SpectrumView::Harmonics(std::size_t channel) const {
  return channel < spectrum_.channels.size()
             ? HarmonicTable(spectrum_, channel, {.fundamental = fundamental_})
             : std::vector<HarmonicRow>();
}

std::string SpectrumView::WhyNoHarmonics() const {
  if (spectrum_.channels.empty()) {
    return empty_;
  }
  return fundamental_ > 0 ? "No harmonics: fewer than four periods of " +
                                FormatReal(fundamental_, kDigits) + " Hz are in a segment"
                          : "No harmonics: the record does not tell its frequency";
}

std::optional<std::size_t> SpectrumView::CursorBin() const {
  if (!cursor_ || spectrum_.Bins() < 2) {
    return std::nullopt;
  }
  const double bin = std::round(*cursor_ / spectrum_.BinWidth());
  return static_cast<std::size_t>(std::clamp(bin, 1.0, static_cast<double>(spectrum_.Bins()) - 1));
}

void SpectrumView::PlaceCursor(double frequency) {
  cursor_ = frequency;
  cursor_ = spectrum_.Frequency(CursorBin().value_or(1));
}

void SpectrumView::MoveCursor(int bins) {
  if (spectrum_.Bins() < 2) {
    return;
  }
  const ValueRange range = Frequencies();
  const auto bin = CursorBin();
  PlaceCursor(bin ? spectrum_.Frequency(*bin) + bins * spectrum_.BinWidth()
                  : (fundamental_ > 0 ? fundamental_ : std::sqrt(range.low * range.high)));
}

void SpectrumView::MoveToHarmonic(int direction) {
  const auto bin = CursorBin();
  if (!bin || !(fundamental_ > 0)) {
    MoveCursor(direction * static_cast<int>(kLeap));
    return;
  }
  // Beside the cursor's own harmonic by more than half a bin.
  const double half = spectrum_.BinWidth() / 2 * (1 + 1e-9);
  const double at = (spectrum_.Frequency(*bin) + direction * half) / fundamental_;
  const double steps = (at - 1) / 2;
  const double next = direction > 0 ? std::ceil(steps) : std::floor(steps);
  PlaceCursor((2 * std::max(next, 0.0) + 1) * fundamental_);
}

std::string SpectrumView::CursorText() const {
  const auto bin = CursorBin();
  if (!bin) {
    return {};
  }
  std::string text = FormatReal(spectrum_.Frequency(*bin), kDigits) + " Hz";
  for (const SpectrumMark& mark : Marks()) {
    if (std::abs(mark.frequency - spectrum_.Frequency(*bin)) <= spectrum_.BinWidth() / 2) {
      text += mark.kind == SpectrumMark::kMains
                  ? ", mains"
                  : ", harmonic " + FormatInt(std::lround(mark.frequency / fundamental_));
    }
  }
  return text;
}

}  // namespace orvane
