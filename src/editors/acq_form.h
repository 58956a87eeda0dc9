// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of "Acquisition Parameters".
#ifndef ORVANE_EDITORS_ACQ_FORM_H_
#define ORVANE_EDITORS_ACQ_FORM_H_

#include <cstdint>
#include <string>
#include <vector>

#include "editors/acq_fields.h"
#include "editors/timeline.h"
#include "forms/early_writes.h"
#include "forms/form_model.h"
#include "table/clock.h"
#include "table/param_table.h"
#include "table/tech.h"

namespace orvane {

/// How a receiver shall record: method, front end, MT/AMT schedule, time zone of display. The
/// method decides what else can be set, and some keys follow it in the table at once.
class AcqForm {
 public:
  /// `now` returns UTC. Both must outlive the form.
  AcqForm(ParamTable* table, const Clock* now);
  AcqForm(const AcqForm&) = delete;
  AcqForm& operator=(const AcqForm&) = delete;

  FormModel& Model() { return model_; }
  const FormModel& Model() const { return model_; }

  /// Reads the table and lets the method rule: WFRM, NUMITEM and for FDEM CHHX.. are written. To be
  /// called once.
  void Open();

  /// What follows from a choice of the user that the model has already.
  void OnEdited(int control);

  /// Makes the window of high rates that of the whole recording.
  void CopyTimesToHighRates();

  /// Writes the schedule at once, its times as shown, and estimates what it fills. Validate first.
  void CalculateSpace();
  /// What is shown beside the estimate where 32 bits could not count it: "(> 4096 Mb: 5632.5)".
  const std::string& SpaceNote() const { return space_note_; }

  /// What the recording would be with what the fields show, in the zone shown. `steps`: as in
  /// `TimelineOf()`.
  Timeline Recording(const ScheduleFile* steps = nullptr) const;

  /// OK: writes everything. Validate first.
  void Commit();

  /// Only MT/AMT records by a schedule of start and end times.
  bool HasSchedule() const { return IsFunction(kMtAmt); }
  /// "E/H coupling not set" and the like where a coupling group has nothing checked; else empty.
  std::string CouplingNote() const;

  /// The chosen method; `kNoTech` where none is.
  Tech ChosenTech() const { return static_cast<Tech>(model_.Index(acq::kFunction) + 1); }
  /// Writes "TECH" at once, for the site editors, and returns it. `kNoTech`: nothing is chosen nor
  /// written.
  Tech BeginSiteSetup();
  /// Takes serial numbers over from another editor; those that differ count as edited.
  void SetCoilSerials(const std::string& hx, const std::string& hy, const std::string& hz);

  /// Keys written before OK whose values really changed; Cancel does not undo them.
  std::vector<std::string> EarlyChanges() const { return early_.Changes(); }

 private:
  enum Sampling : int { kAmt, kMt, kDamt };

  bool IsFunction(Tech tech) const { return ChosenTech() == tech; }
  bool IsTimeDomain() const { return IsFunction(kTdip) || IsFunction(kTdem); }
  bool IsMtSampling() const;

  ParamTime TimeIn(int control) const;
  void CautionTimes();
  void ReadFilter();
  void WriteFilter();
  void ApplyFunctionRule();
  void LimitRequests();
  void ShowSchedule();
  void EnableSchedule();
  void SetTimeDomain();
  void SetFrequencyDomain();
  void SetByFunction();
  void ResetGainFactors();
  void ApplyTimeZone();
  void WriteSchedule();
  void ShowSpace();

  ParamTable* table_;
  const Clock* now_;
  FormModel model_;
  EarlyWrites early_;
  std::string space_note_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_ACQ_FORM_H_
