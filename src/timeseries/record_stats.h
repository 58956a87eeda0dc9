// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RECORD_STATS_H_
#define ORVANE_TIMESERIES_RECORD_STATS_H_

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <mutex>
#include <thread>
#include <vector>

#include "timeseries/record_pass.h"
#include "timeseries/sample_stats.h"
#include "timeseries/ts_rec.h"

namespace orvane {

/// One record and the statistics of each of its channels. A record that the file cuts has those of
/// its whole scans.
struct RecordStats {
  TsPlace place;
  std::vector<ChannelStats> channels;  ///< empty where the record has no scan
};

/// Of a record that is in memory.
RecordStats StatsOf(const CTsRec& record);

/// Of each record of a walk, handed over in their order, from one thread at a time. Fails where
/// the file became shorter, or could not be read; what was handed over before stays right.
Result<> StatsOfRecords(const RandomFile& file, TsWalker walker, const PassOptions& options,
                        const std::function<void(const RecordStats& record)>& take);

/// The statistics of a file's records, made on a thread of its own, so that what shows them is
/// filled while its user works. To be used from one thread.
class RecordStatsRun {
 public:
  /// Of the records from `start` on, as far as they begin and end before `end`.
  RecordStatsRun(std::filesystem::path path, TsHeaderSize header_size, TsStart start = {},
                 std::uint64_t end = std::numeric_limits<std::uint64_t>::max());
  RecordStatsRun(const RecordStatsRun&) = delete;
  RecordStatsRun& operator=(const RecordStatsRun&) = delete;
  /// Stops, and waits for the end: at most the reading of a piece of a record.
  ~RecordStatsRun();

  /// The records that are done since the last call, in their order; empty: none.
  std::vector<RecordStats> Take();
  /// All are done, or something failed; `Take()` may still have some.
  bool IsDone() const { return is_done_; }
  int Percent() const;
  /// Once it is done: what ended it before the file's end, with the file's name.
  const Result<>& Outcome() const { return outcome_; }

 private:
  void Run();
  Result<> Work();

  std::filesystem::path path_;
  TsHeaderSize header_size_;
  TsStart start_;
  std::uint64_t known_end_;
  std::atomic<bool> stop_ = false;
  std::atomic<bool> is_done_ = false;
  std::atomic<std::uint64_t> at_ = 0;  // bytes
  std::atomic<std::uint64_t> end_ = 0;
  std::mutex mutex_;
  std::vector<RecordStats> ready_;
  Result<> outcome_;
  Result<> no_memory_;  // made while there is some
  std::thread thread_;  // the last: it uses the others
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RECORD_STATS_H_
