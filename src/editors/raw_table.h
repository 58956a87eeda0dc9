// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of the raw parameter editor: every entry of a table as a row of texts.
#ifndef ORVANE_EDITORS_RAW_TABLE_H_
#define ORVANE_EDITORS_RAW_TABLE_H_

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "table/param_table.h"

namespace orvane {

enum RawColumn : int {
  kNumberColumn,
  kCodeColumn,
  kTypeColumn,
  kPermissionColumn,
  kValueColumn,
  kMeaningColumn,
};

inline constexpr std::array<std::string_view, 5> kRawColumnNames = {"No.", "Code", "Type",
                                                                    "Write Permission", "Value"};
/// Of the column after them, where meanings are known.
inline constexpr std::string_view kMeaningName = "Meaning";

/// What an entry's value means, in a line.
using Explain = std::function<std::string(const ParamEntry&)>;

/// The name of a write mask, compared whole; "Not Changable" for any but the three known ones.
std::string_view PermissionName(std::uint32_t write_mask);

/// The modes whose bits a mask has, "1, 11, 12, 14, 15"; runs of three or more as "0 to 18".
std::string ModesOf(std::uint32_t write_mask);

struct RawRow {
  ParamKey key;
  std::string_view type;  ///< repeats the row before for `RawPT`, which has no name of its own
  std::string_view permission;
  std::string value;
  std::string meaning;  ///< of the stored value
  ParamValue stored{};  ///< when the row was last read or edited
};

/// The rows in table order, read once when made; edits go straight into the table. Rows are told by
/// their ordinal, counted from 1 as column "No." shows it. A duplicated key shows the content of
/// its first entry in both rows.
class RawTable {
 public:
  /// `not_in_file`: keys whose values the open file did not bring, said with their rows. Without
  /// `explain` no row has a meaning.
  explicit RawTable(ParamTable* table, std::vector<ParamKey> not_in_file = {},
                    Explain explain = {});
  bool HasMeanings() const { return explain_ != nullptr; }

  /// Number of rows. Reading stops at the first key that cannot be fetched.
  int Count() const { return static_cast<int>(rows_.size()); }
  const RawRow& Row(int ordinal) const { return rows_[static_cast<std::size_t>(ordinal) - 1]; }
  /// The text of a cell as shown, column "No." included.
  std::string Cell(int ordinal, RawColumn column) const;

  /// Whether a value may be edited at all: not that of a `RawPT` entry, which has no text form.
  bool CanEdit(int ordinal) const;

  /// Stores the text that an edit left, converted by the entry's type and whatever its write
  /// permission. The row keeps the text as typed. Returns the other rows of the same key, which now
  /// show the stored value.
  std::vector<int> EndEdit(int ordinal, std::string_view text);

  /// Reads the rows again whose stored values others have changed. Returns their ordinals.
  std::vector<int> ReadAgain();

  /// The first row of a key; 0 where there is none.
  int OrdinalOf(ParamKey key) const;

  /// Whether any edit ended.
  bool IsModified() const { return is_modified_; }

  /// Whether the stored bytes differ from those of the moment this was made.
  bool IsChanged(int ordinal) const;

  /// Whether code, value or meaning contain the text, ignoring case.
  bool Matches(int ordinal, std::string_view filter) const;

  /// A line that says an entry's type, stored bytes and who may change it in which mode.
  std::string Detail(int ordinal) const;

 private:
  std::string MeaningOf(const ParamEntry& entry) const;
  void Take(const ParamEntry& entry, std::string value, RawRow* row) const;

  ParamTable* table_;
  ParamTable opened_;  // as the table was
  std::vector<ParamKey> not_in_file_;
  Explain explain_;
  std::vector<RawRow> rows_;
  bool is_modified_ = false;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_RAW_TABLE_H_
