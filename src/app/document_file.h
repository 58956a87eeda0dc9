// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_DOCUMENT_FILE_H_
#define ORVANE_APP_DOCUMENT_FILE_H_

#include <filesystem>
#include <string>
#include <vector>

#include "files/file_memory.h"
#include "table/left_out.h"
#include "table/param_table.h"

namespace orvane {

/// The document's own file as it was last read or written, and what others made of it since.
class DocumentFile {
 public:
  /// There is none, or its content is in doubt by our own doing: nothing is asked about it.
  void Forget() { *this = DocumentFile(); }
  /// It was read or written and holds this table, and these records besides.
  void Take(const RememberedFile& memory, const ParamTable& table, LeftOutRecords left_out = {});
  /// It was this. Where it still is, its table is read onto a copy of `table`, and `version`, which
  /// may be null, gets that of the file.
  void TakeFromDisk(const RememberedFile& memory, const std::filesystem::path& path,
                    const ParamTable& table, int* version = nullptr);

  const RememberedFile& Memory() const { return memory_; }
  Result<FileChange> Look(const std::filesystem::path& path) { return memory_.Look(path); }

  /// Records that the table has no place for, so that saving loses them.
  const LeftOutRecords& LeftOut() const { return left_out_; }
  /// Whether that is still to be asked about.
  bool MustAskAboutLeftOut() const { return left_out_.count > 0 && !may_lose_left_out_; }
  void AllowToLoseLeftOut() { may_lose_left_out_ = true; }

  /// What to ask before `mine` takes the place of a file that others have changed: whose keys
  /// differ, or why that cannot be known. `seen` becomes the content that the text is about.
  std::string Question(const std::filesystem::path& path, const ParamTable& mine,
                       DocumentFile* seen) const;

 private:
  std::string Differences(const ParamTable& mine, const ParamTable& theirs) const;

  RememberedFile memory_;
  ParamTable table_;  // what it held
  bool knows_table_ = false;
  LeftOutRecords left_out_;
  bool may_lose_left_out_ = false;
};

}  // namespace orvane

#endif  // ORVANE_APP_DOCUMENT_FILE_H_
