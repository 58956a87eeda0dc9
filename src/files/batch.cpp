// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/batch.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::size_t kNoFile = static_cast<std::size_t>(-1);
// The system reports both alike.
constexpr const char* kNoThread = "Cannot allocate memory for a thread, or no more are allowed";

}  // namespace

BatchResult BatchDone(std::vector<std::filesystem::path> outputs, std::string note) {
  const auto status = note.empty() ? BatchStatus::kDone : BatchStatus::kDoneWithNote;
  return {status, std::move(outputs), std::move(note), 0};
}

BatchResult BatchFailed(std::string reason, int code) {
  return {BatchStatus::kFailed, {}, std::move(reason), code};
}

BatchResult BatchLeftAlone(std::string reason) {
  return {BatchStatus::kLeftAlone, {}, std::move(reason), 0};
}

BatchResult BatchCancelled() { return {BatchStatus::kCancelled, {}, "cancelled", 0}; }

std::string CutRecordNote(std::uint64_t offset) {
  return "the record at offset " + FormatInt(offset) + " is cut short and left out";
}

BatchResult NoRecord(std::uint64_t cut_at) {
  return BatchFailed("no record" + (cut_at > 0 ? "; " + CutRecordNote(cut_at) : std::string()));
}

std::optional<std::chrono::seconds> BatchProgress::TimeLeft() const {
  if (bytes_done == 0 || bytes_done > bytes_total) {
    return std::nullopt;
  }
  const double left = static_cast<double>(bytes_total - bytes_done) /
                      static_cast<double>(bytes_done) * static_cast<double>(elapsed.count());
  return std::chrono::seconds(static_cast<std::int64_t>(left / 1000));
}

Batch::Batch(BatchPlan plan)
    : plan_(std::move(plan)), items_(plan_.inputs.size()), current_(kNoFile) {
  constexpr std::size_t kRoomForReason = 80;
  for (Item& item : items_) {
    item.result.text.reserve(kRoomForReason);  // for when there is no memory
  }
}

Batch::~Batch() { Stop(); }

void Batch::Start() {
  started_ = std::chrono::steady_clock::now();
  try {
    runner_ = std::jthread([this] { Run(); });
  } catch (const std::exception&) {
    FailTheRest(kNoThread);
    End();
  }
}

void Batch::Run() {
  try {
    RunPlanned();
  } catch (const std::exception& error) {
    FailTheRest(ReasonOf(error));
  }
  End();
}

void Batch::End() {
  const std::lock_guard lock(end_mutex_);
  finished_ = true;
  end_.notify_all();
}

void Batch::RunPlanned() {
  const std::vector<Unit> units = PlanUnits();
  const unsigned workers = WorkerCount(units.size());
  threads_per_file_ = std::max(1U, WorkersAsked() / std::max(1U, workers));
  std::vector<std::jthread> helpers;  // this thread is a worker too
  try {
    helpers.reserve(workers);
    for (unsigned i = 1; i < workers; ++i) {
      helpers.emplace_back([this, &units] { WorkThrough(units); });
    }
  } catch (const std::exception&) {
    // The system has no more threads or memory to give: fewer do the work.
  }
  WorkThrough(units);
}

// Nothing here asks for memory: there may be none.
void Batch::FailTheRest(const char* reason) {
  for (Item& item : items_) {
    if (!item.done) {
      item.result.status = BatchStatus::kFailed;
      item.result.text.assign(reason, std::min(std::strlen(reason), item.result.text.capacity()));
      item.done = true;
      ++files_done_;
    }
  }
}

unsigned Batch::WorkersAsked() const {
  return plan_.workers == 0 ? std::max(1U, std::thread::hardware_concurrency()) : plan_.workers;
}

unsigned Batch::WorkerCount(std::size_t units) const {
  const auto most = static_cast<unsigned>(std::min<std::size_t>(units, 1024));
  return plan_.conversion.in_order ? 1 : std::min(WorkersAsked(), most);
}

void Batch::WorkThrough(const std::vector<Unit>& units) {
  for (;;) {
    const std::size_t unit = next_unit_.fetch_add(1);
    if (unit >= units.size()) {
      return;
    }
    for (const std::size_t index : units[unit]) {
      Do(index);
    }
  }
}

void Batch::Do(std::size_t index) {
  Item& item = items_[index];
  std::uint64_t advanced = 0;
  try {
    current_ = item.refused || stop_ ? current_.load() : index;
    BatchResult result = ResultOf(&item, &advanced);
    if (result.status == BatchStatus::kFailed && item.input != plan_.inputs[index]) {
      result.text = FileMessage(item.input, result.text);  // what was really tried
    }
    item.result = std::move(result);
  } catch (const std::exception& error) {  // mostly no memory: none is asked for here
    const char* reason = ReasonOf(error);
    item.result.status = BatchStatus::kFailed;
    item.result.text.assign(reason, std::min(std::strlen(reason), item.result.text.capacity()));
  }
  Finish(index, advanced);
}

BatchResult Batch::ResultOf(Item* item, std::uint64_t* advanced) {
  if (item->refused) {
    BatchResult refused = BatchFailed(*item->refused, item->result.code);
    if (plan_.conversion.refusal_box && !item->outputs.empty()) {
      refused.box = plan_.conversion.refusal_box(item->outputs.front());
    }
    return refused;
  }
  if (stop_) {
    return BatchCancelled();
  }
  BatchTask task(item->input, item->outputs, plan_.out_folder.empty(), &stop_, &bytes_done_);
  task.AllowThreads(threads_per_file_);
  task.SetFilesInBatch(items_.size());
  const auto note_advance = [&] { *advanced = task.Advanced(); };
  BatchResult result;
  try {
    result = plan_.conversion.job(task);
  } catch (...) {
    note_advance();
    throw;
  }
  note_advance();
  if (result.IsDone() && !item->shared_note.empty()) {
    result.status = BatchStatus::kDoneWithNote;
    result.text.append(result.text.empty() ? "" : "; ").append(item->shared_note);
  }
  return result;
}

void Batch::Finish(std::size_t index, std::uint64_t advanced) {
  Item& item = items_[index];
  if (advanced < item.size) {
    bytes_done_ += item.size - advanced;  // so that the end is reached in any case
  }
  item.done = true;
  ++files_done_;
}

void Batch::Wait() {
  std::unique_lock lock(end_mutex_);
  end_.wait(lock, [this] { return IsFinished(); });
}

bool Batch::WaitFor(std::chrono::milliseconds time) {
  std::unique_lock lock(end_mutex_);
  return end_.wait_for(lock, time, [this] { return IsFinished(); });
}

BatchProgress Batch::Progress() const {
  BatchProgress progress;
  progress.files_total = items_.size();
  progress.files_done = files_done_;
  progress.bytes_total = bytes_total_;
  progress.bytes_done = std::min<std::uint64_t>(bytes_done_, progress.bytes_total);
  if (const std::size_t current = current_; current != kNoFile) {
    progress.current = plan_.inputs[current];
  }
  progress.elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - started_);
  return progress;
}

const BatchResult* Batch::Result(std::size_t index) const {
  return items_[index].done ? &items_[index].result : nullptr;
}

std::size_t Batch::CountForMessage() const {
  return static_cast<std::size_t>(
      std::count_if(items_.begin(), items_.end(), [this](const Item& item) {
        if (!item.done || item.result.status == BatchStatus::kCancelled) {
          return false;
        }
        return plan_.conversion.counts_every_file || item.result.IsDone();
      }));
}

}  // namespace orvane
