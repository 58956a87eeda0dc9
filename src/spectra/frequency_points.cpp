// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/frequency_points.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

#include "base/number_text.h"
#include "spectra/harmonics.h"
#include "timeseries/decay_file.h"
#include "timeseries/fold.h"
#include "timeseries/restack_plan.h"
#include "timeseries/ts_listing.h"
#include "timeseries/ts_rec.h"

namespace orvane {
namespace {

constexpr double kHalfTurn = 180;  // degrees

double Wrapped(double degrees) { return std::remainder(degrees, 2 * kHalfTurn); }

double DegreesOf(const Complex& value) {
  return std::atan2(value.imag(), value.real()) * kHalfTurn / std::numbers::pi;
}

// About their common direction, so that -179 and 179 degrees are neighbours.
RobustStats PhaseStats(const std::vector<double>& phases) {
  Complex sum;
  for (const double phase : phases) {
    sum += UnitAt(phase * std::numbers::pi / kHalfTurn);
  }
  const double direction = DegreesOf(sum);
  std::vector<double> distances;
  for (const double phase : phases) {
    distances.push_back(Wrapped(phase - direction));
  }
  RobustStats stats = RobustStatsOf(std::move(distances));
  stats.median = Wrapped(stats.median + direction);
  return stats;
}

// The lines of one record after the other; records alike share what depends on their length.
class LineFinder {
 public:
  LineFinder(const RandomFile* file, const std::vector<WaveformChannel>* channels,
             const FrequencyPointsOptions* options)
      : file_(file), channels_(*channels), options_(*options) {}

  Result<> operator()(const TsPlace& place, std::vector<FrequencyLine>* lines) {
    const Result<> read = record_.Read(*file_, place);
    if (!read || record_.Scans() < place.header.scans) {
      return read ? Failure("the file became shorter while it was read") : read;
    }
    if (!Prepare(place.header)) {
      return {};
    }
    for (const Harmonic& harmonic : harmonics_) {
      lines->push_back({place.number, place.header.frequency, harmonic.number, {}});
      lines->back().channels.resize(channels_.size());
    }
    std::vector<double> reference(harmonics_.size());
    if (options_.reference > 0) {
      const std::vector<Complex> values = Evaluate(options_.reference - 1);
      std::transform(values.begin(), values.end(), reference.begin(), DegreesOf);
    }
    for (std::size_t c = 0; c < channels_.size(); ++c) {
      if (channels_[c].unit.empty()) {
        continue;
      }
      const std::vector<Complex> values = Evaluate(c);
      for (std::size_t i = 0; i < values.size(); ++i) {
        FrequencyPoint point{2 * std::abs(values[i]) * channels_[c].scale, {}};
        if (options_.reference > 0) {
          point.phase = Wrapped(DegreesOf(values[i]) - reference[i]);
        }
        (*lines)[i].channels[c] = point;
      }
    }
    return {};
  }

 private:
  // Whole periods, and the bins of the lines in them. False: the record has no two periods.
  bool Prepare(const TsHeader& header) {
    const double rate = SampleRate(header);
    const auto places = PhasePlaces::Of(header.scans, rate, header.frequency, false);
    if (!places) {
      return false;
    }
    const auto periods = static_cast<double>(places->Periods());
    const auto scans = static_cast<std::size_t>(
        std::min(std::round(periods * rate / header.frequency), static_cast<double>(header.scans)));
    if (plan_ && places_ && plan_->Samples() == scans && frequency_ == header.frequency &&
        rate_ == rate) {
      return true;
    }
    frequency_ = header.frequency;
    rate_ = rate;
    places_ = *places;
    harmonics_ = OddHarmonics(header.frequency, rate, scans, options_.most_harmonics);
    std::vector<std::size_t> bins;
    corrections_.clear();
    ramps_.clear();
    for (const Harmonic& harmonic : harmonics_) {
      bins.push_back(harmonic.bin);
      const BinError error =
          BinErrorOf(harmonic.number * header.frequency, rate, scans, harmonic.bin);
      const double radians = error.phase * std::numbers::pi / kHalfTurn;
      corrections_.push_back(UnitAt(-radians) / error.amplitude);
      // Of the numbers 0, 1, 2 ...: 1/N sum n w^n = 1 / (w - 1) with w = exp(-2 pi i m / N).
      const double turn =
          -2 * std::numbers::pi * static_cast<double>(harmonic.bin) / static_cast<double>(scans);
      ramps_.push_back(Inverse(UnitAt(turn) - Complex(1, 0)));
    }
    plan_.emplace(scans, bins);
    return true;
  }

  // In held values.
  std::vector<Complex> Evaluate(std::size_t channel) {
    samples_.resize(record_.Scans());
    for (std::size_t i = 0; i < samples_.size(); ++i) {
      samples_[i] = record_.Held()[i * record_.Channels() + channel];
    }
    values_.assign(samples_.begin(), samples_.end());
    const double drift = DriftPerScan(values_, *places_);
    std::vector<Complex> values = plan_->Evaluate(std::span(samples_).first(plan_->Samples()));
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i] = Times(values[i] - drift * ramps_[i], corrections_[i]);
    }
    return values;
  }

  const RandomFile* file_;
  const std::vector<WaveformChannel>& channels_;
  const FrequencyPointsOptions& options_;
  CTsRec record_;
  double frequency_ = 0;
  double rate_ = 0;
  std::optional<PhasePlaces> places_;
  std::vector<Harmonic> harmonics_;
  std::vector<Complex> corrections_;
  std::vector<Complex> ramps_;
  std::optional<HarmonicPlan> plan_;
  std::vector<std::int32_t> samples_;
  std::vector<double> values_;
};

using LineKey = std::pair<double, int>;  // base frequency, number

class PointsRun {
  // Before those that call it, because its type is what it returns.
  auto Worker() const {
    return [this, finder = LineFinder(&file_.Bytes(), &result_.channels, &options_)](
               const TsPlace& place, std::vector<FrequencyLine>* lines) mutable {
      lines->clear();
      return Takes(place) ? finder(place, lines) : Result<>();
    };
  }

 public:
  PointsRun(const TsFile* file, const FrequencyPointsOptions* options)
      : file_(*file), options_(*options) {}

  Result<FrequencyPoints> Run() {
    if (const Result<> prepared = Prepare(); !prepared) {
      return Failure(prepared.Message());
    }
    const Result<> passed = PassRecords<std::vector<FrequencyLine>>(
        Walk(), options_.pass, [this] { return Worker(); },
        [this](const TsPlace& place, const std::vector<FrequencyLine>& lines) {
          Take(place, lines);
        });
    const bool was_stopped = options_.pass.stopped && options_.pass.stopped();
    if (!passed || (result_.lines.empty() && !was_stopped)) {
      return Failure(passed ? "no record has a frequency and two whole periods of it"
                            : passed.Message());
    }
    if (points_ > kMostFrequencyPoints) {
      return Failure("more than " + FormatInt(kMostFrequencyPoints) + " points: choose a record");
    }
    Stack();
    Note();
    return std::move(result_);
  }

 private:
  Result<> Prepare() {
    const auto first = FirstWithUnits(file_, options_.leave_out, options_.record, options_.units,
                                      &result_.channels);
    if (!first) {
      return Failure(first.Message());
    }
    first_ = *first;
    return options_.reference <= result_.channels.size()
               ? Result<>()
               : Failure("there is no channel " + FormatInt(options_.reference));
  }

  TsWalker Walk() const {
    return options_.record > 0 ? TsWalker(&file_.Bytes(), file_.HeaderSize(), first_.next,
                                          {first_.offset, first_.number})
                               : file_.Walk();
  }

  bool Takes(const TsPlace& place) const {
    return !place.is_cut && !options_.leave_out.Has(place) &&
           place.header.channels == first_.header.channels;
  }

  void Take(const TsPlace& place, const std::vector<FrequencyLine>& lines) {
    points_ += lines.size() * (result_.channels.size() + 1);
    if (points_ <= kMostFrequencyPoints) {
      result_.lines.insert(result_.lines.end(), lines.begin(), lines.end());
    }
    if (!place.is_cut && options_.leave_out.Has(place)) {
      ++left_out_;
    } else if (!Takes(place) || lines.empty()) {
      others_.Add(FormatInt(place.number));
    } else if (place.header.IsBad()) {
      bad_.Add(FormatInt(place.number));
    }
    if (options_.advance) {
      options_.advance(place.next - place.offset);
    }
  }

  void Stack() {
    std::map<LineKey, std::vector<const FrequencyLine*>> repeats;
    for (const FrequencyLine& line : result_.lines) {
      repeats[{line.base, line.number}].push_back(&line);
    }
    for (const auto& [key, lines] : repeats) {
      FrequencyStack stack{key.first, key.second, {}};
      for (std::size_t c = 0; c < result_.channels.size(); ++c) {
        std::vector<double> amplitudes;
        std::vector<double> phases;
        for (const FrequencyLine* line : lines) {
          if (const auto& point = line->channels[c]) {
            amplitudes.push_back(point->amplitude);
            if (point->phase) {
              phases.push_back(*point->phase);
            }
          }
        }
        stack.channels.push_back({RobustStatsOf(std::move(amplitudes)), PhaseStats(phases)});
      }
      result_.stacks.push_back(std::move(stack));
    }
  }

  void Note() {
    std::string note = LeaveOutNote(options_.leave_out, left_out_);
    NamedFew without_unit;
    for (std::size_t c = 0; c < result_.channels.size(); ++c) {
      if (result_.channels[c].unit.empty()) {
        without_unit.Add(FormatInt(c + 1));
      }
    }
    const auto add = [&note](const char* what, const NamedFew& few) {
      if (few.Count() > 0) {
        AddNote(what + few.Text(), &note);
      }
    };
    add("nothing of channels without a unit: ", without_unit);
    add("marked bad and used: record ", bad_);
    add("left out (fewer than two whole periods, a frequency above 0.4 of the rate, or other "
        "channels than the first): record ",
        others_);
    if (options_.reference == 0) {
      AddNote("no phases: they need a channel to refer to", &note);
    }
    result_.note = std::move(note);
  }

  const TsFile& file_;
  const FrequencyPointsOptions& options_;
  TsPlace first_;
  FrequencyPoints result_;
  std::size_t points_ = 0;
  std::uint64_t left_out_ = 0;
  NamedFew bad_;
  NamedFew others_;
};

}  // namespace

bool FrequencyStack::IsOutlier(std::size_t channel, const FrequencyPoint& point) const {
  const Channel& stats = channels[channel];
  const double turned = point.phase.value_or(0) - stats.phase.median;
  return stats.amplitude.IsOutlier(point.amplitude) ||
         (point.phase && stats.phase.IsOutlier(stats.phase.median + Wrapped(turned)));
}

const FrequencyStack* FrequencyPoints::StackOf(const FrequencyLine& line) const {
  const auto found = std::lower_bound(
      stacks.begin(), stacks.end(), LineKey(line.base, line.number),
      [](const FrequencyStack& a, const LineKey& key) { return LineKey(a.base, a.number) < key; });
  return found != stacks.end() && found->base == line.base && found->number == line.number
             ? &*found
             : nullptr;
}

Result<FrequencyPoints> FrequencyPointsOf(const TsFile& file,
                                          const FrequencyPointsOptions& options) {
  return PointsRun(&file, &options).Run();
}

}  // namespace orvane
