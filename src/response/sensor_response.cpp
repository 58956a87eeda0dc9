// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/sensor_response.h"

#include <algorithm>

#include "base/ascii.h"

namespace orvane {
namespace {

// Of a sensor's pre-amplifier; 1 without a corner frequency.
Complex HighPass(double frequency, double corner) {
  if (!(corner > 0) || !std::isfinite(corner)) {
    return 1;
  }
  const Complex jx(0, frequency / corner);
  return Times(jx, Inverse(1.0 + jx));
}

bool IsSensitivity(double value) { return value > 0 && std::isfinite(value); }

double NominalRatio(const CalData& cal, const RecordingHeader& header) {
  const double used = SettingReal(header, cal.header.ctyp == kSensorCal ? "HNOM" : "CNOM");
  const double calibrated = cal.header.hnom;
  return IsSensitivity(used) && IsSensitivity(calibrated) ? used / calibrated : 1;
}

}  // namespace

std::size_t SensorChannelOf(const CalRecords& cal) {
  const auto records = RecordsOfKind(cal, cal.header.ctyp);
  for (std::size_t c = 0; c < cal.Channels(); ++c) {
    const bool is_used =
        std::any_of(records.begin(), records.end(), [c](const CalFileRecord* record) {
          return record->channels[c].real != 0 || record->channels[c].imaginary != 0;
        });
    if (is_used) {
      return c;
    }
  }
  return 0;
}

SensorResponse::SensorResponse(std::vector<CurvePoint> points, double corner,
                               bool contains_high_pass, double scale)
    : corner_(corner), scale_(scale) {
  if (contains_high_pass) {
    // Without it the points are smoother, so that the curve between and below them is better.
    for (CurvePoint& point : points) {
      point.response = Times(point.response, Inverse(HighPass(point.frequency, corner)));
    }
  }
  curve_ = RecordCurve(std::move(points));
}

Status SensorResponse::Prepare(const CalData* cal, const RecordingHeader* header) {
  if (cal == nullptr) {
    return kNoCalibration;
  }
  if (header == nullptr) {
    return kNoRecordingHeader;
  }
  const int kind = cal->header.ctyp;
  if (kind != kSensorCal && kind != kCurrentSensorCal) {
    return kCalKindMismatch;
  }
  const auto records = RecordsOfKind(*cal, kind);
  if (records.empty()) {
    return kNoRecordOfKind;
  }
  const std::string_view version = CalText(cal->header.ver);
  const bool is_variant =
      ContainsWithoutCase(version, "7452C") || ContainsWithoutCase(version, "7452DX");
  *this = SensorResponse(CurvePoints(records, SensorChannelOf(*cal)), cal->header.cphc, !is_variant,
                         NominalRatio(*cal, *header));
  return curve_.IsEmpty() ? kNoRecordOfKind : kOk;
}

Complex SensorResponse::At(double frequency) const {
  return scale_ * Times(curve_.At(frequency), HighPass(frequency, corner_));
}

Status ComputeSensorResponse(const CalData* cal, const RecordingHeader* header, double frequency,
                             Complex* response) {
  SensorResponse sensor;
  const Status status = sensor.Prepare(cal, header);
  *response = status == kOk ? sensor.At(frequency) : 0;
  return status;
}

}  // namespace orvane
