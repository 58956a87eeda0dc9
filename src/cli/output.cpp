// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/terminal.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/tech.h"

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
  const std::string line =
      "orvane-cli: " + (AreMessagesOnATerminal() ? PrintableUtf8(text) : std::string(text)) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

void PrintUsageFault(std::string_view text) {
  while (AreMessagesOnATerminal() && !text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line = PrintableUtf8(text.substr(0, end)) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  std::fwrite(text.data(), 1, text.size(), stderr);
}

std::string PathLine(const std::filesystem::path& path) {
  const std::string text = PathText(path);
  return (AreResultsOnATerminal() ? PrintableUtf8(text) : text) + '\n';
}

bool IsInput(const std::filesystem::path& to, const std::filesystem::path& file,
             std::string_view refusal) {
  const auto sameness = CompareFiles(to, file);
  if (sameness == Sameness::kDifferent) {
    return false;
  }
  PrintMessage(FileMessage(to, sameness ? refusal : sameness.Message()));
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
  if (method == WithoutMethod::kMtAmt) {
    PutInt(table, "TECH", kMtAmt);
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
  if (!LoadOntoDefaults(path, table, report, WithoutMethod::kMtAmt)) {
    return false;
  }
  if (const std::string summary = report->left_out.Summary(); !summary.empty()) {
    PrintMessage(FileMessage(path, summary));
  }
  return true;
}

void TellCut(const std::filesystem::path& path, const TblReport& report) {
  if (const std::size_t bytes = report.cut.size(); bytes > 0) {
    PrintMessage(FileMessage(path, "the record at offset " + FormatInt(report.cut_at) +
                                       " is cut and left out: " + FormatInt(bytes) +
                                       (bytes == 1 ? " byte" : " bytes")));
  }
}

const ParamEntry* FindOrTell(const ParamTable& table, const std::string& key) {
  const ParamEntry* entry = key.size() <= kKeySize ? table.FindParam(key) : nullptr;
  if (entry == nullptr) {
    PrintMessage(PrintableUtf8(key) + ": " + std::string(StatusText(kKeyNotFound)));
  }
  return entry;
}

}  // namespace orvane
