// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/spectra_file.h"

#include <algorithm>
#include <cmath>

#include "core/number_text.h"
#include "core/param_time.h"
#include "core/path_text.h"

namespace orvane {
namespace {

constexpr int kLastBand = 19;

std::string Number(std::uint64_t number) { return FormatInt(static_cast<std::int64_t>(number)); }

// "%g"
std::string Short(double value) { return FormatReal(value, 6); }

std::string LeftOutText(int band, double rate) {
  return "not divided out (rate of band " + FormatInt(band) + " is " + Short(rate) + " Hz)";
}

// The smallest band of this rate, else 0.
int BandOfRate(const RecordingHeader& header, double rate) {
  for (int band = 1; band <= kLastBand; ++band) {
    double looked_up = 0;
    if (LookupSampleRate(&header, band, &looked_up) == kOk && looked_up == rate) {
      return band;
    }
  }
  return 0;
}

}  // namespace

SpectraFile::Result SpectraFile::Write(TextFile* out) {
  WriteHead(out);
  CTsRec record;
  TsWalker walker = source_.file.Walk();
  TsPlace place;
  while (!task_.Stopped() && !out->HasFailed() && walker.Next(&place)) {
    if (place.is_cut) {
      cut_ = place.offset;
      break;
    }
    if (place.header.IsBad() && !source_.file.IsBandFile()) {
      ++bad_;
    } else if (place.header.channels != source_.header.channels) {
      ++other_channels_;
    } else {
      result_.error = record.Read(source_.file.Bytes(), place);
      if (!result_.error.empty() || !WriteRecord(record, out)) {
        return result_;
      }
    }
    task_.Advance(place.next - place.offset);
  }
  result_.error = walker.Error();
  result_.note = Note();
  if (result_.error.empty() && written_ == 0) {
    result_.error = "no record to convert" + (result_.note.empty() ? "" : ": " + result_.note);
  }
  return result_;
}

void SpectraFile::WriteHead(TextFile* out) const {
  out->Text(" Calibrated spectra of ").Text(PathText(task_.Input())).Text("\n");
  out->Text(" Box calibration:     ").Text(source_.box_path).Text(".CLB\n");
  out->Text(" Channels:            ").TextLeft(FormatInt(source_.header.channels), 8).Text("\n");
  int number = 0;
  for (const CalibratedChannel& channel : source_.channels) {
    out->Text(" Channel ").Int(++number, 2).Text(":          ");
    out->TextLeft(channel.definition, 8).Text(" ").TextLeft(channel.Unit(), 8);
    out->Text(" gain x").TextLeft(Short(channel.gain), 6).Text(" ");
    out->Text(channel.sensor_name).Text("\n");
  }
}

bool SpectraFile::WriteRecord(const CTsRec& record, TextFile* out) {
  const TsHeader& header = record.Header();
  if (!UpdatePlan(record)) {
    return false;
  }
  out->Text(" Record:              ").TextLeft(Number(record.Place().number), 8);
  out->Text("\n Time:                ").TextLeft(FormatParamTime(header.time), 27);
  out->Text("\n Base frequency (Hz): ").TextLeft(FormatFixed(plan_.base_frequency, 6), 16);
  out->Text("\n Sample rate (Hz):    ").TextLeft(FormatFixed(plan_.sample_rate, 2), 12);
  out->Text("\n Number of Scans:     ").TextLeft(Number(header.scans), 8).Text("\n");
  if (!plan_.has_filter) {
    out->Text(" Decimation filter:   ");
    out->Text(LeftOutText(plan_.band, plan_.looked_up_rate)).Text("\n");
  }
  out->Text(" Harm.  Frequency (Hz)");
  for (std::size_t c = 1; c <= source_.channels.size(); ++c) {
    out->Text("   Amplitude Ch").TextLeft(Number(c), 2);
    out->Text("    Phase Ch").TextLeft(Number(c), 2);
  }
  out->Text("\n");
  const double seconds = SecondsFromOrigin(header);
  const auto values = Transform(record);
  for (std::size_t k = 0; k < plan_.frequencies.size(); ++k) {
    const double frequency = plan_.frequencies[k];
    out->Int(plan_.numbers[k], 6).Text(" ").Fixed(frequency, 6, 16);
    for (std::size_t c = 0; c < source_.channels.size(); ++c) {
      const SpectralLine line =
          CalibrateHarmonic(values[c][k], source_.channels[c].scale, plan_.box[k][c],
                            plan_.sensor[k][c], frequency, seconds);
      out->Text(" ").Exponent(line.amplitude, 8, 17).Text(" ").Fixed(line.phase, 4, 11);
    }
    out->Text("\n");
  }
  out->Text("\n");
  ++written_;
  without_harmonics_ += plan_.frequencies.empty() ? 1 : 0;
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
    result_.error = "record " + Number(record.Place().number) +
                    " has no base frequency, nor has the parameter table";
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
  for (const auto& [number, bin] :
       OddHarmonics(base, rate, record.Scans(), source_.most_harmonics)) {
    plan_.numbers.push_back(number);
    plan_.frequencies.push_back(number * base);
    bins.push_back(bin);
  }
  if (record.Scans() > 0) {
    plan_.harmonics.emplace(record.Scans(), bins);
  }
  return UpdateBox(rate) && AddResponses();
}

bool SpectraFile::UpdateBox(double sample_rate) {
  plan_.band = source_.band > 0 ? source_.band : BandOfRate(source_.header, sample_rate);
  const Status status = box_.Prepare(source_.box.get(), &source_.header, plan_.band);
  if (status != kOk) {
    result_.error = StatusText(status);
    result_.status = status;
    return false;
  }
  plan_.looked_up_rate = box_.SampleRate();
  plan_.has_filter = plan_.looked_up_rate != 0 && plan_.looked_up_rate == sample_rate;
  if (!plan_.has_filter) {
    box_.LeaveOutFilter();
    rates_left_out_[plan_.band] = plan_.looked_up_rate;
  }
  return true;
}

bool SpectraFile::AddResponses() {
  const std::size_t channels = source_.channels.size();
  std::vector<double> validities(channels);
  for (const double frequency : plan_.frequencies) {
    auto& box = plan_.box.emplace_back(channels);
    auto& sensor = plan_.sensor.emplace_back(channels, 1);
    const Status status = box_.At(frequency, box, validities);
    if (status != kOk) {
      result_.error = "at " + Short(frequency) + " Hz: " + std::string(StatusText(status));
      result_.status = status;
      return false;
    }
    for (std::size_t c = 0; c < channels; ++c) {
      const CalibratedChannel& channel = source_.channels[c];
      box[c] = channel.is_reversed ? -box[c] : box[c];
      sensor[c] = channel.sensor_cal == nullptr ? 1 : channel.sensor.At(frequency);
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
  if (bad_ > 0) {
    add(Number(bad_) + " bad records are left out");
  }
  if (other_channels_ > 0) {
    add(Number(other_channels_) + " records with another number of channels are left out");
  }
  if (without_harmonics_ > 0) {
    add(Number(without_harmonics_) + " records have no harmonic within their length and rate");
  }
  for (const auto& [band, rate] : rates_left_out_) {
    add("the decimation filter is " + LeftOutText(band, rate));
  }
  if (cut_) {
    add(CutRecordNote(*cut_));
  }
  std::string doubtful;
  for (std::size_t c = 0; c < source_.channels.size(); ++c) {
    const BoxModel& model = source_.box->model;
    if (model.parameter_count > 0 && model.fits[c].IsDoubtful()) {
      doubtful.append(" ").append(Number(c + 1));
    }
  }
  if (!doubtful.empty()) {
    add("the box's model does not describe the calibration of these channels well:" + doubtful);
  }
  return note;
}

}  // namespace orvane
