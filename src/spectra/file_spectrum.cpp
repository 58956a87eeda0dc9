// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/file_spectrum.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "timeseries/ts_rec.h"

namespace orvane {
namespace {

bool IsAlike(const TsHeader& a, const TsHeader& b) {
  return a.scans == b.scans && a.channels == b.channels && SampleRate(a) == SampleRate(b);
}

// What one record adds.
struct RecordPowers {
  std::vector<double> sums;  // of each bin, channel after channel
  std::uint64_t segments = 0;
};

// What a thread needs to transform records.
class Transforming {
 public:
  Transforming(const RandomFile* file, std::size_t length) : file_(file), segments_(length) {}

  Result<> operator()(const TsPlace& place, RecordPowers* powers) {
    const Result<> read = record_.Read(*file_, place);
    if (!read || record_.Scans() < place.header.scans) {
      return read ? Failure("the file became shorter while it was read") : read;
    }
    const std::size_t bins = segments_.Length() / 2 + 1;
    TakeChannelsApart(record_.Held(), record_.Channels(), &values_);
    powers->sums.assign(bins * record_.Channels(), 0);
    for (std::size_t c = 0; c < record_.Channels(); ++c) {
      powers->segments =
          segments_.Add(std::span(values_).subspan(c * record_.Scans(), record_.Scans()),
                        std::span(powers->sums).subspan(c * bins, bins));
    }
    return {};
  }

 private:
  const RandomFile* file_;
  SegmentPowers segments_;
  CTsRec record_;
  std::vector<double> values_;
};

class Averaging {
  // Before those that call it, because its type is what it returns.
  auto Worker(std::size_t length) const {
    return [this, transforming = Transforming(&file_.Bytes(), length)](
               const TsPlace& place, RecordPowers* powers) mutable {
      powers->segments = 0;
      return Takes(place) ? transforming(place, powers) : Result<>();
    };
  }

 public:
  Averaging(const TsFile* file, const FileSpectrumOptions* options)
      : file_(*file), options_(*options) {}

  Result<FileSpectrum> Run() {
    if (const Result<> found = FindFirst(); !found) {
      return Failure(found.Message());
    }
    const std::size_t scans = result_.header.scans;
    const std::size_t segment = options_.segment == 0 ? scans : options_.segment;
    const std::size_t length =
        options_.record > 0 && options_.segment == 0 ? scans : SegmentLength(scans, segment);
    const double rate = SampleRate(result_.header);
    if (length < kLeastSpectrumScans || !(rate > 0)) {
      return Failure(rate > 0 ? "too few scans for a spectrum" : "the sample rate is not known");
    }
    result_.spectrum = {rate, length, 0, std::vector<SpectrumChannel>(result_.header.channels)};
    for (SpectrumChannel& channel : result_.spectrum.channels) {
      channel.powers.assign(length / 2 + 1, 0);
    }
    const Result<> passed = PassRecords<RecordPowers>(
        Walk(), options_.pass, [&] { return Worker(length); },
        [this](const TsPlace& place, const RecordPowers& powers) { Take(place, powers); });
    const double count = static_cast<double>(result_.spectrum.segments);
    for (SpectrumChannel& channel : result_.spectrum.channels) {
      channel.Scale(count > 0 ? std::sqrt(1 / count) : 0);
    }
    return passed ? Result<FileSpectrum>(std::move(result_)) : Failure(passed.Message());
  }

 private:
  TsWalker Walk() const {
    return options_.record > 0 && first_ ? TsWalker(&file_.Bytes(), file_.HeaderSize(),
                                                    first_->next, {first_->offset, first_->number})
                                         : file_.Walk();
  }

  // The record that decides what all have to be like.
  Result<> FindFirst() {
    if (options_.record > 0) {
      const auto place = file_.Find(options_.record);
      if (!place) {
        return Failure("record " + FormatInt(options_.record) + ": " + place.Message());
      }
      if (options_.leave_out.Has(*place)) {
        return Failure("record " + FormatInt(options_.record) + " is left out");
      }
      first_ = *place;
    }
    TsWalker walker = file_.Walk();
    for (TsPlace place; !first_ && walker.Next(&place);) {
      if (!place.is_cut && !options_.leave_out.Has(place)) {
        first_ = place;
      }
    }
    if (!first_ || first_->is_cut || first_->header.channels == 0) {
      return walker.Outcome() ? Failure("no record to transform") : walker.Outcome();
    }
    result_.header = first_->header;
    return {};
  }

  bool Takes(const TsPlace& place) const {
    return !place.is_cut && !options_.leave_out.Has(place) && IsAlike(place.header, result_.header);
  }

  void Take(const TsPlace& place, const RecordPowers& powers) {
    if (Takes(place)) {
      Add(powers);
      if (place.header.IsBad() && !file_.IsBandFile()) {
        result_.bad.Add(FormatInt(place.number));
      }
    } else if (place.is_cut) {
      result_.cut = place.number;
    } else if (options_.leave_out.Has(place)) {
      ++result_.left_out;
    } else {
      result_.others.Add(FormatInt(place.number));
    }
    if (options_.advance) {
      options_.advance(place.next - place.offset);
    }
  }

  void Add(const RecordPowers& powers) {
    ++result_.records;
    result_.spectrum.segments += powers.segments;
    auto from = powers.sums.begin();
    for (SpectrumChannel& channel : result_.spectrum.channels) {
      for (double& power : channel.powers) {
        power += *from++;
      }
    }
  }

  const TsFile& file_;
  const FileSpectrumOptions& options_;
  std::optional<TsPlace> first_;
  FileSpectrum result_;
};

}  // namespace

std::string FileSpectrum::Note(const LeaveOut& leave_out) const {
  std::string note = LeaveOutNote(leave_out, left_out);
  const auto add = [&note](const std::string& text) {
    note.append(note.empty() ? "" : "; ").append(text);
  };
  if (bad.Count() > 0) {
    add((bad.Count() == 1 ? "marked bad and averaged: record "
                          : "marked bad and averaged: records ") +
        bad.Text());
  }
  if (others.Count() > 0) {
    add("left out, of another length, rate or count of channels than the first: record " +
        others.Text());
  }
  if (cut > 0) {
    add("left out, the file ends within it: record " + FormatInt(cut));
  }
  return note;
}

Result<FileSpectrum> SpectrumOfFile(const TsFile& file, const FileSpectrumOptions& options) {
  return Averaging(&file, &options).Run();
}

}  // namespace orvane
