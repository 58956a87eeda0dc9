// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_listing.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "files/text_file.h"

namespace orvane {
namespace {

// "3" of NAME.TS3, "12" of NAME.TS12, else nothing.
std::string_view BandDigits(std::string_view path) {
  const std::string_view name = LastComponent(path);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || !EqualsWithoutCase(name.substr(dot + 1, 2), "TS")) {
    return {};
  }
  const std::string_view digits = name.substr(dot + 3);
  return digits.size() <= 2 && std::all_of(digits.begin(), digits.end(), IsDigit)
             ? digits
             : std::string_view();
}

BatchResult ListFile(BatchTask& task, const TsListing& listing) {
  const auto& path = task.Outputs()[0];
  TextFile out;
  if (const Result<> opened = out.Open(path); !opened) {
    return BatchFailed(FileMessage(path, opened.Message()));
  }
  ListingWork work;
  work.pass = {task.Threads(), [&] { return task.Stopped() || out.HasFailed(); }};
  work.put = [&](std::string_view piece) { out.Text(piece); };
  work.advance = [&](std::uint64_t bytes) { task.Advance(bytes); };
  const auto note = listing(task.Input(), work);
  if (task.Stopped()) {
    return BatchCancelled();
  }
  if (!note && !out.HasFailed()) {
    return BatchFailed(note.Message());
  }
  const Result<> committed = out.Commit();
  return committed ? BatchDone({path}, *note) : BatchFailed(FileMessage(path, committed.Message()));
}

}  // namespace

void AddNote(const std::string& note, std::string* notes) {
  notes->append(notes->empty() || note.empty() ? "" : "; ").append(note);
}

std::string TsResultName(std::string_view path, std::string_view suffix) {
  std::string name = WithExtension(path, "");
  if (const std::string_view digits = BandDigits(path); !digits.empty()) {
    name.append("_TS").append(digits);
  } else if (EndsWithoutCase(path, ".TSK")) {
    name += "_TSK";
  }
  return name.append(suffix);
}

Conversion ListingFiles(const std::string& suffix, TsListing listing) {
  Conversion conversion;
  conversion.outputs_of = [suffix](const std::string& path) {
    return std::vector<std::string>{TsResultName(path, suffix)};
  };
  conversion.job = [listing = std::move(listing)](BatchTask& task) {
    return ListFile(task, listing);
  };
  return conversion;
}

Result<> OpenForListing(const std::filesystem::path& path, TsFile::Options options, TsFile* file,
                        std::string* note) {
  options.needs_companion = false;
  if (const Result<> opened = file->Open(path, options); !opened) {
    return Failure(file->FailureText() + " " + opened.Message());
  }
  if (!file->ReadError().empty()) {
    return Failure(file->ReadError());
  }
  if (!file->CompanionFault().empty()) {  // a disk's fault perhaps: nothing is made of a guess
    return Failure("its table cannot be used: " + file->CompanionFault());
  }
  AddNote(file->CompanionNote(), note);
  return file->Count() > 0 ? Result<>() : Failure("no record");
}

}  // namespace orvane
