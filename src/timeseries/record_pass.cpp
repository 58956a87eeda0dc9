// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_pass.h"

#include <algorithm>
#include <exception>
#include <new>
#include <thread>

#include "files/file_io.h"

namespace orvane {
namespace {

constexpr unsigned kMostThreads = 64;
// Of records: so much work that taking it costs nothing, so little that no thread waits for long.
constexpr std::uint64_t kShareBytes = std::uint64_t{512} * 1024;
constexpr std::size_t kMostShare = 256;

}  // namespace

bool RecordTurns::Next(std::vector<TsPlace>* places, std::uint64_t* turn) {
  places->clear();
  const std::lock_guard lock(mutex_);
  TsPlace place;
  for (std::uint64_t bytes = 0; bytes < kShareBytes && places->size() < kMostShare;) {
    if (has_ended_ || !walker_.Next(&place)) {
      break;
    }
    bytes += place.next - place.offset;
    places->push_back(place);
  }
  *turn = next_turn_;
  next_turn_ += places->empty() ? 0 : 1;
  return !places->empty();
}

bool RecordTurns::WaitFor(std::uint64_t turn) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return has_ended_ || turn_ == turn; });
  return !has_ended_;
}

void RecordTurns::EndTurn() {
  const std::lock_guard lock(mutex_);
  ++turn_;
  changed_.notify_all();
}

void RecordTurns::End(const Result<>& outcome) {
  const std::lock_guard lock(mutex_);
  outcome_ = outcome_ ? outcome : outcome_;
  has_ended_ = true;
  changed_.notify_all();
}

void RunTurns(unsigned threads, RecordTurns* turns, const std::function<void()>& work) {
  const Result<> no_memory = Failure(ReasonOf(std::bad_alloc()));  // made while there is some
  const auto guarded = [&] {
    try {
      work();
    } catch (const std::bad_alloc&) {
      turns->End(no_memory);
    } catch (const std::exception& error) {
      turns->End(Failure(error.what()));
    }
  };
  std::vector<std::jthread> helpers;
  try {
    for (unsigned i = 1; i < std::min(threads, kMostThreads); ++i) {
      helpers.emplace_back(guarded);
    }
  } catch (const std::exception&) {
    // The system has no more threads or memory to give: there are enough already.
  }
  guarded();
  helpers.clear();  // waits for them
}

}  // namespace orvane
