// SPDX-License-Identifier: GPL-3.0-or-later
// Many files, each made into others by the same job, on several workers. A window or a progress
// line only shows what is here.
#ifndef ORVANE_FILES_BATCH_H_
#define ORVANE_FILES_BATCH_H_

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace orvane {

enum class BatchStatus {
  kDone,
  kDoneWithNote,  ///< all is written; `text` has what a user should know
  kFailed,        ///< `text` says why
  kLeftAlone,     ///< not converted on purpose; `text` says why
  kCancelled,     ///< stopped, or never begun, because of `Batch::Stop()`
};

/// What came of one file.
struct BatchResult {
  BatchStatus status = BatchStatus::kDone;
  std::vector<std::filesystem::path> outputs;  ///< really written, in order, also after a failure
  std::string text;                            ///< reason or note, without the path
  int code = 0;                                ///< the conversion's own status number; 0: none
  std::string box = {};  ///< what a window shows in a box of its own, besides the list of results
  std::string box_caption = "File Open Error";

  /// Everything asked for is written.
  bool IsDone() const {
    return status == BatchStatus::kDone || status == BatchStatus::kDoneWithNote;
  }
};

BatchResult BatchDone(std::vector<std::filesystem::path> outputs, std::string note = {});
BatchResult BatchFailed(std::string reason, int code = 0);
BatchResult BatchLeftAlone(std::string reason);
BatchResult BatchCancelled();

/// The note on a file that ends within a record, which begins at `offset` and is not converted.
std::string CutRecordNote(std::uint64_t offset);

/// What comes of a file without a whole record: nothing is written, so that an earlier result
/// stays. `cut_at` is where a record begins that is not whole; 0: there is none.
BatchResult NoRecord(std::uint64_t cut_at = 0);

/// What a job sees of the batch: one file and what to make of it.
class BatchTask {
 public:
  BatchTask(std::filesystem::path input, std::vector<std::filesystem::path> outputs, bool beside,
            std::atomic<bool>* stop, std::atomic<std::uint64_t>* bytes_done)
      : input_(std::move(input)),
        outputs_(std::move(outputs)),
        beside_(beside),
        stop_(stop),
        bytes_done_(bytes_done) {}

  const std::filesystem::path& Input() const { return input_; }
  /// As `Conversion::outputs_of` named them, moved to the output folder where one is given.
  const std::vector<std::filesystem::path>& Outputs() const { return outputs_; }
  /// The outputs are beside the input, not in a folder chosen for them.
  bool IsBeside() const { return beside_; }

  /// Asked between pieces of work of a few milliseconds; once true the job returns
  /// `BatchCancelled()` without committing any file.
  bool Stopped() const { return stop_->load(std::memory_order_relaxed); }
  /// Ends the whole batch, as `Batch::Stop()` does.
  void StopAll() { *stop_ = true; }
  /// Bytes of the input that have been worked through since the last call.
  void Advance(std::uint64_t bytes) {
    advanced_ += bytes;
    bytes_done_->fetch_add(bytes, std::memory_order_relaxed);
  }
  std::uint64_t Advanced() const { return advanced_; }

  /// Threads that the job may use for this file, itself included: more than one where there are
  /// more workers than files.
  unsigned Threads() const { return threads_; }
  void AllowThreads(unsigned threads) { threads_ = threads; }

  /// Files of the batch, this one included.
  std::size_t FilesInBatch() const { return files_; }
  void SetFilesInBatch(std::size_t files) { files_ = files; }

 private:
  std::filesystem::path input_;
  std::vector<std::filesystem::path> outputs_;
  bool beside_;
  std::atomic<bool>* stop_;
  std::atomic<std::uint64_t>* bytes_done_;
  std::uint64_t advanced_ = 0;
  unsigned threads_ = 1;
  std::size_t files_ = 1;
};

/// One kind of conversion, as a command offers it.
struct Conversion {
  /// The file really read for a path that was chosen; empty function: the path itself.
  std::function<std::string(const std::string& input)> input_of;
  /// The paths written for an input, beside it, in the order of writing. Must not look at files.
  std::function<std::vector<std::string>(const std::string& input)> outputs_of;
  /// Does one file. Called from several threads at once unless `in_order`; touches only files and
  /// tables of its own.
  std::function<BatchResult(BatchTask& task)> job;
  /// One worker takes the files in their order, because one depends on those before.
  bool in_order = false;
  /// Without an output folder an input may be written over.
  bool replaces_inputs = false;
  /// The message at the end counts every file that was selected, not only those written.
  bool counts_every_file = false;
  /// What a window shows in a box where an output is refused; empty function: nothing.
  std::function<std::string(const std::filesystem::path& output)> refusal_box;
  /// The conversion's number for a file whose output would be the input itself.
  int same_file_code = 0;
};

struct BatchPlan {
  Conversion conversion;
  std::vector<std::filesystem::path> inputs;
  std::filesystem::path out_folder;  ///< empty: beside each input
  unsigned workers = 0;              ///< 0: as many as there are cores
};

struct BatchProgress {
  std::size_t files_total = 0;
  std::size_t files_done = 0;
  std::uint64_t bytes_total = 0;  ///< of the inputs; 0 until the sizes are known
  std::uint64_t bytes_done = 0;
  std::filesystem::path current;  ///< the file begun last; empty before the first
  std::chrono::milliseconds elapsed{};

  /// Judged by the bytes done so far; none before anything is.
  std::optional<std::chrono::seconds> TimeLeft() const;
};

/// Runs a plan once. `Start()` returns at once; everything else may be called from any one thread
/// while the workers work. The bytes written do not depend on the number of workers:
/// - inputs that name the same output are done one after another in list order: the last one stays,
///   and a note of each names another;
/// - whatever a job throws, and a plan that finds no memory, is a failure of the files concerned;
/// - in an output folder the first stays instead, and every other input with such an output fails:
///   what is beside each other in no folder must not replace each other there;
/// - an output that is another input of the batch is refused, and so is one that is its own input
///   unless the conversion replaces inputs, and a link to a file with another ending.
class Batch {
 public:
  explicit Batch(BatchPlan plan);
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch();  ///< stops and waits

  void Start();
  /// Returns at once. Files not yet written stay unwritten and become `kCancelled`.
  void Stop() { stop_ = true; }
  /// True once every file has its result.
  bool IsFinished() const { return finished_; }
  void Wait();
  /// Waits at most so long; whether the batch is finished.
  bool WaitFor(std::chrono::milliseconds time);

  BatchProgress Progress() const;
  std::size_t Count() const { return plan_.inputs.size(); }
  const std::filesystem::path& Input(std::size_t index) const { return plan_.inputs[index]; }
  /// Null until the file is done with.
  const BatchResult* Result(std::size_t index) const;

  /// The number for the message at the end: by the rule of the conversion, without files that
  /// were cancelled.
  std::size_t CountForMessage() const;

 private:
  struct Item {
    std::filesystem::path input;  // the file really read
    std::vector<std::filesystem::path> outputs;
    std::string identity;  // of the input
    std::vector<std::string> output_identities;
    std::uint64_t size = 0;
    std::string shared_note;
    std::optional<std::string> refused;
    BatchResult result;
    std::atomic<bool> done = false;
  };
  /// Items that one worker does one after another.
  using Unit = std::vector<std::size_t>;

  void Run();
  void End();
  void RunPlanned();
  void FailTheRest(const char* reason);
  std::vector<Unit> PlanUnits();
  void NameOutputs();
  void RefuseInputs();
  void RefuseTakenOutputs();
  std::vector<Unit> GroupBySharedOutputs();
  unsigned WorkersAsked() const;
  unsigned WorkerCount(std::size_t units) const;
  void WorkThrough(const std::vector<Unit>& units);
  void Do(std::size_t index);
  BatchResult ResultOf(Item* item, std::uint64_t* advanced);
  void Finish(std::size_t index, std::uint64_t advanced);

  BatchPlan plan_;
  std::vector<Item> items_;
  unsigned threads_per_file_ = 1;
  std::atomic<bool> stop_ = false;
  std::atomic<bool> finished_ = false;
  std::atomic<std::size_t> next_unit_ = 0;
  std::atomic<std::size_t> current_;
  std::atomic<std::size_t> files_done_ = 0;
  std::atomic<std::uint64_t> bytes_total_ = 0;
  std::atomic<std::uint64_t> bytes_done_ = 0;
  std::chrono::steady_clock::time_point started_;
  std::mutex end_mutex_;  // only for waiting: never held during work
  std::condition_variable end_;
  std::jthread runner_;  // last: ends before what it works on
};

}  // namespace orvane

#endif  // ORVANE_FILES_BATCH_H_
