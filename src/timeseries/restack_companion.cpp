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
Result<std::filesystem::path> TableOf(const std::filesystem::path& waveform) {
  const std::string name = CompanionName(PathText(waveform));
  return name.empty() ? std::filesystem::path() : FindInAnyCase(PathOf(name));
}

Result<> Readable(const std::filesystem::path& table) {
  FileInfo info;
  if (!ReadInfo(table, &info)) {
    return Failure(SystemReason(errno));
  }
  return info.kind == FileKind::kRegular ? InFile().Open(table) : Failure("it is not a file");
}

}  // namespace

std::string CompanionNote(const std::filesystem::path& waveform) {
  TsCompanion companion;
  TblReport report;
  const auto table = TableOf(waveform);
  if (!table) {
    return table.Message();
  }
  if (table->empty() || companion.Load(*table, &report) != kOk || !companion.IsOldVersion()) {
    return report.read_error.empty() ? report.read_error : report.message;
  }
  return "its companion table has an older version (\"VER\" " + companion.Version() +
         ") with 196-byte headers, but stacking takes all headers as 252 bytes";
}

Result<CompanionCopy> CopyCompanion(const std::filesystem::path& waveform,
                                    const std::filesystem::path& stack,
                                    const std::set<std::filesystem::path>& replaceable) {
  CompanionCopy copy;
  const auto from = TableOf(waveform);
  const auto to = TableOf(stack);
  if (!from || !to) {
    return Failure(to ? from.Message() : to.Message());
  }
  if (from->empty() || to->empty() || IsTaken(*from) == Existence::kNotThere) {
    return copy;
  }
  if (const Result<> readable = Readable(*from); !readable) {
    copy.note = FileMessage(*from, "not copied beside the stack: " + readable.Message());
    return copy;
  }
  const auto found = IsTaken(*to);
  if (!found) {
    return Failure(FileMessage(*to, found.Message()));
  }
  if (found == Existence::kThere && !replaceable.contains(*to)) {
    if (!HaveSameBytes(*from, *to)) {
      copy.note = FileMessage(*to,
                              "differs from the waveform's table and stays: names and units "
                              "of the stack come from it");
    }
    return copy;
  }
  if (const Result<> copied = CopyBytes(*from, *to); !copied) {
    return Failure(FileMessage(*to, "the waveform's table was not copied: " + copied.Message()));
  }
  copy.written = *to;
  return copy;
}

}  // namespace orvane
