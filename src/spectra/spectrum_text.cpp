// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectrum_text.h"

#include <memory>

#include "base/number_text.h"
#include "spectra/file_spectrum.h"
#include "spectra/spectrum_calibration.h"

namespace orvane {
namespace {

// Gives a spectrum of held values its units.
Result<> Finish(const SpectrumOptions& options, const TsFile& file, CalLibrary* library,
                FileSpectrum* of_file, std::string* note) {
  const auto channels = WaveformChannels(of_file->header, &file.Companion());
  if (options.calibration_folder.empty()) {
    TakeUnits(channels, &of_file->spectrum);
    return {};
  }
  SpectrumCalibration calibration;
  const Result<> loaded =
      calibration.Load(options.calibration_folder, file, of_file->header, library);
  AddNote(calibration.Note(), note);
  return loaded ? calibration.Correct(channels, &of_file->spectrum) : loaded;
}

Result<std::string> ListSpectrum(const std::filesystem::path& path, const SpectrumOptions& options,
                                 CalLibrary* library, const ListingWork& work) {
  TsFile file;
  std::string note;
  const Result<> opened = OpenForListing(path, options.headers, &file, &note);
  const auto leave_out = opened
                             ? LeaveOutOf(options.leave_out, path, file.Bytes(), file.HeaderSize())
                             : Failure(opened.Message());
  if (!leave_out) {
    return Failure(leave_out.Message());
  }
  auto of_file =
      SpectrumOfFile(file, {*leave_out, options.record, options.segment, work.pass, work.advance});
  if (!of_file) {
    return Failure(of_file.Message());
  }
  if (work.pass.stopped && work.pass.stopped()) {
    return note;  // what there is goes away
  }
  AddNote(of_file->Note(*leave_out), &note);
  const Result<> finished = Finish(options, file, library, &*of_file, &note);
  if (!finished) {
    return Failure(finished.Message());
  }
  PutSpectrum(of_file->spectrum, options.is_density, work.put);
  return note;
}

}  // namespace

void PutSpectrum(const Spectrum& spectrum, bool is_density,
                 const std::function<void(std::string_view piece)>& put) {
  constexpr int kDigits = 7;
  constexpr std::size_t kMuch = std::size_t{64} * 1024;
  std::string text = "frequency (Hz)";
  for (const SpectrumChannel& channel : spectrum.channels) {
    text.append(1, '\t').append(SpectrumLabel(channel, is_density));
  }
  for (std::size_t bin = 0; bin < spectrum.Bins(); ++bin) {
    text.append(1, '\n').append(FormatReal(spectrum.Frequency(bin)));
    for (std::size_t c = 0; c < spectrum.channels.size(); ++c) {
      const double value = is_density ? spectrum.RootDensity(c, bin) : spectrum.Amplitude(c, bin);
      text.append(1, '\t').append(FormatReal(value, kDigits));
    }
    if (text.size() > kMuch) {
      put(text);
      text.clear();
    }
  }
  put(text + "\n");
}

TsListing SpectrumListing(SpectrumOptions options) {
  return [options = std::move(options), library = std::make_shared<CalLibrary>()](
             const std::filesystem::path& path, const ListingWork& work) {
    return ListSpectrum(path, options, library.get(), work);
  };
}

}  // namespace orvane
