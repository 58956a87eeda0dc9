// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/card_copy.h"

#include <system_error>
#include <utility>

#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_text.h"

namespace orvane {
namespace {

bool AreOnOneDisk(const std::filesystem::path& file, const std::filesystem::path& folder) {
  FileInfo a;
  FileInfo b;
  return ReadInfo(file, &a) && ReadInfo(folder, &b) && a.device == b.device;
}

BatchResult CopyToCard(BatchTask& task) {
  const std::filesystem::path& from = task.Input();
  const std::filesystem::path& to = task.Outputs().front();
  FileInfo info;
  if (!ReadInfo(from, &info)) {
    return BatchFailed(SystemReason(errno));
  }
  if (std::string fault = CardFault(to.parent_path(), info.size); !fault.empty()) {
    return BatchFailed(std::move(fault));
  }
  if (const Result<> copied = CopyBytes(from, to); !copied) {
    // A card that was pulled out is the likeliest reason.
    std::string fault = CardFault(to.parent_path(), 0);
    return BatchFailed(!fault.empty() ? std::move(fault) : PathText(to) + ": " + copied.Message());
  }
  const bool is_from_card = ReaderCalls().forget(to);
  if (!HaveSameBytes(from, to)) {
    return BatchFailed(PathText(to) + " does not hold what was written to it");
  }
  task.Advance(info.size);
  std::string note = FormatInt(info.size) + " bytes, ";
  note += is_from_card ? "verified" : "read back from memory";
  if (AreOnOneDisk(from, to.parent_path())) {
    note += "; card and file are on one disk: is the card mounted?";
  }
  return BatchDone({to}, std::move(note));
}

}  // namespace

std::string CardFault(const std::filesystem::path& folder, std::uint64_t bytes) {
  FileInfo info;
  if (!ReadInfo(folder, &info)) {
    return PathText(folder) + ": " + SystemReason(errno);
  }
  if (info.kind != FileKind::kFolder) {
    return PathText(folder) + " is no folder";
  }
  std::error_code error;
  const std::filesystem::space_info space = std::filesystem::space(folder, error);
  // Where the system does not say, the writer will.
  if (!error && space.available < bytes) {
    return PathText(folder) + " has room for " + FormatInt(space.available) + " bytes, " +
           FormatInt(bytes) + " are needed";
  }
  return {};
}

Conversion CardConversion(std::map<std::string, std::filesystem::path> folders) {
  Conversion conversion;
  conversion.outputs_of = [folders = std::move(folders)](const std::string& input) {
    return std::vector<std::string>{PathText(folders.at(input) / PathOf(input).filename())};
  };
  conversion.job = CopyToCard;
  return conversion;
}

}  // namespace orvane
