// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "base/number_text.h"
#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "export/waveform_mseed.h"
#include "export/waveform_netcdf.h"
#include "spectra/calibrated_spectra.h"
#include "table/param_time.h"
#include "timeseries/restack.h"
#include "timeseries/stats_listing.h"
#include "timeseries/time_series_text.h"
#include "timeseries/ts_file.h"
#include "timeseries/waveform_channels.h"

namespace orvane {
namespace {

constexpr std::size_t kMuchText = std::size_t{64} * 1024;

struct WaveformArguments {
  std::filesystem::path file;
  int header = 0;  // 0: from the file's name and its companion table

  TsFile::Options Options() const {
    return {header == 0 ? std::nullopt : std::optional(HeaderSize())};
  }
  TsHeaderSize HeaderSize() const {
    return header == 196 ? TsHeaderSize::kOld : TsHeaderSize::kFull;
  }
};

bool OpenOrTell(const WaveformArguments& arguments, TsFile* file) {
  const Result<> opened = file->Open(arguments.file, arguments.Options());
  if (!opened) {
    PrintMessage(
        file->FailureText() + " " + opened.Message() +
        (file->LacksCompanion() ? "; --header 252 or 196 reads the waveform without it" : ""));
  }
  return static_cast<bool>(opened);
}

// Prints a line for each record, as they come: a file may have very many.
template <typename LineOf>
ExitCode PrintRecords(const TsFile& file, std::string text, LineOf line_of) {
  TsWalker walker = file.Walk();
  TsPlace place;
  while (walker.Next(&place)) {
    text.append(line_of(place)).append("\n");
    if (text.size() >= kMuchText) {
      if (!PrintResult(text)) {
        return kSomeFailed;
      }
      text.clear();
    }
  }
  // What failed when the records were counted may be read now; then the counts are wrong.
  const std::string error =
      walker.Outcome() ? file.ReadError() : FileMessage(file.Path(), walker.Outcome().Message());
  if (!error.empty()) {
    PrintMessage(error);
  }
  return PrintResult(text) && error.empty() ? kAllDone : kSomeFailed;
}

std::string InfoLine(const TsPlace& place) {
  const TsHeader& header = place.header;
  std::string line = FormatInt(place.number);
  for (const std::string& value :
       {FormatInt(place.offset), FormatParamTime(header.time), FormatInt(header.box),
        FormatInt(header.channels), FormatInt(header.scans), FormatInt(place.scans_held),
        FormatInt(header.sample_width), FormatReal(SampleRate(header)), FormatInt(header.status),
        FormatInt(header.trailing_scans), FormatReal(header.frequency)}) {
    line.append("\t").append(value);
  }
  return line;
}

ExitCode RunInfo(const WaveformArguments& arguments) {
  TsFile file;
  if (!OpenOrTell(arguments, &file)) {
    return kSomeFailed;
  }
  std::string text = "header\t" + FormatInt(BytesIn(file.HeaderSize())) + "\nrecords\t" +
                     FormatInt(file.Count()) + "\nbad records\t" + FormatInt(file.BadCount()) +
                     "\nbad at";
  TsWalker walker = file.Walk();
  for (TsPlace place; file.BadCount() > 0 && walker.Next(&place);) {
    if (!file.IsBandFile() && place.header.IsBad()) {
      text.append("\t").append(FormatInt(place.number));
    }
  }
  text +=
      "\nrecord\toffset\ttime\tbox\tchannels\tscans\tscans in file\tbytes per sample\trate (Hz)\t"
      "status\ttrailing scans\tfrequency (Hz)\n";
  return PrintRecords(file, std::move(text), InfoLine);
}

ExitCode RunTitles(const WaveformArguments& arguments) {
  TsFile file;
  if (!OpenOrTell(arguments, &file)) {
    return kSomeFailed;
  }
  if (file.BadCount() > 0) {
    PrintMessage(file.BadRecordText());
  }
  return PrintRecords(file, {}, [&file](const TsPlace& place) {
    return WaveformTitle(place.header, place.number, file.Count());
  });
}

void AddHeaderOption(CLI::App* verb, WaveformArguments* arguments) {
  verb->add_option("--header", arguments->header,
                   "bytes of a record's header, whatever the companion table says")
      ->check(CLI::IsMember({196, 252}));
}

void AddRestackCommand(CLI::App* waveform, ExitCode* exit_code) {
  const auto leave_out = std::make_shared<std::string>();
  CLI::App* restack = AddBatchVerb(
      waveform, "restack", "Average the records of each frequency (NAME.TSK)",
      [=] { return Restack({.leave_out = LeaveOutArgument(*leave_out)}); }, exit_code);
  AddLeaveOut(restack, leave_out.get());
}

struct NetcdfArguments {
  std::string leave_out;
  int deflate = 0;
  bool with_secrets = false;
};

void AddNetcdfCommand(CLI::App* waveform, const std::shared_ptr<WaveformArguments>& reading,
                      ExitCode* exit_code) {
  const auto arguments = std::make_shared<NetcdfArguments>();
  CLI::App* verb = AddBatchVerb(
      waveform, "netcdf", "Write recordings as NetCDF-4 for other programs (NAME.nc)",
      [=] {
        return WaveformNetcdf({reading->Options(), LeaveOutArgument(arguments->leave_out),
                               arguments->deflate, arguments->with_secrets});
      },
      exit_code);
  verb->add_option("--deflate", arguments->deflate,
                   "compress: 1 the fastest to 9 the smallest (default: 0, not compressed)")
      ->check(CLI::Range(0, 9));
  verb->add_flag("--with-secrets", arguments->with_secrets,
                 "of the table also passwords, encryption keys, user names and phone numbers");
  AddHeaderOption(verb, reading.get());
  AddLeaveOut(verb, &arguments->leave_out);
}

struct MseedArguments {
  std::string leave_out;
  std::filesystem::path calibrations;
  MseedOptions options;
};

void AddMseedCommand(CLI::App* waveform, const std::shared_ptr<WaveformArguments>& reading,
                     ExitCode* exit_code) {
  const auto arguments = std::make_shared<MseedArguments>();
  MseedOptions& options = arguments->options;
  CLI::App* verb = AddBatchVerb(
      waveform, "mseed", "Write recordings as MiniSEED for archives (NAME.mseed)",
      [=] {
        MseedOptions chosen = arguments->options;
        chosen.reading = reading->Options();
        chosen.leave_out = LeaveOutArgument(arguments->leave_out);
        chosen.calibrations =
            arguments->calibrations.empty() ? UsualCalFolder() : arguments->calibrations;
        return WaveformMseed(std::move(chosen));
      },
      exit_code);
  verb->add_option("--network", options.network, "code of the network, one or two characters")
      ->capture_default_str();
  verb->add_option("--record-length", options.record_length, "bytes of a MiniSEED record")
      ->check(CLI::IsMember({256, 512, 1024, 2048, 4096, 8192, 16384, 32768, 65536}))
      ->capture_default_str();
  verb->add_flag("--keep-bad", options.keeps_bad,
                 "keep records that their box marked bad; else they are gaps");
  CLI::Option* station = verb->add_flag("--stationxml", options.has_station,
                                        "also describe the station and its responses (NAME.xml)");
  AddPath(verb, "--calibrations", &arguments->calibrations,
          "folder of the calibrations that StationXML needs")
      ->needs(station);
  const auto add_place = [&](const char* name, std::optional<double>* value, const char* what,
                             double most) {
    verb->add_option(name, *value, what)->needs(station)->check(CLI::Range(-most, most));
  };
  add_place("--latitude", &options.place.latitude, "degrees north, in place of the table's", 90);
  add_place("--longitude", &options.place.longitude, "degrees east, in place of the table's", 180);
  add_place("--elevation", &options.place.elevation, "metres, in place of the table's", 12000);
  AddHeaderOption(verb, reading.get());
  AddLeaveOut(verb, &arguments->leave_out);
}

// Says in the help what this build lacks.
void AddExports(CLI::App* waveform, const std::shared_ptr<WaveformArguments>& reading,
                ExitCode* exit_code) {
  std::string lacks;
  if (WhyNoNetcdf().empty()) {
    AddNetcdfCommand(waveform, reading, exit_code);
  } else {
    lacks.append("There is no verb netcdf: ").append(WhyNoNetcdf()).append("\n");
  }
  if (WhyNoMseed().empty()) {
    AddMseedCommand(waveform, reading, exit_code);
  } else {
    lacks.append("There is no verb mseed: ").append(WhyNoMseed()).append("\n");
  }
  waveform->footer(lacks);
}

}  // namespace

void AddWaveformCommands(CLI::App* app, ExitCode* exit_code) {
  CLI::App* waveform = app->add_subcommand("waveform", "Waveforms (*.tss) and bands (*.ts1 ...)");
  waveform->require_subcommand(1);
  const auto arguments = std::make_shared<WaveformArguments>();
  const auto add_reading = [=](const char* name, const char* what,
                               ExitCode (*run)(const WaveformArguments&)) {
    CLI::App* verb = waveform->add_subcommand(name, what);
    AddPath(verb, "FILE", &arguments->file, "the file to read")->required()->check(NotEmpty());
    AddHeaderOption(verb, arguments.get());
    verb->callback([=] { *exit_code = run(*arguments); });
  };
  add_reading("info", "Print the records: places, headers, which are bad", RunInfo);
  add_reading("titles", "Print the display's title line of each record", RunTitles);
  const auto leave_out = std::make_shared<std::string>();
  CLI::App* text = AddBatchVerb(
      waveform, "text", "Write time series as text (NAME.txt, NAME_TS3.txt)",
      [=] { return TimeSeriesText(arguments->HeaderSize(), LeaveOutArgument(*leave_out)); },
      exit_code);
  AddLeaveOut(text, leave_out.get());
  AddHeaderOption(text, arguments.get());
  AddRestackCommand(waveform, exit_code);
  CLI::App* stats = AddListingVerb(
      waveform, "stats", "List statistics of each record and channel (or into NAME_stats.tsv)",
      kStatsSuffix,
      [=] { return StatsListing(arguments->Options(), LeaveOutArgument(*leave_out)); }, exit_code);
  AddHeaderOption(stats, arguments.get());
  AddLeaveOut(stats, leave_out.get());
  AddSpectrumCommand(waveform, exit_code);
  AddDecayCommand(waveform, exit_code);
  AddHarmonicsCommand(waveform, exit_code);
  AddExports(waveform, arguments, exit_code);
}

}  // namespace orvane
