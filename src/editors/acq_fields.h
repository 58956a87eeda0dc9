// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of "Acquisition Parameters": numbers, labels, keys and how they are stored.
#ifndef ORVANE_EDITORS_ACQ_FIELDS_H_
#define ORVANE_EDITORS_ACQ_FIELDS_H_

#include <span>

#include "forms/form_field.h"

namespace orvane {

/// Control numbers; of a group that of its first button.
namespace acq {
inline constexpr std::string_view kTitle = "Acquisition Parameters";
inline constexpr int kFunction = 1055;
inline constexpr int kRequest = 1049;
inline constexpr int kECoupling = 1035;
inline constexpr int kEGain = 1060;
inline constexpr int kHCoupling = 1047;
inline constexpr int kHGain = 1067;
inline constexpr int kFilter = 1127;
inline constexpr int kVlfTrap = 1042;
inline constexpr int kLineFrequency = 1045;
inline constexpr int kCombFilter = 1202;
inline constexpr int kDrift = 1203;
inline constexpr int kSampling = 1103;
inline constexpr int kStart = 1094;
inline constexpr int kEnd = 1095;
inline constexpr int kHighStart = 1096;
inline constexpr int kHighEnd = 1097;
inline constexpr int kBand2 = 1098;
inline constexpr int kBand3 = 1099;
inline constexpr int kBand4 = 1100;
inline constexpr int kSlotLength = 1101;
inline constexpr int kChannels = 1105;
inline constexpr int kSpace = 1274;
inline constexpr int kZoneKind = 1265;
inline constexpr int kZone = 1263;
inline constexpr int kHxSerial = 1090;
inline constexpr int kHySerial = 1091;
inline constexpr int kHzSerial = 1092;
inline constexpr int kFileClose = 1044;
inline constexpr int kPowerUpWindow = 1254;

// Single buttons, most of which rules enable and disable.
inline constexpr int kRequestRecord = 1106;
inline constexpr int kRequestStandby = 1107;
inline constexpr int kRequestPause = 1108;
inline constexpr int kRequestCsRecord = 1054;
inline constexpr int kEAcCoupling = 1036;
inline constexpr int kHAcCoupling = 1048;
inline constexpr int kFilterOff = 1127;
inline constexpr int kMtAmtFunction = 1059;
inline constexpr int kFdemFunction = 1269;
inline constexpr int kEGainOf16 = 1063;
inline constexpr int kDamtSampling = 1204;

inline constexpr int kSipFunction = 1055;
inline constexpr int kTdipFunction = 1056;
inline constexpr int kTdemFunction = 1057;
inline constexpr int kCsamtFunction = 1058;
inline constexpr int kRequestSetup = 1049;
inline constexpr int kRequestGpsReset = 1051;
inline constexpr int kRequestBoxCalibration = 1052;
inline constexpr int kRequestSensorCalibration = 1053;
inline constexpr int kEDcCoupling = 1035;
inline constexpr int kHDcCoupling = 1047;
inline constexpr int kEGainOfQuarter = 1060;
inline constexpr int kEGainOf1 = 1061;
inline constexpr int kEGainOf4 = 1062;
inline constexpr int kHGainOfQuarter = 1067;
inline constexpr int kHGainOf1 = 1068;
inline constexpr int kHGainOf4 = 1069;
inline constexpr int kHGainOf16 = 1070;
inline constexpr int kFilterWeakest = 1037;
inline constexpr int kFilter1 = 1038;
inline constexpr int kFilter2 = 1039;
inline constexpr int kFilter3 = 1040;
inline constexpr int kFilter4 = 1041;
inline constexpr int k50Hz = 1045;
inline constexpr int k60Hz = 1046;
inline constexpr int kMtSampling = 1102;
inline constexpr int kAmtSampling = 1103;
inline constexpr int kUtcTimes = 1265;
inline constexpr int kLocalTimes = 1264;

// Buttons without a field.
inline constexpr int kSameTimes = 1273;
inline constexpr int kCalcSpace = 1262;
inline constexpr int kSiteSetup = 1131;
}  // namespace acq

/// Entry i of the time zone list means i - 12 hours from GMT.
inline constexpr int kFirstZone = -12;

/// In the order in which faults are reported.
std::span<const Field> AcqFields();

}  // namespace orvane

#endif  // ORVANE_EDITORS_ACQ_FIELDS_H_
