// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of "Frequency Stepping Parameters".
#ifndef ORVANE_STEPPING_STEPPING_FORM_H_
#define ORVANE_STEPPING_STEPPING_FORM_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "forms/early_writes.h"
#include "forms/form_model.h"
#include "forms/prompts.h"
#include "stepping/step_presets.h"
#include "stepping/step_table.h"
#include "stepping/stepping_fields.h"
#include "stepping/window_table.h"
#include "table/tech.h"

namespace orvane {

/// How a receiver steps through frequencies: parameters, requested frequencies, the schedule that
/// follows from them or comes from a file, and for the time domain its windows.
///
/// Numbers are kept as they are stored; what a cell shows has ten digits, a current four. Rows
/// count from 0. Edits return why a text is refused, and then nothing has changed; nor does
/// anything where the text is the one shown.
class SteppingForm {
 public:
  enum StepColumn : int { kFrequency, kCurrent, kEndTime, kWaveform };

  /// All must outlive the form.
  SteppingForm(ParamTable* table, Prompts* prompts, Notices* notices);

  FormModel& Model() { return model_; }
  const FormModel& Model() const { return model_; }

  /// Reads the table, and calculates the schedule where the stepping control is "Auto Step".
  void Open();
  /// What follows from a choice of the user that the model has already.
  void OnEdited(int control);
  /// Writes everything; the requested frequencies only where one was edited, then all of them.
  void Commit();

  Tech Method() const { return tech_; }
  std::string_view Title() const;
  bool IsTimeDomain() const { return tech_ == kTdip || tech_ == kTdem; }
  bool HasDefaults() const { return HasCycles(tech_) || IsTimeDomain(); }
  bool CanCalculate() const;
  bool CanOpenFile() const;

  /// Calculates schedule and windows from what the dialog shows; the table keeps its values.
  /// What is rejected leaves the schedule as it is. Validate first.
  void Calculate();
  /// The schedule of a file, or none.
  void OpenFile(const std::filesystem::path& path);
  /// True once the file is written.
  bool ExportFile(const std::filesystem::path& path);

  /// Writes the method's default values at once (after a dialog for the cycle, where it has one)
  /// and reads everything again. `cycle_seconds` as for `ApplyDefaultStepping`.
  void ApplyDefaults(std::int32_t cycle_seconds);
  EarlyWrites& Early() { return early_; }
  /// Not stored in the table: they live as long as the form.
  TransmitterLimits& Limits() { return limits_; }
  /// Keys written before Close whose values really changed; Escape does not undo them.
  std::vector<std::string> EarlyChanges() const { return early_.Changes(); }

  std::string FrequencyText(int row) const;
  std::string EditFrequency(int row, std::string_view text);

  const ScheduleTable& Schedule() const { return schedule_; }
  /// Rows were changed by hand since they were calculated, read or exported: nothing else keeps
  /// them.
  bool HasEditedSteps() const { return has_edited_steps_; }
  /// Whether a file shall keep rows changed by hand before they are lost: Yes, No (nor where there
  /// are none) or, where all is to stay, Cancel.
  Answer AskToExportSteps() const;
  /// The time domain often has windows only, which need the room of the schedule's picture.
  bool HasPicture() const;
  /// The file that the stepping control names; empty where it names none.
  std::string_view ScheduleName() const;
  std::string StepText(int row, StepColumn column) const;
  /// A waveform by its name or its code.
  std::string EditStep(int row, StepColumn column, std::string_view text);
  /// Moves the rows from `row` on down by an empty one. Refused where the last one is in use.
  std::string InsertStep(int row);
  void DeleteStep(int row);

  const std::vector<WindowRow>& Windows() const { return windows_; }

  /// What came of the last action, in words.
  const std::string& Note() const { return note_; }

 private:
  void Read();
  void SetWindows();
  void SetSchedule();
  void Tell(std::string note);
  void EnableByStepping();
  ParamValue Value(int control) const;
  StepParameters Parameters() const;

  ParamTable* table_;
  Prompts* prompts_;
  Notices* notices_;
  FormModel model_;
  EarlyWrites early_;
  TransmitterLimits limits_;
  Tech tech_ = kNoTech;
  FrequencyList frequencies_{};
  bool is_list_edited_ = false;
  ScheduleTable schedule_{};
  bool has_edited_steps_ = false;
  std::vector<WindowRow> windows_;
  std::string note_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_STEPPING_FORM_H_
