// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_ORVANE_DOC_H_
#define ORVANE_APP_ORVANE_DOC_H_

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "app/document_file.h"
#include "app/table_history.h"
#include "forms/prompts.h"
#include "table/param_table.h"
#include "table/tbl_file.h"

namespace orvane {

/// The one open document: a parameter table file, whose content is the process-wide table. It holds
/// no copy to work on: opening loads into the table, saving writes the table out, editors work on
/// the table. It is modified exactly where a value found by its key differs from the table right
/// after New, Open or Save; or after its file was touched by a save that failed, and after a crash.
class COrvaneDoc : public QObject {
  Q_OBJECT

 public:
  enum ContentKind { kTable = 0, kTimeSeries = 2 };

  COrvaneDoc(ParamTable* table, Prompts* prompts, Notices* notices);

  /// A new document keeps the values that are in the table, but for a few starting values.
  bool OnNewDocument();

  /// Loads a file into the table. A file that cannot be opened is reported in a message, one that
  /// is no parameter table in the status bar; either way document and table stay what they were.
  bool OnOpenDocument(const QString& path);

  /// Writes the table, always as version 2; asks first where that is the document's own file and
  /// others have changed it. False where the user wants to stay or has seen why not.
  bool OnSaveDocument(const QString& path);
  /// Saves under the document's path, but writes nothing where the file holds it all: it is of
  /// version 2 and as it was read or written, and nothing was changed since.
  bool OnSave();

  /// Looks whether others have changed the document's file. A document without a file is
  /// unchanged.
  Result<FileChange> LookAtFile();
  /// Loads its file again; asks before changes are lost.
  bool OnReload();
  /// The table stays what it is, and is to be saved: over what the file holds now.
  void KeepMine();
  /// Whether the document's own file may be written: asks where others have changed it. `can_load`
  /// offers to load the file instead: not while something else works on the table.
  bool MayReplaceFile(bool can_load = false);
  /// The records of its file that the table has no place for.
  const LeftOutRecords& LeftOut() const { return file_.LeftOut(); }

  /// Takes up a table that an ended program had not saved: a modified document of that path, which
  /// may be empty. `image` is a whole version-2 file, `file` what it was made from.
  void OnOpenUnsaved(const QString& path, std::span<const std::byte> image,
                     const RememberedFile& file = {});

  /// The program ends, and the user has decided about the changes.
  void OnCloseDocument() { TakeBaseline(); }

  /// The document's own file was written by other means, from this table.
  void OnOwnFileWritten(const RememberedFile& file);
  /// Its own file may hold anything after a write that failed, or `file`.
  void OnOwnFileTouched(const RememberedFile& file = {});

  /// Asks whether to save a modified document. False: the user wants to stay.
  bool SaveModified(const std::function<bool()>& save);

  /// What takes over the path of a waveform file once its table is loaded; true when it accepts.
  void SetWaveformLoader(std::function<bool(const QString&)> loader) {
    waveform_loader_ = std::move(loader);
  }

  ParamTable& Table() { return *table_; }
  const ParamTable& Table() const { return *table_; }
  Prompts& Asking() { return *prompts_; }
  /// Empty for a new document.
  const QString& Path() const { return path_; }
  /// File name, or "Untitled".
  QString Title() const;
  ContentKind Kind() const { return kind_; }
  /// The file that the table belongs to.
  const RememberedFile& File() const { return file_.Memory(); }
  /// Version of the file as loaded or saved; 0 for a new document.
  int FileVersion() const { return file_version_; }

  bool IsModified() const;
  /// The table as New, Open or Save left it: what is not modified.
  const ParamTable& Baseline() const { return baseline_; }
  /// The table as its file holds it; null for a new document.
  const ParamTable* FileTable() const { return path_.isEmpty() ? nullptr : &baseline_; }
  /// Values that the file did not bring, until the next save.
  const std::vector<ParamKey>& NotInFile() const { return not_in_file_; }
  /// To be called after every change of the table, so that the views follow: while a dialog may
  /// change more of it, and when it is done, with the name of the step that Undo takes back.
  void UpdateAllViews() { emit changed(); }
  /// False where nothing was changed.
  bool NoteStep(const QString& name);
  /// Take back and make again what was noted since New or Open; the notices say what, until the
  /// next step or for some seconds.
  void Undo();
  void Redo();
  const QUndoStack& Steps() const { return history_.Steps(); }

 signals:
  /// Path, modified mark or a value of the table changed.
  void changed();
  /// After `Changed()`: a command is done, and the document is modified or not, as before or not.
  void modifiedChanged(bool is_modified);

 private:
  void BuildIndex();
  void NoteChanges();
  void ShowPassing(std::string text);
  void EndPassing();
  void TakeBaseline();
  bool Load(const QString& path, const ParamTable& before);
  TblSaveOptions AskForOptions();
  bool MayLoseLeftOut();
  bool IsOwnFile(const QString& path) const;
  bool Write(const QString& path, const TblSaveOptions& options);

  ParamTable* table_;
  Prompts* prompts_;
  Notices* notices_;
  std::function<bool(const QString&)> waveform_loader_;
  QString path_;
  ContentKind kind_ = kTable;
  int file_version_ = 0;
  ParamTable baseline_;
  TableHistory history_;
  std::string passing_;  // the notice that goes by itself
  QTimer passing_timer_;
  DocumentFile file_;
  bool must_save_ = false;
  std::vector<ParamKey> not_in_file_;
  bool has_document_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_ORVANE_DOC_H_
