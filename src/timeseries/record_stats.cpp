// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_stats.h"

#include <algorithm>
#include <exception>
#include <memory>
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
    const std::size_t page = DataBytes(place.header) < kTsPiece ? 1 : kPage;
    Result<> added;
    for (std::size_t scan = 0; scan < place.scans_held && added && !IsStopped();) {
      added = AddPiece(place, scan_bytes, page, &scan, stats);
    }
    return added;
  }

 private:
  // Reads from the page's beginning into a page's beginning: the system copies a quarter faster.
  static constexpr std::size_t kPage = 4096;

  Result<> AddPiece(const TsPlace& place, std::size_t scan_bytes, std::size_t page,
                    std::size_t* scan, RecordStats* stats) {
    const std::uint64_t first = place.data + std::uint64_t{*scan} * scan_bytes;
    const auto lead = static_cast<std::size_t>(first % page);
    // A scan is at most 255 x 255 bytes, so at least one fits.
    const std::size_t scans = std::min((kTsPiece - lead) / scan_bytes, place.scans_held - *scan);
    const std::span<std::byte> piece = Room().first(lead + scans * scan_bytes);
    const BytesRead read = file_->ReadAt(first - lead, piece);
    if (read.count < piece.size()) {
      return read.outcome ? Failure("the file became shorter while it was read") : read.outcome;
    }
    AddScanStats(piece.data() + lead, place.header.sample_width, scans, stats->channels, &scratch_);
    *scan += scans;
    return {};
  }

  std::span<std::byte> Room() {
    std::size_t space = kTsPiece + kDecoderSlack + kPage;
    piece_.resize(space);
    void* start = piece_.data();
    return {static_cast<std::byte*>(std::align(kPage, kTsPiece + kDecoderSlack, start, space)),
            kTsPiece};
  }

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

RecordStatsRun::RecordStatsRun(std::filesystem::path path, TsHeaderSize header_size, TsStart start,
                               std::uint64_t end)
    : path_(std::move(path)),
      header_size_(header_size),
      start_(start),
      known_end_(end),
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
  const auto size = file.Size();
  if (!size) {
    return Failure(size.Message());
  }
  const TsWalker walker(&file, header_size_, std::min(known_end_, *size), start_);
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
