// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/stepping_form.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "files/path_text.h"
#include "stepping/tfs_file.h"
#include "table/param_access.h"

namespace orvane {
namespace {

constexpr int kNoStep = 0;
constexpr int kAutoStep = 1;
constexpr std::array kAutoOnly = {stepping::kCurrent, stepping::kCorner,    stepping::kLowest,
                                  stepping::kCycles,  stepping::kPerOctave, stepping::kSeconds,
                                  stepping::kTotal};

std::string Steps(const ScheduleTable& schedule) {
  const auto rows = WrittenRows(schedule);
  if (rows.empty()) {
    return "No steps";
  }
  return FormatInt(rows.size()) + " steps, " + FormatInt(rows.back().end_time) + " s";
}

}  // namespace

SteppingForm::SteppingForm(ParamTable* table, Prompts* prompts, Notices* notices)
    : table_(table),
      prompts_(prompts),
      notices_(notices),
      model_(table, SteppingFields()),
      early_(table) {}

void SteppingForm::Open() {
  tech_ = TechOf(*table_);
  limits_ = WithDefaults(limits_, tech_);
  Read();
}

void SteppingForm::Read() {
  model_.ReadAll();
  frequencies_ = StoredFrequencies(*table_);
  is_list_edited_ = false;
  schedule_.fill({});
  has_edited_steps_ = false;
  note_.clear();
  EnableByStepping();
  SetWindows();
  if (model_.Index(stepping::kAuto) == kAutoStep) {
    SetSchedule();
  }
  if (const int hidden = HiddenFrequencies(*table_); hidden > 0) {
    note_.append(note_.empty() ? "" : "; ").append(FormatInt(hidden));
    note_.append(" frequencies stored after an empty one are not shown");
  }
}

void SteppingForm::EnableByStepping() {
  const int control = model_.Index(stepping::kAuto);
  model_.Enable(stepping::kRequested, control == kNoStep);
  for (const int field : kAutoOnly) {
    model_.Enable(field, control == kAutoStep);
  }
  model_.Enable(stepping::kDrift, IsTimeDomain());
}

void SteppingForm::OnEdited(int control) {
  if (control == stepping::kAuto) {
    EnableByStepping();
  }
}

std::string_view SteppingForm::Title() const {
  switch (tech_) {
    case kSip:
      return "SIP Frequency Stepping Parameters";
    case kTdip:
      return "Set TDIP Window Parameters";
    case kTdem:
      return "Set TDEM Window Parameters";
    case kCsamt:
      return "CSAMT Frequency Stepping Parameters";
    case kFdem:
      return "FDEM Frequency Stepping Parameters";
    default:
      return stepping::kTitle;
  }
}

Answer SteppingForm::AskToExportSteps() const {
  return has_edited_steps_ ? prompts_->AskYesNoCancel(
                                 "Orvane",
                                 "Rows of the schedule were changed by hand. Only a schedule "
                                 "file keeps them. Export it now?")
                           : Answer::kNo;
}

bool SteppingForm::HasPicture() const { return !IsTimeDomain() || !WrittenRows(schedule_).empty(); }

bool SteppingForm::CanCalculate() const {
  return IsTimeDomain() || model_.Index(stepping::kAuto) == kAutoStep;
}

bool SteppingForm::CanOpenFile() const { return model_.Index(stepping::kAuto) > kAutoStep; }

std::string_view SteppingForm::ScheduleName() const {
  const int control = model_.Index(stepping::kAuto);
  return control > kAutoStep
             ? model_.FieldOf(stepping::kAuto).choices[static_cast<std::size_t>(control)].label
             : std::string_view();
}

// What OK would store now.
ParamValue SteppingForm::Value(int control) const {
  if (model_.IsEdited(control)) {
    const Shown shown{model_.Text(control), model_.Index(control)};
    if (const auto values = StoredOf(model_.FieldOf(control), shown, 0); !values.empty()) {
      return values.front();
    }
  }
  const auto& stored = model_.Stored(control);
  return stored.empty() ? ParamValue{} : stored.front();
}

StepParameters SteppingForm::Parameters() const {
  return {.tech = tech_,
          .per_octave = IntOf(Value(stepping::kPerOctave)),
          .lowest = RealOf(Value(stepping::kLowest)),
          .seconds = IntOf(Value(stepping::kSeconds)),
          .cycles = IntOf(Value(stepping::kCycles)),
          .total = IntOf(Value(stepping::kTotal)),
          .current = RealOf(Value(stepping::kCurrent)),
          .corner = RealOf(Value(stepping::kCorner))};
}

void SteppingForm::Calculate() {
  note_.clear();
  SetWindows();
  SetSchedule();
}

void SteppingForm::SetWindows() {
  if (IsTimeDomain()) {
    windows_ = CalculateWindows(tech_, IntOf(Value(stepping::kWaveform)),
                                RealOf(Value(stepping::kRepeat)), IntOf(Value(stepping::kItems)));
    note_ = FormatInt(windows_.size()) + " windows. ";
    if (windows_.empty()) {
      note_ = "No windows: the repeat frequency and their number must be above 0. ";
    }
  }
}

void SteppingForm::SetSchedule() {
  const StepParameters parameters = Parameters();
  if (CalculateStepTable(parameters, frequencies_, &schedule_) == kStepsCalculated) {
    has_edited_steps_ = false;
    note_ += Steps(schedule_);
  } else {
    note_ += "No schedule: " + StepFault(parameters, frequencies_);
  }
}

void SteppingForm::Tell(std::string note) {
  note_ = std::move(note);
  notices_->ShowNotice(note_);
}

void SteppingForm::OpenFile(const std::filesystem::path& path) {
  ScheduleReport report;
  const bool has_rows = ReadScheduleFile(path, &schedule_, &report);
  has_edited_steps_ = false;
  if (!report.is_open) {
    // kept: the text as the users know it.
    prompts_->ShowWarning("File Read Error", "Cannot open schdele file!");
  }
  Tell(has_rows ? Steps(schedule_) + " from " + PathText(path)
                : FormatInt(report.rows) + " rows read, none kept: " + report.message);
}

bool SteppingForm::ExportFile(const std::filesystem::path& path) {
  const auto rows = WrittenRows(schedule_);
  if (const Result<> written = WriteScheduleFile(path, rows); !written) {
    prompts_->ShowWarning("File Open Error",
                          "Failed to open file " + PathText(path) + " to export schedule file!");
    Tell(PathText(path) + ": " + written.Message());
    return false;
  }
  has_edited_steps_ = false;
  Tell(Steps(schedule_) + " written to " + PathText(path));
  const auto* const behind = std::find_if_not(
      schedule_.begin() + static_cast<std::ptrdiff_t>(rows.size()), schedule_.end(), IsEmpty);
  if (behind != schedule_.end()) {
    prompts_->ShowWarning("Orvane", PathText(path) + " ends before row " +
                                        FormatInt(rows.size() + 1) +
                                        ", which is empty; the rows after it are not written.");
  } else if (const std::string reason = WhyUnreadable(rows); !reason.empty()) {
    prompts_->ShowWarning("Orvane",
                          PathText(path) + " is written, but cannot be read back: " + reason);
  }
  return true;
}

void SteppingForm::ApplyDefaults(std::int32_t cycle_seconds) {
  for (const Field& field : model_.Fields()) {
    early_.Remember(field.key);
  }
  for (const std::string_view key : kFrequencyKeys) {
    early_.Remember(key);
  }
  if (IsTimeDomain()) {
    ApplyDefaultWindows(table_, tech_);
  } else {
    ApplyDefaultStepping(table_, tech_, cycle_seconds);
  }
  Read();
}

void SteppingForm::Commit() {
  for (const Field& field : model_.Fields()) {
    model_.Write(std::array{field.control});
  }
  for (std::size_t i = 0; is_list_edited_ && i < kFrequencyKeys.size(); ++i) {
    PutReal(table_, kFrequencyKeys[i], frequencies_[i]);
  }
}

}  // namespace orvane
