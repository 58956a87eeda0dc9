// SPDX-License-Identifier: GPL-3.0-or-later
// What each channel of a recording needs to become physical units: definition, gain, sensor.
#ifndef ORVANE_SPECTRA_CALIBRATED_CHANNEL_H_
#define ORVANE_SPECTRA_CALIBRATED_CHANNEL_H_

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "response/sensor_response.h"

namespace orvane {

/// Calibrations by kind and path without extension, each read once. May be used by several threads.
class CalLibrary {
 public:
  Result<std::shared_ptr<const CalData>> Get(int kind, const std::string& base_path);

 private:
  std::mutex mutex_;
  std::map<std::pair<int, std::string>, Result<std::shared_ptr<const CalData>>> items_;
};

/// The path of a unit's calibration without its extension.
std::string CalBasePath(const std::filesystem::path& folder, const std::string& unit);

/// That of the box of a recording: by "SNUM", where that is 0 by the serial number in its records.
std::string BoxCalPath(const std::filesystem::path& folder, const RecordingHeader& header,
                       int record_box);

struct CalibratedChannel {
  std::string definition;  ///< "CHDEF%d"; its first letter says what is measured
  double gain = 1;
  std::shared_ptr<const CalData> sensor_cal;
  std::string sensor_name;  ///< its file's name, else "none"
  SensorResponse sensor;    ///< only with a calibration
  bool is_reversed = false;
  double scale = 0;  ///< physical units per held value; 0: all outputs are 0

  std::string_view Unit() const;
};

/// Which sensor a channel needs: a `CalKind` and the unit's serial number, as a text. Kind 0: none.
struct SensorNeed {
  int kind = 0;
  std::string unit;
  bool has_number = false;  ///< else `unit` is all there is, and no file is meant
};
/// Channels count from 1.
SensorNeed SensorNeedOf(const RecordingHeader& header, int channel);

/// A channel from 1 on, with its sensor where it has one. 0, or what the sensor's response came to.
Status MakeCalibratedChannel(const RecordingHeader& header, const ChannelSettings& settings,
                             int number, std::shared_ptr<const CalData> sensor,
                             CalibratedChannel* channel);

/// One harmonic in physical units.
struct SpectralLine {
  double amplitude = 0;
  double phase = 0;  ///< degrees, above -180, at most 180
};

/// Makes a Fourier coefficient of held values physical: times `scale`, divided by what box and
/// sensor did to it, turned to the time origin, which lies `seconds` before the record. A response
/// that is no number or less than 1e-9 gives zeros: nothing of the signal came through.
SpectralLine CalibrateHarmonic(const Complex& value, double scale, const Complex& box,
                               const Complex& sensor, double frequency, double seconds);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_CALIBRATED_CHANNEL_H_
