// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "timeseries/stack_csv.h"
#include "timeseries/stack_stats.h"

namespace orvane {
namespace {

struct StatsArguments {
  bool is_time = false;
  bool is_frequency = false;
  bool is_second = false;

  StackStatsOptions Options() const {
    StackStatsOptions options;
    if (is_time || is_frequency) {
      options.domain = is_time ? StackDomain::kTime : StackDomain::kFrequency;
    }
    options.is_second = is_second;
    return options;
  }
};

void AddStatsCommand(CLI::App* stack, ExitCode* exit_code) {
  const auto arguments = std::make_shared<StatsArguments>();
  CLI::App* verb = AddListingVerb(
      stack, "stats",
      "List median and spread of each item over the records of a label (or into "
      "NAME_stack_stats.tsv)",
      kStackStatsSuffix, [=] { return StackStatsListing(arguments->Options()); }, exit_code);
  CLI::Option* time = verb->add_flag("--time-domain", arguments->is_time,
                                     "TDIP or TDEM results (default: by the items' size)");
  CLI::Option* frequency =
      verb->add_flag("--frequency-domain", arguments->is_frequency, "CSAMT, SIP or FDEM results");
  verb->add_flag("--second", arguments->is_second,
                 "the second float of time-domain items in place of the first")
      ->excludes(frequency);
  time->excludes(frequency);
}

}  // namespace

void AddStackCommands(CLI::App* app, ExitCode* exit_code) {
  CLI::App* stack = app->add_subcommand("stack", "Stack results (*.trs)");
  stack->require_subcommand(1);
  const auto time_domain = std::make_shared<bool>(false);
  CLI::App* csv = AddBatchVerb(
      stack, "csv", "Write stack results as comma-separated text (NAME.csv)",
      [=] { return StackCsv(*time_domain ? StackDomain::kTime : StackDomain::kFrequency); },
      exit_code);
  CLI::Option_group* domain = csv->add_option_group("domain", "what the files hold");
  domain->require_option(1);
  domain->add_flag("--time-domain", *time_domain, "TDIP or TDEM results");
  domain->add_flag("--frequency-domain")->description("CSAMT, SIP or FDEM results");
  AddStatsCommand(stack, exit_code);
}

}  // namespace orvane
