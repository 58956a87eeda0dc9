// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tbl_to_v1.h"

#include <memory>
#include <system_error>

#include "core/file_io.h"
#include "core/path_names.h"
#include "core/path_text.h"
#include "core/tbl_file.h"

namespace orvane {
namespace {

std::string Version2Name(const std::string& path) { return ReplacedInName(path, ".TBL", ".TB2"); }
std::string Version1Name(const std::string& path) {
  return ReplacedInName(Version2Name(path), ".TB2", ".TBL");
}

// The first piece of each header text goes where version 1 has its only one.
void CopyHeaderTexts(ParamTable* table) {
  struct Pair {
    ParamKey from;
    ParamKey to;
  };
  for (const auto& [from, to] : {Pair{"CMPY1", "CMPY"}, Pair{"LOUT1", "LOUT"},
                                 Pair{"CLIENT1", "PMIT"}, Pair{"SRVY1", "SRVY"}}) {
    std::array<char, kValueSize> text{};
    if (table->GetParam(from, StrPT, text.data()) == kOk) {
      // A table that lacks the single field has no use for the text.
      static_cast<void>(table->SetParam(to, PosPT, text.data()));
    }
  }
}

// One file of a conversion.
class FileToV1 {
 public:
  FileToV1(BatchTask* task, ParamTable* table) : task_(*task), table_(*table) {}

  BatchResult Run() {
    TblReport report;
    if (std::string reason = Load(&report); !reason.empty()) {
      return BatchLeftAlone(reason);
    }
    if (task_.Stopped()) {
      return BatchCancelled();
    }
    const auto& version2 = task_.Outputs().front();
    const auto& version1 = task_.Outputs().back();
    // Where both have one name, version 1 is what stays: the other need not be written.
    bool done = version2 == version1 || Write(version2, 2);
    if (report.version != 1) {
      CopyHeaderTexts(&table_);
    } else {
      Note("already version 1: longer keys come from the table before it");
    }
    if (report.records == 0) {
      Note("no whole record: every value comes from the table before it");
    }
    if (!report.missing.empty()) {
      Note(HoldsText(report.held, report.missing.size()));
    }
    if (report.cut_at > 0) {
      Note(CutRecordNote(report.cut_at));
    }
    done = done && Write(version1, 1);
    if (!done && failure_.empty()) {
      return BatchCancelled();
    }
    if (!done && !written_.empty()) {
      failure_.append(note_.empty() ? "" : "; ").append(note_);
    }
    return done ? BatchDone(written_, note_)
                : BatchResult{BatchStatus::kFailed, written_, failure_, kTblWriteFailed};
  }

 private:
  // Into the scratch table, which a file that does not load leaves as it was.
  std::string Load(TblReport* report) {
    ParamTable loaded = table_;
    if (const Status status = loaded.BuildParamIndex(); status != kOk) {
      return std::string(StatusText(status));
    }
    if (const Status status = LoadParamFile(&loaded, task_.Input(), report); status != kOk) {
      const std::string own = FileMessage(task_.Input(), "");
      return report->message.substr(report->message.starts_with(own) ? own.size() : 0);
    }
    table_ = std::move(loaded);
    return {};
  }

  bool Write(const std::filesystem::path& path, std::uint32_t version) {
    std::filesystem::path kept;
    if (task_.Stopped() || !KeepOld(path, &kept)) {
      return false;
    }
    TblReport report;
    const TblSaveOptions options{version, false, static_cast<std::int32_t>(version)};
    if (SaveParamFile(&table_, path, options, &report) != kOk) {
      failure_ = FileMessage(path, report.reason);
      if (HaveSameBytes(path, kept)) {  // the old file stands: no need of a second one
        std::error_code ignored;
        std::filesystem::remove(kept, ignored);
      }
      return false;
    }
    written_.push_back(path);
    if (!kept.empty()) {
      Note("the old " + PathText(path.filename()) + " is kept as " + PathText(kept.filename()));
    }
    return true;
  }

  // False where the old file could not be kept; then it is not written over either.
  bool KeepOld(const std::filesystem::path& path, std::filesystem::path* kept) {
    std::error_code error;
    if (!task_.IsBeside() || IsSafelyCopied(path) || !std::filesystem::exists(path, error)) {
      return true;
    }
    std::filesystem::path backup;
    if (const std::string reason = KeepBackup(path, &backup); !reason.empty()) {
      failure_ = FileMessage(path, "cannot be kept as ");
      failure_.append(FileMessage(backup.filename(), reason));
      return false;
    }
    *kept = backup;
    return true;
  }

  // The input itself, once its version-2 copy has been written under another name.
  bool IsSafelyCopied(const std::filesystem::path& path) const {
    return !written_.empty() && FileIdentity(path) == FileIdentity(task_.Input());
  }

  void Note(const std::string& note) { note_.append(note_.empty() ? "" : "; ").append(note); }

  BatchTask& task_;
  ParamTable& table_;
  std::vector<std::filesystem::path> written_;
  std::string note_;
  std::string failure_;
};

}  // namespace

Conversion TblToVersion1(const ParamTable& scratch) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{Version2Name(path), Version1Name(path)};
  };
  conversion.job = [table = std::make_shared<ParamTable>(scratch)](BatchTask& task) {
    return FileToV1(&task, table.get()).Run();
  };
  conversion.in_order = true;
  conversion.replaces_inputs = true;
  conversion.counts_every_file = true;
  return conversion;
}

}  // namespace orvane
