// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_scan.h"

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

#include "base/latin1.h"
#include "files/file_io.h"
#include "files/file_system.h"
#include "files/find_file.h"
#include "survey/calibrations.h"
#include "survey/sha256.h"
#include "survey/survey_index.h"

namespace orvane {
namespace {

// What the index knows a folder by, wherever one stands.
std::filesystem::path WholePath(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  return error || path.empty() ? path : whole.filename() == "." ? whole.parent_path() : whole;
}

// One pass over a tree.
class Pass {
 public:
  Pass(const FolderTree& tree, const SurveyOptions& options, SurveyIndex* index,
       const std::atomic<bool>& stop, std::atomic<std::uint64_t>* done,
       std::vector<ScanNote>* notes)
      : tree_(tree), options_(options), index_(*index), stop_(stop), done_(*done), notes_(*notes) {
    reading_.is_deep = options.depth == ScanDepth::kDeep;
    reading_.stopped = [this] { return stop_.load(); };
  }

  /// The calibrations of the tree, or of the folder that was given, come first: any recording may
  /// need them.
  void ReadCalibrations() {
    for (const FoundFile& file : tree_.files) {
      const bool is_one =
          file.type == FileType::kBoxCalibration || file.type == FileType::kSensorCalibration;
      if (is_one && !stop_) {
        calibrations_.Add(tree_.folders[file.folder], file.name, FactsOf(file, {}));
      }
    }
    if (!options_.calibrations.empty()) {
      calibrations_.UseFolder(options_.calibrations, reading_);
    }
  }

  template <typename Take>
  void ReadFolder(std::span<const FoundFile> files, const Take& take) {
    for (const auto& group : GroupFiles(files)) {
      if (stop_) {
        return;
      }
      if (auto row = RowOf(group); row && !stop_) {
        take(std::move(*row));
      }
      done_ += group.size();
    }
  }

 private:
  FileFacts FactsOf(const FoundFile& file, std::optional<TsHeaderSize> size) {
    FileFacts facts;
    if (options_.depth == ScanDepth::kNames || file.type == FileType::kText) {
      return facts;
    }
    const std::filesystem::path path = tree_.PathOfFile(file);
    if (index_.Find(path, file.info, &facts) && IsEnough(file, facts, size)) {
      if (!reading_.is_deep && !options_.shows_known_samples) {
        facts.samples.clear();  // the same result with and without an index
        facts.is_deep = 0;
      }
      return facts;
    }
    ReadingOptions reading = reading_;
    reading.header_size = size;
    facts = ReadFacts(file.type, path, reading);
    // A file that changed while it was read is read again the next time.
    if (FileInfo now; facts.failure.empty() && !stop_ && ReadInfo(path, &now) &&
                      now.written == file.info.written && now.size == file.info.size) {
      index_.Put(path, file.info, facts);
    }
    return facts;
  }

  bool IsEnough(const FoundFile& file, const FileFacts& facts,
                std::optional<TsHeaderSize> size) const {
    const bool has_samples = file.type == FileType::kWaveform || file.type == FileType::kBand ||
                             file.type == FileType::kStackedWaveform;
    const bool is_deep_enough = !reading_.is_deep || !has_samples || facts.is_deep != 0;
    // The size of the headers: what was read with a table's must not be shown without one.
    const bool has_size = file.type != FileType::kWaveform ||
                          (size ? facts.header_size == static_cast<std::int32_t>(BytesIn(*size))
                                : facts.is_guessed != 0);
    return is_deep_enough && has_size;
  }

  std::optional<SurveyRow> RowOf(const std::vector<const FoundFile*>& group) {
    std::vector<FactedFile> files;
    std::optional<TsHeaderSize> size;
    // The table first: it says how the waveform is to be read.
    for (const FoundFile* file : group) {
      if (file->type == FileType::kTable) {
        files.push_back({file, tree_.ShownName(*file), FactsOf(*file, {})});
        const auto& table = files.back().facts.table;
        if (table && !size) {
          size = table->is_old != 0 ? TsHeaderSize::kOld : TsHeaderSize::kFull;
        }
      }
    }
    for (const FoundFile* file : group) {
      if (file->type != FileType::kTable) {
        files.push_back({file, tree_.ShownName(*file), FactsOf(*file, size)});
      }
    }
    auto row = MakeRow(files);
    if (row) {
      row->place = tree_.folders[group.front()->folder];
      AddChecksums(group, &*row);
      if (row->IsRecording() && row->table) {
        row->calibrations = calibrations_.Of(tree_.folders[group.front()->folder], *row);
      }
    }
    return row;
  }

  void AddChecksums(const std::vector<const FoundFile*>& group, SurveyRow* row) {
    if (!options_.has_checksums) {
      return;
    }
    for (RowFile& file : row->files) {
      const auto found = std::find_if(group.begin(), group.end(), [&file](const FoundFile* one) {
        return one->name == file.name;
      });
      auto sum = Sha256OfFile(tree_.PathOfFile(**found), reading_.stopped);
      if (sum) {
        file.sha256 = std::move(*sum);
      } else if (!stop_) {
        notes_.push_back({file.shown, PrintableUtf8("no checksum: " + sum.Message())});
      }
    }
  }

  const FolderTree& tree_;
  const SurveyOptions& options_;
  SurveyIndex& index_;
  const std::atomic<bool>& stop_;
  std::atomic<std::uint64_t>& done_;
  std::vector<ScanNote>& notes_;
  ReadingOptions reading_;
  Calibrations calibrations_;
};

}  // namespace

SurveyScan::SurveyScan(std::filesystem::path root, SurveyOptions options)
    : root_(WholePath(root)),
      options_(std::move(options)),
      no_memory_(Failure(ReasonOf(std::bad_alloc()))) {
  thread_ = std::thread([this] { Run(); });
}

SurveyScan::~SurveyScan() {
  Stop();
  if (thread_.joinable()) {
    thread_.join();
  }
}

std::vector<SharedRow> SurveyScan::Take(std::size_t most) {
  const std::lock_guard lock(mutex_);
  const std::size_t count = std::min(most, rows_.size() - taken_);
  const auto from = rows_.begin() + static_cast<std::ptrdiff_t>(taken_);
  taken_ += count;
  return {from, from + static_cast<std::ptrdiff_t>(count)};
}

void SurveyScan::Run() {
  try {
    outcome_ = Work();
  } catch (const std::bad_alloc&) {
    outcome_ = std::move(no_memory_);
  } catch (const std::exception& error) {
    outcome_ = Failure(ReasonOf(error));
  }
  is_done_ = true;
}

void SurveyScan::OpenIndex(SurveyIndex* index) {
  if (options_.index.empty()) {
    return;
  }
  const auto is_inside = IsInsideFolder(options_.index, root_);
  if (is_inside && *is_inside) {
    index_note_ =
        PrintableUtf8(FileMessage(options_.index, "nothing is written into the survey's folder"));
  } else if (!index->Open(options_.index)) {
    index_note_ = PrintableUtf8(index->Failure());
  }
}

Result<> SurveyScan::Work() {
  if (!options_.calibrations.empty() && !IsFolder(options_.calibrations)) {
    return Failure(FileMessage(options_.calibrations, "no folder of calibrations"));
  }
  auto tree = WalkFolders(root_, [this] { return stop_.load(); });
  if (!tree) {
    return Failure(tree.Message());
  }
  notes_ = std::move(tree->notes);
  total_ = tree->files.size();
  hidden_ = tree->hidden;
  SurveyIndex index;
  OpenIndex(&index);
  Pass pass(*tree, options_, &index, stop_, &done_, &notes_);
  pass.ReadCalibrations();
  const std::span<const FoundFile> files(tree->files);
  std::vector<SharedRow> all;
  for (std::size_t at = 0; at < files.size() && !stop_;) {
    std::size_t end = at;
    while (end < files.size() && files[end].folder == files[at].folder) {
      ++end;
    }
    pass.ReadFolder(files.subspan(at, end - at), [this, &all](SurveyRow row) {
      all.push_back(std::make_shared<const SurveyRow>(std::move(row)));
      if (IsSince(*all.back(), options_.since)) {
        const std::lock_guard lock(mutex_);
        rows_.push_back(all.back());
      }
    });
    at = end;
  }
  index.Write();
  if (!stop_ && options_.depth != ScanDepth::kNames) {
    index.Prune(root_);
  }
  if (index_note_.empty()) {
    index_note_ = PrintableUtf8(index.Failure());
  }
  if (!stop_ && options_.depth != ScanDepth::kNames) {
    findings_ = FindInSurvey(all, options_.since);
  }
  return {};
}

}  // namespace orvane
