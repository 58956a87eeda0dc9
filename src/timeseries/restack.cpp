// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "timeseries/restack_adding.h"
#include "timeseries/restack_companion.h"
#include "timeseries/sample_decoder.h"
#include "timeseries/ts_file.h"

namespace orvane {
namespace {

constexpr std::size_t kOutWidth = 3;

class Restacking {
 public:
  Restacking(BatchTask* task, const RandomFile* in, std::uint64_t end, RestackPlan* plan,
             OutFile* out)
      : task_(task), in_(in), end_(end), plan_(plan), out_(out) {}

  // Also done where it was stopped.
  Result<> Run(std::uint64_t most_memory) {
    const std::vector<RestackGroup*> groups = plan_->InOrder();
    Result<> done;
    for (std::size_t first = 0; first < groups.size() && done && !task_->Stopped();) {
      std::size_t last = first;
      std::uint64_t memory = 0;
      GroupSums sums;
      for (; last < groups.size(); ++last) {
        const RestackGroup& group = *groups[last];
        memory += RestackSums::Memory(group.count, group.Samples());
        if (last > first && memory > most_memory) {
          break;
        }
        sums.try_emplace(&group, group.count, group.Samples());
      }
      done = AddRecords(task_, *in_, end_, plan_, &sums, first == 0);
      for (; first < last && done && !task_->Stopped(); ++first) {
        done = Write(*groups[first], sums.at(groups[first]));
      }
    }
    return done;
  }

 private:
  Result<> Write(const RestackGroup& group, const RestackSums& sums) {
    TsHeader header = group.header;
    header.sample_width = kOutWidth;
    header.byte25 = 0;
    header.trailing_scans = 0;
    header.byte51 = 0;
    Result<> written = out_->Write(BytesOf(header));
    const std::size_t samples = sums.Size();
    std::vector<std::byte> piece(std::min(kTsPiece, samples * kOutWidth + 1));
    std::vector<std::int32_t> means(std::min(samples, kTsPiece / kOutWidth));
    for (std::size_t i = 0; i < samples && written;) {
      const std::size_t count = std::min(samples - i, (kTsPiece - 1) / kOutWidth);
      sums.PutMeans(i, std::span(means).first(count));
      for (std::size_t k = 0; k < count; ++k) {
        // Four bytes are stored, of which the next sample overwrites the fourth.
        const Le<std::int32_t> mean = means[k];
        std::memcpy(&piece[k * kOutWidth], &mean, sizeof mean);
      }
      written = out_->Write(std::span(piece).first(count * kOutWidth));
      i += count;
    }
    return written ? written : Failure(FileMessage(task_->Outputs()[0], written.Message()));
  }

  BatchTask* task_;
  const RandomFile* in_;
  std::uint64_t end_;
  RestackPlan* plan_;
  OutFile* out_;
};

// What the files of a batch have in common: the question about bad records, which one worker asks
// for all, and the tables that were put beside stacks.
class Shared {
 public:
  explicit Shared(RestackOptions options) : options_(std::move(options)) {}

  const RestackOptions& Options() const { return options_; }
  // Whether the bad records of a file are to be left out; waits while another worker asks.
  bool LeavesOut(const RestackPlan& plan, const BatchTask& task) {
    if (plan.BadRecords().Count() == 0 || !options_.ask_about_bad) {
      return false;
    }
    const std::lock_guard lock(mutex_);
    if (!answer_) {
      answer_ = options_.ask_about_bad(Text(plan, task), task);
    }
    return *answer_;
  }
  // Over a table only where this batch has made it, for a stack that this one replaces.
  Result<CompanionCopy> CopyTable(const std::filesystem::path& waveform,
                                  const std::filesystem::path& stack) {
    const std::lock_guard lock(mutex_);
    auto copy = CopyCompanion(waveform, stack, tables_);
    if (copy && !copy->written.empty()) {
      tables_.insert(copy->written);
    }
    return copy;
  }

 private:
  static std::string Text(const RestackPlan& plan, const BatchTask& task) {
    const bool is_one = plan.BadRecords().Count() == 1;
    return PathText(task.Input().filename()) +
           " has records that the box marked as bad: " + (is_one ? "record " : "records ") +
           plan.BadRecords().Text() +
           ".\n\nLeave out the bad records of all files? \"No\" adds them to the stacks.";
  }

  RestackOptions options_;
  std::mutex mutex_;
  std::optional<bool> answer_;
  std::set<std::filesystem::path> tables_;
};

BatchResult OpenFailed(const std::filesystem::path& path, const std::string& reason) {
  BatchResult result = BatchFailed(OpenFailureText(path) + " " + reason);
  result.box = OpenFailureText(path);
  return result;
}

void Append(const std::string& note, std::string* notes) {
  notes->append(notes->empty() || note.empty() ? "" : "; ").append(note);
}

// Puts the stack in its place, and in a folder of its own the table before it: without that nobody
// could read volts from it.
BatchResult Finish(const BatchTask& task, std::string note, Shared* shared, OutFile* out) {
  Append(CompanionNote(task.Input()), &note);
  const auto& path = task.Outputs().front();
  const Result<CompanionCopy> copy =
      task.IsBeside() ? CompanionCopy() : shared->CopyTable(task.Input(), path);
  if (!copy) {
    return BatchFailed(copy.Message());
  }
  Append(copy->note, &note);
  BatchResult result = BatchDone({path}, note);
  if (const Result<> committed = out->Commit(); !committed) {
    result = BatchFailed(FileMessage(path, committed.Message()));
  }
  if (!copy->written.empty()) {
    result.outputs.push_back(copy->written);
  }
  return result;
}

BatchResult RestackFile(BatchTask& task, Shared* shared) {
  RandomFile in;
  if (const Result<> opened = in.Open(task.Input()); !opened) {
    return OpenFailed(task.Input(), opened.Message());
  }
  const TsWalker walker(&in, TsHeaderSize::kFull);
  const std::uint64_t end = walker.End();
  auto leave_out = LeaveOutOf(shared->Options().leave_out, task.Input(), in, TsHeaderSize::kFull);
  if (!leave_out) {
    return BatchFailed(leave_out.Message());
  }
  RestackPlan plan(walker, *leave_out);
  if (!leave_out->bad && shared->LeavesOut(plan, task)) {
    leave_out->bad = true;
    plan = RestackPlan(walker, *leave_out);
  }
  if (!plan.Outcome()) {
    return BatchFailed(plan.Outcome().Message());
  }
  if (plan.LeavesNothing()) {
    return BatchFailed("nothing is left to stack: " + plan.Note());
  }
  const auto& path = task.Outputs()[0];
  OutFile out;
  if (const Result<> opened = out.Open(path); !opened) {
    return OpenFailed(path, opened.Message());
  }
  const Result<> restacked =
      Restacking(&task, &in, end, &plan, &out).Run(shared->Options().most_memory);
  if (task.Stopped()) {
    return BatchCancelled();
  }
  return restacked ? Finish(task, plan.Note(), shared, &out) : BatchFailed(restacked.Message());
}

}  // namespace

std::string RestackName(std::string_view path) {
  return ReplacedInName(UpperCasedPath(path), ".TSS", ".TSK");
}

Conversion Restack(RestackOptions options) {
  Conversion conversion;
  const auto shared = std::make_shared<Shared>(std::move(options));
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{RestackName(path)};
  };
  conversion.refusal_box = OpenFailureText;
  conversion.job = [shared](BatchTask& task) { return RestackFile(task, shared.get()); };
  return conversion;
}

}  // namespace orvane
