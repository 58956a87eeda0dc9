// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/schedule_text.h"

#include "files/path_names.h"
#include "files/text_file.h"
#include "stepping/tfs_file.h"

namespace orvane {
namespace {

void ListRow(int number, const ScheduleRow& row, TextFile* out) {
  out->Int(number, 4).Text(", ").Int(row.end_time, 10).Text(", ");
  out->TextRight(WaveformName(row.waveform), 8).Text(", ");
  out->Fixed(row.frequency, 8, 16).Text(", ").Fixed(row.current, 4, 10).Text(",");
}

BatchResult ListSchedule(BatchTask& task) {
  const ScheduleRows read = ReadScheduleRows(task.Input());
  if (!read.outcome) {
    return BatchFailed(read.outcome.Message());
  }
  if (read.rows.empty()) {
    return BatchFailed(read.refusal.empty() ? "no record" : "no record; " + read.refusal);
  }
  const std::filesystem::path& to = task.Outputs()[0];
  TextFile out;
  if (const Result<> opened = out.Open(to); !opened) {
    return BatchFailed(FileMessage(to, opened.Message()));
  }
  int number = 0;
  for (const ScheduleRow& row : read.rows) {
    ListRow(++number, row, &out);
    out.Text(number == read.bad_row ? " " + read.refusal + "\n" : "\n");
  }
  if (read.bad_row == 0 && !read.refusal.empty()) {
    out.Text(read.refusal).Text("\n");
  }
  task.Advance(read.rows.size() * sizeof(ScheduleRow));
  if (const Result<> committed = out.Commit(); !committed) {
    return BatchFailed(FileMessage(to, committed.Message()));
  }
  return BatchDone({to}, read.refusal);
}

}  // namespace

Conversion ScheduleText() {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& input) {
    return std::vector<std::string>{WithExtension(input, ".txt")};
  };
  conversion.job = ListSchedule;
  return conversion;
}

}  // namespace orvane
