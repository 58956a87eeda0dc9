// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/value_lines.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "base/latin1.h"
#include "files/file_io.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kTooLarge[] = "larger than 1 MB, which no file of values is";
constexpr char kUtf16[] = "This is UTF-16 text; save it as UTF-8.";
constexpr std::size_t kMostQuoted = 40;

// By its mark, or by a zero in every second byte at the start: what other programs save as
// "Unicode".
bool IsUtf16(std::string_view text) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
    return true;
  }
  constexpr std::size_t kMost = 8;
  const std::size_t characters = std::min(text.size(), kMost) / 2;
  std::array<std::size_t, 2> zeros{};
  for (std::size_t i = 0; i < 2 * characters; ++i) {
    zeros[i % 2] += text[i] == '\0' ? 1U : 0U;
  }
  return characters > 1 && std::max(zeros[0], zeros[1]) == characters &&
         std::min(zeros[0], zeros[1]) == 0;
}

std::string Quoted(std::string_view text) {
  const bool is_long = text.size() > kMostQuoted;
  return PrintableUtf8(text.substr(0, kMostQuoted)) + (is_long ? "..." : "");
}

// Takes the first line off, without its end.
std::string_view TakeLine(std::string_view* text) {
  const std::string_view line = text->substr(0, text->find('\n'));
  text->remove_prefix(std::min(line.size() + 1, text->size()));
  return line;
}

// A key that is looked up by its first eight characters must not have more, nor end at a NUL.
const ParamEntry* EntryOf(std::string_view key, const ParamTable& table) {
  const bool is_key = key.size() <= kKeySize && key.find('\0') == std::string_view::npos;
  return is_key ? table.FindParam(key) : nullptr;
}

// Messages may be read by others.
std::string Refusal(std::string_view key, std::string_view value, const std::string& reason) {
  std::string shown = "the value";
  if (!IsSecretKey(key)) {
    shown.assign(1, '"').append(Quoted(value)).append(1, '"');
  }
  return Quoted(key) + ": " + shown + " " + reason;
}

ValueLine BadLine(LineState state, std::string reason) {
  ValueLine line;
  line.state = state;
  line.reason = std::move(reason);
  return line;
}

ValueLine LineOf(std::string_view text, const ParamTable& table) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    return BadLine(LineState::kNotParsable, "is not of the form KEY=VALUE");
  }
  const std::string_view key = Trimmed(text.substr(0, equals));
  const std::string_view given = Trimmed(text.substr(equals + 1));
  const ParamEntry* entry = EntryOf(key, table);
  if (entry == nullptr) {
    return BadLine(LineState::kUnknownKey,
                   Quoted(key) + ": " + std::string(StatusText(kKeyNotFound)));
  }
  ValueLine line;
  line.key = ParamKey(key);
  const auto value = ValueFromText(given, static_cast<ValueType>(entry->type));
  if (IsReadOnlyKey(line.key)) {
    line.state = LineState::kReadOnly;
    line.reason = line.key.Text() + ": is the version of the file and cannot be set";
  } else if (!value) {
    line.reason = Refusal(key, given, value.Message());
  } else {
    line.value = *value;
    line.state = *value == entry->value ? LineState::kSame : LineState::kNew;
  }
  return line;
}

void Keep(ValueLine line, ValueLines* read) {
  read->bad += line.IsBad() ? 1 : 0;
  if (!line.IsBad() || read->bad <= ValueLines::kMostBad) {
    read->lines.push_back(std::move(line));
  }
}

}  // namespace

Result<ValueLines> ReadValueLines(std::string_view text, const ParamTable& table) {
  if (text.size() > kMostValuesBytes) {
    return Failure(kTooLarge);
  }
  if (IsUtf16(text)) {
    return Failure(kUtf16);
  }
  if (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
  }
  ValueLines read;
  ParamTable so_far = table;  // a key may come again
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view content = Trimmed(TakeLine(&text));
    if (content.empty() || content.front() == '#') {
      continue;
    }
    ValueLine line = LineOf(content, so_far);
    line.number = number;
    ApplyValueLines(std::span(&line, 1), &so_far);
    Keep(std::move(line), &read);
  }
  return read;
}

Result<std::string> LoadValuesText(const std::filesystem::path& path) {
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return Failure(FileMessage(path, opened.Message()));
  }
  std::string text(kMostValuesBytes + 1, '\0');
  text.resize(file.Read(std::as_writable_bytes(std::span(text))));
  if (!file.Outcome()) {
    return Failure(FileMessage(path, file.Outcome().Message()));
  }
  return text.size() > kMostValuesBytes ? Failure(FileMessage(path, kTooLarge))
                                        : Result<std::string>(std::move(text));
}

std::size_t ApplyValueLines(std::span<const ValueLine> lines, ParamTable* table) {
  std::size_t changed = 0;
  for (const ValueLine& line : lines) {
    const ParamEntry* entry = table->FindParam(line.key);
    if (line.state == LineState::kNew && entry != nullptr && entry->value != line.value &&
        table->SetStoredValue(line.key, line.value) == kOk) {
      ++changed;
    }
  }
  return changed;
}

}  // namespace orvane
