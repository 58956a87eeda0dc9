// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/ascii.h"
#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/terminal.h"
#include "files/path_text.h"
#include "table/param_text.h"
#include "table/tech.h"

namespace orvane {
namespace {

// Bytes of the character in UTF-8 that a text begins with; 0: they are none.
std::size_t Utf8Size(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text[0]);
  if (byte < 0x80U) {
    return 1;
  }
  const std::size_t size = byte < 0xC2U   ? 0
                           : byte < 0xE0U ? 2
                           : byte < 0xF0U ? 3
                           : byte < 0xF5U ? 4
                                          : 0;
  if (size == 0 || text.size() < size) {
    return 0;
  }
  const auto goes_on = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  return std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(size), goes_on)
             ? size
             : 0;
}

// Those of ASCII, and U+0080 to U+009F, which begin commands to a terminal as well.
bool IsControlCharacter(std::string_view character) {
  return character.size() == 1
             ? IsControl(character[0])
             : character[0] == '\xC2' && static_cast<unsigned char>(character[1]) < 0xA0U;
}

}  // namespace

bool PrintResult(std::string_view text) {
  const bool done =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!done) {
    PrintMessage("standard output: " + std::generic_category().message(errno));
  }
  return done;
}

void PrintMessage(std::string_view text) {
  const std::string line =
      "orvane-cli: " + (AreMessagesOnATerminal() ? Printable(text) : std::string(text)) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

void PrintUsageFault(std::string_view text) {
  while (AreMessagesOnATerminal() && !text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line = Printable(text.substr(0, end)) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  std::fwrite(text.data(), 1, text.size(), stderr);
}

std::string PathLine(const std::filesystem::path& path) {
  const std::string text = PathText(path);
  return (AreResultsOnATerminal() ? Printable(text) : text) + '\n';
}

std::string Printable(std::string_view given) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  while (!given.empty()) {
    const std::size_t size = Utf8Size(given);
    const bool is_shown = size > 0 && !IsControlCharacter(given.substr(0, size));
    if (is_shown) {
      text += given.substr(0, size);
    } else {
      const auto byte = static_cast<unsigned char>(given[0]);
      text += "\\x";
      text += kDigits[byte / 16U];
      text += kDigits[byte % 16U];
    }
    given.remove_prefix(is_shown ? size : 1);
  }
  return text;
}

bool IsInput(const std::filesystem::path& to, const std::filesystem::path& file,
             std::string_view refusal) {
  switch (CompareFiles(to, file)) {
    case Sameness::kSame:
      PrintMessage(FileMessage(to, refusal));
      return true;
    case Sameness::kDifferent:
      return false;
    case Sameness::kCannotTell:
      break;
  }
  PrintMessage(FileMessage(to, SystemReason(errno)));
  return true;
}

std::string PrintableValue(const ParamEntry& entry) {
  std::string text;
  FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &text);
  return PrintableLatin1(text);
}

bool LoadOntoDefaults(const std::filesystem::path& path, ParamTable* table, TblReport* report,
                      WithoutMethod method) {
  *table = ParamTable();
  if (const Status status = table->BuildParamIndex(); status != kOk) {
    PrintMessage(StatusText(status));
    return false;
  }
  const std::int32_t tech = kMtAmt;
  if (method == WithoutMethod::kMtAmt && table->SetParam("TECH", IntPT, &tech) != kOk) {
    return false;
  }
  if (LoadParamFile(table, path, report) != kOk) {
    PrintMessage(report->message);
    return false;
  }
  if (!report->missing.empty()) {
    PrintMessage(FileMessage(path, HoldsText(report->held, report->missing.size()) +
                                       "; the others have their defaults"));
  }
  return true;
}

bool LoadTable(const std::filesystem::path& path, ParamTable* table, TblReport* report) {
  return LoadOntoDefaults(path, table, report, WithoutMethod::kMtAmt);
}

}  // namespace orvane
