// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_file.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_names.h"
#include "files/path_text.h"

namespace orvane {
namespace {

bool FillsTheFile(const RandomFile& file, TsHeaderSize header_size, TsProgress* progress) {
  TsWalker walker(&file, header_size);
  TsPlace place;
  while (walker.Next(&place) && (progress == nullptr || progress->Note(place.next))) {
  }
  if (progress != nullptr) {
    progress->NextWalk(walker.End());
  }
  return walker.Error().empty() && place.next == walker.End();
}

}  // namespace

TsHeaderSize FittingHeaders(const RandomFile& file, TsProgress* progress) {
  return !FillsTheFile(file, TsHeaderSize::kFull, progress) &&
                 FillsTheFile(file, TsHeaderSize::kOld, progress)
             ? TsHeaderSize::kOld
             : TsHeaderSize::kFull;
}

std::string OpenFailureText(const std::filesystem::path& path) {
  return std::string("Failed to open file ").append(PathText(path)).append("!");
}

bool TsFile::Fail(const std::filesystem::path& path, const std::string& reason) {
  message_ = OpenFailureText(path);
  reason_ = reason;
  file_.Close();
  index_ = {};
  return false;
}

// False, with the reason, if there is no table that can be read.
bool TsFile::LoadCompanion(std::string* reason) {
  const std::string text = PathText(path_);
  // A band has one or two digits; other names are those of waveforms, of three characters.
  companion_path_ = PathOf(BandNumber(text) > 0 && HasExtension(text) ? WithExtension(text, ".TBL")
                                                                      : CompanionName(text));
  if (companion_path_.empty()) {
    companion_path_ = path_;
    *reason = FileMessage(path_, "the name is too short for a companion table");
    return false;
  }
  std::string error;
  companion_path_ = FindInAnyCase(companion_path_, &error);
  if (!error.empty()) {
    *reason = error;
    return false;
  }
  TblReport report;
  const bool is_loaded = companion_.Load(companion_path_, &report) == kOk;
  *reason = report.message;
  return is_loaded;
}

void TsFile::NoteMissing(const std::string& reason, bool guesses_headers) {
  const bool is_there = companion_path_ != path_ && Exists(companion_path_) != Existence::kNotThere;
  companion_note_ =
      "raw counts, " +
      (is_there ? "table not used: " + reason : "no table " + PathText(companion_path_.filename()));
  if (guesses_headers) {
    companion_note_ += ", headers assumed to have " + FormatInt(BytesIn(header_size_)) + " bytes";
  }
}

void TsFile::Reset() {
  message_.clear();
  reason_.clear();
  lacks_companion_ = false;
  companion_note_.clear();
  read_error_.clear();
  index_ = {};
  companion_ = TsCompanion();
  companion_path_.clear();
}

bool TsFile::Open(const std::filesystem::path& path, const Options& options, TsProgress* progress) {
  Reset();
  path_ = path;
  if (const std::string reason = file_.Open(path); !reason.empty()) {
    return Fail(path, FileMessage(path, reason));
  }
  std::optional<TsHeaderSize> headers = options.header_size;
  const std::string text = PathText(path);
  if (BandNumber(text) > 0) {
    headers = TsHeaderSize::kBand;
  } else if (EndsWithoutCase(text, ".TSK") && !headers) {
    headers = TsHeaderSize::kFull;
  }
  std::string reason;
  if (!LoadCompanion(&reason)) {
    if (!headers && options.needs_companion) {
      lacks_companion_ = true;
      return Fail(companion_path_, reason);
    }
    if (progress != nullptr && !headers) {
      progress->Begin(3, file_.Size(&reason));
    }
    header_size_ = headers ? *headers : FittingHeaders(file_, progress);
    NoteMissing(reason, !headers);
  } else {
    const bool is_old = companion_.IsOldVersion();
    header_size_ = headers.value_or(is_old ? TsHeaderSize::kOld : TsHeaderSize::kFull);
  }
  if (progress != nullptr && progress->total == 0) {
    progress->Begin(1, file_.Size(&reason));  // if the size is not known, the index reports why
  }
  if (const std::string error = index_.Build(file_, header_size_, progress); !error.empty()) {
    read_error_ = FileMessage(path, error + "; only the records before it are known");
  }
  return true;
}

std::string TsFile::BadRecordText() const {
  return BadCount() == 0 ? std::string()
                         : std::string("There are ")
                               .append(FormatInt(BadCount()))
                               .append(" bad records starting at segment")
                               .append(FormatInt(FirstBad()))
                               .append("!");
}

std::string TsFile::Read(std::uint64_t number, CTsRec* record) const {
  std::string error;
  const auto place = Find(number, &error);
  if (place) {
    error = record->Read(file_, *place);
  } else if (error.empty()) {
    error = "no longer in the file, which became shorter";
  }
  return error.empty() ? error
                       : FileMessage(path_, std::string("record ")
                                                .append(FormatInt(number))
                                                .append(place ? " at byte " : "")
                                                .append(place ? FormatInt(place->offset) : "")
                                                .append(": ")
                                                .append(error));
}

}  // namespace orvane
