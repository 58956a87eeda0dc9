// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/decay_plan.h"

#include <cmath>

#include "base/number_text.h"
#include "stepping/schedule_row.h"
#include "stepping/window_table.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr double kMilliseconds = 1000;

// TD50, TD33 and TD25. Of those with a P or N behind nobody says whether the current ever flows the
// other way.
bool FlowsBothWays(int waveform) { return waveform >= 1 && waveform <= 3; }

std::vector<WindowRow> RuleRows(const ParamTable& table, double frequency) {
  return CalculateWindows(TechOf(table), IntParam(table, "WFRM"), frequency,
                          IntParam(table, "NUMITEM"));
}

std::string NoWindowText(const ParamTable& table, double frequency) {
  return "the rule gives no window for NUMITEM " + FormatInt(IntParam(table, "NUMITEM")) + " at " +
         FormatReal(frequency, 6) + " Hz";
}

}  // namespace

Result<DecayPlan> DecayPlanOf(const TsCompanion& companion, double frequency,
                              const std::vector<DecayWindow>& chosen) {
  const ParamTable& table = companion.Table();
  const int waveform = IntParam(table, "WFRM");
  if (!companion.IsLoaded()) {
    return Failure("without the table of the recording method, waveform and gains are not known");
  }
  if (!HasDecay(TechOf(table))) {
    return Failure("the method (TECH) is neither TDIP nor TDEM");
  }
  if (!FlowsBothWays(waveform)) {
    return Failure("the waveform (WFRM) is " + WaveformName(waveform) +
                   ", not TD50, TD33 or TD25: when the current flows is not known");
  }
  if (!(frequency > 0)) {
    return Failure("the record has no frequency above 0");
  }
  if (!std::isfinite(frequency)) {
    return Failure("the record's frequency is infinite");
  }
  DecayPlan plan{OffShareOf(waveform), TechOf(table) == kTdip, chosen};
  if (chosen.empty()) {
    for (const WindowRow& row : RuleRows(table, frequency)) {
      plan.windows.push_back({row.start / kMilliseconds, (row.start + row.width) / kMilliseconds});
    }
  }
  return plan.windows.empty() ? Result<DecayPlan>(Failure(NoWindowText(table, frequency))) : plan;
}

std::vector<double> RuleCentres(const ParamTable& table) {
  std::vector<double> centres;
  for (const WindowRow& row : RuleRows(table, RealParam(table, "FREQ"))) {
    centres.push_back(row.start + row.width / 2);
  }
  return centres;
}

}  // namespace orvane
