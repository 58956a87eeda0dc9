// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/decay_listing.h"

#include "base/number_text.h"
#include "spectra/decay_plan.h"
#include "spectra/frequency_points.h"

namespace orvane {
namespace {

constexpr const char* kDecayTitles =
    "record\tchannel\twindow\tstart (ms)\tend (ms)\tvalue\tspread\tmark\n";
constexpr const char* kFrequencyTitles =
    "record\tchannel\tharmonic\tfrequency (Hz)\tamplitude\tphase (degrees)\tamplitude spread\t"
    "phase spread\tmark\n";
constexpr double kMilliseconds = 1000;
constexpr std::size_t kMuch = std::size_t{64} * 1024;

std::string Number(double value) {
  constexpr int kDigits = 7;
  return FormatReal(value, kDigits);
}

// Text in pieces.
class Lines {
 public:
  explicit Lines(const ListingWork* work, const char* titles) : work_(*work), text_(titles) {}
  ~Lines() { work_.put(text_); }
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;

  void Add(const std::string& line) {
    text_.append(line).append("\n");
    if (text_.size() > kMuch) {
      work_.put(text_);
      text_.clear();
    }
  }

 private:
  const ListingWork& work_;
  std::string text_;
};

// Name, start and end of a row of a decay.
std::string RowPart(const FileDecay& decay, std::size_t row) {
  const auto& windows = decay.plan.windows;
  const auto times = [](double start, double end) {
    std::string text(1, '\t');
    text.append(Number(start * kMilliseconds)).append(1, '\t');
    return text.append(Number(end * kMilliseconds));
  };
  if (row == 0) {
    const double on = (1 / decay.header.frequency) * (0.5 - decay.plan.off_share);
    return "on" + times(-on / 2, 0);
  }
  if (row <= windows.size()) {
    return FormatInt(row) + times(windows[row - 1].start, windows[row - 1].end);
  }
  return "chargeability (mV/V)" + times(windows.front().start, windows.back().end);
}

void AddRecord(const FileDecay& decay, const RecordDecay& record,
               const std::vector<std::string>& rows, Lines* lines) {
  for (std::size_t c = 0; c < decay.channels.size(); ++c) {
    for (std::size_t row = 0; row < decay.Rows(); ++row) {
      if (const auto value = decay.Value(record, c, row)) {
        lines->Add(FormatInt(record.number) + "\t" + decay.channels[c].Label() + "\t" + rows[row] +
                   "\t" + Number(value->value) + "\t" + Number(value->spread) + "\t" +
                   (decay.IsOutlier(record, c, row) ? "outlier" : ""));
      }
    }
  }
}

void AddStacked(const FileDecay& decay, const std::vector<std::string>& rows, Lines* lines) {
  for (std::size_t c = 0; c < decay.channels.size(); ++c) {
    for (std::size_t row = 0; row < decay.Rows(); ++row) {
      if (const RobustStats& stats = decay.stacked[c][row]; stats.count > 0) {
        lines->Add("all\t" + decay.channels[c].Label() + "\t" + rows[row] + "\t" +
                   Number(stats.median) + "\t" + Number(stats.spread) + "\t");
      }
    }
  }
}

void PutDecay(const FileDecay& decay, bool is_stacked, const ListingWork& work) {
  Lines lines(&work, kDecayTitles);
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < decay.Rows(); ++row) {
    rows.push_back(RowPart(decay, row));
  }
  for (const RecordDecay& record : decay.records) {
    AddRecord(decay, record, rows, &lines);
  }
  if (is_stacked) {
    AddStacked(decay, rows, &lines);
  }
}

std::string FrequencyPart(const WaveformChannel& channel, int number, double frequency) {
  std::string text(1, '\t');
  text.append(channel.Label()).append(1, '\t').append(FormatInt(number)).append(1, '\t');
  return text.append(FormatReal(frequency)).append(1, '\t');
}

void PutPoints(const FrequencyPoints& points, bool is_stacked, const ListingWork& work) {
  Lines lines(&work, kFrequencyTitles);
  for (const FrequencyLine& line : points.lines) {
    const FrequencyStack* stack = points.StackOf(line);
    for (std::size_t c = 0; c < points.channels.size(); ++c) {
      if (const auto& point = line.channels[c]) {
        lines.Add(FormatInt(line.record) +
                  FrequencyPart(points.channels[c], line.number, line.Frequency()) +
                  Number(point->amplitude) + "\t" + (point->phase ? Number(*point->phase) : "") +
                  "\t\t\t" + (stack->IsOutlier(c, *point) ? "outlier" : ""));
      }
    }
  }
  for (const FrequencyStack& stack : points.stacks) {
    for (std::size_t c = 0; is_stacked && c < points.channels.size(); ++c) {
      const auto& [amplitude, phase] = stack.channels[c];
      if (amplitude.count > 0) {
        lines.Add("all" + FrequencyPart(points.channels[c], stack.number, stack.Frequency()) +
                  Number(amplitude.median) + "\t" + (phase.count > 0 ? Number(phase.median) : "") +
                  "\t" + Number(amplitude.spread) + "\t" +
                  (phase.count > 0 ? Number(phase.spread) : "") + "\t");
      }
    }
  }
}

Result<std::string> ListDecay(const TsFile& file, const DecayListingOptions& options,
                              const LeaveOut& leave_out, const ListingWork& work) {
  const auto first = FirstForDecay(file, leave_out, options.record);
  const auto plan = first ? DecayPlanOf(file.Companion(), first->header.frequency, options.windows)
                          : Failure(first.Message());
  if (!plan) {
    return Failure(plan.Message());
  }
  DecayFileOptions of_file{*plan, leave_out, options.record, options.reference,
                           {},    work.pass, work.advance};
  const auto decay = DecayOfFile(file, of_file);
  if (!decay) {
    return Failure(decay.Message());
  }
  PutDecay(*decay, options.record == 0, work);
  return decay->note;
}

Result<std::string> ListPoints(const TsFile& file, const DecayListingOptions& options,
                               const LeaveOut& leave_out, const ListingWork& work) {
  FrequencyPointsOptions of_file{
      leave_out, options.record, options.reference, options.most_harmonics,
      {},        work.pass,      work.advance};
  const auto points = FrequencyPointsOf(file, of_file);
  if (!points) {
    return Failure(points.Message());
  }
  PutPoints(*points, options.record == 0, work);
  return options.reference == 0 ? points->note + " (--reference)" : points->note;
}

Result<std::string> List(const std::filesystem::path& path, const DecayListingOptions& options,
                         const ListingWork& work) {
  TsFile file;
  std::string note;
  const Result<> opened = OpenForListing(path, options.headers, &file, &note);
  const auto leave_out = opened
                             ? LeaveOutOf(options.leave_out, path, file.Bytes(), file.HeaderSize())
                             : Failure(opened.Message());
  if (!leave_out) {
    return Failure(leave_out.Message());
  }
  if (!file.Companion().IsLoaded()) {
    return Failure("without the table of the recording method, waveform and gains are not known");
  }
  const Tech tech = TechOf(file.Companion().Table());
  if (!HasDecay(tech) && !HasFrequencies(tech)) {
    return Failure("the method (TECH) has no transmitter, or is not known");
  }
  auto more = HasDecay(tech) ? ListDecay(file, options, *leave_out, work)
                             : ListPoints(file, options, *leave_out, work);
  if (more) {
    AddNote(*more, &note);
  }
  return more ? Result<std::string>(note) : more;
}

}  // namespace

TsListing DecayListing(DecayListingOptions options) {
  return
      [options = std::move(options)](const std::filesystem::path& path, const ListingWork& work) {
        return List(path, options, work);
      };
}

}  // namespace orvane
