// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/tfs_file.h"

#include <algorithm>

#include "stepping/schedule_text.h"
#include "support.h"

namespace orvane::fuzz {

void FuzzTfs(Bytes input) {
  const auto path = PutFile("a.TFS", input);
  const ScheduleRows read = ReadScheduleRows(path);
  Require(static_cast<bool>(read.outcome), "a file that is there can be read");
  Require(read.rows.size() <= std::min<std::size_t>(input.size() / sizeof(ScheduleRow), kMostSteps),
          "no more rows than the file holds");
  Require(read.bad_row == 0 || !read.refusal.empty(), "a bad row refuses the file");
  static_cast<void>(Convert(ScheduleText(), path, PathOf("a.txt")));
}

void FuzzTfsRoundTrip(Bytes input) {
  ScheduleTable table;
  ScheduleReport report;
  const bool has_rows = ReadScheduleFile(PutFile("a.TFS", input), &table, &report);
  const auto rows = WrittenRows(table);
  Require(has_rows == report.message.empty() && has_rows == !rows.empty(),
          "a file is read or refused with a message");
  if (!has_rows) {
    return;
  }
  const auto written = PathOf("b.TFS");
  Require(static_cast<bool>(WriteScheduleFile(written, table)), "a schedule can be written");
  Require(FileText(written) == TextOf(input.first(rows.size_bytes())),
          "the file has the bytes that were read");
  ScheduleTable again;
  Require(ReadScheduleFile(written, &again, &report), "what was written can be read");
  Require(WrittenRows(again).size() == rows.size(), "all rows come back");
}

}  // namespace orvane::fuzz
