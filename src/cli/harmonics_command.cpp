// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>

#include "base/number_text.h"
#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "export/harmonics_netcdf.h"
#include "export/waveform_netcdf.h"
#include "files/path_text.h"
#include "spectra/calibrated_spectra.h"

namespace orvane {
namespace {

// A finite decimal number above 0, whatever the locale.
CLI::Validator Frequency() {
  return {[](const std::string& text) {
            return ParseReal(text).value_or(0) > 0 ? std::string()
                                                   : "\"" + text + "\" is not a frequency";
          },
          "", "frequency"};
}

CLI::Validator Channels() {
  return {[](const std::string& text) {
            return ChannelsIn(text) ? std::string()
                                    : "\"" + text + "\" is not a list of channels from 1 to 12";
          },
          "", "channels"};
}

struct HarmonicsArguments {
  std::string calibration_folder;
  std::string base_frequency;
  int harmonics = 64;
  std::string reversed;
  std::string leave_out;
  std::string format = "text";
  bool says_yes = false;
  bool says_no = false;

  SpectraOptions Options() const {
    SpectraOptions options;
    options.calibration_folder =
        calibration_folder.empty() ? UsualCalFolder() : PathOf(calibration_folder);
    options.base_frequency = ParseReal(base_frequency).value_or(0);
    options.most_harmonics = harmonics;
    options.leave_out = LeaveOutArgument(leave_out);
    if (format == "netcdf") {
      options.writer = HarmonicsNetcdf;
      options.suffix = "_cal.nc";
    }
    options.reversed = ChannelsIn(reversed).value_or(std::set<int>());
    if (says_yes) {
      options.ask = [](const std::string&, const BatchTask&) { return Answer::kYes; };
    } else if (!says_no) {
      options.ask = [](const std::string& question, const BatchTask& task) {
        return AskOnTerminal(question, task) ? Answer::kYes : Answer::kNo;
      };
    }
    return options;
  }
};

}  // namespace

void AddHarmonicsCommand(CLI::App* waveform, ExitCode* exit_code) {
  const auto arguments = std::make_shared<HarmonicsArguments>();
  CLI::App* verb = AddBatchVerb(
      waveform, "harmonics", "Write calibrated spectra of the odd harmonics (NAME_cal.txt or .nc)",
      [=] { return CalibratedSpectra(arguments->Options()); }, exit_code);
  verb->add_option("--calibration-folder", arguments->calibration_folder,
                   "where the *.CLB and *.CLC are (default: C:\\K3\\CAL where that exists, else "
                   "beside each file)")
      ->check(NotEmpty());
  verb->add_option("--base-frequency", arguments->base_frequency,
                   "Hz, for records without a frequency (default: the table's FREQ)")
      ->check(Frequency());
  verb->add_option("--harmonics", arguments->harmonics,
                   "odd harmonics of each record, at most (default: 64)")
      ->check(CLI::Range(1, 65535));
  verb->add_option("--reverse", arguments->reversed, "channels wired the other way, such as 3,5")
      ->check(Channels());
  std::vector<std::string> formats = {"text"};
  std::string what = "what is written: text (NAME_cal.txt)";
  if (WhyNoNetcdf().empty()) {
    formats.emplace_back("netcdf");
    what += " or netcdf (NAME_cal.nc)";
  } else {
    what.append("; no netcdf: ").append(WhyNoNetcdf());
  }
  verb->add_option("--format", arguments->format, what)
      ->check(CLI::IsMember(formats))
      ->capture_default_str();
  AddLeaveOut(verb, &arguments->leave_out);
  CLI::Option* yes = verb->add_flag("--yes", arguments->says_yes,
                                    "convert channels without their sensor's calibration as 0");
  verb->add_flag("--no", arguments->says_no, "leave such files alone (default without a terminal)")
      ->excludes(yes);
}

}  // namespace orvane
