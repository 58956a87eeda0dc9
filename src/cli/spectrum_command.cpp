// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "spectra/spectrum_text.h"

namespace orvane {
namespace {

struct SpectrumArguments {
  bool is_amplitude = false;
  bool is_density = false;  // as without either
  std::uint64_t record = 0;
  std::size_t segment = 0;
  std::filesystem::path calibrations;
  std::string leave_out;
  int header = 0;

  SpectrumOptions Options() const {
    SpectrumOptions options;
    options.is_density = !is_amplitude;
    options.record = record;
    options.segment = segment;
    options.calibration_folder = calibrations;
    options.leave_out = LeaveOutArgument(leave_out);
    if (header != 0) {
      options.headers.header_size = header == 196 ? TsHeaderSize::kOld : TsHeaderSize::kFull;
    }
    return options;
  }
};

}  // namespace

void AddSpectrumCommand(CLI::App* waveform, ExitCode* exit_code) {
  const auto arguments = std::make_shared<SpectrumArguments>();
  CLI::App* verb = AddListingVerb(
      waveform, "spectrum", "List the spectrum of each channel (or into NAME_spectrum.tsv)",
      kSpectrumSuffix, [=] { return SpectrumListing(arguments->Options()); }, exit_code);
  CLI::Option* amplitude =
      verb->add_flag("--amplitude", arguments->is_amplitude, "amplitudes of sines");
  verb->add_flag("--density", arguments->is_density,
                 "root of the power density, per root Hz (default)")
      ->excludes(amplitude);
  verb->add_option("--record", arguments->record,
                   "number of the record (default: averaged over all records)")
      ->check(CLI::PositiveNumber);
  verb->add_option("--segment", arguments->segment,
                   "scans of the segments that are averaged, at most (default: a record)")
      ->check(CLI::Range(4, 65535));
  AddPath(verb, "--calibrations", &arguments->calibrations,
          "folder of the *.CLB and *.CLC to correct by (default: no correction)")
      ->check(NotEmpty());
  verb->add_option("--header", arguments->header,
                   "bytes of a record's header, whatever the companion table says")
      ->check(CLI::IsMember({196, 252}));
  AddLeaveOut(verb, &arguments->leave_out);
}

}  // namespace orvane
