// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_CALIBRATED_SPECTRA_H_
#define ORVANE_SPECTRA_CALIBRATED_SPECTRA_H_

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "files/batch.h"
#include "forms/prompts.h"
#include "timeseries/leave_out.h"

namespace orvane {

/// Where calibrations usually are; empty where there is no such folder.
std::filesystem::path UsualCalFolder();

class SpectraWriter;
std::shared_ptr<SpectraWriter> SpectraText();

struct SpectraOptions {
  std::filesystem::path calibration_folder = {};  ///< empty: that of each recording
  double base_frequency = 0;                      ///< Hz, where a record has none; 0: "FREQ"
  int most_harmonics = 64;                        ///< of each record
  std::set<int> reversed = {};    ///< channels, from 1, that are wired the other way
  LeaveOutChoice leave_out = {};  ///< beside the bad ones, which always are
  /// Asked where a sensor's calibration is missing, once for each sensor of a batch. Yes: its
  /// channels are converted without it, their outputs are 0; No: the files that need it are left
  /// alone; Cancel ends the batch. Called from several threads, one at a time. Empty: No.
  std::function<Answer(const std::string& question, const BatchTask& task)> ask = {};
  /// What is written of each recording, and how its name ends.
  std::function<std::shared_ptr<SpectraWriter>()> writer = SpectraText;
  std::string suffix = "_cal.txt";
};

/// Channels 1 to 12 with commas between them, such as "3,5"; none where one is no channel.
std::optional<std::set<int>> ChannelsIn(std::string_view text);

/// The band of a file "*.TS1" to "*.TS19"; 0 for all others.
int SpectraBand(std::string_view path);

/// Recordings as amplitudes and phases of the odd harmonics of their base frequency, in physical
/// units: divided by the responses of box and sensors, in a file beside the recording whose name is
/// that of `TsResultName()`. docs/formats/calibrated-spectra.md says
/// the text, docs/response.md the computation.
Conversion CalibratedSpectra(SpectraOptions options);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_CALIBRATED_SPECTRA_H_
