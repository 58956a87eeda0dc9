// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_LOADING_H_
#define ORVANE_TIMESERIES_TS_LOADING_H_

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "timeseries/ts_file.h"

namespace orvane {

/// A time series file that is opened on a thread of its own, because its index takes seconds where
/// the file has millions of records. Ends by itself; to be used from one thread.
class TsLoading {
 public:
  TsLoading(const std::filesystem::path& path, const TsFile::Options& options);
  TsLoading(const TsLoading&) = delete;
  TsLoading& operator=(const TsLoading&) = delete;
  /// Stops the walk and waits for its end: at most one read.
  ~TsLoading();

  const std::filesystem::path& Path() const { return path_; }
  const TsFile::Options& Options() const { return options_; }
  const TsProgress& Progress() const { return progress_; }

  bool IsDone() const;
  /// Waits for the end, at most so long; whether it has come.
  bool WaitFor(std::chrono::milliseconds time) const;

  /// Once it is done: whether the file is open. A failure is that of `TsFile::Open()`, or what the
  /// program itself lacked, such as memory; then the file has no `FailureText()`.
  const Result<>& Outcome() const { return outcome_; }
  /// Once it is done: the file.
  std::unique_ptr<TsFile> Take() { return std::move(file_); }

 private:
  void Run();

  std::filesystem::path path_;
  TsFile::Options options_;
  TsProgress progress_;
  std::unique_ptr<TsFile> file_ = std::make_unique<TsFile>();
  Result<> outcome_;
  Result<> no_memory_;  // made while there is some
  mutable std::mutex mutex_;
  mutable std::condition_variable ended_;
  bool is_done_ = false;
  std::thread thread_;  // the last: it uses the others
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_LOADING_H_
