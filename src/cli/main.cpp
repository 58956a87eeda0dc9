// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "cli/terminal.h"
#include "files/file_io.h"

namespace {

// The arguments, last first, as the parser takes them. It would split a file name such as [a,b]
// into several; the same file's name after "./" stays one.
std::vector<std::string> Arguments(int argc, char** argv) {
  auto arguments = orvane::ProgramArguments(argc, argv);
  for (std::string& argument : arguments) {
    if (argument.starts_with('[') && argument.ends_with(']')) {
      argument.insert(0, "./");
    }
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

int Run(int argc, char** argv) {
  CLI::App app("Reads, changes and writes the files of geophysical field receivers.", "orvane-cli");
  app.require_subcommand(1);
  orvane::ExitCode exit_code = orvane::kAllDone;
  orvane::AddTableCommands(&app, &exit_code);
  orvane::AddScheduleCommands(&app, &exit_code);
  orvane::AddStackCommands(&app, &exit_code);
  orvane::AddCalibrationCommands(&app, &exit_code);
  orvane::AddWaveformCommands(&app, &exit_code);
  orvane::AddSurveyCommands(&app, &exit_code);

  const auto add_version = [](CLI::App* command, const auto& self) -> void {
    command->set_version_flag("--version", "orvane-cli " ORVANE_VERSION);
    for (CLI::App* verb : command->get_subcommands({})) {
      if (!verb->get_name().empty()) {  // else a group of options
        self(verb, self);
      }
    }
  };
  add_version(&app, add_version);

  try {
    app.parse(Arguments(argc, argv));
  } catch (const CLI::ParseError& error) {
    // Help and version are no errors; the library's other exit codes all mean wrong usage.
    std::ostringstream message;  // has what was typed
    if (app.exit(error, std::cout, message) != 0) {
      orvane::PrintUsageFault(message.str());
      return orvane::kWrongUsage;
    }
    return std::cout.flush() ? orvane::kAllDone : orvane::kSomeFailed;
  }
  return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  orvane::ReportSizeLimits();
  orvane::SetUpTerminal();
  try {
    const int exit_code = Run(argc, argv);
    orvane::InterruptWatch::EndIfInterrupted();
    return exit_code;
  } catch (const std::bad_alloc& error) {
    std::fprintf(stderr, "orvane-cli: %s\n", orvane::ReasonOf(error));  // which takes no memory
    return orvane::kSomeFailed;
  } catch (const std::exception& error) {
    orvane::PrintMessage(orvane::ReasonOf(error));
    return orvane::kSomeFailed;
  }
}
