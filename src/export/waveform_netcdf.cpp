// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/waveform_netcdf.h"

#include <algorithm>
#include <array>
#include <memory>

#include "base/latin1.h"
#include "base/number_text.h"
#include "export/netcdf_part.h"
#include "export/recording_input.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "meaning/meanings.h"
#include "table/values_text.h"
#include "timeseries/ts_listing.h"

namespace orvane {
namespace {

constexpr std::size_t kMostParts = 100;
constexpr std::size_t kMostWaiting = std::size_t{16} << 20U;  // samples of all parts

// One file from beginning to end.
class NetcdfJob {
 public:
  NetcdfJob(BatchTask* task, const NetcdfOptions* options, const Meanings* meanings)
      : task_(*task), options_(*options), meanings_(*meanings) {}

  BatchResult Run() {
    const auto& path = task_.Outputs()[0];
    Result<> done = in_.Open(task_.Input(), options_.reading, options_.leave_out);
    done = done ? CountRecords() : done;
    if (!done) {
      return BatchFailed(done.Message());
    }
    OutFile out;
    done = out.Open(path);
    const auto to = done ? out.PathToFill() : Failure(done.Message());
    if (!to) {
      return BatchFailed(FileMessage(path, to.Message()));
    }
    NcFile nc;
    nc.Create(*to);
    Define(&nc);
    const Result<> copied = CopyRecords(&nc);
    done = nc.Close();
    if (task_.Stopped()) {
      return BatchCancelled();
    }
    if (!copied) {
      return BatchFailed(copied.Message());
    }
    done = done ? out.Commit() : done;
    return done ? BatchDone(task_.Outputs(), Note())
                : BatchFailed(FileMessage(path, done.Message()));
  }

 private:
  bool IsWanted(const TsPlace& place) const {
    return !in_.leave_out.Has(place) && place.header.channels > 0 && place.scans_held > 0;
  }

  NetcdfPart* PartOf(const TsHeader& header) {
    const auto at = std::find_if(parts_.begin(), parts_.end(),
                                 [&](const NetcdfPart& part) { return part.Takes(header); });
    return at == parts_.end() ? nullptr : &*at;
  }

  Result<> CountRecords() {
    TsWalker walker = in_.Walk();
    for (TsPlace place; walker.Next(&place);) {
      box_ = place.number == 1 ? int{place.header.box} : box_;
      if (in_.leave_out.Has(place)) {
        ++left_out_;
        continue;
      }
      cut_ = place.is_cut ? place.number : cut_;
      if (!IsWanted(place)) {
        ++empty_;
        continue;
      }
      NetcdfPart* part = PartOf(place.header);
      if (part == nullptr && parts_.size() == kMostParts) {
        return Failure("its records are of more than 100 kinds of rate, scans and channels");
      }
      part = part == nullptr ? &parts_.emplace_back(place.header, in_.file.HeaderSize()) : part;
      part->Count();
    }
    if (!walker.Outcome()) {
      return Failure(walker.Outcome().Message());
    }
    return parts_.empty() ? Failure("no record to convert") : Result<>();
  }

  const TsCompanion* Companion() const {
    return in_.file.Companion().IsLoaded() ? &in_.file.Companion() : nullptr;
  }

  void Define(NcFile* nc) {
    DefineGlobals(nc);
    int number = 0;
    for (NetcdfPart& part : parts_) {
      const int group =
          ++number == 1 ? nc->Root() : nc->AddGroup(std::string("part").append(FormatInt(number)));
      part.Define(nc, group, Companion(), options_.deflate, kMostWaiting / parts_.size());
    }
    DefineTable(nc);
    nc->EndDefinitions();
    for (const NetcdfPart& part : parts_) {
      part.PutScanTimes(nc);
    }
    PutTable(nc);
  }

  // Neither the time of the conversion nor a folder: the same recording gives the same bytes.
  void DefineGlobals(NcFile* nc) const {
    const std::string name = PrintableUtf8(PathText(task_.Input().filename()));
    const auto add = [nc](const char* what, std::string_view text) {
      nc->AddText(nc->Root(), NC_GLOBAL, what, text);
    };
    add("Conventions", "CF-1.10");
    add("title", std::string("Recording ").append(name));
    add("source", std::string("geophysical receiver ").append(FormatInt(box_)));
    add("references", "docs/formats/netcdf.md of Orvane");
    add("history", std::string("orvane-cli waveform netcdf ")
                       .append(name)
                       .append(" (Orvane " ORVANE_VERSION ")"));
  }

  void DefineTable(NcFile* nc) {
    if (Companion() == nullptr) {
      return;
    }
    for (const ParamKey key : AllKeys(Companion()->Table())) {
      if (options_.with_secrets || !IsSecretKey(key)) {
        const ParamEntry& entry = *Companion()->Table().FindParam(key);
        table_[0].push_back(key.Text());
        table_[1].push_back(ValueAsText(entry));
        table_[2].push_back(meanings_.Line(entry));
      }
    }
    const int parameter = nc->AddDim(nc->Root(), "parameter", table_[0].size());
    table_vars_[0] = nc->AddVar(nc->Root(), "table_key", NC_STRING, {parameter});
    table_vars_[1] = nc->AddVar(nc->Root(), "table_value", NC_STRING, {parameter});
    table_vars_[2] = nc->AddVar(nc->Root(), "table_meaning", NC_STRING, {parameter});
  }

  void PutTable(NcFile* nc) const {
    for (std::size_t i = 0; i < table_.size() && table_vars_[i] >= 0; ++i) {
      nc->PutTexts(nc->Root(), table_vars_[i], table_[i]);
    }
  }

  Result<> CopyRecords(NcFile* nc) {
    CTsRec record;
    TsWalker walker = in_.Walk();
    for (TsPlace place; !task_.Stopped() && !nc->HasFailed() && walker.Next(&place);) {
      if (IsWanted(place)) {
        if (const Result<> read = record.Read(in_.file.Bytes(), place); !read) {
          return read;
        }
        NetcdfPart* part = PartOf(place.header);
        if (part == nullptr || part->Missing() == 0 || record.Scans() < place.scans_held) {
          return Failure("it was changed while it was read");
        }
        part->Put(nc, record);
      }
      task_.Advance(place.next - place.offset);
    }
    if (!walker.Outcome()) {
      return walker.Outcome();
    }
    for (NetcdfPart& part : parts_) {
      part.Flush(nc);
      if (part.Missing() > 0 && !task_.Stopped() && !nc->HasFailed()) {
        return Failure("it was changed while it was read");
      }
    }
    return {};
  }

  std::string Note() const {
    std::string note = in_.note;
    AddNote(LeaveOutNote(in_.leave_out, left_out_), &note);
    if (empty_ > 0) {
      AddNote(FormatInt(empty_) + (empty_ == 1 ? " record has" : " records have") + " no samples",
              &note);
    }
    if (cut_ > 0) {
      AddNote("the file ends within record " + FormatInt(cut_) + ", whose missing scans are filled",
              &note);
    }
    if (parts_.size() > 1) {
      AddNote("records of other rates, scans or channels are in groups part2 to part" +
                  FormatInt(parts_.size()),
              &note);
    }
    return note;
  }

  BatchTask& task_;
  const NetcdfOptions& options_;
  const Meanings& meanings_;
  RecordingInput in_;
  std::vector<NetcdfPart> parts_;
  std::array<std::vector<std::string>, 3> table_;  // keys, values, meanings
  std::array<int, 3> table_vars_ = {-1, -1, -1};
  int box_ = 0;  // of the first record
  std::uint64_t left_out_ = 0;
  std::uint64_t empty_ = 0;
  std::uint64_t cut_ = 0;
};

}  // namespace

std::string_view WhyNoNetcdf() { return {}; }

Result<> CanWriteNetcdf() {
  const auto library = LoadNetcdf();
  return library ? Result<>() : Failure(library.Message());
}

Conversion WaveformNetcdf(NetcdfOptions options) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& path) {
    return std::vector<std::string>{TsResultName(path, ".nc")};
  };
  conversion.job = [options = std::move(options),
                    meanings = std::make_shared<Meanings>()](BatchTask& task) {
    return NetcdfJob(&task, &options, meanings.get()).Run();
  };
  return conversion;
}

}  // namespace orvane
