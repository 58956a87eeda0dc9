// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_BOX_STATUS_H_
#define ORVANE_EDITORS_BOX_STATUS_H_

#include "forms/form_model.h"

namespace orvane {

/// What a box reported of its state in the table: only shown, never written.
class BoxStatusForm {
 public:
  static constexpr std::string_view kTitle = "Box Status";
  enum Control : int {
    kLatitude = 1263,
    kLongitude = 1264,
    kElevation = 1266,
    kSatellites = 1262,
    kClock = 1269,
    kTimeError = 1270,
    kLastFix = 1268,
    kRecords = 1273,
    kSaturated = 1260,
    kBad = 1259,
    kBadStacks = 1261,
    kFirstRecord = 1277,
    kLastRecord = 1278,
    kBattery = 1276,
    kTemperature = 1275,
    kDisk = 1274,
    kFrontEnd = 1257,
    kGps = 1256,
    kLoader = 1258,
    kMasterLatitude = 1267,
    kMasterLongitude = 1265,
    kMasterDistance = 1272,
    kMasterBearing = 1271,
    kLocalTime = 1280,
  };

  explicit BoxStatusForm(ParamTable* table);

  FormModel& Model() { return model_; }
  void Open() { model_.ReadAll(); }
  /// The three times in the table's time zone, or in UTC.
  void OnEdited(int control);

 private:
  ParamTable* table_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_BOX_STATUS_H_
