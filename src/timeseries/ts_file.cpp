// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_file.h"

#include "core/ascii.h"
#include "core/file_io.h"
#include "core/find_file.h"
#include "core/number_text.h"
#include "core/path_text.h"

namespace orvane {
namespace {

std::string Number(std::uint64_t number) { return FormatInt(static_cast<std::int64_t>(number)); }

}  // namespace

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

bool TsFile::LoadCompanion(bool is_needed) {
  companion_ = TsCompanion();
  companion_path_ = PathOf(CompanionName(PathText(path_)));
  if (companion_path_.empty()) {
    return !is_needed || Fail(path_, FileMessage(path_, "too short a name for a companion table"));
  }
  companion_path_ = FindInAnyCase(companion_path_);
  TblReport report;
  if (companion_.Load(companion_path_, &report) == kOk) {
    return true;
  }
  // A companion that is there but could not be read to its end is not the same as none.
  return (!is_needed && report.read_error.empty()) || Fail(companion_path_, report.message);
}

bool TsFile::Open(const std::filesystem::path& path, const Options& options) {
  path_ = path;
  message_.clear();
  reason_.clear();
  read_error_.clear();
  index_ = {};
  companion_ = TsCompanion();
  companion_path_.clear();
  if (const std::string reason = file_.Open(path); !reason.empty()) {
    return Fail(path, FileMessage(path, reason));
  }
  const std::string text = PathText(path);
  if (BandNumber(text) > 0) {
    header_size_ = TsHeaderSize::kBand;
  } else {
    if (!LoadCompanion(!options.header_size.has_value())) {
      return false;
    }
    const bool is_old = companion_.IsOldVersion() && !EndsWithoutCase(text, ".TSK");
    header_size_ = options.header_size.value_or(is_old ? TsHeaderSize::kOld : TsHeaderSize::kFull);
  }
  if (const std::string error = index_.Build(file_, header_size_); !error.empty()) {
    read_error_ = FileMessage(path, error + "; only the records before it are known");
  }
  return true;
}

std::string TsFile::BadRecordText() const {
  return BadCount() == 0 ? std::string()
                         : std::string("There are ")
                               .append(Number(BadCount()))
                               .append(" bad records starting at segment")
                               .append(Number(FirstBad()))
                               .append("!");
}

std::string TsFile::Read(std::uint64_t number, CTsRec* record) const {
  std::string error;
  const auto place = Find(number, &error);
  if (place) {
    error = record->Read(file_, *place);
  } else if (error.empty()) {
    error = "no longer in the file, which has become shorter";
  }
  return error.empty() ? error
                       : FileMessage(path_, std::string("record ")
                                                .append(Number(number))
                                                .append(place ? " at byte " : "")
                                                .append(place ? Number(place->offset) : "")
                                                .append(": ")
                                                .append(error));
}

}  // namespace orvane
