// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "core/ascii.h"
#include "core/param_text.h"

namespace orvane {

bool PrintResult(std::string_view text) {
  const bool done =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!done) {
    PrintMessage("standard output: " + std::generic_category().message(errno));
  }
  return done;
}

void PrintMessage(std::string_view text) {
  const std::string line = "orvane-cli: " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string Printable(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    if (IsControl(c)) {
      const auto byte = static_cast<unsigned char>(c);
      text += "\\x";
      text += kDigits[byte / 16U];
      text += kDigits[byte % 16U];
    } else {
      text += c;
    }
  }
  return text;
}

std::string PrintableValue(const ParamEntry& entry) {
  std::string text;
  FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &text);
  return Printable(text);
}

bool LoadOntoDefaults(const std::filesystem::path& path, ParamTable* table, TblReport* report) {
  *table = ParamTable();
  if (const Status status = table->BuildParamIndex(); status != kOk) {
    PrintMessage(StatusText(status));
    return false;
  }
  if (LoadParamFile(table, path, report) != kOk) {
    PrintMessage(report->message);
    return false;
  }
  return true;
}

}  // namespace orvane
