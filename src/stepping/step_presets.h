// SPDX-License-Identifier: GPL-3.0-or-later
// What the methods start from: stepping cycles, windows, limits of the transmitter.
#ifndef ORVANE_STEPPING_STEP_PRESETS_H_
#define ORVANE_STEPPING_STEP_PRESETS_H_

#include <array>
#include <cstdint>

#include "table/param_table.h"
#include "table/tech.h"

namespace orvane {

/// SIP, CSAMT and FDEM step through frequencies in cycles that have presets.
constexpr bool HasCycles(Tech tech) { return tech == kSip || tech == kCsamt || tech == kFdem; }

/// Writes the preset of a method with cycles. `cycle_seconds` 0: the stored "TTOT" decides. A cycle
/// without a preset becomes the method's usual one. Nothing for the other methods.
void ApplyDefaultStepping(ParamTable* table, Tech tech, std::int32_t cycle_seconds);

/// Writes the starting values of TDIP and TDEM. Nothing for the other methods.
void ApplyDefaultWindows(ParamTable* table, Tech tech);

/// What a user may choose from, in seconds: SIP and FDEM, CSAMT.
std::array<std::int32_t, 4> CycleChoices(Tech tech);

/// What the transmitter and its wire can take; not stored in a table.
struct TransmitterLimits {
  double resistance = 0;   ///< of the contacts, ohm
  double voltage = 0;      ///< at most, V
  double wire_length = 0;  ///< m
};
/// `limits` with the method's usual values in place of zeros; TDEM and MT/AMT have none.
TransmitterLimits WithDefaults(TransmitterLimits limits, Tech tech);

/// The current to begin with, A: the stored one, or the method's usual one where that is 0.
double CycleCurrent(Tech tech, double stored);

/// The frequency in Hz above which the wire's inductance (3 uH/m) limits the current, with a margin
/// of 5 %; 1000 where there is no such frequency or it cannot be known.
double CornerFrequency(const TransmitterLimits& limits, double current);

/// Writes "CRMX" and "FCMX": for SIP the current as it is and no corner, else what the limits
/// leave of it.
void ApplyTransmitter(ParamTable* table, Tech tech, const TransmitterLimits& limits,
                      double current);

}  // namespace orvane

#endif  // ORVANE_STEPPING_STEP_PRESETS_H_
