// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_DECAY_PLAN_H_
#define ORVANE_SPECTRA_DECAY_PLAN_H_

#include <vector>

#include "table/tech.h"
#include "timeseries/decay_file.h"

namespace orvane {

/// TDIP and TDEM, whose results are decays.
constexpr bool HasDecay(Tech tech) { return tech == kTdip || tech == kTdem; }
/// SIP, CSAMT and FDEM, whose results are amplitudes and phases.
constexpr bool HasFrequencies(Tech tech) { return tech == kSip || tech == kCsamt || tech == kFdem; }

/// The decay of a recording at this frequency, in Hz: the time without current by its waveform
/// "WFRM", windows as chosen or, with none chosen, "NUMITEM" windows by the stepping rule. Fails,
/// with a reason for the user, where the table does not tell: there is none, its method has no
/// decay, its waveform is none that flows both ways with pauses, there is no window.
Result<DecayPlan> DecayPlanOf(const TsCompanion& companion, double frequency,
                              const std::vector<DecayWindow>& chosen = {});

/// The centres, in ms, of the windows that the stepping rule gives a table with its "FREQ"; empty:
/// none. What the boxes' own windows are, no file says.
std::vector<double> RuleCentres(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_DECAY_PLAN_H_
