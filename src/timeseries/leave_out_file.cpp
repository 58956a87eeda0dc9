// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/leave_out_file.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <span>
#include <system_error>

#include "base/number_text.h"
#include "files/file_io.h"

namespace orvane {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  text.remove_prefix(first);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The next line without comment and blanks; the line goes from the text.
std::string_view TakeContent(std::string_view* text) {
  const std::size_t end = std::min(text->find('\n'), text->size());
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(std::min(end + 1, text->size()));
  return Trimmed(line.substr(0, line.find('#')));
}

std::optional<std::uint64_t> Amount(std::string_view text) {
  std::uint64_t amount = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), amount);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  return is_whole ? std::optional(amount) : std::nullopt;
}

// "SIZE RECORDS"
Result<> TakeHead(std::string_view content, LeaveOutList* list) {
  const std::size_t blank = std::min(content.find_first_of(" \t"), content.size());
  const auto size = Amount(content.substr(0, blank));
  const auto records = Amount(Trimmed(content.substr(blank)));
  if (!size || !records) {
    return Failure("is not the size of a data file in bytes and the count of its records");
  }
  list->size = *size;
  list->records = *records;
  return {};
}

Result<> TakeNumber(std::string_view content, LeaveOutList* list) {
  const auto number = RecordNumberOf(content);
  if (!number) {
    return Failure(number.Message());
  }
  list->numbers.Add(*number);
  return {};
}

}  // namespace

std::filesystem::path LeaveOutPath(const std::filesystem::path& data) {
  std::filesystem::path path = data;
  path += ".leave-out.txt";
  return path;
}

Result<LeaveOutList> ReadLeaveOutText(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  text.remove_prefix(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
  LeaveOutList list;
  bool has_head = false;
  for (std::uint64_t line = 1; !text.empty(); ++line) {
    const std::string_view content = TakeContent(&text);
    if (content.empty()) {
      continue;
    }
    const Result<> taken = has_head ? TakeNumber(content, &list) : TakeHead(content, &list);
    if (!taken) {
      return Failure("line " + FormatInt(line) + ": " + taken.Message());
    }
    has_head = true;
  }
  return has_head
             ? Result<LeaveOutList>(std::move(list))
             : Failure("has no line with the size of a data file and the count of its records");
}

std::string LeaveOutText(const LeaveOutList& list) {
  std::string text = FormatInt(list.size) + " " + FormatInt(list.records) + "\n";
  for (const auto& [first, last] : list.numbers.Ranges()) {
    for (std::uint64_t number = first;; ++number) {
      text.append(FormatInt(number)).append("\n");
      if (number == last) {
        break;
      }
    }
  }
  return text;
}

Result<LeaveOutList> LoadLeaveOut(const std::filesystem::path& path) {
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return Failure(FileMessage(path, opened.Message()));
  }
  std::string text(std::min<std::uint64_t>(file.Info().size, kMostLeaveOutBytes) + 1, '\0');
  text.resize(file.Read(std::as_writable_bytes(std::span(text))));
  if (!file.Outcome()) {
    return Failure(FileMessage(path, file.Outcome().Message()));
  }
  if (text.size() > kMostLeaveOutBytes) {
    return Failure(FileMessage(path, "is too large for a list of records"));
  }
  auto list = ReadLeaveOutText(text);
  return list ? std::move(list) : Failure(FileMessage(path, list.Message()));
}

Result<> SaveLeaveOut(const std::filesystem::path& data, const LeaveOutList& list) {
  const std::filesystem::path path = LeaveOutPath(data);
  if (list.numbers.IsEmpty()) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return error ? Failure(FileMessage(path, error.message())) : Result<>();
  }
  const bool is_small = list.numbers.Count() < kMostLeaveOutBytes;
  const std::string text = is_small ? LeaveOutText(list) : std::string();
  if (!is_small || text.size() > kMostLeaveOutBytes) {
    return Failure(FileMessage(path, "would be too large for a list of records"));
  }
  const Result<> written = WriteFile(path, std::as_bytes(std::span(text)));
  return written ? written : Failure(FileMessage(path, written.Message()));
}

}  // namespace orvane
