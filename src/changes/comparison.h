// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_COMPARISON_H_
#define ORVANE_CHANGES_COMPARISON_H_

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "changes/change_rows.h"
#include "files/file_memory.h"
#include "meaning/meanings.h"

namespace orvane {

/// What a table is compared with.
enum class Against {
  kFile,      ///< the file on disk that it belongs to
  kDefaults,  ///< the built-in values
  kTable,     ///< a second table file
  kBox,       ///< what a box would hold that takes it at power-up
  kVersion1,  ///< what a version-1 file would hold of it
};

/// Gives the meanings once they are needed: making them takes a while.
using MeaningsSource = std::function<const Meanings&()>;

/// A table beside another: keeps the list of what differs while both change.
class Comparison {
 public:
  /// The tables must outlive the comparison. `start` is what a table without a file is compared
  /// with.
  Comparison(const ParamTable* here, const ParamTable* start, MeaningsSource meanings)
      : here_(here), start_(start), meanings_(std::move(meanings)) {}

  Against With() const { return against_; }
  void CompareWith(Against against) { against_ = against; }
  /// The file of the table, empty where it has none yet, and the second table.
  void SetFile(std::filesystem::path file) { file_.path = std::move(file); }
  void SetSecond(std::filesystem::path file) { second_.path = std::move(file); }

  /// Lists again: to be called after either side has changed. A file is read only where its bytes
  /// are others than before. Fails where there is nothing to compare with; there are no rows then.
  Result<> Update();

  const std::vector<ChangeRow>& Rows() const { return rows_; }
  /// How many rows of which kind there are, and against what.
  std::string Text() const;

 private:
  // A file as it was read.
  struct Read {
    std::filesystem::path path;
    std::filesystem::path read_path;
    RememberedFile memory;
    std::optional<OtherTable> table;
  };

  bool HasNoFile() const { return against_ == Against::kFile && file_.path.empty(); }
  Result<> List(Read* file);

  const ParamTable* here_;
  const ParamTable* start_;
  MeaningsSource meanings_;
  Against against_ = Against::kFile;
  Read file_;
  Read second_;
  std::vector<ChangeRow> rows_;
};

}  // namespace orvane

#endif  // ORVANE_CHANGES_COMPARISON_H_
