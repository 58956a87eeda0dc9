// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_WAVEFORM_MSEED_H_
#define ORVANE_EXPORT_WAVEFORM_MSEED_H_

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "files/batch.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// Why this build cannot write MiniSEED; empty where it can.
std::string_view WhyNoMseed();

/// What a station's description is made of, where the table does not tell it.
struct StationPlace {
  std::optional<double> latitude;   ///< degrees north
  std::optional<double> longitude;  ///< degrees east
  std::optional<double> elevation;  ///< m
};

struct MseedOptions {
  TsFile::Options reading = {};
  LeaveOutChoice leave_out = {};
  bool keeps_bad = false;   ///< else records that their box marked bad are gaps
  int record_length = 512;  ///< bytes, a power of two from 256 to 65536
  std::string network = "XX";
  bool has_station = false;                 ///< also a StationXML, NAME.xml
  std::filesystem::path calibrations = {};  ///< folder; empty: that of each recording
  StationPlace place = {};
};

/// Recordings as MiniSEED files, NAME.mseed: docs/formats/mseed.md. The same input gives the same
/// bytes; memory does not grow with it.
Conversion WaveformMseed(MseedOptions options);

}  // namespace orvane

#endif  // ORVANE_EXPORT_WAVEFORM_MSEED_H_
