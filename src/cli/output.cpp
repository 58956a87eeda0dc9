// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "core/ascii.h"
#include "core/latin1.h"
#include "core/number_text.h"
#include "core/param_text.h"
#include "core/tech.h"

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

std::string Printable(std::string_view given) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : given) {
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
