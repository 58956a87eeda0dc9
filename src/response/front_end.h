// SPDX-License-Identifier: GPL-3.0-or-later
// The analog front end of a box's channel as a circuit; docs/response.md draws and explains it.
#ifndef ORVANE_RESPONSE_FRONT_END_H_
#define ORVANE_RESPONSE_FRONT_END_H_

#include <array>
#include <cstddef>
#include <numbers>

#include "response/complex.h"

namespace orvane {

/// The parameters of a channel's circuit by their numbers. Farads, henries and ohms except where
/// another unit is named.
enum FrontEndPart : std::size_t {
  kBaseGain = 0,     ///< relative error of every gain; near -2 where the polarity is reversed
  kStageA = 1,       ///< relative error of the switched stage x4
  kStageB = 2,       ///< relative error of the switched stage x16
  kLowPass = 3,      ///< 3 to 7: the capacitors of the low-pass filter, weakest first
  kChokeA = 8,       ///< inductance
  kChokeAWire = 9,   ///< its winding resistance
  kChokeB = 10,      ///< inductance, in the trap's tank
  kChokeBWire = 11,  ///< its winding resistance
  kSeries = 12,      ///< protection resistor
  kCoupling = 13,    ///< coupling capacitor
  kInput = 14,       ///< input capacitance of the amplifier
  kTank = 15,        ///< capacitor across choke B
  kTrapSwitch = 16,  ///< resistance of the closed switch that takes the trap out
  kDelay = 17,       ///< microseconds, of amplifier and converter
  kDrive = 18,       ///< resistors that some calibration passes are driven through, both legs
  kBias = 19,        ///< kiloohms
};
inline constexpr std::size_t kFrontEndParts = 20;
using FrontEndParameters = std::array<double, kFrontEndParts>;

inline constexpr double kUsualDelay = 2;      ///< microseconds, where the stored one cannot be
inline constexpr double kLongestDelay = 100;  ///< microseconds, either sign

/// What an "LPFR" code switches on.
struct LowPassFilter {
  int strength = -1;  ///< 0 to 4; -1: no capacitor
  bool has_trap = false;
};
/// 16 to 20 are the strengths, 80 to 84 those with the trap, 160 to 164 those without it; all other
/// codes switch nothing on.
LowPassFilter LowPassFilterOf(int code);

/// How a channel is switched.
struct FrontEndSetting {
  int gain = 0;      ///< the gain is 4 to this power; its errors are those of -1 to 2
  int low_pass = 0;  ///< "LPFR" code
  int coupling = 0;  ///< 1: through the coupling capacitor; all else: direct
  Complex source;    ///< ohms per leg
};

/// The circuit of one channel in one setting. Responses are relative to the gain 4 to the power of
/// the code: near 1, or near -1 where the polarity is reversed.
class FrontEnd {
 public:
  using Gradient = std::array<Complex, kFrontEndParts>;

  FrontEnd(const FrontEndParameters& parameters, const FrontEndSetting& setting);

  /// At a frequency in Hz.
  Complex Response(double frequency) const;
  /// The same, and its derivative by each parameter that `DependsOn()`; others are left alone.
  Complex Response(double frequency, Gradient* gradient) const;
  bool DependsOn(std::size_t part) const;

 private:
  struct Point;
  Point At(double frequency) const;

  const FrontEndParameters& p_;
  Complex source_;
  double gain_ = 1;            // with its errors, relative to the nominal one
  double delay_ = 0;           // seconds
  double shunt_ = 0;           // farads
  double bias_ = 0;            // siemens
  double bypass_ = 0;          // siemens, of the closed trap switch; 0: open
  std::size_t capacitor_ = 0;  // parameter of the active one; 0: none
  bool has_stage_a_ = false;
  bool has_stage_b_ = false;
  bool is_ac_ = false;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_FRONT_END_H_
