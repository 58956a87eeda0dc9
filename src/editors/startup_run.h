// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_STARTUP_RUN_H_
#define ORVANE_EDITORS_STARTUP_RUN_H_

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "editors/startup_files.h"
#include "files/file_memory.h"
#include "forms/early_writes.h"
#include "forms/prompts.h"
#include "table/tbl_read_back.h"

namespace orvane {

/// What came of one box.
struct StartupOutcome {
  enum State {
    kSkipped,  ///< no OK: cancelled, or after the stop
    kWritten,
    kOverwritten,  ///< written, and then a later box of the run wrote the same file
    kFailed,
    kNoFile,  ///< a box that gets none
  };
  StartupBox box;
  std::int32_t serial = 0;
  std::filesystem::path path;  ///< empty where nothing was tried
  State state = kSkipped;
  std::string note;                      ///< why; of a written file what was there before
  std::string message = {};              ///< of a failed one: path, reason and status
  std::uint32_t version = 0;             ///< of a written one
  TblReadBack read_back = {};            ///< of a written one that was to be verified
  std::vector<ParamKey> differing = {};  ///< where its values are not those of the main table

  /// "auxiliary 1, serial 1203".
  std::string Name() const;
  /// "written over the file of serial 1207", "failed (REASON)".
  std::string Text() const;
  /// "version 2, 23040 bytes, verified, 12 values differ from the main table"; empty where nothing
  /// was written.
  std::string Details() const;
  /// "verified", "read back from memory"; empty where nothing was read back.
  std::string_view VerifiedText() const;
};

/// Saving the start-up files of all boxes, by dialogs or without: what one box hands on to the
/// next, what was written and what becomes of the document.
class StartupRun {
 public:
  /// `document`: the open document's file, empty for a new one. `folder`: where files go without
  /// either a document or a location. Sets the default resistances.
  StartupRun(ParamTable* table, std::filesystem::path document, Prompts* prompts,
             std::filesystem::path folder = {});

  /// Asked before the document's own file is written; false: that file stays and the box is
  /// skipped.
  void SetMayReplaceDocument(std::function<bool()> may) { may_replace_document_ = std::move(may); }
  /// Where a box's file goes, other than its dialog says.
  void SetPlace(std::function<std::filesystem::path(const StartupForm&)> place) {
    place_ = std::move(place);
  }
  /// Asked before any file is written, and may make it ready; false: the box is skipped.
  void SetMayWrite(std::function<bool(const std::filesystem::path&)> may) {
    may_write_ = std::move(may);
  }

  /// Each file is read back from its disk once it is written; one that is not as it was meant has
  /// failed.
  void SetVerifies(bool verifies) { verifies_ = verifies; }

  const std::vector<StartupBox>& Boxes() const { return boxes_; }
  const StartupChoices& Choices() const { return choices_; }
  /// Gives each box's form, in order, to `show`, which accepts it or not; false ends the run.
  void ForEachBox(const std::function<bool(StartupForm*)>& show);
  /// Whole, from the root; a place that was set stays as it is.
  std::filesystem::path PathOf(const StartupForm& form) const;
  /// The same as text, or "no file" of a box that gets none.
  std::string FileText(const StartupForm& form) const;
  /// Where files go without a location, whole.
  const std::filesystem::path& DefaultFolder() const { return folder_; }

  /// "Box 2 of 6: auxiliary 1, serial 1203".
  std::string Heading(const StartupForm& form) const;
  /// What the user should know of the file that the dialog would write; empty: nothing.
  std::string WarningFor(const StartupForm& form) const;

  /// OK of a dialog, or none to ask: asks for the version where that is a question, writes the file
  /// from a copy of the table and keeps what lasts. A transmitter monitor without a serial number
  /// gets no file.
  const StartupOutcome& Accept(const StartupForm& form);

  /// Of every box, in their order, and of those after an empty place.
  const std::vector<StartupOutcome>& Outcomes() const { return outcomes_; }
  /// Whether any dialog ended with OK.
  bool HasBegun() const;
  /// "2 of 3 files written, 1 box skipped": files that there are now of those that were tried.
  std::string Headline() const;
  /// The counts, and a line for each box that was neither written nor skipped; empty where nothing
  /// was accepted.
  std::string StatusText() const;

  /// Keys that the run's beginning changed; cancelling every dialog does not undo it.
  std::vector<std::string> EarlyChanges() const { return early_.Changes(); }

  /// What the run made of the document's own file. Only the main box's counts as written.
  enum class OwnFile { kAsBefore, kWritten, kTouched };
  OwnFile Document() const { return own_file_; }
  /// The document's own file as the run wrote it last; nothing where that failed.
  const RememberedFile& DocumentMemory() const { return document_memory_; }

 private:
  StartupOutcome& OutcomeOf(StartupBox box);
  void Remember(const StartupForm& form);
  /// Another box's file is no longer what it was.
  void MarkOverwritten(const StartupOutcome& by);
  bool MayWrite(const std::filesystem::path& path) const;
  void Write(const StartupForm& form, StartupOutcome* outcome);

  ParamTable* table_;
  std::filesystem::path document_;
  std::filesystem::path folder_;
  Prompts* prompts_;
  std::vector<StartupBox> boxes_;
  StartupChoices choices_;
  std::vector<StartupOutcome> outcomes_;
  EarlyWrites early_;
  bool has_version_1_ = false;
  bool verifies_ = false;
  OwnFile own_file_ = OwnFile::kAsBefore;
  RememberedFile document_memory_;
  std::function<bool()> may_replace_document_;
  std::function<std::filesystem::path(const StartupForm&)> place_;
  std::function<bool(const std::filesystem::path&)> may_write_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_STARTUP_RUN_H_
