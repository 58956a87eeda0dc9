// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "cli/batch_verb.h"
#include "cli/commands.h"
#include "cli/schedule_run.h"
#include "cli/validators.h"
#include "stepping/schedule_text.h"
#include "table/tech.h"

namespace orvane {
namespace {

struct Arguments {
  PresetOptions preset;
  std::string method;
  std::filesystem::path file;
  std::filesystem::path to;
  FdemRequest fdem;
  std::string current;
};

void AddPreset(CLI::App* schedule, const std::shared_ptr<Arguments>& arguments,
               ExitCode* exit_code) {
  CLI::App* preset =
      schedule->add_subcommand("preset", "Give a table the starting values of a method's stepping");
  PresetOptions& options = arguments->preset;
  AddPath(preset, "FILE", &options.file, "a parameter table")->required();
  preset->add_option("METHOD", arguments->method, "SIP, CSAMT, FDEM, TDIP or TDEM")
      ->required()
      ->transform(CLI::IsMember({"SIP", "CSAMT", "FDEM", "TDIP", "TDEM"}, CLI::ignore_case)
                      .description(""));
  preset
      ->add_option("--cycle", options.cycle,
                   "seconds of one cycle; 0 (default): what is stored as TTOT")
      ->check(WholeAmount());
  AddPath(preset, "--to", &options.to, "the table to write")->required()->check(NotEmpty());
  preset->callback([=] {
    static const std::map<std::string, Tech> kMethods = {
        {"SIP", kSip}, {"CSAMT", kCsamt}, {"FDEM", kFdem}, {"TDIP", kTdip}, {"TDEM", kTdem}};
    arguments->preset.tech = kMethods.at(arguments->method);
    *exit_code = RunSchedulePreset(arguments->preset);
  });
}

void AddFdem(CLI::App* schedule, const std::shared_ptr<Arguments>& arguments, ExitCode* exit_code) {
  CLI::App* fdem = schedule->add_subcommand("fdem", "Write an FDEM schedule of fixed frequencies");
  FdemRequest& request = arguments->fdem;
  fdem->add_option("--seconds", request.seconds, "each frequency lasts at least so long")
      ->required()
      ->check(WholeAmount());
  fdem->add_option("--cycles", request.cycles, "cycles of each frequency")
      ->required()
      ->check(WholeAmount());
  fdem->add_option("--current", arguments->current, "current in A")->required()->check(Amount());
  fdem->add_flag("--reduced", request.is_reduced, "78 frequencies instead of 143");
  AddPath(fdem, "--to", &arguments->to, "the schedule file to write")
      ->required()
      ->check(NotEmpty());
  fdem->callback([=] {
    arguments->fdem.current = ParseReal(arguments->current).value_or(0);
    *exit_code = RunScheduleFdem(arguments->fdem, arguments->to);
  });
}

}  // namespace

void AddScheduleCommands(CLI::App* app, ExitCode* exit_code) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* schedule = app->add_subcommand("schedule", "Frequency stepping schedules (*.TFS)");
  schedule->require_subcommand(1);
  AddPreset(schedule, arguments, exit_code);

  CLI::App* make =
      schedule->add_subcommand("make", "Calculate the schedule of a table's stepping parameters");
  AddPath(make, "FILE", &arguments->file, "a parameter table")->required();
  AddPath(make, "--to", &arguments->to, "the schedule file to write")
      ->required()
      ->check(NotEmpty());
  make->callback([=] { *exit_code = RunScheduleMake(arguments->file, arguments->to); });

  CLI::App* show = schedule->add_subcommand(
      "show", "Print the rows: end time in s, waveform code, Hz, A, tab-separated");
  AddPath(show, "FILE", &arguments->file, "a schedule file")->required();
  show->callback([=] { *exit_code = RunScheduleShow(arguments->file); });

  AddBatchVerb(schedule, "text", "Write each schedule as a text (NAME.txt)", ScheduleText,
               exit_code);
  AddFdem(schedule, arguments, exit_code);
  AddScheduleJson(schedule, exit_code);
}

}  // namespace orvane
