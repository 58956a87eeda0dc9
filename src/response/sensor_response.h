// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_SENSOR_RESPONSE_H_
#define ORVANE_RESPONSE_SENSOR_RESPONSE_H_

#include "response/cal_file.h"
#include "response/record_curve.h"
#include "response/recording_header.h"

namespace orvane {

/// The channel that a sensor's records fill: coils have one, but it need not be the first.
std::size_t SensorChannelOf(const CalRecords& cal);

/// The response of a coil or current sensor as a recording used it: that of its calibration, scaled
/// to the recording's nominal sensitivity.
class SensorResponse {
 public:
  SensorResponse() = default;
  /// A measured curve times a scale. The high pass with this corner (Hz; none where it is not above
  /// 0) is either contained in the points or comes on top of them.
  SensorResponse(std::vector<CurvePoint> points, double corner, bool contains_high_pass,
                 double scale);

  /// 0, 1222, 1228, 1229 or 1230.
  Status Prepare(const CalData* cal, const RecordingHeader* header);
  Complex At(double frequency) const;
  /// The measured points between which there is no guess.
  const RecordCurve& Curve() const { return curve_; }

 private:
  RecordCurve curve_;
  double corner_ = 0;  // Hz, of the high pass that is not in the curve; 0: none
  double scale_ = 1;
};

/// The same for one frequency.
Status ComputeSensorResponse(const CalData* cal, const RecordingHeader* header, double frequency,
                             Complex* response);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_SENSOR_RESPONSE_H_
