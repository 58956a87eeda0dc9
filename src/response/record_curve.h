// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_RECORD_CURVE_H_
#define ORVANE_RESPONSE_RECORD_CURVE_H_

#include <vector>

#include "calibration/cal_records.h"
#include "response/complex.h"

namespace orvane {

struct CurvePoint {
  double frequency = 0;  ///< Hz
  Complex response;
};

/// A measured response between and beyond its points. At a point it is that point exactly; between
/// two it goes through up to four around them, cubic in the logarithms of frequency and amplitude
/// and in phase; beyond the ends it continues like a filter of one pole. Points that are zero, no
/// numbers or more than 120 degrees from their neighbour are not interpolated to.
class RecordCurve {
 public:
  RecordCurve() = default;
  /// Points without a positive frequency are left out, of several with one frequency the first
  /// stays.
  explicit RecordCurve(std::vector<CurvePoint> points);

  bool IsEmpty() const { return points_.empty(); }
  /// Hz, of the points; 0 for an empty curve.
  double Lowest() const { return points_.empty() ? 0 : points_.front().frequency; }
  double Highest() const { return points_.empty() ? 0 : points_.back().frequency; }
  /// 0 for an empty curve.
  Complex At(double frequency) const;

 private:
  Complex Between(std::size_t i, double frequency) const;
  Complex Beyond(const CurvePoint& end, double frequency) const;

  std::vector<CurvePoint> points_;  // frequencies rising
  double polarity_ = 1;
};

/// The records of a kind in the order of the file, up to a second series: one whose steps start
/// again.
std::vector<const CalFileRecord*> RecordsOfKind(const CalRecords& cal, int kind);

/// What they hold of a channel.
std::vector<CurvePoint> CurvePoints(const std::vector<const CalFileRecord*>& records,
                                    std::size_t channel);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_RECORD_CURVE_H_
