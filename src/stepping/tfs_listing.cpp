// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/tfs_listing.h"

#include <array>
#include <charconv>
#include <system_error>

#include "core/file_io.h"
#include "core/number_text.h"

namespace orvane {
namespace {

std::string Right(std::string text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

// printf's "%.{digits}f" in the C locale.
std::string Fixed(double number, int digits) {
  std::array<char, 400> text{};  // the largest double has 309 digits before its point
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, digits);
  return {text.data(), end.ptr};
}

std::string Line(int number, const ScheduleRow& row) {
  std::string line = Right(FormatInt(number), 4);
  for (const std::string& field :
       {Right(FormatInt(row.end_time), 10), Right(WaveformName(row.waveform), 8),
        Right(Fixed(row.frequency, 8), 16), Right(Fixed(row.current, 4), 10)}) {
    line += ", ";
    line += field;
  }
  return line + ',';
}

}  // namespace

std::string ListingOf(const ScheduleRows& rows) {
  std::string text;
  int number = 0;
  for (const ScheduleRow& row : rows.rows) {
    text += Line(++number, row);
    if (number == rows.bad_row) {
      text += ' ';
      text += rows.refusal;
    }
    text += '\n';
  }
  if (rows.bad_row == 0 && !rows.refusal.empty()) {
    text += rows.refusal;
    text += '\n';
  }
  return text;
}

std::filesystem::path ListingPathFor(const std::filesystem::path& path) {
  std::string name = path.filename().string();
  if (const std::size_t dot = name.rfind('.'); dot != std::string::npos) {
    name.resize(dot);
  }
  return path.parent_path() / (name + ".txt");
}

ListingResult ListSchedule(const std::filesystem::path& path, const std::filesystem::path& to) {
  ListingResult result;
  const ScheduleRows read = ReadScheduleRows(path);
  result.rows = static_cast<int>(read.rows.size());
  std::error_code ignored;
  if (!read.error.empty()) {
    result.error = FileMessage(path, read.error);
  } else if (std::filesystem::equivalent(path, to, ignored)) {
    result.error = FileMessage(path, "its listing would take its place");
  } else {
    const std::string text = ListingOf(read);
    if (const std::string reason = WriteFile(to, std::as_bytes(std::span(text))); !reason.empty()) {
      result.error = FileMessage(to, reason);
    } else if (!read.refusal.empty()) {
      result.note = FileMessage(path, read.refusal);
    }
  }
  return result;
}

}  // namespace orvane
