// SPDX-License-Identifier: GPL-3.0-or-later
// The sensors whose calibration a box runs.
#ifndef ORVANE_EDITORS_SENSOR_FORMS_H_
#define ORVANE_EDITORS_SENSOR_FORMS_H_

#include <array>
#include <string>
#include <vector>

#include "forms/form_model.h"

namespace orvane {

/// The clamp-on sensor that measures the transmitted current.
class CurrentSensorForm {
 public:
  static constexpr std::string_view kTitle = "Current Sensor";
  enum Control : int {
    kType = 1021,
    kModifiedType = 1022,
    kSerial = 1012,
    kTime = 1016,
    kGain = 1046,
    kGainOf1 = 1047,
    kGainOf4 = 1048,
    kGainOf16 = 1045,
    kNominalGain = 1114,
    kTestAmplitude = 1115,
  };

  explicit CurrentSensorForm(ParamTable* table);

  FormModel& Model() { return model_; }
  /// Reads the table; nominal gain and test amplitude give the type.
  void Open();
  /// Choosing a type, again too, fills in its defaults.
  void OnEdited(int control);
  /// What OK still needs; empty where nothing is missing.
  std::string Missing() const;
  /// Only where nothing is missing.
  void Commit();

 private:
  void LabelGains();

  ParamTable* table_;
  FormModel model_;
};

/// The induction coils of the magnetic channels.
class CoilForm {
 public:
  static constexpr std::string_view kTitle = "Coil Calibration";
  enum Control : int {
    kType = 1116,
    kSecondModel = 1117,
    kAirLoop = 1118,
    kThirdModel = 1121,
    kFourthModel = 1122,
    kTime = 1016,
    kHxSerial = 1090,
    kHySerial = 1091,
    kHzSerial = 1092,
    kMinCorner = 1109,
    kMaxCorner = 1110,
    kHighPass = 1111,
    kTestAmplitude = 1112,
    kNominalGain = 1113,
  };
  /// Names of the coil models, in the order of the buttons 1116, 1117, 1121 and 1122.
  using Names = std::array<std::string, 4>;

  CoilForm(ParamTable* table, Names names);

  FormModel& Model() { return model_; }
  void Open() { model_.ReadAll(); }
  /// Choosing a type, again too, fills in its defaults.
  void OnEdited(int control);
  void Commit();

 private:
  Names names_;
  std::array<Choice, 5> types_;
  std::vector<Field> fields_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_SENSOR_FORMS_H_
