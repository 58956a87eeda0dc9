// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of "Select Default Stepping Cycle ".
#ifndef ORVANE_STEPPING_CYCLE_FORM_H_
#define ORVANE_STEPPING_CYCLE_FORM_H_

#include <cstdint>
#include <string_view>

#include "forms/early_writes.h"
#include "forms/form_model.h"
#include "stepping/step_presets.h"
#include "table/tech.h"

namespace orvane {

/// Which cycle a method with cycles shall begin with, and what its transmitter can do.
class CycleForm {
 public:
  enum Control : int { kCycle = 1521, kVoltage = 1525, kResistance, kWireLength, kCurrent };

  /// `table` and `early` must outlive the form; OK writes through `early`.
  CycleForm(ParamTable* table, EarlyWrites* early, Tech tech, const TransmitterLimits& limits);

  FormModel& Model() { return model_; }
  std::string_view Title() const;

  void Open();
  /// OK: writes "TTOT", "CRMX" and "FCMX" at once. Validate first.
  void Commit();

  /// What was chosen and entered, after OK.
  std::int32_t Seconds() const;
  const TransmitterLimits& Limits() const { return limits_; }

 private:
  double Entered(Control control, double before) const;

  ParamTable* table_;
  EarlyWrites* early_;
  Tech tech_;
  TransmitterLimits limits_;
  double current_ = 0;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_CYCLE_FORM_H_
