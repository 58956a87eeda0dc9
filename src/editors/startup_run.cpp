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
    : table_(table), document_(std::move(document)), prompts_(prompts) {
  has_changed_table_ = SetDefaultResistances(table_);
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
  has_changed_table_ = form.ApplyLasting(table_) || has_changed_table_;
  if (status == kOk) {
    written_.push_back(path);
    has_version_1_ = has_version_1_ || version == 1;
    if (IsSameFile(path, document_)) {
      wrote_document_ = true;
      differs_from_document_ = TblImage(derived, {}) != TblImage(*table_, {});
    }
  } else {
    failed_.push_back(PathText(path) + " (" + report.reason + ")");
  }
  Remember(form, status == kOk);
}

void StartupRun::Remember(const StartupForm& form, bool is_written) {
  const bool is_first = !choices_.by_serial.has_value();
  if (form.Box().IsTransmitter()) {
    choices_.folder = form.Folder();
  } else if (form.Box().number == StartupBox::kMain && is_first && is_written) {
    clears_modified_ = true;
  }
  if (is_first || form.Box().IsTransmitter()) {
    choices_.by_serial = form.IsBySerial();
  }
}

bool StartupRun::IsModifiedAfter(bool is_modified) const {
  return (!clears_modified_ && (is_modified || has_changed_table_)) || differs_from_document_;
}

std::string StartupRun::StatusLine() const {
  const std::size_t all = written_.size() + failed_.size();
  if (all == 0) {
    return {};
  }
  std::string line = Count(written_.size()) + " of " + Count(all) + " files written";
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
  if (clears_modified_ && !wrote_document_) {
    line += document_.empty() ? std::string("; the document itself is not saved")
                              : "; " + PathText(document_.filename()) + " itself is not saved";
  }
  return line;
}

}  // namespace orvane
