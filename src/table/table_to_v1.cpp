// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/table_to_v1.h"

#include <memory>
#include <set>
#include <system_error>

#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/tbl_file.h"

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
    if (const ParamEntry* entry = table->FindParam(from);
        entry != nullptr && entry->type == StrPT) {
      PutText(table, to, CharactersOf(entry->value, kMaxTextLength));
    }
  }
}

// One file of a conversion.
class FileToV1 {
 public:
  // `made` has the files that an earlier start of the conversion wrote.
  FileToV1(BatchTask* task, ParamTable* table, std::set<std::filesystem::path>* made)
      : task_(*task), table_(*table), made_(*made) {}

  bool WasOvertaken() const { return input_.WasOvertaken(); }

  // Nothing is lost that another program changes meanwhile: from before it is read the input is
  // held, where it is what version 1 is written over.
  BatchResult Run() {
    const auto& version1 = task_.Outputs().back();
    const auto sameness = CompareFiles(task_.Input(), version1);
    if (!sameness) {
      return BatchFailed(sameness.Message());
    }
    replaces_input_ = task_.IsBeside() && sameness == Sameness::kSame;
    if (replaces_input_) {
      if (const Result<> opened = input_.OpenToUpdate(version1); !opened) {
        return BatchFailed(Named(version1, opened.Message()), kTblWriteFailed);
      }
    }
    TblReport report;
    if (const Result<> loaded = Load(&report); !loaded) {
      return BatchLeftAlone(loaded.Message());
    }
    if (report.loaded == 0) {
      return BatchFailed("no parameter is taken from it; it is left as it was");
    }
    return task_.Stopped() ? BatchCancelled() : WriteBoth(report);
  }

 private:
  BatchResult WriteBoth(const TblReport& report) {
    const auto& version2 = task_.Outputs().front();
    const auto& version1 = task_.Outputs().back();
    // Where both have one name, version 1 is what stays: the other need not be written.
    bool done = version2 == version1 || Write(version2, 2);
    if (report.version != 1) {
      CopyHeaderTexts(&table_);
    } else {
      Note("already version 1: longer keys come from the table before it");
    }
    if (report.IsMostlyMissing()) {
      Note("only " + FormatInt(report.loaded) + " of " + FormatInt(report.RecordsOfWhole()) +
           " records are taken from it, the other values from the table before it");
    } else if (!report.missing.empty()) {
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

  // Into the scratch table, which a file that does not load leaves as it was.
  Result<> Load(TblReport* report) {
    ParamTable loaded = table_;
    if (const Status status = loaded.BuildParamIndex(); status != kOk) {
      return Failure(std::string(StatusText(status)));
    }
    if (const Status status = LoadParamFile(&loaded, task_.Input(), report); status != kOk) {
      const std::string own = FileMessage(task_.Input(), "");
      return Failure(report->message.substr(report->message.starts_with(own) ? own.size() : 0));
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
    if ((version == 1 && replaces_input_ ? SaveParamFile(&table_, path, &input_, options, &report)
                                         : SaveParamFile(&table_, path, options, &report)) != kOk) {
      failure_ = Named(path, report.reason);
      // No need of a second file where the old one is still there, or another program has replaced
      // it.
      if (input_.WasOvertaken() || HaveSameBytes(path, kept)) {
        std::error_code ignored;
        std::filesystem::remove(kept, ignored);
      }
      return false;
    }
    written_.push_back(path);
    made_.insert(path);
    if (!kept.empty()) {
      Note("the old " + PathText(path.filename()) + " is kept as " + PathText(kept.filename()));
    }
    return true;
  }

  // False where the old file could not be kept; then it is not written over either.
  bool KeepOld(const std::filesystem::path& path, std::filesystem::path* kept) {
    if (!task_.IsBeside() || made_.contains(path) || IsSafelyCopied(path)) {
      return true;
    }
    const auto exists = Exists(path);
    if (!exists) {
      failure_ = FileMessage(path, exists.Message());
    }
    if (!exists || exists == Existence::kNotThere) {
      return static_cast<bool>(exists);
    }
    const auto backup = KeepBackup(path);
    if (!backup) {
      failure_ = FileMessage(path, "cannot be kept as " + backup.Message());
      return false;
    }
    *kept = *backup;
    return true;
  }

  // The input itself, once its version-2 copy has been written under another name.
  bool IsSafelyCopied(const std::filesystem::path& path) const {
    return !written_.empty() && replaces_input_ && path == task_.Outputs().back();
  }

  // The input has its name before it already.
  std::string Named(const std::filesystem::path& path, const std::string& reason) const {
    return path == task_.Input() ? reason : FileMessage(path, reason);
  }

  void Note(const std::string& note) { note_.append(note_.empty() ? "" : "; ").append(note); }

  BatchTask& task_;
  ParamTable& table_;
  std::set<std::filesystem::path>& made_;
  bool replaces_input_ = false;
  OutFile input_;  // being written over
  std::vector<std::filesystem::path> written_;
  std::string note_;
  std::string failure_;
};

// Starts again where another program has changed the file meanwhile.
BatchResult ConvertFile(BatchTask* task, ParamTable* table) {
  constexpr int kMostStarts = 100;  // so often nobody saves the same file
  const ParamTable before = *table;
  std::set<std::filesystem::path> made;
  for (int i = 1;; ++i) {
    FileToV1 file(task, table, &made);
    BatchResult result = file.Run();
    if (!file.WasOvertaken() || i == kMostStarts) {
      return result;
    }
    *table = before;
  }
}

}  // namespace

Conversion TableToV1(const ParamTable& scratch) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{Version2Name(path), Version1Name(path)};
  };
  conversion.job = [table = std::make_shared<ParamTable>(scratch)](BatchTask& task) {
    return ConvertFile(&task, table.get());
  };
  conversion.in_order = true;
  conversion.replaces_inputs = true;
  conversion.counts_every_file = true;
  return conversion;
}

}  // namespace orvane
