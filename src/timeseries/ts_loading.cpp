// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_loading.h"

#include <exception>
#include <new>
#include <system_error>

#include "files/file_io.h"

namespace orvane {

TsLoading::TsLoading(const std::filesystem::path& path, const TsFile::Options& options)
    : path_(path), options_(options), no_memory_(Failure(ReasonOf(std::bad_alloc()))) {
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    outcome_ = Failure("no thread to be had, or no memory for one");
    is_done_ = true;
  }
}

TsLoading::~TsLoading() {
  progress_.stop = true;
  if (thread_.joinable()) {
    thread_.join();
  }
}

void TsLoading::Run() {
  try {
    outcome_ = file_->Open(path_, options_, &progress_);
  } catch (const std::bad_alloc&) {
    outcome_ = std::move(no_memory_);
  } catch (const std::exception& exception) {
    outcome_ = Failure(exception.what());
  }
  const std::lock_guard lock(mutex_);
  is_done_ = true;
  ended_.notify_all();
}

bool TsLoading::IsDone() const {
  const std::lock_guard lock(mutex_);
  return is_done_;
}

bool TsLoading::WaitFor(std::chrono::milliseconds time) const {
  std::unique_lock lock(mutex_);
  return ended_.wait_for(lock, time, [this] { return is_done_; });
}

}  // namespace orvane
