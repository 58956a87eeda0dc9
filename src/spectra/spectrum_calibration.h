// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRUM_CALIBRATION_H_
#define ORVANE_SPECTRA_SPECTRUM_CALIBRATION_H_

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "spectra/recording_responses.h"
#include "spectra/spectrum.h"

namespace orvane {

/// Corrects spectra of one recording by its calibrations, as `waveform harmonics` does: divided by
/// the responses of box and sensors, in V, V/m^2, T or A.
class SpectrumCalibration {
 public:
  /// Looks for the calibrations in a folder. A box without one fails; a channel without its
  /// sensor's, or whose scale is 0, stays as it is, and the note says so. `first` is the header of
  /// a record.
  Result<> Load(const std::filesystem::path& folder, const TsFile& file, const TsHeader& first,
                CalLibrary* library);

  /// Makes a spectrum of held values one of units. Bins above 0.4 of the sample rate go, where the
  /// box's filters let nothing through; that of frequency 0 becomes 0. `waveform` is for channels
  /// that stay as they are.
  Result<> Correct(const std::vector<WaveformChannel>& waveform, Spectrum* spectrum) const;

  /// What box and sensors made of each channel's input at some frequencies above 0 in Hz, in
  /// records of a rate: held values for a unit; 0 where nothing comes through. Empty for a channel
  /// that stays as it is.
  Result<std::vector<std::vector<Complex>>> Responses(double rate,
                                                      std::span<const double> frequencies) const;
  /// Of a channel's input, from 0 on.
  std::string_view Unit(std::size_t channel) const { return source_.channels[channel].Unit(); }

  /// What a user should know; empty: nothing.
  const std::string& Note() const { return note_; }

 private:
  Result<> AddChannel(const std::filesystem::path& folder, const ChannelSettings& settings,
                      CalLibrary* library);
  void AddNote(const std::string& note);

  SpectraSource source_;
  std::string note_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRUM_CALIBRATION_H_
