// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectrum_calibration.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "files/path_text.h"
#include "spectra/calibrated_spectra.h"
#include "spectra/spectra_notes.h"

namespace orvane {
namespace {

constexpr double kHighestShare = 0.4;  // of the sample rate

}  // namespace

void SpectrumCalibration::AddNote(const std::string& note) {
  note_.append(note_.empty() || note.empty() ? "" : "; ").append(note);
}

Result<> SpectrumCalibration::Load(const std::filesystem::path& folder, const TsFile& file,
                                   const TsHeader& first, CalLibrary* library) {
  if (!file.Companion().IsLoaded()) {
    return Failure(file.CompanionNote().empty() ? "no parameter table" : file.CompanionNote());
  }
  source_.header = {file.Companion(), first.channels};
  source_.first = first;
  source_.band = SpectraBand(PathText(file.Path()));
  source_.box_path = BoxCalPath(folder, source_.header, first.box);
  const auto box = library->Get(kBoxCal, source_.box_path);
  if (!box) {
    return Failure(box.Message());
  }
  source_.box = *box;
  if (source_.box->Channels() != static_cast<std::size_t>(source_.header.channels)) {
    return Failure(std::string(StatusText(kChannelsDiffer)));
  }
  for (const ChannelSettings& settings : FillChannelSettings(source_.header)) {
    if (source_.channels.size() < source_.box->Channels()) {
      if (const Result<> added = AddChannel(folder, settings, library); !added) {
        return added;
      }
    }
  }
  for (const std::string& note : RecordingNotes(source_)) {
    AddNote(note);
  }
  for (const std::string& note : AccuracyNotes(source_)) {
    AddNote(note);
  }
  return {};
}

Result<> SpectrumCalibration::AddChannel(const std::filesystem::path& folder,
                                         const ChannelSettings& settings, CalLibrary* library) {
  CalibratedChannel& channel = source_.channels.emplace_back();
  const int number = static_cast<int>(source_.channels.size());
  const SensorNeed need = SensorNeedOf(source_.header, number);
  std::shared_ptr<const CalData> sensor;
  channel.sensor_name = "none";
  if (need.kind != 0) {
    const auto found = need.has_number ? library->Get(need.kind, CalBasePath(folder, need.unit))
                                       : Failure("the recording has no serial number");
    if (found) {
      sensor = *found;
      channel.sensor_name = need.unit + ".CLC";
    } else {
      AddNote("channel " + FormatInt(number) + " is not corrected: " + found.Message());
    }
  }
  const Status status =
      MakeCalibratedChannel(source_.header, settings, number, std::move(sensor), &channel);
  return status == kOk ? Result<>()
                       : Failure("channel " + FormatInt(number) + ", " + channel.sensor_name +
                                 ": " + std::string(StatusText(status)));
}

Result<> SpectrumCalibration::Correct(const std::vector<WaveformChannel>& waveform,
                                      Spectrum* spectrum) const {
  const std::size_t channels = source_.channels.size();
  if (spectrum->channels.size() != channels) {
    return Failure(std::string(StatusText(kChannelsDiffer)));
  }
  RecordingResponses responses(&source_);
  Status status = responses.Prepare(spectrum->rate);
  const auto bins = static_cast<std::size_t>(
      std::floor(kHighestShare * static_cast<double>(spectrum->length)) + 1);
  TakeUnits(waveform, spectrum);
  for (SpectrumChannel& channel : spectrum->channels) {
    channel.powers.resize(std::min(bins, channel.powers.size()));
  }
  std::vector<Complex> box(channels);
  std::vector<Complex> sensor(channels);
  for (std::size_t bin = 0; bin < spectrum->Bins() && status == kOk; ++bin) {
    const double frequency = spectrum->Frequency(bin);
    status = bin == 0 ? kOk : responses.At(frequency, box, sensor);
    for (std::size_t c = 0; c < channels; ++c) {
      const CalibratedChannel& calibrated = source_.channels[c];
      if (calibrated.scale != 0) {
        const double factor = CalibrateHarmonic(1.0, calibrated.scale / waveform[c].scale, box[c],
                                                sensor[c], frequency, 0)
                                  .amplitude;
        spectrum->channels[c].powers[bin] *= bin == 0 ? 0 : factor * factor;
      }
    }
  }
  for (std::size_t c = 0; c < channels; ++c) {
    if (source_.channels[c].scale != 0) {
      spectrum->channels[c].unit = source_.channels[c].Unit();
    }
  }
  return status == kOk ? Result<>() : Failure(std::string(StatusText(status)));
}

Result<std::vector<std::vector<Complex>>> SpectrumCalibration::Responses(
    double rate, std::span<const double> frequencies) const {
  const std::size_t channels = source_.channels.size();
  std::vector<std::vector<Complex>> all(channels);
  RecordingResponses responses(&source_);
  Status status = responses.Prepare(rate);
  std::vector<Complex> box(channels);
  std::vector<Complex> sensor(channels);
  for (std::size_t i = 0; i < frequencies.size() && status == kOk; ++i) {
    status = responses.At(frequencies[i], box, sensor);
    for (std::size_t c = 0; c < channels; ++c) {
      if (source_.channels[c].scale != 0) {
        const Complex response = Times(box[c], sensor[c]);
        all[c].push_back(IsFinite(response) ? response / source_.channels[c].scale : 0.0);
      }
    }
  }
  if (status != kOk) {
    return Failure(std::string(StatusText(status)));
  }
  return all;
}

}  // namespace orvane
