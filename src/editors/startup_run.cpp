// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_run.h"

#include <algorithm>
#include <system_error>

#include "core/number_text.h"
#include "core/path_text.h"

namespace orvane {
namespace {

bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
  std::error_code error;
  return !b.empty() &&
         (a.lexically_normal() == b.lexically_normal() || std::filesystem::equivalent(a, b, error));
}

std::string Count(std::size_t number) { return FormatInt(static_cast<std::int64_t>(number)); }

}  // namespace

StartupRun::StartupRun(ParamTable* table, std::filesystem::path document, Prompts* prompts)
    : table_(table), document_(std::move(document)), prompts_(prompts), early_(table) {
  for (const ParamKey key : {"EXR", "EYR", "EZR"}) {
    early_.Remember(key);
  }
  SetDefaultResistances(table_);
  boxes_ = StartupBoxes(*table_, &left_out_);
}

std::filesystem::path StartupRun::DocumentFolder() const {
  const auto folder = document_.parent_path();
  return folder.empty() ? std::filesystem::path(".") : folder;
}

std::filesystem::path StartupRun::PathOf(const StartupForm& form) const {
  return form.Path(DocumentFolder());
}

std::string StartupRun::WarningFor(const StartupForm& form) const {
  const auto path = PathOf(form);
  const auto is_this = [&path](const std::filesystem::path& other) {
    return IsSameFile(path, other);
  };
  if (std::any_of(written_.begin(), written_.end(), is_this)) {
    return PathText(path) + " was written for another box already and will be overwritten.";
  }
  if (is_this(document_)) {
    return PathText(path) + " is the open document's own file and will be overwritten.";
  }
  return {};
}

void StartupRun::Accept(const StartupForm& form) {
  if (form.HasFile()) {
    Write(form);
  } else {
    has_no_monitor_ = true;
  }
  form.ApplyLasting(table_);
  Remember(form);
}

void StartupRun::Write(const StartupForm& form) {
  std::int32_t stored = 0;
  const bool asks = table_->GetParam("TBVO", IntPT, &stored) == kOk && stored == 1;
  const bool is_yes =
      asks && prompts_->AskYesNo("Orvane", "Do you want save TBVO as 1!") == Answer::kYes;
  const std::uint32_t version = StartupVersion(*table_, is_yes);
  const auto path = PathOf(form);
  ParamTable derived = form.Derive();
  TblReport report;
  const Status status =
      SaveParamFile(&derived, path, {version, false, static_cast<std::int32_t>(version)}, &report);
  if (status == kOk) {
    written_.push_back(path);
    has_version_1_ = has_version_1_ || version == 1;
  } else {
    failed_.push_back(PathText(path) + " (" + report.reason + ")");
  }
  if (IsSameFile(path, document_) && (status == kOk || report.has_touched)) {
    own_file_ = status == kOk ? OwnFile::kWritten : OwnFile::kTouched;
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

std::string StartupRun::StatusLine() const {
  const std::size_t all = written_.size() + failed_.size();
  if (all == 0 && !has_no_monitor_) {
    return {};
  }
  std::string line = Count(written_.size()) + " of " + Count(all) + " files written";
  if (has_no_monitor_) {
    line += "; no file for the transmitter monitor, whose serial number is 0";
  }
  if (has_version_1_) {
    line += "; version 1: 285 of 719 records";
  }
  for (const std::string& message : failed_) {
    line += "; failed: " + message;
  }
  if (!left_out_.empty()) {
    line += "; no file for the boxes behind an empty place:";
    for (const std::int32_t serial : left_out_) {
      line += ' ';
      line += FormatInt(serial);
    }
  }
  return line;
}

}  // namespace orvane
