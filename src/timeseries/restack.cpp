// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <map>
#include <system_error>
#include <thread>
#include <vector>

#include "core/file_io.h"
#include "core/find_file.h"
#include "core/number_text.h"
#include "core/path_names.h"
#include "core/path_text.h"
#include "timeseries/restack_plan.h"
#include "timeseries/sample_decoder.h"
#include "timeseries/ts_companion.h"
#include "timeseries/ts_file.h"

namespace orvane {
namespace {

constexpr std::size_t kOutWidth = 3;
constexpr unsigned kMostShares = 64;

using Sums = std::vector<std::int32_t>;

// One share of the work: of each record the same part of its scans, so that no two shares ever
// touch the same sum. Every share walks the headers itself.
class RestackShare {
 public:
  RestackShare(const BatchTask* task, const RandomFile* in, std::uint64_t end, unsigned share,
               unsigned shares)
      : task_(task), in_(in), end_(end), share_(share), shares_(shares) {}

  // Tells the bytes of each record that is done. An empty string, or why reading failed.
  template <typename Tell>
  std::string Add(RestackPlan* plan, std::map<const RestackGroup*, Sums>* sums, Tell tell) {
    TsWalker walker(in_, TsHeaderSize::kFull, end_);
    TsPlace place;
    std::string error;
    while (error.empty() && !task_->Stopped() && walker.Next(&place) && !place.is_cut) {
      const RestackGroup* group = plan->GroupOf(place.header);
      const auto sum = sums->find(group);
      if (sum != sums->end() && group->Takes(place.header)) {
        error = AddRecord(place, *group, sum->second.data());
      }
      tell(place.next - place.offset);
    }
    return error.empty() ? walker.Error() : error;
  }

 private:
  std::string AddRecord(const TsPlace& place, const RestackGroup& group, std::int32_t* sum) {
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
      std::string error;
      const std::size_t read = in_->ReadAt(place.data + std::uint64_t{scan} * scan_bytes,
                                           std::span(piece_).first(scans * scan_bytes), &error);
      if (read < scans * scan_bytes) {
        return error.empty() ? "the file became shorter while it was read" : error;
      }
      AddScans(place, {sum + scan * channels, scans * channels}, channels,
               place.number == group.first_record);
    }
    return {};
  }

  void AddScans(const TsPlace& place, std::span<std::int32_t> sums, std::size_t channels,
                bool is_first) {
    const SampleDecoder& decoder = BestDecoder();
    const auto decode = is_first ? decoder.put : decoder.add;
    const int width = place.header.sample_width;
    if (place.header.channels == channels) {
      decode(piece_.data(), width, sums);
      return;
    }
    const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
    const std::byte* from = piece_.data();
    for (; !sums.empty(); sums = sums.subspan(channels), from += scan_bytes) {
      decode(from, width, sums.first(channels));
    }
  }

  const BatchTask* task_;
  const RandomFile* in_;
  std::uint64_t end_;
  unsigned share_;
  unsigned shares_;
  std::vector<std::byte> piece_;
};

class Restacking {
 public:
  Restacking(BatchTask* task, const RandomFile* in, OutFile* out)
      : task_(task),
        in_(in),
        out_(out),
        end_(in->Size()),
        plan_(TsWalker(in, TsHeaderSize::kFull, end_)) {}

  // An empty string, or why it failed; also where it was stopped.
  std::string Run(std::uint64_t most_memory) {
    if (!plan_.Error().empty()) {
      return plan_.Error();
    }
    const std::vector<RestackGroup*> groups = plan_.InOrder();
    std::string error;
    for (std::size_t first = 0; first < groups.size() && error.empty() && !task_->Stopped();) {
      std::size_t last = first;
      std::uint64_t memory = 0;
      std::map<const RestackGroup*, Sums> sums;
      while (last < groups.size() &&
             (last == first || memory + groups[last]->Samples() * 4 <= most_memory)) {
        memory += groups[last]->Samples() * 4;
        sums.emplace(groups[last], Sums(static_cast<std::size_t>(groups[last]->Samples())));
        ++last;
      }
      error = AddAll(&sums, first == 0);
      for (; first < last && error.empty() && !task_->Stopped(); ++first) {
        error = Write(*groups[first], &sums.at(groups[first]));
      }
    }
    return error;
  }

  std::string Note() const { return plan_.Note(); }

 private:
  std::string AddAll(std::map<const RestackGroup*, Sums>* sums, bool tells_progress) {
    const unsigned shares = std::clamp(task_->Threads(), 1U, kMostShares);
    std::vector<std::string> errors(shares);
    const auto add = [&](unsigned share) {
      try {
        errors[share] = RestackShare(task_, in_, end_, share, shares)
                            .Add(&plan_, sums, [&](std::uint64_t bytes) {
                              if (share == 0 && tells_progress) {
                                task_->Advance(bytes);
                              }
                            });
      } catch (const std::exception& error) {  // no memory
        errors[share] = error.what();
      }
    };
    std::vector<std::jthread> helpers;
    unsigned share = 1;
    try {
      for (; share < shares; ++share) {
        helpers.emplace_back(add, share);
      }
    } catch (const std::system_error&) {
      // The system has no more threads to give: this one does what is left.
    }
    for (add(0); share < shares; ++share) {
      add(share);
    }
    helpers.clear();  // waits for them
    const auto failed = std::find_if(errors.begin(), errors.end(),
                                     [](const std::string& error) { return !error.empty(); });
    return failed == errors.end() ? std::string() : *failed;
  }

  // Writes the mean of a group; its sums become the means.
  std::string Write(const RestackGroup& group, Sums* sums) {
    Divide(group.count, sums);
    TsHeader header = group.header;
    header.sample_width = kOutWidth;
    header.byte25 = 0;
    header.trailing_scans = 0;
    header.byte51 = 0;
    std::string error = out_->Write(BytesOf(header));
    const auto samples = static_cast<std::size_t>(group.Samples());
    std::vector<std::byte> piece(std::min(kTsPiece, samples * kOutWidth + 1));
    for (std::size_t i = 0; i < samples && error.empty();) {
      const std::size_t count = std::min(samples - i, (kTsPiece - 1) / kOutWidth);
      for (std::size_t k = 0; k < count; ++k) {
        // Four bytes are stored, of which the next sample overwrites the fourth.
        const Le<std::int32_t> mean = SampleOf((*sums)[i + k]);
        std::memcpy(&piece[k * kOutWidth], &mean, sizeof mean);
      }
      error = out_->Write(std::span(piece).first(count * kOutWidth));
      i += count;
    }
    return error.empty() ? error : FileMessage(task_->Outputs()[0], error);
  }

  // Toward zero. Division of doubles does it exactly: a quotient of 32-bit numbers is never so
  // close to a whole one that rounding could reach it. A loop of its own takes several at a time.
  static void Divide(std::uint64_t count, Sums* sums) {
    if (count > 1) {
      const auto divisor = static_cast<double>(count);
      for (std::int32_t& sum : *sums) {
        sum = static_cast<std::int32_t>(static_cast<double>(sum) / divisor);
      }
    }
  }

  BatchTask* task_;
  const RandomFile* in_;
  OutFile* out_;
  std::uint64_t end_;
  RestackPlan plan_;
};

std::string OldVersionNote(const std::string& input) {
  const std::string name = CompanionName(input);
  TsCompanion companion;
  TblReport report;
  if (name.empty() || companion.Load(FindInAnyCase(PathOf(name)), &report) != kOk ||
      !companion.IsOldVersion()) {
    return report.read_error.empty() ? report.read_error : report.message;
  }
  return "its companion table tells an older version (\"VER\" " + companion.Version() +
         ") with 196-byte headers, but stacking takes all headers as 252 bytes";
}

BatchResult OpenFailed(const std::filesystem::path& path, const std::string& reason) {
  BatchResult result = BatchFailed(OpenFailureText(path) + " " + reason);
  result.box = OpenFailureText(path);
  return result;
}

BatchResult RestackFile(BatchTask& task, std::uint64_t most_memory) {
  RandomFile in;
  if (const std::string reason = in.Open(task.Input()); !reason.empty()) {
    return OpenFailed(task.Input(), reason);
  }
  const auto& path = task.Outputs()[0];
  OutFile out;
  if (const std::string reason = out.Open(path); !reason.empty()) {
    return OpenFailed(path, reason);
  }
  Restacking restacking(&task, &in, &out);
  std::string error = restacking.Run(most_memory);
  if (task.Stopped()) {
    return BatchCancelled();
  }
  if (error.empty()) {
    error = out.Commit();
    error = error.empty() ? error : FileMessage(path, error);
  }
  if (!error.empty()) {
    return BatchFailed(error);
  }
  std::string note = OldVersionNote(PathText(task.Input()));
  const std::string more = restacking.Note();
  note.append(note.empty() || more.empty() ? "" : "; ").append(more);
  return BatchDone(task.Outputs(), note);
}

}  // namespace

std::string RestackName(std::string_view path) {
  return ReplacedInName(UpperCasedPath(path), ".TSS", ".TSK");
}

Conversion Restack(std::uint64_t most_memory) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{RestackName(path)};
  };
  conversion.refusal_box = OpenFailureText;
  conversion.job = [most_memory](BatchTask& task) { return RestackFile(task, most_memory); };
  return conversion;
}

}  // namespace orvane
