// SPDX-License-Identifier: GPL-3.0-or-later
// A pass over the records of a file on several threads, whose results come in the records' order
// and are therefore the same however many threads there are.
#ifndef ORVANE_TIMESERIES_RECORD_PASS_H_
#define ORVANE_TIMESERIES_RECORD_PASS_H_

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "timeseries/ts_walker.h"

namespace orvane {

struct PassOptions {
  unsigned threads = 1;
  /// Asked between records, from any thread; empty: never. A stopped pass is no failure.
  std::function<bool()> stopped = {};
};

/// Who of several threads has which records, and whose turn it is to hand over.
class RecordTurns {
 public:
  RecordTurns(TsWalker walker, const PassOptions& options)
      : walker_(std::move(walker)), stopped_(options.stopped) {}

  /// The next records, a few or one large one, and their turn; false: there are no more.
  bool Next(std::vector<TsPlace>* places, std::uint64_t* turn);
  /// Waits for a turn; false: the pass has ended before it. Only one thread has its turn at a time.
  bool WaitFor(std::uint64_t turn);
  void EndTurn();
  /// Ends the pass for all threads; the first failure counts.
  void End(const Result<>& outcome);

  bool Stopped() const { return stopped_ && stopped_(); }
  Result<> Outcome() const { return outcome_ ? walker_.Outcome() : outcome_; }

 private:
  TsWalker walker_;
  std::function<bool()> stopped_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t next_turn_ = 0;
  std::uint64_t turn_ = 0;
  bool has_ended_ = false;
  Result<> outcome_;
};

/// Runs `work` on so many threads, this one included, or on fewer where the system gives no more.
/// What it throws ends the pass as a failure.
void RunTurns(unsigned threads, RecordTurns* turns, const std::function<void()>& work);

/// `make_worker()` gives each thread a worker of its own, and `worker(place, &item)`, a `Result<>`,
/// works on a record; items are used again. `take(place, item)` gets each item, in the order of the
/// records, from one thread at a time. Memory: a few items for each thread.
template <typename Item, typename MakeWorker, typename Take>
Result<> PassRecords(TsWalker walker, const PassOptions& options, const MakeWorker& make_worker,
                     const Take& take) {
  RecordTurns turns(std::move(walker), options);
  RunTurns(options.threads, &turns, [&] {
    auto worker = make_worker();
    std::vector<TsPlace> places;
    std::vector<Item> items;
    std::uint64_t turn = 0;
    while (turns.Next(&places, &turn)) {
      items.resize(std::max(items.size(), places.size()));
      for (std::size_t i = 0; i < places.size(); ++i) {
        const Result<> done = turns.Stopped() ? Result<>() : worker(places[i], &items[i]);
        if (!done || turns.Stopped()) {
          turns.End(done);
          return;
        }
      }
      if (!turns.WaitFor(turn)) {
        return;
      }
      for (std::size_t i = 0; i < places.size(); ++i) {
        take(places[i], items[i]);
      }
      turns.EndTurn();
    }
  });
  return turns.Outcome();
}

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_PASS_H_
