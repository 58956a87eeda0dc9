// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack_companion.h"

#include <cerrno>

#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "timeseries/ts_companion.h"

namespace orvane {
namespace {

// Where the table is, or would be. Empty if the name is too short.
std::filesystem::path TableOf(const std::filesystem::path& waveform, std::string* error) {
  const std::string name = CompanionName(PathText(waveform));
  return name.empty() ? std::filesystem::path() : FindInAnyCase(PathOf(name), error);
}

std::string WhyUnreadable(const std::filesystem::path& table) {
  FileInfo info;
  if (!ReadInfo(table, &info)) {
    return SystemReason(errno);
  }
  return info.kind == FileKind::kRegular ? InFile().Open(table) : "it is not a file";
}

}  // namespace

std::string CompanionNote(const std::filesystem::path& waveform) {
  TsCompanion companion;
  TblReport report;
  std::string error;
  const auto table = TableOf(waveform, &error);
  if (!error.empty()) {
    return error;
  }
  if (table.empty() || companion.Load(table, &report) != kOk || !companion.IsOldVersion()) {
    return report.read_error.empty() ? report.read_error : report.message;
  }
  return "its companion table has an older version (\"VER\" " + companion.Version() +
         ") with 196-byte headers, but stacking takes all headers as 252 bytes";
}

CompanionCopy CopyCompanion(const std::filesystem::path& waveform,
                            const std::filesystem::path& stack,
                            const std::set<std::filesystem::path>& replaceable) {
  CompanionCopy copy;
  const auto from = TableOf(waveform, &copy.error);
  const auto to = TableOf(stack, &copy.error);
  if (!copy.error.empty() || from.empty() || to.empty() || IsTaken(from) == Existence::kNotThere) {
    return copy;
  }
  if (const std::string reason = WhyUnreadable(from); !reason.empty()) {
    copy.note = FileMessage(from, "not copied beside the stack: " + reason);
    return copy;
  }
  const Existence found = IsTaken(to);
  if (found == Existence::kCannotTell) {
    copy.error = FileMessage(to, SystemReason(errno));
    return copy;
  }
  if (found == Existence::kThere && !replaceable.contains(to)) {
    if (!HaveSameBytes(from, to)) {
      copy.note = FileMessage(to,
                              "differs from the waveform's table and stays: names and units "
                              "of the stack come from it");
    }
    return copy;
  }
  if (const std::string reason = CopyBytes(from, to); reason.empty()) {
    copy.written = to;
  } else {
    copy.error = FileMessage(to, "the waveform's table was not copied: " + reason);
  }
  return copy;
}

}  // namespace orvane
