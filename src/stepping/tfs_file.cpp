// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/tfs_file.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "files/file_io.h"
#include "table/param_time.h"

namespace orvane {
namespace {

constexpr int kWaveformLimit = 12;  // kept: a file may not ask for "EXTCLK"
constexpr double kMostCurrent = 200;

bool IsWithin(double number, double most) {
  return std::isfinite(number) && number >= 0 && number <= most;
}

// Why a row is bad; empty where it is good. `before` is 0 for the first row.
std::string RowFault(const ScheduleRow& row, const ScheduleRow* before) {
  if (!IsWithin(row.frequency, HUGE_VAL)) {
    return "frequency " + FormatReal(row.frequency);
  }
  if (row.waveform < 0 || row.waveform >= kWaveformLimit) {
    return "waveform " + FormatInt(row.waveform);
  }
  if (!IsWithin(row.current, kMostCurrent)) {
    return "current " + FormatReal(row.current) + " A";
  }
  if (row.end_time < 0 || row.end_time > kSecondsPerDay) {
    return "end time " + FormatInt(row.end_time) + " s";
  }
  if (before != nullptr && row.end_time <= before->end_time) {
    return "end time " + FormatInt(row.end_time) + " s is not after " +
           FormatInt(before->end_time) + " s";
  }
  return {};
}

std::string InRow(std::size_t number, const std::string& reason) {
  return "row " + FormatInt(number) + ": " + reason;
}

// The first bad row, from 1, and why; number 0 where all are good.
struct BadRow {
  std::size_t number = 0;
  std::string fault;
};
BadRow FindBadRow(std::span<const ScheduleRow> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (std::string fault = RowFault(rows[i], i > 0 ? &rows[i - 1] : nullptr); !fault.empty()) {
      return {i + 1, std::move(fault)};
    }
  }
  return {};
}

}  // namespace

ScheduleRows ReadScheduleRows(const std::filesystem::path& path) {
  ScheduleRows result;
  InFile file;
  result.outcome = file.Open(path);
  std::array<std::byte, sizeof(ScheduleRow)> bytes{};
  while (result.outcome && result.rows.size() < static_cast<std::size_t>(kMostSteps)) {
    if (const std::size_t held = file.Read(bytes); held != bytes.size()) {
      result.is_cut = held != 0;
      break;
    }
    const auto row = RecordFrom<ScheduleRow>(bytes);
    if (row.end_time == 0) {
      break;
    }
    result.rows.push_back(row);
  }
  if (result.outcome) {
    result.outcome = file.Outcome();
  }
  if (result.outcome) {
    result.bad_row = static_cast<int>(FindBadRow(result.rows).number);
    result.refusal = WhyUnreadable(result.rows);
  }
  return result;
}

bool ReadScheduleFile(const std::filesystem::path& path, ScheduleTable* table,
                      ScheduleReport* report) {
  table->fill({});
  const ScheduleRows read = ReadScheduleRows(path);
  report->is_open = static_cast<bool>(read.outcome);
  report->rows = static_cast<int>(read.rows.size());
  report->message.clear();
  if (const std::string& reason = read.outcome ? read.refusal : read.outcome.Message();
      !reason.empty()) {
    report->message = FileMessage(path, reason);
    return false;
  }
  std::copy(read.rows.begin(), read.rows.end(), table->begin());
  return true;
}

std::string WhyUnreadable(std::span<const ScheduleRow> rows) {
  const auto end = std::find_if(rows.begin(), rows.end(),
                                [](const ScheduleRow& row) { return row.end_time == 0; });
  const auto count = static_cast<std::size_t>(end - rows.begin());
  if (const BadRow bad = FindBadRow(rows.first(count)); bad.number > 0) {
    return InRow(bad.number, bad.fault);
  }
  if (count >= static_cast<std::size_t>(kMostSteps)) {
    return "200 rows and no end: a file of 200 rows cannot be read back";
  }
  if (count < rows.size()) {
    return InRow(count + 1, "end time 0 ends the schedule");
  }
  return count == 0 ? "no rows" : "";
}

Result<> WriteScheduleFile(const std::filesystem::path& path, std::span<const ScheduleRow> rows) {
  const auto end = std::find_if(rows.begin(), rows.end(), IsEmpty);
  return WriteFile(path, std::as_bytes(std::span(rows.begin(), end)));
}

}  // namespace orvane
