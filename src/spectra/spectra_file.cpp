// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectra_file.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "files/path_text.h"
#include "spectra/spectra_notes.h"
#include "table/param_time.h"

namespace orvane {
namespace {

// "%g"
std::string Short(double value) { return FormatReal(value, 6); }

std::string NoteLine(const std::string& note) {
  return std::string(" Note:                ").append(note);
}

}  // namespace

SpectraFile::Written SpectraFile::Write(SpectraWriter* out) {
  out->Head(source_, task_.Input());
  CTsRec record;
  TsWalker walker = source_.file.Walk();
  TsPlace place;
  while (!task_.Stopped() && !out->HasFailed() && walker.Next(&place)) {
    if (place.is_cut) {
      cut_ = place.offset;
      break;
    }
    if (source_.leave_out.numbers.Has(place.number)) {
      ++chosen_;
    } else if (place.header.IsBad() && !source_.file.IsBandFile()) {
      ++bad_;
    } else if (place.header.channels != source_.header.channels) {
      ++other_channels_;
    } else {
      result_.outcome = record.Read(source_.file.Bytes(), place);
      if (!result_.outcome || !WriteRecord(record, out)) {
        return result_;
      }
    }
    task_.Advance(place.next - place.offset);
  }
  result_.outcome = walker.Outcome();
  result_.note = Note();
  if (result_.outcome && written_ == 0) {
    result_.outcome =
        Failure("no record to convert" + (result_.note.empty() ? "" : ": " + result_.note));
  }
  return result_;
}

std::vector<std::string> SpectraFile::Remarks() const {
  std::vector<std::string> remarks;
  if (plan_.has_own_rate) {
    remarks.push_back(std::string(" ").append(OwnRateNote({plan_.sample_rate})));
  }
  if (!plan_.bin_note.empty()) {
    remarks.push_back(NoteLine(plan_.bin_note));
  }
  for (std::size_t c = 0; c < plan_.beyond.size(); ++c) {
    if (plan_.beyond[c] > 0) {
      remarks.push_back(
          NoteLine(BeyondNote(static_cast<int>(c) + 1, source_.channels[c], plan_.beyond[c])));
    }
  }
  return remarks;
}

void SpectraFile::CountNotes(std::uint64_t record) {
  ++written_;
  without_harmonics_ += plan_.frequencies.empty() ? 1 : 0;
  if (plan_.has_own_rate) {
    own_rates_.insert(plan_.sample_rate);
  }
  if (!plan_.bin_note.empty() && ++off_bin_ == 1) {
    bin_note_ = "record " + FormatInt(record) + ": " + plan_.bin_note;
  }
  for (std::size_t c = 0; c < beyond_.size(); ++c) {
    beyond_[c] += plan_.beyond[c];
  }
}

bool SpectraFile::WriteRecord(const CTsRec& record, SpectraWriter* out) {
  const TsHeader& header = record.Header();
  if (!UpdatePlan(record)) {
    return false;
  }
  SpectraRecord spectra{record.Place().number,
                        header,
                        plan_.base_frequency,
                        plan_.sample_rate,
                        plan_.numbers,
                        plan_.frequencies,
                        Remarks(),
                        {}};
  const double seconds = SecondsFromOrigin(header);
  const auto values = Transform(record);
  for (std::size_t k = 0; k < plan_.frequencies.size(); ++k) {
    auto& lines = spectra.lines.emplace_back();
    for (std::size_t c = 0; c < source_.channels.size(); ++c) {
      lines.push_back(CalibrateHarmonic(values[c][k], source_.channels[c].scale, plan_.box[k][c],
                                        plan_.sensor[k][c], plan_.frequencies[k], seconds));
    }
  }
  out->Put(spectra);
  CountNotes(record.Place().number);
  return true;
}

// The record's own, else the user's, else the companion table's.
double SpectraFile::BaseFrequency(const TsHeader& header) const {
  for (const double frequency :
       {double{header.frequency}, source_.base_frequency, SettingReal(source_.header, "FREQ")}) {
    if (std::isfinite(frequency) && frequency > 0) {
      return frequency;
    }
  }
  return 0;
}

bool SpectraFile::UpdatePlan(const CTsRec& record) {
  const double base = BaseFrequency(record.Header());
  const double rate = SampleRate(record.Header());
  if (base == 0) {
    result_.outcome = Failure("record " + FormatInt(record.Place().number) +
                              " has no base frequency, nor has the parameter table");
    return false;
  }
  if (plan_.harmonics && plan_.base_frequency == base && plan_.sample_rate == rate &&
      plan_.harmonics->Samples() == record.Scans()) {
    return true;
  }
  plan_ = {};
  plan_.base_frequency = base;
  plan_.sample_rate = rate;
  std::vector<std::size_t> bins;
  const auto harmonics = OddHarmonics(base, rate, record.Scans(), source_.most_harmonics);
  for (const auto& [number, bin] : harmonics) {
    plan_.numbers.push_back(number);
    plan_.frequencies.push_back(number * base);
    bins.push_back(bin);
  }
  plan_.bin_note = BinNote(base, rate, record.Scans(), harmonics);
  if (record.Scans() > 0) {
    plan_.harmonics.emplace(record.Scans(), bins);
  }
  return UpdateBox(rate) && AddResponses();
}

bool SpectraFile::UpdateBox(double sample_rate) {
  const Status status = responses_.Prepare(sample_rate);
  if (status != kOk) {
    result_.outcome = Failure(std::string(StatusText(status)));
    result_.status = status;
    return false;
  }
  plan_.has_own_rate = responses_.HasOwnRate();
  return true;
}

bool SpectraFile::AddResponses() {
  const std::size_t channels = source_.channels.size();
  plan_.beyond.assign(channels, 0);
  for (const double frequency : plan_.frequencies) {
    auto& box = plan_.box.emplace_back(channels);
    auto& sensor = plan_.sensor.emplace_back(channels, 1);
    const Status status = responses_.At(frequency, box, sensor);
    if (status != kOk) {
      result_.outcome =
          Failure("at " + Short(frequency) + " Hz: " + std::string(StatusText(status)));
      result_.status = status;
      return false;
    }
    for (std::size_t c = 0; c < channels; ++c) {
      const CalibratedChannel& channel = source_.channels[c];
      plan_.beyond[c] += channel.scale != 0 && IsBeyondRecords(channel, frequency) ? 1 : 0;
    }
  }
  return true;
}

// Modulo a period; the origin is midnight of the first record's day, the same for all boxes.
double SpectraFile::SecondsFromOrigin(const TsHeader& header) const {
  const std::uint32_t first = ParamTimeToSeconds(source_.first.time);
  const double seconds = static_cast<double>(ParamTimeToSeconds(header.time)) -
                         static_cast<double>(first - first % kSecondsPerDay);
  const double period = 1 / plan_.base_frequency;
  const double rest = std::fmod(seconds, period);
  return rest < 0 ? rest + period : rest;
}

// For each channel the values of its harmonics.
std::vector<std::vector<Complex>> SpectraFile::Transform(const CTsRec& record) const {
  const std::size_t channels = source_.channels.size();
  const std::size_t scans = record.Scans();
  std::vector<std::vector<Complex>> values;
  std::vector<std::int32_t> samples(scans);
  for (std::size_t c = 0; c < channels && !plan_.frequencies.empty(); ++c) {
    const std::int32_t* from = record.Held().data() + c;
    for (std::size_t i = 0; i < scans; ++i) {
      samples[i] = from[i * channels];
    }
    values.push_back(plan_.harmonics->Evaluate(samples));
  }
  return values;
}

std::string SpectraFile::Note() const {
  std::string note;
  const auto add = [&note](const std::string& text) {
    note.append(note.empty() ? "" : "; ").append(text);
  };
  if (const std::string left_out = LeaveOutNote(source_.leave_out, chosen_); !left_out.empty()) {
    add(left_out);
  }
  if (bad_ > 0) {
    add(FormatInt(bad_) + (bad_ == 1 ? " bad record is left out" : " bad records are left out"));
  }
  if (other_channels_ > 0) {
    add(FormatInt(other_channels_) + " records with a different number of channels are left out");
  }
  if (without_harmonics_ > 0) {
    add(FormatInt(without_harmonics_) + " records have no harmonic within their length and rate");
  }
  if (!own_rates_.empty()) {
    add(OwnRateNote(own_rates_));
  }
  for (std::size_t c = 0; c < beyond_.size(); ++c) {
    if (beyond_[c] > 0) {
      add(BeyondNote(static_cast<int>(c) + 1, source_.channels[c], beyond_[c]));
    }
  }
  if (off_bin_ > 0) {
    add(bin_note_ +
        (off_bin_ > 1 ? ", and so in " + FormatInt(off_bin_ - 1) + " more records" : ""));
  }
  if (cut_) {
    add(CutRecordNote(*cut_));
  }
  for (const std::string& of_all : RecordingNotes(source_)) {
    add(of_all);
  }
  for (const std::string& accuracy : AccuracyNotes(source_)) {
    add(accuracy);
  }
  return note;
}

}  // namespace orvane
