// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_stats.h"

#include <algorithm>
#include <exception>
#include <new>

#include "files/file_io.h"
#include "timeseries/sample_decoder.h"

namespace orvane {
namespace {

// What one thread needs to go through the samples of records, in pieces.
class StatsWorker {
 public:
  StatsWorker(const RandomFile* file, const PassOptions* options)
      : file_(file), options_(options) {}

  Result<> operator()(const TsPlace& place, RecordStats* stats) {
    const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
    stats->place = place;
    stats->channels.assign(place.scans_held == 0 ? 0 : place.header.channels, ChannelStats());
    if (scan_bytes == 0) {
      return {};
    }
    // A scan is at most 255 x 255 bytes, so at least one fits.
    const std::size_t scans_per_piece = kTsPiece / scan_bytes;
    for (std::size_t scan = 0; scan < place.scans_held && !IsStopped(); scan += scans_per_piece) {
      const std::size_t scans = std::min(scans_per_piece, place.scans_held - scan);
      piece_.resize(std::max(piece_.size(), scans * scan_bytes + kDecoderSlack));
      const BytesRead read = file_->ReadAt(place.data + std::uint64_t{scan} * scan_bytes,
                                           std::span(piece_).first(scans * scan_bytes));
      if (read.count < scans * scan_bytes) {
        return read.outcome ? Failure("the file became shorter while it was read") : read.outcome;
      }
      AddScanStats(piece_.data(), place.header.sample_width, scans, stats->channels, &scratch_);
    }
    return {};
  }

 private:
  bool IsStopped() const { return options_->stopped && options_->stopped(); }

  const RandomFile* file_;
  const PassOptions* options_;
  std::vector<std::byte> piece_;
  std::vector<std::int32_t> scratch_;
};

}  // namespace

RecordStats StatsOf(const CTsRec& record) {
  RecordStats stats{record.Place(), {}};
  stats.channels.resize(record.Scans() == 0 ? 0 : record.Channels());
  AddHeldStats(record.Held(), record.Header().sample_width, stats.channels);
  return stats;
}

Result<> StatsOfRecords(const RandomFile& file, TsWalker walker, const PassOptions& options,
                        const std::function<void(const RecordStats& record)>& take) {
  return PassRecords<RecordStats>(
      std::move(walker), options, [&] { return StatsWorker(&file, &options); },
      [&](const TsPlace&, const RecordStats& stats) { take(stats); });
}

RecordStatsRun::RecordStatsRun(std::filesystem::path path, TsHeaderSize header_size)
    : path_(std::move(path)),
      header_size_(header_size),
      no_memory_(Failure(FileMessage(path_, ReasonOf(std::bad_alloc())))),
      thread_([this] { Run(); }) {}

RecordStatsRun::~RecordStatsRun() {
  stop_ = true;
  thread_.join();
}

std::vector<RecordStats> RecordStatsRun::Take() {
  const std::lock_guard lock(mutex_);
  return std::exchange(ready_, {});
}

int RecordStatsRun::Percent() const {
  constexpr double kWhole = 100;
  const std::uint64_t end = end_;
  return end == 0 ? 0
                  : static_cast<int>(kWhole * std::min(1.0, static_cast<double>(at_) /
                                                                static_cast<double>(end)));
}

Result<> RecordStatsRun::Work() {
  RandomFile file;
  if (const Result<> opened = file.Open(path_); !opened) {
    return opened;
  }
  const TsWalker walker(&file, header_size_);
  end_ = walker.End();
  PassOptions options;
  options.stopped = [this] { return stop_.load(); };
  return StatsOfRecords(file, walker, options, [this](const RecordStats& record) {
    const std::lock_guard lock(mutex_);
    ready_.push_back(record);
    at_ = record.place.next;
  });
}

void RecordStatsRun::Run() {
  try {
    const Result<> worked = Work();
    outcome_ = worked ? worked : Failure(FileMessage(path_, worked.Message()));
  } catch (const std::bad_alloc&) {
    outcome_ = std::move(no_memory_);
  } catch (const std::exception& error) {
    outcome_ = Failure(FileMessage(path_, error.what()));
  }
  is_done_ = true;
}

}  // namespace orvane
