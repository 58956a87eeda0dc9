// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_STARTUP_RUN_H_
#define ORVANE_EDITORS_STARTUP_RUN_H_

#include <filesystem>
#include <string>
#include <vector>

#include "editors/startup_files.h"
#include "forms/early_writes.h"
#include "forms/prompts.h"

namespace orvane {

/// Saving the start-up files of all boxes: what the dialogs hand on, what was written and what
/// becomes of the document.
class StartupRun {
 public:
  /// `document`: the open document's file, empty for a new one. Sets the default resistances.
  StartupRun(ParamTable* table, std::filesystem::path document, Prompts* prompts);

  const std::vector<StartupBox>& Boxes() const { return boxes_; }
  const StartupChoices& Choices() const { return choices_; }
  std::filesystem::path PathOf(const StartupForm& form) const;

  /// What the user should know of the file that the dialog would write; empty: nothing.
  std::string WarningFor(const StartupForm& form) const;

  /// OK of a dialog: asks for the version where that is a question, writes the file from a copy of
  /// the table and keeps what lasts. A transmitter monitor without a serial number gets no file.
  void Accept(const StartupForm& form);

  /// The whole run in one line; empty where nothing was accepted.
  std::string StatusLine() const;

  /// Keys that the run's beginning changed; cancelling every dialog does not undo it.
  std::vector<std::string> EarlyChanges() const { return early_.Changes(); }

  /// What the run made of the document's own file.
  enum class OwnFile { kAsBefore, kWritten, kTouched };
  OwnFile Document() const { return own_file_; }

 private:
  std::filesystem::path DocumentFolder() const;
  void Remember(const StartupForm& form);
  void Write(const StartupForm& form);

  ParamTable* table_;
  std::filesystem::path document_;
  Prompts* prompts_;
  std::vector<StartupBox> boxes_;
  std::vector<std::int32_t> left_out_;
  StartupChoices choices_;
  std::vector<std::filesystem::path> written_;
  std::vector<std::string> failed_;
  EarlyWrites early_;
  bool has_version_1_ = false;
  bool has_no_monitor_ = false;
  OwnFile own_file_ = OwnFile::kAsBefore;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_STARTUP_RUN_H_
