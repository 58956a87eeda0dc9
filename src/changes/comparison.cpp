// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/comparison.h"

#include "changes/other_table.h"

namespace orvane {

Result<> Comparison::Update() {
  rows_.clear();
  switch (against_) {
    case Against::kFile:
      if (!HasNoFile()) {
        return List(&file_);
      }
      rows_ = ListChanges(*here_, {*start_}, meanings_());
      break;
    case Against::kTable:
      return second_.path.empty() ? Failure("Choose the second table") : List(&second_);
    case Against::kDefaults:
      rows_ = ListChanges(*here_, DefaultTable(), meanings_());
      break;
    case Against::kBox:
      rows_ = ListChanges(*here_, AfterPowerUp(*here_), meanings_());
      break;
    case Against::kVersion1:
      rows_ = ListChanges(*here_, AsVersion1(*here_), meanings_());
      break;
  }
  return {};
}

std::string Comparison::Text() const {
  return Summary(rows_) + (HasNoFile() ? "; the table has no file yet, so this is since New" : "");
}

Result<> Comparison::List(Read* file) {
  const bool is_same = file->table && file->read_path == file->path && file->memory.HasBytes() &&
                       file->memory.Look(file->path) == FileChange::kUnchanged;
  if (!is_same) {
    file->table.reset();
    auto read = TableOfFile(file->path, &file->memory);
    if (!read) {
      return Failure(read.Message());
    }
    file->table = std::move(*read);
    file->read_path = file->path;
  }
  rows_ = ListChanges(*here_, *file->table, meanings_());
  return {};
}

}  // namespace orvane
