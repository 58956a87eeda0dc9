// SPDX-License-Identifier: GPL-3.0-or-later
// What a crew takes along on paper: a sheet for each box.
#ifndef ORVANE_EDITORS_FIELD_SHEET_H_
#define ORVANE_EDITORS_FIELD_SHEET_H_

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "stepping/schedule_file.h"
#include "table/clock.h"
#include "table/param_table.h"

namespace orvane {

struct SheetLine {
  std::string label;
  std::string value;
};

/// The last column is left blank, for the pen.
inline constexpr std::array<std::string_view, 9> kSheetColumns = {
    "Channel", "Name", "E+ (m)", "N+ (m)", "E- (m)", "N- (m)", "Gain", "Factor", "Contact (ohm)"};

struct FieldSheet {
  std::string title;  ///< "Local Box 2417"
  int box = 0;        ///< row in the spread, as in the items of `MapOf()`
  std::vector<SheetLine> lines;
  std::vector<std::array<std::string, kSheetColumns.size()>> channels;
};

/// The local box and every other one with a serial number, in the order of the spread; MT/AMT has
/// no transmitter. Times are told in UTC and in the table's zone. `now` is UTC, `steps` the table's
/// schedule file; null where nobody looked.
std::vector<FieldSheet> FieldSheetsOf(const ParamTable& table, const Clock& now,
                                      const ScheduleFile* steps = nullptr);

}  // namespace orvane

#endif  // ORVANE_EDITORS_FIELD_SHEET_H_
