// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/decay_file.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/number_text.h"
#include "timeseries/restack_plan.h"
#include "timeseries/ts_listing.h"
#include "timeseries/ts_rec.h"

namespace orvane {
namespace {

constexpr const char* kShorter = "the file became shorter while it was read";

bool IsAlike(const TsHeader& a, const TsHeader& b) {
  return a.scans == b.scans && a.channels == b.channels && SampleRate(a) == SampleRate(b) &&
         a.frequency == b.frequency;
}

bool IsElectric(const WaveformChannel& channel) {
  return !channel.name.empty() && UpperCased(channel.name.front()) == 'E';
}

// Reads records and takes their channels apart.
class Traces {
 public:
  Traces(const RandomFile* file, const std::vector<WaveformChannel>* channels)
      : file_(file), channels_(channels) {}

  Result<> Read(const TsPlace& place) {
    const Result<> read = record_.Read(*file_, place);
    return read && record_.Scans() < place.header.scans ? Failure(kShorter) : read;
  }

  const std::vector<double>& Of(std::size_t channel) {
    values_.resize(record_.Scans());
    for (std::size_t i = 0; i < values_.size(); ++i) {
      values_[i] = record_.Held()[i * record_.Channels() + channel] * (*channels_)[channel].scale;
    }
    return values_;
  }

 private:
  const RandomFile* file_;
  const std::vector<WaveformChannel>* channels_;
  CTsRec record_;
  std::vector<double> values_;
};

class DecayRun {
  // Before those that call it, because its type is what it returns.
  auto Worker() const {
    return [this, traces = Traces(&file_.Bytes(), &result_.channels)](const TsPlace& place,
                                                                      RecordDecay* decay) mutable {
      *decay = {place.number, place.header.time, {}, {}};
      return Takes(place) ? DecayOfRecord(place, &traces, decay) : Result<>();
    };
  }

 public:
  DecayRun(const TsFile* file, const DecayFileOptions* options)
      : file_(*file), options_(*options) {}

  Result<FileDecay> Run() {
    Result<> prepared = Prepare();
    prepared = prepared ? ChooseEdgeChannel() : prepared;
    if (!prepared) {
      return Failure(prepared.Message());
    }
    const Result<> passed = PassRecords<RecordDecay>(
        Walk(), options_.pass, [this] { return Worker(); },
        [this](const TsPlace& place, const RecordDecay& decay) { Take(place, decay); });
    if (!passed) {
      return Failure(passed.Message());
    }
    const bool was_stopped = options_.pass.stopped && options_.pass.stopped();
    if (result_.records.size() == failed_ && !was_stopped) {
      return Failure(result_.records.empty() ? "no record for a decay"
                                             : result_.records.front().reason);
    }
    if (is_full_) {
      return Failure("more than " + FormatInt(kMostDecayValues) + " values: choose a record");
    }
    Stack();
    Note();
    return std::move(result_);
  }

 private:
  Result<> Prepare() {
    const auto first = FirstWithUnits(file_, options_.leave_out, options_.record, options_.units,
                                      &result_.channels);
    if (!first) {
      return Failure(first.Message());
    }
    first_ = *first;
    result_.header = first->header;
    result_.plan = options_.plan;
    timing_ = {SampleRate(first->header), first->header.frequency, options_.plan.off_share};
    const auto places = PhasePlaces::Of(first->header.scans, timing_.rate, timing_.frequency, true);
    return places ? Result<>() : Failure(places.Message());
  }

  // Where edges are clearest, in the first record where they are clear in any channel.
  Result<> ChooseEdgeChannel() {
    if (options_.edge_channel > 0) {
      result_.edge_channel = options_.edge_channel - 1;
      const bool has_unit = options_.edge_channel <= result_.channels.size() &&
                            !result_.channels[result_.edge_channel].unit.empty();
      return has_unit ? Result<>()
                      : Failure("channel " + FormatInt(options_.edge_channel) +
                                " has no unit, or is not there");
    }
    constexpr int kMostLooks = 20;
    Traces traces(&file_.Bytes(), &result_.channels);
    TsWalker walker = Walk();
    TsPlace place;
    double clearest = 0;
    for (int looks = 0; looks < kMostLooks && clearest == 0 && walker.Next(&place);) {
      if (!Takes(place)) {
        continue;
      }
      ++looks;
      if (const Result<> read = traces.Read(place); !read) {
        return read;
      }
      for (std::size_t c = 0; c < result_.channels.size(); ++c) {
        const auto edges = result_.channels[c].unit.empty() ? Failure("no unit")
                                                            : FindEdgesIn(traces.Of(c), timing_);
        if (edges && edges->AreClear() && edges->clearness > clearest) {
          clearest = edges->clearness;
          result_.edge_channel = c;
        } else if (!edges && !result_.channels[c].unit.empty()) {
          return Failure(edges.Message());
        }
      }
    }
    return clearest > 0 || !walker.Outcome()
               ? walker.Outcome()
               : Failure("no channel has clear edges where the current is switched");
  }

  TsWalker Walk() const {
    return options_.record > 0 ? TsWalker(&file_.Bytes(), file_.HeaderSize(), first_.next,
                                          {first_.offset, first_.number})
                               : file_.Walk();
  }

  bool Takes(const TsPlace& place) const {
    return !place.is_cut && !options_.leave_out.Has(place) && IsAlike(place.header, result_.header);
  }

  Result<> DecayOfRecord(const TsPlace& place, Traces* traces, RecordDecay* decay) const {
    if (const Result<> read = traces->Read(place); !read) {
      return read;
    }
    const auto edges = FindEdgesIn(traces->Of(result_.edge_channel), timing_);
    if (!edges || !edges->AreClear()) {
      decay->reason =
          edges ? "no clear edges of the current in channel " + FormatInt(result_.edge_channel + 1)
                : edges.Message();
      return {};
    }
    decay->channels.resize(result_.channels.size());
    for (std::size_t c = 0; c < decay->channels.size(); ++c) {
      if (result_.channels[c].unit.empty()) {
        continue;
      }
      auto of_channel = DecayOf(traces->Of(c), timing_, *edges, result_.plan.windows);
      if (!of_channel) {
        return Failure(of_channel.Message());
      }
      if (!result_.plan.has_chargeability || !IsElectric(result_.channels[c])) {
        of_channel->chargeability.reset();
      }
      decay->channels[c] = std::move(*of_channel);
    }
    return {};
  }

  void Take(const TsPlace& place, const RecordDecay& decay) {
    if (Takes(place)) {
      values_ += decay.channels.size() * result_.Rows() + 1;
      is_full_ = values_ > kMostDecayValues;
      if (!is_full_) {
        result_.records.push_back(decay);
        failed_ += decay.reason.empty() ? 0 : 1;
      }
      if (place.header.IsBad() && decay.reason.empty()) {
        bad_.Add(FormatInt(place.number));
      }
    } else if (place.is_cut) {
      others_.Add(FormatInt(place.number) + " (cut)");
    } else if (options_.leave_out.Has(place)) {
      ++left_out_;
    } else {
      others_.Add(FormatInt(place.number));
    }
    if (options_.advance) {
      options_.advance(place.next - place.offset);
    }
  }

  void Stack() {
    for (std::size_t c = 0; c < result_.channels.size(); ++c) {
      std::vector<RobustStats> rows;
      for (std::size_t row = 0; row < result_.Rows(); ++row) {
        std::vector<double> values;
        for (const RecordDecay& record : result_.records) {
          if (const auto value = result_.Value(record, c, row)) {
            values.push_back(value->value);
          }
        }
        rows.push_back(RobustStatsOf(std::move(values)));
      }
      result_.stacked.push_back(std::move(rows));
    }
  }

  void Note() {
    std::string note = LeaveOutNote(options_.leave_out, left_out_);
    NamedFew without_unit;
    for (std::size_t c = 0; c < result_.channels.size(); ++c) {
      if (result_.channels[c].unit.empty()) {
        without_unit.Add(FormatInt(c + 1));
      }
    }
    NamedFew without_edges;
    for (const RecordDecay& record : result_.records) {
      if (!record.reason.empty()) {
        without_edges.Add(FormatInt(record.number));
      }
    }
    const auto add = [&note](const char* what, const NamedFew& few) {
      if (few.Count() > 0) {
        AddNote(what + few.Text(), &note);
      }
    };
    add("no decay of channels without a unit: ", without_unit);
    add("marked bad and used: record ", bad_);
    add("left out, not like the first record: record ", others_);
    add("no clear edges of the current: record ", without_edges);
    result_.note = std::move(note);
  }

  const TsFile& file_;
  const DecayFileOptions& options_;
  TsPlace first_;
  DecayTiming timing_;
  FileDecay result_;
  std::size_t values_ = 0;
  std::size_t failed_ = 0;
  bool is_full_ = false;
  std::uint64_t left_out_ = 0;
  NamedFew bad_;
  NamedFew others_;
};

}  // namespace

std::optional<DecayValue> FileDecay::Value(const RecordDecay& record, std::size_t channel,
                                           std::size_t row) const {
  if (channel >= record.channels.size() || !record.channels[channel]) {
    return std::nullopt;
  }
  const Decay& decay = *record.channels[channel];
  if (row == 0) {
    return decay.on;
  }
  return row <= decay.windows.size() ? std::optional(decay.windows[row - 1]) : decay.chargeability;
}

bool FileDecay::IsOutlier(const RecordDecay& record, std::size_t channel, std::size_t row) const {
  const auto value = Value(record, channel, row);
  return value && stacked[channel][row].IsOutlier(value->value);
}

Result<TsPlace> FirstForDecay(const TsFile& file, const LeaveOut& leave_out, std::uint64_t record) {
  if (file.IsBandFile()) {
    return Failure("the headers of a band file have no frequency");
  }
  if (record > 0) {
    const auto place = file.Find(record);
    if (!place || place->is_cut || leave_out.Has(*place)) {
      return Failure("record " + FormatInt(record) + ": " +
                     (!place          ? place.Message()
                      : place->is_cut ? "it is cut"
                                      : "it is left out"));
    }
    return *place;
  }
  TsWalker walker = file.Walk();
  for (TsPlace place; walker.Next(&place);) {
    if (!place.is_cut && !leave_out.Has(place)) {
      return place;
    }
  }
  return Failure(walker.Outcome() ? "no record for a decay" : walker.Outcome().Message());
}

Result<TsPlace> FirstWithUnits(const TsFile& file, const LeaveOut& leave_out, std::uint64_t record,
                               const WaveformUnits& units, std::vector<WaveformChannel>* channels) {
  auto first = FirstForDecay(file, leave_out, record);
  if (!first) {
    return first;
  }
  if (!file.Companion().IsLoaded()) {
    return Failure("without the table of the recording no gains are known");
  }
  *channels = WaveformChannels(first->header, &file.Companion(), units);
  const bool has_unit = std::any_of(channels->begin(), channels->end(),
                                    [](const WaveformChannel& c) { return !c.unit.empty(); });
  return has_unit ? first
         : channels->empty()
             ? Failure("the record has no channels")
             : Failure("the unit of no channel is known: FSCV, EGNC, HGNC, HNOM, CHDEF1 to CHDEF8");
}

Result<FileDecay> DecayOfFile(const TsFile& file, const DecayFileOptions& options) {
  return DecayRun(&file, &options).Run();
}

}  // namespace orvane
