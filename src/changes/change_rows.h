// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_CHANGE_ROWS_H_
#define ORVANE_CHANGES_CHANGE_ROWS_H_

#include <string>
#include <vector>

#include "changes/other_table.h"
#include "meaning/meanings.h"
#include "table/param_table.h"

namespace orvane {

/// A key whose stored bytes differ, or that one side alone has. All texts are UTF-8.
struct ChangeRow {
  ParamKey key;  ///< empty for a record that no table of ours can have
  std::string code;
  std::string meaning;
  std::string there;
  std::string here;
  bool has_both = true;
  bool can_take = false;  ///< the value there can be taken over
  ParamValue value{};     ///< the one there
};

/// The keys that differ in the order of the table, then those that are only here, then records that
/// are only there.
std::vector<ChangeRow> ListChanges(const ParamTable& here, const OtherTable& there,
                                   const Meanings& meanings);

/// "3 values differ; 2 are only here; 1 is only there"; "No differences".
std::string Summary(const std::vector<ChangeRow>& rows);

/// "7 changes", "1 change", "No changes".
std::string ChangeCount(std::size_t count);

/// Code, meaning, there and here, separated by tabs, a line each.
std::string AsText(const std::vector<ChangeRow>& rows);

}  // namespace orvane

#endif  // ORVANE_CHANGES_CHANGE_ROWS_H_
