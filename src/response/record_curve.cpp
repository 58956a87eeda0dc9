// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/record_curve.h"

#include <algorithm>
#include <numbers>

namespace orvane {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kFarthestPhase = 120 * kDegree;
constexpr double kSteepestPhase = 89 * kDegree;
constexpr double kNoPhase = 1e-6 * kDegree;
constexpr double kAnchorReach = 0.6;  // of the distance between two points

// From b to a, in (-180, 180] degrees.
double PhaseStep(const Complex& a, const Complex& b) { return std::arg(Times(a, std::conj(b))); }

bool CanJoin(const Complex& a, const Complex& b) {
  return IsFinite(a) && IsFinite(b) && std::abs(a) > 0 && std::abs(b) > 0 &&
         std::abs(PhaseStep(a, b)) <= kFarthestPhase;
}

// K(x) = jx / (1 + jx) or 1 / (1 + jx)
Complex OnePole(double x, bool is_high_pass) {
  const Complex low = Inverse({1, x});
  return is_high_pass ? Times({0, x}, low) : low;
}

}  // namespace

RecordCurve::RecordCurve(std::vector<CurvePoint> points) : points_(std::move(points)) {
  std::erase_if(points_, [](const CurvePoint& point) {
    return !(point.frequency > 0) || !std::isfinite(point.frequency);
  });
  std::stable_sort(points_.begin(), points_.end(), [](const CurvePoint& a, const CurvePoint& b) {
    return a.frequency < b.frequency;
  });
  const auto end = std::unique(
      points_.begin(), points_.end(),
      [](const CurvePoint& a, const CurvePoint& b) { return a.frequency == b.frequency; });
  points_.erase(end, points_.end());
  double largest = 0;
  for (const CurvePoint& point : points_) {
    if (IsFinite(point.response) && std::abs(point.response) > largest) {
      largest = std::abs(point.response);
      polarity_ = point.response.real() < 0 ? -1 : 1;
    }
  }
}

Complex RecordCurve::At(double frequency) const {
  if (points_.empty()) {
    return 0;
  }
  const auto place =
      std::lower_bound(points_.begin(), points_.end(), frequency,
                       [](const CurvePoint& point, double f) { return point.frequency < f; });
  if (place != points_.end() && place->frequency == frequency) {
    return place->response;
  }
  if (place == points_.begin() || place == points_.end()) {
    return Beyond(place == points_.end() ? points_.back() : points_.front(), frequency);
  }
  return Between(static_cast<std::size_t>(place - points_.begin()), frequency);
}

// The frequency lies between the points i - 1 and i.
Complex RecordCurve::Between(std::size_t i, double frequency) const {
  const auto response = [this](std::size_t k) { return points_[k].response; };
  const double distance = points_[i].frequency - points_[i - 1].frequency;
  const bool is_before = points_[i].frequency - frequency > kAnchorReach * distance;
  const Complex anchor = response(is_before ? i - 1 : i);
  if (!CanJoin(response(i - 1), response(i))) {
    return anchor;
  }
  const bool has_left = i >= 2 && CanJoin(response(i - 2), response(i - 1));
  const bool has_right = i + 1 < points_.size() && CanJoin(response(i), response(i + 1));
  const std::size_t first = has_left ? i - 2 : i - 1;
  const std::size_t last = has_right ? i + 1 : i;
  double phase = is_before ? 0 : -PhaseStep(response(i), response(i - 1));  // of point i - 1
  if (has_left) {
    phase -= PhaseStep(response(i - 1), response(i - 2));
  }
  double gain_sum = 0;
  double phase_sum = 0;
  for (std::size_t k = first; k <= last; ++k) {
    double weight = 1;
    for (std::size_t n = first; n <= last; ++n) {
      if (n != k) {
        weight *= std::log(frequency / points_[n].frequency) /
                  std::log(points_[k].frequency / points_[n].frequency);
      }
    }
    if (k > first) {
      phase += PhaseStep(response(k), response(k - 1));
    }
    gain_sum += weight * std::log(std::abs(response(k)) / std::abs(anchor));
    phase_sum += weight * phase;
  }
  return Times(anchor, std::exp(gain_sum) * UnitAt(phase_sum));
}

Complex RecordCurve::Beyond(const CurvePoint& end, double frequency) const {
  const double phase =
      std::clamp(std::arg(polarity_ * end.response), -kSteepestPhase, kSteepestPhase);
  if (!(std::abs(phase) >= kNoPhase)) {
    return end.response;
  }
  const bool is_high_pass = phase > 0;
  const double tangent = std::tan(std::abs(phase));
  const double corner = is_high_pass ? end.frequency * tangent : end.frequency / tangent;
  return Times(end.response, Times(OnePole(frequency / corner, is_high_pass),
                                   Inverse(OnePole(end.frequency / corner, is_high_pass))));
}

std::vector<const CalFileRecord*> RecordsOfKind(const CalRecords& cal, int kind) {
  std::vector<const CalFileRecord*> records;
  for (const CalFileRecord& record : cal.records) {
    if (record.kind != kind) {
      continue;
    }
    if (!records.empty() && record.step < records.back()->step) {
      break;
    }
    records.push_back(&record);
  }
  return records;
}

std::vector<CurvePoint> CurvePoints(const std::vector<const CalFileRecord*>& records,
                                    std::size_t channel) {
  std::vector<CurvePoint> points;
  for (const CalFileRecord* record : records) {
    const CalBlock& block = record->channels[channel];
    points.push_back({record->frequency, {block.real, block.imaginary}});
  }
  return points;
}

}  // namespace orvane
