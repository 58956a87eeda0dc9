// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/calibrated_channel.h"

#include <algorithm>
#include <numbers>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr double kFullScale = 2147483392.0;  // the largest held value
constexpr double kNothing = 1e-9;

// By the serial number that ends a sensor's text; without one the text itself.
SensorNeed NeedOf(CalKind kind, const std::string& text) {
  const auto number = ParseIntAtEnd(text);
  return {kind, number ? FormatInt(*number) : text, number.has_value()};
}

// What a volt at the box's input means: 0 without the sensor's calibration.
double SensorFactor(const RecordingHeader& header, int number, char letter, const CalData* sensor) {
  switch (letter) {
    case 'B':
      return SettingReal(header, "SENSIZ" + FormatInt(number));
    case 'H':
      return sensor == nullptr ? 0 : sensor->header.hnom * 1e6;
    case 'T':
      return sensor == nullptr ? 0 : sensor->header.hnom / 1000;
    default:
      return 1;
  }
}

}  // namespace

Result<std::shared_ptr<const CalData>> CalLibrary::Get(int kind, const std::string& base_path) {
  const std::lock_guard lock(mutex_);
  const auto [place, is_new] =
      items_.try_emplace({kind, base_path}, Failure(std::string(StatusText(kCalNoMemory))));
  if (is_new) {
    CalReport report;
    if (std::shared_ptr<const CalData> cal = ReadCalFile(kind, base_path, &report)) {
      place->second = std::move(cal);
    } else {
      place->second = Failure(report.message);
    }
  }
  return place->second;
}

std::string CalBasePath(const std::filesystem::path& folder, const std::string& unit) {
  return PathText(folder / PathOf(unit));
}

std::string BoxCalPath(const std::filesystem::path& folder, const RecordingHeader& header,
                       int record_box) {
  const int serial = SettingInt(header, "SNUM");
  return CalBasePath(folder, FormatInt(serial != 0 ? serial : record_box));
}

std::string_view CalibratedChannel::Unit() const {
  switch (definition.empty() ? '\0' : UpperCased(definition[0])) {
    case 'B':
      return "V/m^2";
    case 'H':
      return "T";
    case 'T':
      return "A";
    default:
      return "V";
  }
}

SensorNeed SensorNeedOf(const RecordingHeader& header, int channel) {
  switch (DefinitionLetter(header, channel)) {
    case 'H': {
      const char axis = ComponentAxis(header, channel);
      const std::string key = std::string("H") + axis + "SN";
      return NeedOf(kSensorCal, axis == '\0' ? std::string() : SettingText(header, key));
    }
    case 'T':
      return NeedOf(kCurrentSensorCal, SettingText(header, "CSSN"));
    default:
      return {};
  }
}

Status MakeCalibratedChannel(const RecordingHeader& header, const ChannelSettings& settings,
                             int number, std::shared_ptr<const CalData> sensor,
                             CalibratedChannel* channel) {
  constexpr int kMostCode = 100;
  channel->definition = SettingText(header, "CHDEF" + FormatInt(number));
  const char letter = DefinitionLetter(header, number);
  const int code = settings.is_mapped ? settings.gain : SettingInt(header, "HGNC");
  channel->gain = std::ldexp(1.0, 2 * std::clamp(code, -kMostCode, kMostCode));
  const double factor = SensorFactor(header, number, letter, sensor.get());
  const double scale = SettingReal(header, "FSCV") / channel->gain / factor / kFullScale;
  channel->scale = factor != 0 && std::isfinite(scale) ? scale : 0;
  channel->sensor_cal = std::move(sensor);
  return channel->sensor_cal == nullptr
             ? kOk
             : channel->sensor.Prepare(channel->sensor_cal.get(), &header);
}

SpectralLine CalibrateHarmonic(const Complex& value, double scale, const Complex& box,
                               const Complex& sensor, double frequency, double seconds) {
  if (value * scale == 0.0) {
    return {};  // zeros have no phase, whatever their signs
  }
  for (const Complex& response : {box, sensor}) {
    if (!IsFinite(response) || !(std::abs(response) >= kNothing)) {
      return {};
    }
  }
  constexpr double kDegrees = 180 / std::numbers::pi;
  const Complex origin = UnitAt(-2 * std::numbers::pi * seconds * frequency);
  const Complex line = Times(Times(value * scale, Inverse(Times(box, sensor))), origin);
  const double phase = std::arg(line) * kDegrees;
  return {std::abs(line), phase <= -180 ? 180 : phase};
}

}  // namespace orvane
