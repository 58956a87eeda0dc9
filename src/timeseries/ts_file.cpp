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

// `goes_on` is asked at each record, with its end.
template <typename GoesOn>
bool FillsTheFile(const RandomFile& file, TsHeaderSize header_size, const GoesOn& goes_on) {
  TsWalker walker(&file, header_size);
  TsPlace place;
  bool is_blank = false;
  while (walker.Next(&place) && !is_blank && goes_on(place.next)) {
    is_blank = IsBlank(place.header);
  }
  return walker.Outcome() && (is_blank || place.next == walker.End());
}

template <typename GoesOn, typename Next>
TsHeaderSize Fitting(const RandomFile& file, const GoesOn& goes_on, const Next& next_walk) {
  const auto fills = [&](TsHeaderSize size) {
    const bool fills_it = FillsTheFile(file, size, goes_on);
    next_walk();
    return fills_it;
  };
  return !fills(TsHeaderSize::kFull) && fills(TsHeaderSize::kOld) ? TsHeaderSize::kOld
                                                                  : TsHeaderSize::kFull;
}

}  // namespace

TsHeaderSize FittingHeaders(const RandomFile& file, TsProgress* progress) {
  const auto size = file.Size();
  return Fitting(
      file, [progress](std::uint64_t byte) { return progress == nullptr || progress->Note(byte); },
      [progress, &size] {
        if (progress != nullptr) {
          progress->NextWalk(size ? *size : 0);
        }
      });
}

TsHeaderSize FittingHeaders(const RandomFile& file, const std::function<bool()>& stopped) {
  return Fitting(
      file, [&stopped](std::uint64_t) { return !stopped(); }, [] {});
}

std::string OpenFailureText(const std::filesystem::path& path) {
  return std::string("Failed to open file ").append(PathText(path)).append("!");
}

Failure TsFile::Fail(const std::filesystem::path& path, const std::string& reason) {
  failure_text_ = OpenFailureText(path);
  file_.Close();
  index_ = {};
  return Failure(reason);
}

Result<> TsFile::LoadCompanion() {
  const std::string text = PathText(path_);
  // A band has one or two digits; other names are those of waveforms, of three characters.
  companion_path_ = PathOf(BandNumber(text) > 0 && HasExtension(text) ? WithExtension(text, ".TBL")
                                                                      : CompanionName(text));
  if (companion_path_.empty()) {
    companion_path_ = path_;
    return Failure(FileMessage(path_, "the name is too short for a companion table"));
  }
  const auto found = FindInAnyCase(companion_path_);
  if (!found) {
    return Failure(found.Message());
  }
  companion_path_ = *found;
  TblReport report;
  const bool is_loaded = companion_.Load(companion_path_, &report) == kOk;
  return is_loaded ? Result<>() : Failure(report.message);
}

void TsFile::NoteMissing(const std::string& reason, bool guesses_headers) {
  const bool is_there = companion_path_ != path_ && Exists(companion_path_) != Existence::kNotThere;
  companion_fault_ = is_there ? reason : std::string();
  companion_note_ =
      "raw counts, " +
      (is_there ? "table not used: " + reason : "no table " + PathText(companion_path_.filename()));
  if (guesses_headers) {
    companion_note_ += ", headers assumed to have " + FormatInt(BytesIn(header_size_)) + " bytes";
  }
}

void TsFile::Reset() {
  failure_text_.clear();
  lacks_companion_ = false;
  companion_note_.clear();
  companion_fault_.clear();
  read_error_.clear();
  index_ = {};
  companion_ = TsCompanion();
  companion_path_.clear();
}

Result<> TsFile::Open(const std::filesystem::path& path, const Options& options,
                      TsProgress* progress) {
  Reset();
  path_ = path;
  if (const Result<> opened = file_.Open(path); !opened) {
    return Fail(path, FileMessage(path, opened.Message()));
  }
  std::optional<TsHeaderSize> headers = options.header_size;
  const std::string text = PathText(path);
  if (BandNumber(text) > 0) {
    headers = TsHeaderSize::kBand;
  } else if (EndsWithoutCase(text, ".TSK") && !headers) {
    headers = TsHeaderSize::kFull;
  }
  const auto begin = [this, progress](std::uint64_t walks) {
    const auto size = file_.Size();  // where it is not known, the index reports why
    progress->Begin(walks, size ? *size : 0);
  };
  if (const Result<> loaded = LoadCompanion(); !loaded) {
    if (!headers && options.needs_companion) {
      lacks_companion_ = true;
      return Fail(companion_path_, loaded.Message());
    }
    if (progress != nullptr && !headers) {
      begin(3);
    }
    header_size_ = headers ? *headers : FittingHeaders(file_, progress);
    NoteMissing(loaded.Message(), !headers);
  } else {
    const bool is_old = companion_.IsOldVersion();
    header_size_ = headers.value_or(is_old ? TsHeaderSize::kOld : TsHeaderSize::kFull);
  }
  if (progress != nullptr && progress->total == 0) {
    begin(1);
  }
  if (const Result<> built = index_.Build(file_, header_size_, progress); !built) {
    read_error_ = FileMessage(path, built.Message() + "; only the records before it are known");
  }
  return {};
}

std::string TsFile::BadRecordText() const {
  return BadCount() == 0 ? std::string()
                         : std::string("There are ")
                               .append(FormatInt(BadCount()))
                               .append(" bad records starting at segment")
                               .append(FormatInt(FirstBad()))
                               .append("!");
}

Result<> TsFile::Read(std::uint64_t number, CTsRec* record) const {
  const auto place = Find(number);
  const Result<> read = place ? record->Read(file_, *place) : Failure(place.Message());
  return read ? read
              : Failure(FileMessage(path_, std::string("record ")
                                               .append(FormatInt(number))
                                               .append(place ? " at byte " : "")
                                               .append(place ? FormatInt(place->offset) : "")
                                               .append(": ")
                                               .append(read.Message())));
}

}  // namespace orvane
