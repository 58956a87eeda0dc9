// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/sensor_forms.h"

#include <cmath>
#include <utility>

#include "table/param_access.h"

namespace orvane {
namespace {

constexpr int kSerialLength = 8;
constexpr int kLongestTime = 1000;  // of a calibration, in its own unit

constexpr Field SerialField(int control, std::string_view label, std::string_view key) {
  return TextField(control, label, key, kSerialLength);
}
constexpr Field TimeField(int control, std::string_view label) {
  return {control, Widget::kInteger, label, "CCLT", IntPT, {}, {1, kLongestTime}};
}

constexpr std::array<Choice, 2> kSensorTypes = {
    {{"KLV-1", CurrentSensorForm::kType}, {"Mod KLV-1", CurrentSensorForm::kModifiedType}}};
constexpr std::array<int, 4> kGainButtons = {CurrentSensorForm::kGain, CurrentSensorForm::kGainOf1,
                                             CurrentSensorForm::kGainOf4,
                                             CurrentSensorForm::kGainOf16};
constexpr std::array<Choice, 4> kGains = {{{"x0.25", kGainButtons[0]},
                                           {"x1", kGainButtons[1]},
                                           {"x4", kGainButtons[2]},
                                           {"x16", kGainButtons[3]}}};

struct SensorType {
  double nominal_gain;    // mV/A
  double test_amplitude;  // A
  const char* nominal_gain_text;
  const char* test_amplitude_text;
  const char* time;  // x 12 min
  std::array<const char*, 4> gains;
};
// kept: the blanks in the captions, which align the ranges.
constexpr std::array<SensorType, 2> kSensors = {{
    {100.0,
     -0.05,
     "100",
     "-0.05",
     "2",
     {"x0.25 ( 0 - 100A )", "x1    ( 0 - 25A )", "x4    ( 0 - 6.25A )", "x16   ( 0 - 1.56A )"}},
    {5.0,
     -0.1,
     "5.0",
     "-0.1",
     "20",
     {"x0.25 ( 0 - 2000A )", "x1    ( 0 - 500A )", "x4    ( 0 - 125A )", "x16   ( 0 - 31.25A )"}},
}};

constexpr auto kCurrentSensorFields = std::to_array<Field>({
    {CurrentSensorForm::kType,
     Widget::kRadios,
     "Sensor Type",
     {},
     IntPT,
     Unbound(),
     {},
     kSensorTypes},
    SerialField(CurrentSensorForm::kSerial, "Current sensor serial number", "CSSN"),
    TimeField(CurrentSensorForm::kTime, "Calibration time ( x12 min )"),
    {CurrentSensorForm::kGain, Widget::kRadios, "Gain", "HGNC", IntPT, Offset(-1), {}, kGains},
    RealField(CurrentSensorForm::kNominalGain, "Current sensor nominal gain ( mV/A) ", "CNOM"),
    RealField(CurrentSensorForm::kTestAmplitude, "Current sensor test amplitude( A )", "CAMP"),
});

bool IsNear(double a, double b) {
  constexpr double kTolerance = 0.001;
  return std::fabs(a - b) < kTolerance;
}

struct CoilType {
  const char* model;
  const char* nominal_gain;    // mV/nT
  const char* test_amplitude;  // nT
  const char* min_corner;      // Hz, like the next two
  const char* max_corner;
  const char* high_pass;
};
// In the order of the buttons.
constexpr std::array<CoilType, 5> kCoils = {{
    {"ZUMI", "100", "-0.206", "0", "0", "0"},
    {"TARK", "1000", "-0.206", "0.2", "0.4", "0"},
    {"VEXA", "500", "-0.235", "0.4", "0.8", "0.00159"},
    {"QELO", "50", "-0.206", "0.25", "0.50", "0"},
    {"WISP", "150", "-0.206", "0.1", "0.25", "0"},
}};

std::vector<Field> CoilFields(std::span<const Choice> types) {
  return {
      {CoilForm::kType, Widget::kRadios, "Coil type", {}, IntPT, Unbound(), {}, types},
      RealField(CoilForm::kNominalGain, "Coil nominal gain (mV/nT)", "HNOM"),
      RealField(CoilForm::kTestAmplitude, "Coil test waveform amplitude (nT)", "HAMP"),
      RealField(CoilForm::kMinCorner, "Coil cal. min. acceptable corner frequency (Hz)", "CCMN"),
      RealField(CoilForm::kMaxCorner, "Coil cal. max. acceptable corner frequency (Hz)", "CCMX"),
      RealField(CoilForm::kHighPass, "Coil pre-amplifier highpass corner frequency (Hz)", "CPHC"),
      TimeField(CoilForm::kTime, "Calibration time ( x20min )"),
      SerialField(CoilForm::kHxSerial, "Hx sensor serial number", "HXSN"),
      SerialField(CoilForm::kHySerial, "Hy sensor serial number", "HYSN"),
      SerialField(CoilForm::kHzSerial, "Hz sensor serial number", "HZSN"),
  };
}

}  // namespace

CurrentSensorForm::CurrentSensorForm(ParamTable* table)
    : table_(table), model_(table, kCurrentSensorFields) {}

void CurrentSensorForm::Open() {
  model_.ReadAll();
  int type = kNothingChosen;
  for (int i = static_cast<int>(kSensors.size()); i-- > 0;) {
    const SensorType& sensor = kSensors[static_cast<std::size_t>(i)];
    if (IsNear(RealParam(*table_, "CNOM"), sensor.nominal_gain) &&
        IsNear(RealParam(*table_, "CAMP"), sensor.test_amplitude)) {
      type = i;
    }
  }
  model_.SetIndex(kType, type);
  LabelGains();
}

void CurrentSensorForm::LabelGains() {
  const int type = model_.Index(kType);
  if (type == kNothingChosen) {
    return;
  }
  const auto& captions = kSensors[static_cast<std::size_t>(type)].gains;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    model_.SetButtonCaption(kGainButtons[i], captions[i]);
  }
}

void CurrentSensorForm::OnEdited(int control) {
  if (control != kType || model_.Index(kType) == kNothingChosen) {
    return;
  }
  const SensorType& sensor = kSensors[static_cast<std::size_t>(model_.Index(kType))];
  model_.SetText(kNominalGain, sensor.nominal_gain_text);
  model_.SetText(kTestAmplitude, sensor.test_amplitude_text);
  model_.SetText(kTime, sensor.time);
  LabelGains();
}

std::string CurrentSensorForm::Missing() const {
  const bool has_type = model_.Index(kType) != kNothingChosen;
  const bool has_serial = !model_.Text(kSerial).empty();
  return has_type && has_serial ? ""
         : has_serial           ? "OK needs a sensor type."
         : has_type             ? "OK needs a serial number."
                                : "OK needs a sensor type and a serial number.";
}

void CurrentSensorForm::Commit() {
  if (Missing().empty()) {
    model_.Write(std::array<int, 5>{kSerial, kTime, kGain, kNominalGain, kTestAmplitude});
  }
}

CoilForm::CoilForm(ParamTable* table, Names names)
    : names_(std::move(names)),
      types_{{{names_[0], kType},
              {names_[1], kSecondModel},
              {"Air loop", kAirLoop},
              {names_[2], kThirdModel},
              {names_[3], kFourthModel}}},
      fields_(CoilFields(types_)),
      model_(table, fields_) {}

void CoilForm::OnEdited(int control) {
  if (control != kType || model_.Index(kType) == kNothingChosen) {
    return;
  }
  const CoilType& coil = kCoils[static_cast<std::size_t>(model_.Index(kType))];
  model_.SetText(kNominalGain, coil.nominal_gain);
  model_.SetText(kTestAmplitude, coil.test_amplitude);
  model_.SetText(kMinCorner, coil.min_corner);
  model_.SetText(kMaxCorner, coil.max_corner);
  model_.SetText(kHighPass, coil.high_pass);
  for (const int serial : {kHxSerial, kHySerial, kHzSerial}) {
    model_.SetText(serial, coil.model);
  }
}

void CoilForm::Commit() {
  model_.Write(std::array<int, 9>{kNominalGain, kTestAmplitude, kMinCorner, kMaxCorner, kHighPass,
                                  kTime, kHxSerial, kHySerial, kHzSerial});
}

}  // namespace orvane
