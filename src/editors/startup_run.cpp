// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_run.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "base/number_text.h"
#include "editors/startup_cautions.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

std::string BoxName(StartupBox box) {
  if (box.IsTransmitter()) {
    return "transmitter monitor";
  }
  return box.IsAuxiliary() ? "auxiliary " + FormatInt(box.number) : "main receiver";
}

std::filesystem::path Whole(const std::filesystem::path& path) {
  std::error_code error;
  const auto whole = std::filesystem::absolute(path, error);
  return error ? path : whole.lexically_normal();
}

}  // namespace

std::string StartupOutcome::Name() const { return BoxName(box) + ", serial " + FormatInt(serial); }

std::string StartupOutcome::Text() const {
  switch (state) {
    case kWritten:
      return note.empty() ? "written" : "written over " + note;
    case kOverwritten:
      return "overwritten by " + note;
    case kFailed:
      return "failed (" + note + ")";
    case kNoFile:
      return "no file (" + note + ")";
    case kSkipped:
      break;
  }
  return "skipped";
}

std::string_view StartupOutcome::VerifiedText() const {
  if (state != kWritten || read_back.size == 0) {
    return {};
  }
  return read_back.is_from_disk ? "verified" : "read back from memory";
}

std::string StartupOutcome::Details() const {
  if (state != kWritten) {
    return {};
  }
  std::string text = "version " + FormatInt(version);
  if (read_back.size > 0) {
    text += ", " + FormatInt(read_back.size) + " bytes, ";
    text += VerifiedText();
  }
  return text + ", " + FormatInt(differing.size()) +
         (differing.size() == 1 ? " value differs" : " values differ") + " from the main table";
}

StartupRun::StartupRun(ParamTable* table, std::filesystem::path document, Prompts* prompts,
                       std::filesystem::path folder)
    : table_(table),
      document_(std::move(document)),
      folder_(Whole(document_.empty() ? std::move(folder) : document_.parent_path())),
      prompts_(prompts),
      early_(table) {
  for (const ParamKey key : {"EXR", "EYR", "EZR"}) {
    early_.Remember(key);
  }
  SetDefaultResistances(table_);
  std::vector<StartupBox> left_out;
  boxes_ = StartupBoxes(*table_, &left_out);
  for (const StartupBox box : boxes_) {
    outcomes_.push_back({box, StoredSerial(*table_, box), {}, StartupOutcome::kSkipped, {}});
  }
  for (const StartupBox box : left_out) {
    outcomes_.push_back({box,
                         StoredSerial(*table_, box),
                         {},
                         StartupOutcome::kNoFile,
                         "after an empty place among the auxiliary boxes"});
  }
}

std::filesystem::path StartupRun::PathOf(const StartupForm& form) const {
  return place_ ? place_(form) : Whole(form.Path(folder_));
}

void StartupRun::ForEachBox(const std::function<bool(StartupForm*)>& show) {
  for (const StartupBox box : boxes_) {
    StartupForm form(table_, box, choices_);
    if (!show(&form)) {
      return;
    }
  }
}

std::string StartupRun::FileText(const StartupForm& form) const {
  return form.HasFile() ? PathText(PathOf(form)) : "no file";
}

std::string StartupRun::Heading(const StartupForm& form) const {
  const auto is_it = [&form](StartupBox box) { return box.number == form.Box().number; };
  const auto at = std::find_if(boxes_.begin(), boxes_.end(), is_it) - boxes_.begin();
  return "Box " + FormatInt(at + 1) + " of " + FormatInt(boxes_.size()) + ": " +
         StartupOutcome{form.Box(), form.Serial(), {}, {}, {}}.Name();
}

std::string StartupRun::WarningFor(const StartupForm& form) const {
  if (!form.HasFile()) {
    return "The transmitter monitor has the serial number 0: no file will be written for it.";
  }
  const auto path = PathOf(form);
  if (std::string fault = FolderFault(path.parent_path()); !fault.empty()) {
    return fault;
  }
  for (const StartupOutcome& other : outcomes_) {
    if (other.state == StartupOutcome::kWritten && IsSameFile(path, other.path)) {
      return PathText(path) + " was already written for another box (" + other.Name() +
             ") and will be overwritten.";
    }
  }
  if (IsSameFile(path, document_)) {
    return PathText(path) + " is the open document's own file and will be overwritten.";
  }
  if (const std::string recording = RecordingBeside(path); !recording.empty()) {
    return PathText(path) + " is the table of the recording " + recording +
           " and will be overwritten.";
  }
  const std::string foreign = ForeignFile(path, form.Serial());
  return foreign.empty() ? std::string()
                         : PathText(path) + " is " + foreign + " and will be overwritten.";
}

StartupOutcome& StartupRun::OutcomeOf(StartupBox box) {
  return *std::find_if(outcomes_.begin(), outcomes_.end(), [box](const StartupOutcome& outcome) {
    return outcome.box.number == box.number;
  });
}

const StartupOutcome& StartupRun::Accept(const StartupForm& form) {
  StartupOutcome& outcome = OutcomeOf(form.Box());
  outcome.serial = form.Serial();
  if (form.HasFile()) {
    Write(form, &outcome);
  } else {
    outcome.state = StartupOutcome::kNoFile;
    outcome.note = "the serial number is 0";
  }
  form.ApplyLasting(table_);
  Remember(form);
  return outcome;
}

bool StartupRun::MayWrite(const std::filesystem::path& path) const {
  // A file that the run itself wrote is replaced without a question.
  // Asked also where it cannot be known whether they are one.
  const bool is_asked = may_replace_document_ && own_file_ == OwnFile::kAsBefore &&
                        !document_.empty() && CompareFiles(path, document_) != Sameness::kDifferent;
  return (!is_asked || may_replace_document_()) && (!may_write_ || may_write_(path));
}

void StartupRun::Write(const StartupForm& form, StartupOutcome* outcome) {
  const std::filesystem::path path = PathOf(form);
  if (!MayWrite(path)) {
    return;
  }
  const bool asks = IntParam(*table_, "TBVO") == 1;
  const bool is_yes =
      asks && prompts_->AskYesNo("Orvane", "Do you want save TBVO as 1!") == Answer::kYes;
  const std::uint32_t version = StartupVersion(*table_, is_yes);
  outcome->path = path;
  outcome->note = ForeignFile(outcome->path, form.Serial());
  ParamTable derived = form.Derive();
  TblReport report;
  RememberedFile memory;
  const TblSaveOptions options{version, false, static_cast<std::int32_t>(version)};
  Status status = SaveParamFile(&derived, outcome->path, options, &report, &memory);
  if (status == kOk && verifies_) {
    outcome->read_back = ReadBack(path, derived, options);
    if (!outcome->read_back.fault.empty()) {
      status = kTblWriteFailed;
      report.reason = outcome->read_back.fault;
      report.message = FileMessage(path, report.reason);
      report.has_touched = true;
      memory = {};
    }
  }
  if (status == kOk) {
    outcome->version = version;
    outcome->differing = DifferingKeys(derived, *table_);
    has_version_1_ = has_version_1_ || version == 1;
  } else {
    outcome->note = report.reason;
    outcome->message = report.message;
  }
  outcome->state = status == kOk ? StartupOutcome::kWritten : StartupOutcome::kFailed;
  if (status == kOk || report.has_touched) {
    MarkOverwritten(*outcome);
  }
  const bool may_be_own =
      !document_.empty() && CompareFiles(outcome->path, document_) != Sameness::kDifferent;
  if (may_be_own && (status == kOk || report.has_touched)) {
    document_memory_ = memory;
    // Another box's file in its place names no spread: the document is still to be saved.
    own_file_ = status == kOk && form.Box().number == StartupBox::kMain ? OwnFile::kWritten
                                                                        : OwnFile::kTouched;
  }
}

void StartupRun::MarkOverwritten(const StartupOutcome& by) {
  for (StartupOutcome& other : outcomes_) {
    if (other.state == StartupOutcome::kWritten && other.box.number != by.box.number &&
        IsSameFile(by.path, other.path)) {
      other.state = StartupOutcome::kOverwritten;
      other.note = BoxName(by.box);
    }
  }
}

void StartupRun::Remember(const StartupForm& form) {
  choices_.folder = form.Folder();
  if (form.Box().IsTransmitter() && form.Model().IsEdited(StartupForm::kMonitorSerial)) {
    choices_.monitor_serial = form.Serial();
  }
  if (!choices_.by_serial.has_value() || form.Box().IsTransmitter()) {
    choices_.by_serial = form.IsBySerial();
  }
}

bool StartupRun::HasBegun() const {
  return std::any_of(outcomes_.begin(), outcomes_.end(), [](const StartupOutcome& outcome) {
    return outcome.state != StartupOutcome::kSkipped &&
           (outcome.state != StartupOutcome::kNoFile || outcome.box.IsTransmitter());
  });
}

std::string StartupRun::Headline() const {
  std::vector<std::filesystem::path> tried;
  std::array<std::size_t, 5> count{};
  for (const StartupOutcome& outcome : outcomes_) {
    ++count[outcome.state];
    const auto is_it = [&outcome](const auto& path) { return IsSameFile(path, outcome.path); };
    if (!outcome.path.empty() && std::none_of(tried.begin(), tried.end(), is_it)) {
      tried.push_back(outcome.path);
    }
  }
  std::string line = FormatInt(count[StartupOutcome::kWritten]) + " of " + FormatInt(tried.size()) +
                     " files written";
  for (const auto& [state, text] : {std::pair{StartupOutcome::kFailed, "failed"},
                                    {StartupOutcome::kOverwritten, "overwritten"},
                                    {StartupOutcome::kSkipped, "skipped"},
                                    {StartupOutcome::kNoFile, "without a file"}}) {
    if (count[state] > 0) {
      line += ", " + FormatInt(count[state]) + (count[state] == 1 ? " box " : " boxes ") + text;
    }
  }
  return line;
}

std::string StartupRun::StatusText() const {
  if (!HasBegun()) {
    return {};
  }
  std::string line = Headline();
  if (has_version_1_) {
    line += "; version 1: 285 of 719 records";
  }
  for (const StartupOutcome& outcome : outcomes_) {
    if (outcome.state != StartupOutcome::kWritten && outcome.state != StartupOutcome::kSkipped) {
      line.append("\n").append(outcome.Name()).append(": ");
      line += outcome.state == StartupOutcome::kFailed
                  ? "failed: " + PathText(outcome.path) + " (" + outcome.note + ")"
                  : outcome.Text();
    }
  }
  return line;
}

}  // namespace orvane
