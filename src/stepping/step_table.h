// SPDX-License-Identifier: GPL-3.0-or-later
// The schedule that the stepping parameters lead to.
#ifndef ORVANE_STEPPING_STEP_TABLE_H_
#define ORVANE_STEPPING_STEP_TABLE_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "stepping/schedule_row.h"
#include "table/param_table.h"
#include "table/tech.h"

namespace orvane {

/// The keys of the requested frequencies, in their order.
inline constexpr std::array<std::string_view, 20> kFrequencyKeys = {
    "FRQ0", "FRQ1", "FRQ2", "FRQ3", "FRQ4", "FRQ5", "FRQ6", "FRQ7", "FRQ8", "FRQ9",
    "FR10", "FR11", "FR12", "FR13", "FR14", "FR15", "FR16", "FR17", "FR18", "FR19"};
/// In Hz, the highest first.
using FrequencyList = std::array<double, kFrequencyKeys.size()>;

/// The stored list as far as its first zero.
FrequencyList StoredFrequencies(const ParamTable& table);
/// How many frequencies are stored after that zero.
int HiddenFrequencies(const ParamTable& table);

struct StepParameters {
  Tech tech = kNoTech;          ///< "TECH"
  std::int32_t per_octave = 0;  ///< "FPOC"; 0: the pattern of the list's last octave goes on
  double lowest = 0;            ///< "FEND", Hz
  std::int32_t seconds = 0;     ///< "TPFR", for each frequency
  std::int32_t cycles = 0;      ///< "CPFR", at least so many for each frequency
  std::int32_t total = 0;       ///< "TTOT", seconds of the whole; 0: no bound but a day
  double current = 0;           ///< "CRMX", A
  double corner = 0;            ///< "FCMX", Hz, above which the current falls off; 0: it does not
};
StepParameters StoredStepParameters(const ParamTable& table);

/// Why there is no schedule for them, in words; empty where there is one.
std::string StepFault(const StepParameters& parameters, const FrequencyList& requested);

inline constexpr int kStepsCalculated = 0;
inline constexpr int kStepsInvalid = 4;

/// Replaces `table` by the schedule, unused rows empty, and returns 0; or returns 4 and leaves it,
/// where `StepFault()` has something to say. Interior zeros of the list become steps without
/// current. Equal inputs give equal bytes on every machine: the order of the operations is fixed.
int CalculateStepTable(const StepParameters& parameters, const FrequencyList& requested,
                       ScheduleTable* table);

}  // namespace orvane

#endif  // ORVANE_STEPPING_STEP_TABLE_H_
