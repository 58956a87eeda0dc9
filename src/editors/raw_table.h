// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of the raw parameter editor: every entry of a table as a row of texts.
#ifndef ORVANE_EDITORS_RAW_TABLE_H_
#define ORVANE_EDITORS_RAW_TABLE_H_

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "editors/raw_meaning.h"
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

/// Which rows are left over: those for which all that is switched on is true.
enum RawSwitch : unsigned {
  kChangedSinceFile = 1,
  kNotDefault = 2,
  kOwnChanges = 4,
  kInNoDialog = 8,
  kFavourites = 16,
};

/// The name of a write mask, compared whole; "Not Changable" for any but the three known ones.
std::string_view PermissionName(std::uint32_t write_mask);

/// The modes whose bits a mask has, "1, 11, 12, 14, 15"; runs of three or more as "0 to 18".
std::string ModesOf(std::uint32_t write_mask);

/// The same as a sentence: "a box may change it in mode 1", "a box may not change it in any mode".
std::string PermissionSentence(std::uint32_t write_mask);

struct RawRow {
  ParamKey key;
  std::string_view type;  ///< repeats the row before for `RawPT`, which has no name of its own
  std::string_view permission;
  std::string value;
  RawMeaning meaning;     ///< of the stored value
  std::string otherwise;  ///< says how an edit was stored if not as typed: "stored as 12"
  ParamValue stored{};    ///< when the row was last read or edited
};

/// The rows in table order, read once when made; edits go straight into the table. Rows are told by
/// their ordinal, counted from 1 as column "No." shows it. A duplicated key shows the content of
/// its first entry in both rows.
class RawTable {
 public:
  /// `not_in_file`: keys whose values the open file did not bring, said with their rows. Without
  /// `explain` no row has a meaning. `file`: the table as its file holds it, null where there is
  /// none; it must outlive this.
  explicit RawTable(ParamTable* table, std::vector<ParamKey> not_in_file = {}, Explain explain = {},
                    const ParamTable* file = nullptr);
  bool HasMeanings() const { return explain_ != nullptr; }
  bool HasFile() const { return file_ != nullptr; }

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

  /// Whether code, value or meaning contain the text, ignoring case, and all the `RawSwitch` bits
  /// are true of the row.
  bool Matches(int ordinal, std::string_view filter, unsigned switches = 0) const;

  /// What is wrong with a value or how else it was stored: "out of range (0 to 100); stored as 12".
  /// Column "Meaning" ends with it.
  std::string Caution(int ordinal) const;

  /// The keys that the user wants at hand, some of which other tables may have.
  const std::set<std::string>& Favourites() const { return favourites_; }
  void SetFavourites(std::set<std::string> keys) { favourites_ = std::move(keys); }
  bool IsFavourite(int ordinal) const { return favourites_.contains(Row(ordinal).key.Text()); }
  void SetFavourite(int ordinal, bool is_favourite);

  /// A line that says an entry's type, stored bytes and who may change it in which mode.
  std::string Detail(int ordinal) const;

 private:
  RawMeaning MeaningOf(const ParamEntry& entry) const;
  void Take(const ParamEntry& entry, std::string value, RawRow* row) const;
  /// Whether the stored bytes differ from those of another table.
  bool DiffersFrom(const ParamTable& other, int ordinal) const;
  bool Has(int ordinal, RawSwitch what) const;

  ParamTable* table_;
  const ParamTable* file_;
  ParamTable opened_;  // as the table was
  std::vector<ParamKey> not_in_file_;
  Explain explain_;
  std::set<std::string> favourites_;
  std::vector<RawRow> rows_;
  bool is_modified_ = false;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_RAW_TABLE_H_
