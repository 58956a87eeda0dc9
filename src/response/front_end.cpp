// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/front_end.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr int kStrengths = 5;

}  // namespace

LowPassFilter LowPassFilterOf(int code) {
  for (const int first : {16, 80, 160}) {
    if (code >= first && code < first + kStrengths) {
      return {code - first, first == 80};
    }
  }
  return {};
}

// What response and derivatives have in common.
struct FrontEnd::Point {
  Complex s;          // j omega
  Complex tank;       // impedance of the trap
  Complex wire;       // that of choke B alone
  Complex series;     // all that is in series
  Complex shunt;      // admittance to common
  Complex coupling;   // s times the coupling capacitor
  Complex numerator;  // gain and delay
  Complex inverse;    // 1 / D
};

FrontEnd::FrontEnd(const FrontEndParameters& parameters, const FrontEndSetting& setting)
    : p_(parameters), source_(setting.source), is_ac_(setting.coupling == 1) {
  const auto stages = static_cast<unsigned>(std::clamp(setting.gain, -1, 2) + 1);
  has_stage_a_ = (stages & 1U) != 0;
  has_stage_b_ = (stages & 2U) != 0;
  gain_ = (1 + p_[kBaseGain]) * (has_stage_a_ ? 1 + p_[kStageA] : 1) *
          (has_stage_b_ ? 1 + p_[kStageB] : 1);
  const LowPassFilter filter = LowPassFilterOf(setting.low_pass);
  shunt_ = p_[kInput];
  if (filter.strength >= 0) {
    capacitor_ = kLowPass + static_cast<std::size_t>(filter.strength);
    shunt_ += p_[capacitor_];
  }
  bypass_ = filter.has_trap ? 0 : 1 / p_[kTrapSwitch];
  bias_ = 1 / (1000 * p_[kBias]);
  const bool is_possible = p_[kDelay] >= -kLongestDelay && p_[kDelay] <= kLongestDelay;
  delay_ = 1e-6 * (is_possible ? p_[kDelay] : kUsualDelay);
}

FrontEnd::Point FrontEnd::At(double frequency) const {
  const double omega = 2 * std::numbers::pi * frequency;
  Point at;
  at.s = {0, omega};
  at.shunt = {bias_, omega * shunt_};
  at.wire = {p_[kChokeBWire], omega * p_[kChokeB]};
  const Complex through = Inverse(at.wire);
  at.tank = Inverse({through.real() + bypass_, through.imag() + omega * p_[kTank]});
  at.series = source_ + Complex(p_[kChokeAWire] + p_[kSeries], omega * p_[kChokeA]) + at.tank;
  at.numerator = gain_ * UnitAt(-omega * delay_);
  at.coupling = {0, omega * p_[kCoupling]};
  const Complex divider = 1.0 + Times(at.series, at.shunt);
  at.inverse = Inverse(is_ac_ ? Times(at.coupling, divider) + at.shunt : divider);
  return at;
}

Complex FrontEnd::Response(double frequency) const {
  const Point at = At(frequency);
  const Complex passed = Times(at.numerator, at.inverse);
  return is_ac_ ? Times(passed, at.coupling) : passed;
}

Complex FrontEnd::Response(double frequency, Gradient* gradient) const {
  const Point at = At(frequency);
  const Complex passed = Times(at.numerator, at.inverse);
  const Complex h = is_ac_ ? Times(passed, at.coupling) : passed;
  const Complex q = -Times(h, at.inverse);
  const Complex by_series = Times(q, is_ac_ ? Times(at.coupling, at.shunt) : at.shunt);
  const Complex by_shunt = Times(q, is_ac_ ? Times(at.coupling, at.series) + 1.0 : at.series);
  const Complex by_tank = Times(by_series, Times(at.tank, at.tank));
  const Complex through = Inverse(at.wire);
  Gradient& g = *gradient;
  g[kBaseGain] = h / (1 + p_[kBaseGain]);
  g[kStageA] = h / (1 + p_[kStageA]);
  g[kStageB] = h / (1 + p_[kStageB]);
  g[kSeries] = g[kChokeAWire] = by_series;
  g[kChokeA] = Times(by_series, at.s);
  g[kChokeBWire] = Times(by_tank, Times(through, through));
  g[kChokeB] = Times(g[kChokeBWire], at.s);
  g[kTank] = -Times(by_tank, at.s);
  g[kTrapSwitch] = by_tank * (bypass_ * bypass_);
  g[kInput] = Times(by_shunt, at.s);
  g[capacitor_ == 0 ? std::size_t{kInput} : capacitor_] = g[kInput];
  g[kBias] = by_shunt * (-bias_ / p_[kBias]);
  g[kDelay] = Times(h, at.s) * -1e-6;
  if (is_ac_) {
    g[kCoupling] = Times(passed, at.s) + Times(Times(q, at.s), 1.0 + Times(at.series, at.shunt));
  }
  return h;
}

bool FrontEnd::DependsOn(std::size_t part) const {
  switch (part) {
    case kStageA:
      return has_stage_a_;
    case kStageB:
      return has_stage_b_;
    case kCoupling:
      return is_ac_;
    case kTrapSwitch:
      return bypass_ != 0;
    case kDrive:
      return false;
    default:
      return part < kLowPass || part >= kChokeA || part == capacitor_;
  }
}

}  // namespace orvane
