// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stats_listing.h"

#include "base/number_text.h"
#include "table/param_time.h"
#include "timeseries/record_list.h"
#include "timeseries/record_stats.h"
#include "timeseries/waveform_channels.h"

namespace orvane {
namespace {

constexpr const char* kTitles =
    "record\ttime\tfrequency (Hz)\tstatus\tchannel\tname\tminimum\tmaximum\tpeak to peak\tmean\t"
    "RMS\tsaturated\n";

// Of the record, as far as the columns of its channels.
std::string RecordPart(const TsPlace& place, TsHeaderSize header_size) {
  const auto frequency = RecordFrequency(place.header, header_size);
  return FormatInt(place.number) + "\t" + FormatParamTime(place.header.time) + "\t" +
         (frequency ? FormatReal(*frequency) : "") + "\t" +
         RecordStatusText(RecordStatus(place.header, header_size)) + "\t";
}

std::string ChannelPart(const ChannelStats& stats) {
  std::string part;
  for (const std::string& value :
       {FormatInt(stats.Min()), FormatInt(stats.Max()), FormatInt(stats.PeakToPeak()),
        FormatReal(stats.Mean()), FormatReal(stats.Rms()), FormatInt(stats.saturated)}) {
    part.append("\t").append(value);
  }
  return part + "\n";
}

std::string Lines(const RecordStats& record, const TsFile& file) {
  const std::string part = RecordPart(record.place, file.HeaderSize());
  if (record.channels.empty()) {
    return part + "\t\t\t\t\t\t\t\n";  // without a scan
  }
  const auto names = WaveformChannels(record.place.header, &file.Companion());
  std::string lines;
  for (std::size_t c = 0; c < record.channels.size(); ++c) {
    lines += part + FormatInt(c + 1) + "\t" + names[c].name + ChannelPart(record.channels[c]);
  }
  return lines;
}

Result<std::string> ListStats(const std::filesystem::path& path, const TsFile::Options& options,
                              const LeaveOutChoice& choice, const ListingWork& work) {
  TsFile file;
  std::string note;
  const Result<> opened = OpenForListing(path, options, &file, &note);
  const auto leave_out = opened ? LeaveOutOf(choice, path, file.Bytes(), file.HeaderSize())
                                : Failure(opened.Message());
  if (!leave_out) {
    return Failure(leave_out.Message());
  }
  std::uint64_t left_out = 0;
  std::uint64_t cut = 0;
  work.put(kTitles);
  const Result<> done =
      StatsOfRecords(file.Bytes(), file.Walk(), work.pass, [&](const RecordStats& record) {
        if (leave_out->Has(record.place)) {
          ++left_out;
        } else {
          work.put(Lines(record, file));
        }
        cut = record.place.is_cut ? record.place.number : 0;
        if (work.advance) {
          work.advance(record.place.next - record.place.offset);
        }
      });
  AddNote(LeaveOutNote(*leave_out, left_out), &note);
  if (cut > 0) {
    AddNote("the file ends within record " + FormatInt(cut) + ", whose whole scans count", &note);
  }
  return done ? Result<std::string>(note) : Failure(done.Message());
}

}  // namespace

TsListing StatsListing(TsFile::Options options, LeaveOutChoice leave_out) {
  return [options, choice = std::move(leave_out)](const std::filesystem::path& path,
                                                  const ListingWork& work) {
    return ListStats(path, options, choice, work);
  };
}

}  // namespace orvane
