// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "spectra/decay_listing.h"

namespace orvane {
namespace {

constexpr const char* kRule = "rule";

struct DecayArguments {
  std::string windows = kRule;
  std::uint64_t record = 0;
  std::size_t reference = 0;
  int harmonics = 1;
  std::string leave_out;
  int header = 0;

  DecayListingOptions Options() const {
    DecayListingOptions options;
    if (windows != kRule) {
      options.windows = *DecayWindowsOf(windows);
    }
    options.record = record;
    options.reference = reference;
    options.most_harmonics = harmonics;
    options.leave_out = LeaveOutArgument(leave_out);
    if (header != 0) {
      options.headers.header_size = header == 196 ? TsHeaderSize::kOld : TsHeaderSize::kFull;
    }
    return options;
  }
};

CLI::Validator Windows() {
  return {[](const std::string& text) {
            const auto windows = DecayWindowsOf(text);
            return text == kRule || windows ? std::string() : windows.Message();
          },
          "", "windows"};
}

}  // namespace

void AddDecayCommand(CLI::App* waveform, ExitCode* exit_code) {
  const auto arguments = std::make_shared<DecayArguments>();
  CLI::App* verb = AddListingVerb(
      waveform, "decay",
      "List decays of TDIP and TDEM, amplitudes and phases of SIP, CSAMT and FDEM (or into "
      "NAME_decay.tsv)",
      kDecaySuffix, [=] { return DecayListing(arguments->Options()); }, exit_code);
  verb->add_option("--windows", arguments->windows,
                   "of decays, in ms after the current, such as 40-80,80-160 (default: rule, "
                   "NUMITEM windows as the stepping dialog shows them)")
      ->check(Windows());
  verb->add_option("--record", arguments->record, "number of the record (default: all, stacked)")
      ->check(CLI::PositiveNumber);
  verb->add_option("--reference", arguments->reference,
                   "channel, from 1, that phases refer to, or whose edges are those of the current "
                   "(default: no phases, the clearest edges)")
      ->check(CLI::PositiveNumber);
  verb->add_option("--harmonics", arguments->harmonics,
                   "odd harmonics of each record's frequency, at most (default: 1)")
      ->check(CLI::Range(1, 65535));
  verb->add_option("--header", arguments->header,
                   "bytes of a record's header, whatever the companion table says")
      ->check(CLI::IsMember({196, 252}));
  AddLeaveOut(verb, &arguments->leave_out);
}

}  // namespace orvane
