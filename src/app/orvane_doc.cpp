// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/orvane_doc.h"

#include <QFileInfo>
#include <utility>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/param_dictionary.h"
#include "table/table_diff.h"
#include "table/tbl_file.h"
#include "table/tech.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

const std::string kCaption = "Orvane";

constexpr int kPassingTime = 6000;  // ms: time to read a line twice

// A table has 23 KB. What is far larger would hold the window up while it is read.
constexpr std::uint64_t kLargestTable = std::uint64_t{64} << 20U;

std::string OfAllParameters(std::size_t loaded) {
  return FormatInt(loaded) + " of " + FormatInt(kDictionarySize) + " parameters";
}

}  // namespace

COrvaneDoc::COrvaneDoc(ParamTable* table, Prompts* prompts, Notices* notices)
    : table_(table), prompts_(prompts), notices_(notices), history_(table) {
  BuildIndex();  // so that the views show the defaults until there is a document
  baseline_ = *table_;
  history_.Clear();
  passing_timer_.setParent(this);
  passing_timer_.setSingleShot(true);
  passing_timer_.setInterval(kPassingTime);
  connect(&passing_timer_, &QTimer::timeout, this, &COrvaneDoc::EndPassing);
}

QString COrvaneDoc::Title() const {
  return path_.isEmpty() ? QStringLiteral("Untitled") : QFileInfo(path_).fileName();
}

bool COrvaneDoc::IsModified() const {
  return must_save_ || !DifferingKeys(*table_, baseline_).empty();
}

void COrvaneDoc::NoteChanges() {
  emit changed();
  emit modifiedChanged(IsModified());
}

void COrvaneDoc::ShowPassing(std::string text) {
  passing_ = std::move(text);
  notices_->ShowNotice(passing_);
  passing_timer_.start();
}

void COrvaneDoc::EndPassing() {
  if (!passing_.empty()) {
    notices_->EndNotice(std::exchange(passing_, {}));
  }
}

bool COrvaneDoc::NoteStep(const QString& name) {
  EndPassing();
  const bool is_step = history_.NoteStep(name);
  NoteChanges();
  return is_step;
}

void COrvaneDoc::Undo() {
  const QString step = Steps().undoText();
  history_.Undo();
  ShowPassing("Undone: " + step.toStdString());
  NoteChanges();
}

void COrvaneDoc::Redo() {
  const QString step = Steps().redoText();
  history_.Redo();
  ShowPassing("Done again: " + step.toStdString());
  NoteChanges();
}

void COrvaneDoc::TakeBaseline() {
  baseline_ = *table_;
  must_save_ = false;
  NoteChanges();
}

void COrvaneDoc::OnOwnFileWritten(const RememberedFile& file) {
  file_.TakeFromDisk(file, PathFromText(path_), *table_, &file_version_);
  history_.FoldSave();
  TakeBaseline();
}

void COrvaneDoc::OnOwnFileTouched(const RememberedFile& file) {
  file_.TakeFromDisk(file, PathFromText(path_), *table_);
  must_save_ = true;
  NoteChanges();
}

void COrvaneDoc::BuildIndex() {
  if (const Status status = table_->BuildParamIndex(); status != kOk) {
    prompts_->ShowWarning(kCaption, std::string(StatusText(status)));
  }
}

bool COrvaneDoc::OnNewDocument() {
  path_.clear();
  kind_ = kTable;
  file_version_ = 0;
  not_in_file_.clear();
  file_.Forget();
  BuildIndex();
  PutInt(table_, "LPFR", 18);
  PutInt(table_, "ACDC", 0);
  PutInt(table_, "ACDH", 0);
  PutInt(table_, "EGNC", 1);
  PutInt(table_, "HGNC", 1);
  for (const ParamKey key : {"GFC1", "GFC2", "GFC3", "GFC4", "GFC5", "GFC6", "GFC7", "GFC8"}) {
    PutReal(table_, key, 1.0);
  }
  if (has_document_) {
    notices_->ShowNotice("New table; the parameters keep their previous values");
  }
  has_document_ = true;
  history_.Clear();
  TakeBaseline();
  return true;
}

bool COrvaneDoc::OnOpenDocument(const QString& path) { return Load(path, *table_); }

bool COrvaneDoc::OnReload() {
  const bool may_lose =
      !IsModified() ||
      prompts_->AskToLose(kCaption, "Load " + Title().toStdString() +
                                        " as it is on disk? The changes made here are lost.") ==
          Answer::kYes;
  return may_lose && Load(path_, baseline_);
}

// `before` has the values that the file may not bring.
bool COrvaneDoc::Load(const QString& path, const ParamTable& before) {
  BuildIndex();
  const std::filesystem::path file_path = PathFromText(path);
  InFile file;
  if (const Result<> opened = file.Open(file_path); !opened) {
    prompts_->ShowWarning(kCaption, FileMessage(file_path, opened.Message()));
    return false;
  }
  if (file.Info().size > kLargestTable) {
    notices_->ShowNotice(FileMessage(file_path, "larger than 64 MB, which no parameter table is"));
    return false;
  }
  ParamTable loaded = before;
  PutInt(&loaded, "TECH", kMtAmt);  // a file without the method is one of MT/AMT
  TblReport report;
  RememberedFile memory;
  if (LoadParamFile(&loaded, file_path, &report, &memory) != kOk) {
    notices_->ShowNotice(report.message);
    return false;
  }
  *table_ = std::move(loaded);
  history_.Clear();
  file_.Take(memory, *table_, std::move(report.left_out));
  not_in_file_ = std::move(report.missing);
  path_ = QFileInfo(path).absoluteFilePath();
  file_version_ = report.version;
  has_document_ = true;
  const bool is_waveform = EndsWithoutCase(PathText(file_path), ".TSS");
  kind_ = is_waveform && waveform_loader_ && waveform_loader_(path) ? kTimeSeries : kTable;
  notices_->ShowNotice("Loaded " + OfAllParameters(report.held) +
                       (not_in_file_.empty() ? "" : "; the others keep their previous values") +
                       (LeftOut().count == 0 ? "" : "; " + LeftOut().Summary()));
  TakeBaseline();
  return true;
}

void COrvaneDoc::OnOpenUnsaved(const QString& path, std::span<const std::byte> image,
                               const RememberedFile& file) {
  BuildIndex();
  static_cast<void>(LoadTblImage(table_, image));  // the caller has looked at it
  path_ = path;
  kind_ = kTable;
  file_version_ = path.isEmpty() ? 0 : IntParam(*table_, "TBVI", 2);
  has_document_ = true;
  not_in_file_.clear();
  baseline_ = *table_;
  history_.Clear();
  OnOwnFileTouched(file);  // whatever the file holds, it is not this
}

bool COrvaneDoc::IsOwnFile(const QString& path) const {
  return !path_.isEmpty() &&
         CompareFiles(PathFromText(path), PathFromText(path_)) != Sameness::kDifferent;
}

Result<FileChange> COrvaneDoc::LookAtFile() {
  return path_.isEmpty() || !file_.Memory().IsKnown() ? FileChange::kUnchanged
                                                      : file_.Look(PathFromText(path_));
}

void COrvaneDoc::KeepMine() {
  DocumentFile seen;
  const auto change = LookAtFile();
  if (!change || change == FileChange::kUnchanged) {
    return;
  }
  if (change == FileChange::kGone) {
    seen.Take(RememberedFile::Absent(), *table_);
  } else {
    // The text is for a question that need not be asked.
    static_cast<void>(file_.Question(PathFromText(path_), *table_, &seen));
  }
  file_ = seen;
  must_save_ = true;
  NoteChanges();
}

bool COrvaneDoc::MayReplaceFile(bool can_load) {
  enum Choice : int { kCancel, kSaveMine, kLoadIt };
  const std::filesystem::path path = PathFromText(path_);
  // The file may change again while the question is open.
  for (auto change = LookAtFile(); change != FileChange::kUnchanged; change = LookAtFile()) {
    if (change == FileChange::kGone) {
      return true;
    }
    if (!change) {
      return prompts_->AskToLose(
                 kCaption, FileMessage(path, change.Message()) +
                               "\n\nThe file cannot be read, so Orvane cannot know whether another "
                               "program has changed it. Save over it anyway?") == Answer::kYes;
    }
    DocumentFile seen;
    const std::string question = file_.Question(path, *table_, &seen);
    std::vector<std::string> buttons = {"Cancel", "Save mine over it"};
    if (can_load) {
      buttons.emplace_back("Load it");
    }
    const int choice = prompts_->AskChoice(
        kCaption, question + "\n\nCancel changes neither the file nor the table.", buttons,
        kCancel);
    if (choice == kLoadIt) {
      OnReload();
    }
    if (choice != kSaveMine) {
      return false;
    }
    file_ = seen;
    file_.AllowToLoseLeftOut();  // the question has named them
    must_save_ = true;
  }
  return MayLoseLeftOut();
}

bool COrvaneDoc::MayLoseLeftOut() {
  if (!file_.MustAskAboutLeftOut()) {
    return true;
  }
  const bool may_lose =
      prompts_->AskToLose(kCaption, Title().toStdString() + " has " + LeftOut().CountText() +
                                        " that Orvane cannot keep: " + LeftOut().Names() +
                                        ".\n\nSaving over the file loses them. Save?") ==
      Answer::kYes;
  if (may_lose) {
    file_.AllowToLoseLeftOut();
  }
  return may_lose;
}

TblSaveOptions COrvaneDoc::AskForOptions() {
  // Start-up tables too are saved whole: only boxes write filtered tables.
  TblSaveOptions options;
  if (IntParam(*table_, "TBVO", 2) == 1 &&
      prompts_->AskYesNo(kCaption, "Do you want save TBVO as 1!") == Answer::kYes) {
    options.output_version = 1;
  }
  return options;
}

bool COrvaneDoc::OnSave() {
  const TblSaveOptions options = AskForOptions();
  const bool keeps_output_version =
      options.output_version == 1 || IntParam(*table_, "TBVO", 2) != 1;
  if (!IsModified() && file_version_ == 2 && keeps_output_version && file_.Memory().IsKnown() &&
      LookAtFile() == FileChange::kUnchanged) {
    notices_->ShowNotice("Nothing to save: " + Title().toStdString() +
                         " already holds these values" +
                         (not_in_file_.empty() ? "" : "; Save As writes all parameters"));
    return true;
  }
  return Write(path_, options);
}

bool COrvaneDoc::OnSaveDocument(const QString& path) { return Write(path, AskForOptions()); }

bool COrvaneDoc::Write(const QString& path, const TblSaveOptions& options) {
  history_.NoteStep(QStringLiteral("Other changes"));  // what the save sets is no step
  const bool is_own = IsOwnFile(path);
  const bool was_gone = is_own && LookAtFile() == FileChange::kGone;
  TblReport report;
  RememberedFile memory;
  Status status = kOk;
  for (bool is_overtaken = true; is_overtaken;) {
    if (is_own && !MayReplaceFile(true)) {
      return false;
    }
    OutFile file;
    static_cast<void>(file.OpenAlone(PathFromText(path)));  // where that fails, so does saving
    if (const auto change = LookAtFile(); is_own && change) {
      file.Expect(change == FileChange::kGone ? RememberedFile::Absent() : file_.Memory());
    }
    status = SaveParamFile(table_, PathFromText(path), &file, options, &report, &memory);
    is_overtaken = file.WasOvertaken();  // since it was looked at: asked about again
  }
  if (status != kOk) {
    if (report.has_touched && is_own) {
      OnOwnFileTouched();
    }
    notices_->ShowNotice(report.message);
    prompts_->ShowWarning(kCaption, report.message);
    return false;
  }
  const std::string lost =
      LeftOut().count == 0 ? "" : "; without " + LeftOut().CountText() + ": " + LeftOut().Names();
  notices_->ShowNotice((file_version_ == 1 ? "Saved as version 2; the file opened was version 1"
                                           : "Saved " + path.toStdString() +
                                                 (was_gone ? "; it was no longer on disk" : "")) +
                       lost);
  path_ = QFileInfo(path).absoluteFilePath();
  file_version_ = 2;
  not_in_file_.clear();
  file_.Take(memory, *table_);
  history_.FoldSave();
  TakeBaseline();
  return true;
}

bool COrvaneDoc::SaveModified(const std::function<bool()>& save) {
  if (!IsModified()) {
    return true;
  }
  switch (prompts_->AskYesNoCancel(kCaption, "Save changes to " + Title().toStdString() + "?")) {
    case Answer::kYes:
      return save();
    case Answer::kNo:
      return true;
    case Answer::kCancel:
      break;
  }
  return false;
}

}  // namespace orvane
