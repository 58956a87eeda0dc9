// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectra_notes.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "files/path_names.h"
#include "response/box_response.h"
#include "response/uncertainty.h"
#include "response/verdict.h"

namespace orvane {
namespace {

// "%g"
std::string Short(double value) { return FormatReal(value, 6); }
std::string Rough(double value) { return FormatReal(value, 2); }

std::string ChannelText(int number) { return "channel " + FormatInt(number) + ": "; }

// The setting that makes all of a channel's lines 0.
std::string WhyZero(const RecordingHeader& header, int number, const CalibratedChannel& channel) {
  switch (DefinitionLetter(header, number)) {
    case 'B': {
      const std::string key = "SENSIZ" + FormatInt(number);
      return key + " is " + Short(SettingReal(header, key));
    }
    case 'H':
    case 'T':
      return channel.sensor_cal == nullptr ? "the calibration of its sensor is missing"
                                           : "HNOM of " + channel.sensor_name + " is " +
                                                 Short(channel.sensor_cal->header.hnom);
    default:
      return "its scale is not a number";
  }
}

void AddZeroColumns(const SpectraSource& source, std::vector<std::string>* notes) {
  const double full_scale = SettingReal(source.header, "FSCV");
  if (full_scale == 0 || !std::isfinite(full_scale)) {
    notes->push_back("FSCV is " + Short(full_scale) + ": all columns are 0");
    return;
  }
  int number = 0;
  for (const CalibratedChannel& channel : source.channels) {
    if (++number; channel.scale == 0) {
      notes->push_back(ChannelText(number) + WhyZero(source.header, number, channel) +
                       ": its columns are 0");
    }
  }
}

// A calibration is named by the serial number of its unit, of which the header keeps 16 bits. A
// header without a number says nothing.
void AddOtherUnit(const CalData& cal, const std::string& name, std::vector<std::string>* notes) {
  const std::int16_t told = cal.header.snum;
  if (told == 0 || told == static_cast<std::int16_t>(ParseIntPrefix(name))) {
    return;
  }
  const std::string note = "the header of " + name + " names another serial number, " +
                           FormatInt(told) + ": is it the calibration of this unit?";
  if (std::find(notes->begin(), notes->end(), note) == notes->end()) {
    notes->push_back(note);
  }
}

void AddOtherResistances(const SpectraSource& source, std::vector<std::string>* notes) {
  constexpr int kResistances = 8;
  const int channels = std::min(source.header.channels, kResistances);
  bool takes_them = false;
  for (int channel = 1; channel <= channels; ++channel) {
    takes_them = takes_them || HasOwnResistance(source.header, channel);
  }
  const OfAuxiliaryBox made_by = IsOfAuxiliaryBox(source.header, source.first.box);
  if (takes_them && made_by != OfAuxiliaryBox::kNo) {
    const bool is_sure = made_by == OfAuxiliaryBox::kYes;
    notes->push_back(
        std::string(is_sure ? "an auxiliary box made" : "an auxiliary box may have made") +
        " this recording: the contact resistances RES1 to RES8 of its table " +
        (is_sure ? "are" : "would then be") + " those of the main box's dipoles");
  }
}

// The calibration is looked up by the table's serial number; records name the box that made them.
void AddOtherBox(const SpectraSource& source, std::vector<std::string>* notes) {
  const int told = SettingInt(source.header, "SNUM");
  const int made_by = source.first.box;
  if (told != 0 && made_by != 0 && static_cast<std::uint16_t>(told) != made_by) {
    notes->push_back("box " + FormatInt(made_by) + " made the records, but the table names box " +
                     FormatInt(told) + ", whose calibration is used");
  }
}

// If the table's nominal gain is not valid, the sensor's own is used.
void AddNominalGain(const SpectraSource& source, std::vector<std::string>* notes) {
  for (const char* key : {"HNOM", "CNOM"}) {
    const int kind = std::string_view(key) == "HNOM" ? kSensorCal : kCurrentSensorCal;
    const double used = SettingReal(source.header, key);
    const bool counts =
        std::any_of(source.channels.begin(), source.channels.end(), [kind](const auto& channel) {
          return channel.sensor_cal != nullptr && channel.sensor_cal->header.ctyp == kind;
        });
    if (counts && !(used > 0 && std::isfinite(used))) {
      notes->push_back(std::string(key) + " of the table is " + Short(used) +
                       ": the nominal gains of the sensors' own calibrations are used");
    }
  }
}

void AddDoubtfulModels(const SpectraSource& source, std::vector<std::string>* notes) {
  const BoxModel& model = source.box->model;
  std::string doubtful;
  for (std::size_t c = 0; c < source.channels.size(); ++c) {
    if (model.parameter_count > 0 && model.fits[c].IsDoubtful()) {
      doubtful.append(" ").append(FormatInt(c + 1));
    }
  }
  if (!doubtful.empty()) {
    notes->push_back("the box's model does not describe the calibration of these channels well:" +
                     doubtful);
  }
}

std::string BinText(const Harmonic& harmonic, const BinError& error) {
  return "harmonic " + FormatInt(harmonic.number) + " by " + Rough(error.bins) + " (amplitude x " +
         Rough(error.amplitude) + ", phase moved by " + Rough(error.phase) + " degrees)";
}

// The harmonics' frequencies where they are known, else 0.1 Hz to 10 kHz.
std::vector<double> FrequenciesOf(const SpectraSource& source) {
  const bool is_known = source.base_frequency > 0 && source.most_harmonics > 0;
  const double low = is_known ? source.base_frequency : 0.1;
  const double high = is_known ? low * (2 * source.most_harmonics - 1) : 1e4;
  constexpr int kSteps = 8;
  std::vector<double> frequencies;
  for (int i = 0; i <= kSteps; ++i) {
    frequencies.push_back(low * std::pow(high / low, static_cast<double>(i) / kSteps));
  }
  return frequencies;
}

// Widens a band to what is known of a channel in its own setting.
void Widen(const SpectraSource& source, std::size_t channel, const FrontEndSetting& setting,
           ResponseBand* band) {
  const ModelUncertainty uncertainty(*source.box, channel);
  for (const double frequency : FrequenciesOf(source)) {
    const ResponseBand here = uncertainty.At(setting, frequency).wider;
    band->amplitude = std::max(band->amplitude, here.amplitude);
    band->phase = std::max(band->phase, here.phase);
  }
}

void AddVerdict(const std::string& what, const ChannelVerdict& verdict,
                std::vector<std::string>* notes) {
  const std::string note = what + ": " + verdict.Text();
  if (verdict.usability != Usability::kWell &&
      std::find(notes->begin(), notes->end(), note) == notes->end()) {
    notes->push_back(note);
  }
}

}  // namespace

std::vector<std::string> AccuracyNotes(const SpectraSource& source) {
  std::vector<std::string> notes;
  ResponseBand worst;
  bool has_model = false;
  const AllChannelSettings all = FillChannelSettings(source.header);
  const bool is_older = IsOfOlderFamily(source.header);
  for (std::size_t c = 0; c < source.channels.size() && c < all.size(); ++c) {
    const ChannelSettings& own = all[c];
    const std::string number = FormatInt(c + 1);
    if (is_older && own.is_mapped) {
      AddVerdict("the box's records for channel " + number,
                 JudgeRecords(*source.box, RecordKind(own.low_pass), c, ""), &notes);
    } else if (source.box->model.parameter_count > 0) {
      const FrontEndSetting setting = {own.gain, own.low_pass, own.coupling, own.Source()};
      has_model = true;
      Widen(source, c, setting, &worst);
      if (const ChannelVerdict verdict = JudgeChannel(*source.box, c);
          verdict.Concerns(own.gain, own.low_pass, own.coupling)) {
        AddVerdict("the box's calibration of channel " + number, verdict, &notes);
      }
    }
    const CalibratedChannel& channel = source.channels[c];
    if (channel.sensor_cal != nullptr) {
      AddVerdict("the calibration " + channel.sensor_name,
                 JudgeRecords(*channel.sensor_cal, channel.sensor_cal->header.ctyp,
                              SensorChannelOf(*channel.sensor_cal), ""),
                 &notes);
    }
  }
  if (has_model) {
    notes.push_back("the box's response: amplitude known to " + Rough(100 * worst.amplitude) +
                    " %, phase to " + Rough(worst.phase) + " degrees");
  }
  return notes;
}

std::vector<std::string> RecordingNotes(const SpectraSource& source) {
  std::vector<std::string> notes;
  AddZeroColumns(source, &notes);
  AddOtherBox(source, &notes);
  AddNominalGain(source, &notes);
  AddOtherUnit(*source.box, std::string(LastComponent(source.box_path)) + ".CLB", &notes);
  for (const CalibratedChannel& channel : source.channels) {
    if (channel.sensor_cal != nullptr) {
      AddOtherUnit(*channel.sensor_cal, channel.sensor_name, &notes);
    }
  }
  AddOtherResistances(source, &notes);
  AddDoubtfulModels(source, &notes);
  for (const int channel : source.reversed) {
    if (channel > source.header.channels) {
      notes.push_back("there is no " + ChannelText(channel) + "it cannot be reversed");
    }
  }
  return notes;
}

std::string BinNote(double base_frequency, double sample_rate, std::size_t samples,
                    std::span<const Harmonic> harmonics) {
  std::string first;
  std::string farthest;
  double most = 0;
  for (const Harmonic& harmonic : harmonics) {
    const BinError error =
        BinErrorOf(harmonic.number * base_frequency, sample_rate, samples, harmonic.bin);
    if (!error.IsWorthANote()) {
      continue;
    }
    const bool is_first = first.empty();
    if (is_first) {
      first = BinText(harmonic, error);
    }
    if (std::abs(error.bins) > most) {
      most = std::abs(error.bins);
      farthest = is_first ? "" : ", farthest " + BinText(harmonic, error);
    }
  }
  return first.empty() ? "" : "the base frequency is off its bin: " + first + farthest;
}

std::string BeyondNote(int number, const CalibratedChannel& channel, std::uint64_t lines) {
  const RecordCurve& curve = channel.sensor.Curve();
  return ChannelText(number) + FormatInt(lines) + " lines lie beyond the records of " +
         channel.sensor_name + " (" + Short(curve.Lowest()) + " to " + Short(curve.Highest()) +
         " Hz)";
}

bool IsBeyondRecords(const CalibratedChannel& channel, double frequency) {
  constexpr double kRounding = 1e-6;  // of frequencies stored as singles
  const RecordCurve& curve = channel.sensor.Curve();
  return !curve.IsEmpty() && (frequency < curve.Lowest() * (1 - kRounding) ||
                              frequency > curve.Highest() * (1 + kRounding));
}

std::string OwnRateNote(const std::set<double>& rates) {
  constexpr std::size_t kMostNamed = 8;
  std::string note = "Decimation filter: at the record's own rate, ";
  std::size_t named = 0;
  for (const double rate : rates) {
    if (named == kMostNamed) {
      return note + ", and " + FormatInt(rates.size() - named) + " more";
    }
    note += (named++ == 0 ? "" : ", ") + Short(rate) + " Hz";
  }
  return note;
}

}  // namespace orvane
