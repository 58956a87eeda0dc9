// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "timeseries/stack_csv.h"

namespace orvane {

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
}

}  // namespace orvane
