// SPDX-License-Identifier: GPL-3.0-or-later
// A table at a glance, for the program's main window.
#ifndef ORVANE_EDITORS_TABLE_SUMMARY_H_
#define ORVANE_EDITORS_TABLE_SUMMARY_H_

#include <string>
#include <string_view>
#include <vector>

#include "table/clock.h"
#include "table/param_table.h"
#include "table/tech.h"

namespace orvane {

struct SummaryLine {
  std::string_view label;
  std::string value;           ///< empty: not set
  std::vector<ParamKey> keys;  ///< that it shows, of a long text the first
  std::string caution = {};    ///< what is wrong with the value; empty: nothing
};

struct SummaryGroup {
  std::string_view title;
  std::vector<SummaryLine> lines;
};

/// The survey method of a "TECH" code, 1 to 6; empty for any other.
std::string_view MethodName(Tech tech);

/// What an "LPFR" code means. 16, 80 and 160 are each the weakest of five filters; from 80 on the
/// VLF trap is on too.
std::string FilterName(int code);

/// Method, boxes with their channels, times, gains and survey texts: always the same groups, and
/// but for auxiliary boxes the same lines.
std::vector<SummaryGroup> SummarizeTable(const ParamTable& table, const Clock& now);

}  // namespace orvane

#endif  // ORVANE_EDITORS_TABLE_SUMMARY_H_
