// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack_adding.h"

#include <algorithm>
#include <exception>
#include <new>
#include <thread>
#include <vector>

#include "files/file_io.h"
#include "timeseries/sample_decoder.h"

namespace orvane {
namespace {

constexpr unsigned kMostShares = 64;

// One share of the work: of each record the same part of its scans, so that no two shares ever
// touch the same sum. Every share walks the headers itself.
class RestackShare {
 public:
  RestackShare(const BatchTask* task, const RandomFile* in, std::uint64_t end, unsigned share,
               unsigned shares)
      : task_(task), in_(in), end_(end), share_(share), shares_(shares) {}

  // Calls `note` with the bytes of each record that is done.
  template <typename Note>
  Result<> Add(RestackPlan* plan, GroupSums* sums, Note note) {
    TsWalker walker(in_, TsHeaderSize::kFull, end_);
    TsPlace place;
    Result<> added;
    while (added && !task_->Stopped() && walker.Next(&place) && !place.is_cut) {
      const auto sum = sums->find(plan->GroupOf(place));
      if (sum != sums->end()) {
        added = AddRecord(place, *sum->first, &sum->second);
      }
      note(place.next - place.offset);
    }
    return added ? walker.Outcome() : added;
  }

 private:
  Result<> AddRecord(const TsPlace& place, const RestackGroup& group, RestackSums* sums) {
    const std::size_t channels = group.header.channels;
    const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
    if (scan_bytes == 0 || channels == 0) {
      return {};
    }
    const std::size_t first = std::size_t{group.header.scans} * share_ / shares_;
    const std::size_t last = std::size_t{group.header.scans} * (share_ + 1) / shares_;
    const std::size_t scans_per_piece = kTsPiece / scan_bytes;
    for (std::size_t scan = first; scan < last && !task_->Stopped(); scan += scans_per_piece) {
      const std::size_t scans = std::min(scans_per_piece, last - scan);
      piece_.resize(std::max(piece_.size(), scans * scan_bytes + kDecoderSlack));
      const BytesRead read = in_->ReadAt(place.data + std::uint64_t{scan} * scan_bytes,
                                         std::span(piece_).first(scans * scan_bytes));
      if (read.count < scans * scan_bytes) {
        return read.outcome ? Failure("the file became shorter while it was read") : read.outcome;
      }
      AddScans(place, scan, scans, channels, sums);
    }
    return {};
  }

  void AddScans(const TsPlace& place, std::size_t scan, std::size_t scans, std::size_t channels,
                RestackSums* sums) {
    const int width = place.header.sample_width;
    if (place.header.channels == channels) {
      sums->Add(piece_.data(), width, scan * channels, scans * channels, &scratch_);
      return;
    }
    const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
    const std::byte* from = piece_.data();
    for (const std::size_t end = scan + scans; scan < end; ++scan, from += scan_bytes) {
      sums->Add(from, width, scan * channels, channels, &scratch_);
    }
  }

  const BatchTask* task_;
  const RandomFile* in_;
  std::uint64_t end_;
  unsigned share_;
  unsigned shares_;
  std::vector<std::byte> piece_;
  std::vector<std::int32_t> scratch_;
};

}  // namespace

Result<> AddRecords(BatchTask* task, const RandomFile& in, std::uint64_t end, RestackPlan* plan,
                    GroupSums* sums, bool tells_progress) {
  const unsigned shares = std::clamp(task->Threads(), 1U, kMostShares);
  std::vector<Result<>> results(shares);
  std::vector<Result<>> no_memory(shares, Failure(ReasonOf(std::bad_alloc())));
  const auto add = [&](unsigned share) {
    try {
      results[share] =
          RestackShare(task, &in, end, share, shares).Add(plan, sums, [&](std::uint64_t bytes) {
            if (share == 0 && tells_progress) {
              task->Advance(bytes);
            }
          });
    } catch (const std::bad_alloc&) {
      results[share] = std::move(no_memory[share]);
    } catch (const std::exception& error) {
      results[share] = Failure(error.what());
    }
  };
  std::vector<std::jthread> helpers;
  unsigned share = 1;
  try {
    for (; share < shares; ++share) {
      helpers.emplace_back(add, share);
    }
  } catch (const std::exception&) {
    // The system has no more threads or memory to give: this one does what is left.
  }
  for (add(0); share < shares; ++share) {
    add(share);
  }
  helpers.clear();  // waits for them
  const auto failed =
      std::find_if(results.begin(), results.end(), [](const Result<>& result) { return !result; });
  return failed == results.end() ? Result<>() : *failed;
}

}  // namespace orvane
