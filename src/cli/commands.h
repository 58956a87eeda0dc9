// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CLI_COMMANDS_H_
#define ORVANE_CLI_COMMANDS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "cli/output.h"
#include "timeseries/leave_out.h"

namespace CLI {
class App;
class Option;
class Validator;
}  // namespace CLI

namespace orvane {

/// Adds a noun and its verbs. A verb that ran leaves its exit code in `exit_code`.
void AddTableCommands(CLI::App* app, ExitCode* exit_code);
void AddScheduleCommands(CLI::App* app, ExitCode* exit_code);
void AddStackCommands(CLI::App* app, ExitCode* exit_code);
void AddCalibrationCommands(CLI::App* app, ExitCode* exit_code);
void AddWaveformCommands(CLI::App* app, ExitCode* exit_code);
void AddSurveyCommands(CLI::App* app, ExitCode* exit_code);

/// The verbs that compute with calibrations: `calibration response`, `calibration fit` and
/// `waveform harmonics`.
void AddResponseCommands(CLI::App* calibration, ExitCode* exit_code);
/// "calibration compare".
void AddCompareCommand(CLI::App* calibration, ExitCode* exit_code);
void AddHarmonicsCommand(CLI::App* waveform, ExitCode* exit_code);
/// The verbs `waveform spectrum` and `waveform decay`.
void AddSpectrumCommand(CLI::App* waveform, ExitCode* exit_code);
void AddDecayCommand(CLI::App* waveform, ExitCode* exit_code);

/// The verbs `json` and `from-json` of tables and schedules.
void AddTableJson(CLI::App* table, ExitCode* exit_code);
void AddScheduleJson(CLI::App* schedule, ExitCode* exit_code);

/// The verb `table check`.
void AddTableCheck(CLI::App* table, ExitCode* exit_code);

/// The verbs of `table` that convert many files.
void AddTableConversions(CLI::App* table, ExitCode* exit_code);

/// Refuses an empty text: a script's variable that was not set, never a file's name.
CLI::Validator NotEmpty();

/// An argument or option that is a path, whatever its bytes. `path` must outlive the parsing.
CLI::Option* AddPath(CLI::App* verb, const std::string& name, std::filesystem::path* path,
                     const std::string& what);

/// The option --leave-out of a verb that reads records. `text` must outlive the parsing.
CLI::Option* AddLeaveOut(CLI::App* verb, std::string* text);
/// What it chooses; nothing where it is not given.
LeaveOutChoice LeaveOutArgument(const std::string& text);

/// The time of an option --now, in UTC; the clock's where it is empty. False, with a message, where
/// it is no whole time.
[[nodiscard]] bool TakeNow(const std::string& text, ParamTime* now);

struct SetOptions {
  std::filesystem::path file;
  std::filesystem::path from;            ///< KEY=VALUE lines, applied first; empty: none
  std::vector<std::string> assignments;  ///< KEY=VALUE
  std::filesystem::path to;
  std::uint32_t tbl_version = 2;
};
ExitCode RunTableSet(const SetOptions& options);

struct DiffOptions {
  std::filesystem::path a;
  std::filesystem::path b;
  bool as_values = false;     ///< lines that make b of a
  bool with_secrets = false;  ///< of them also passwords and the like
  bool is_explained = false;  ///< with name, unit and what both values mean
};
/// Exit code 1 where the tables differ, also in records that are left out.
ExitCode RunTableDiff(const DiffOptions& options);

struct StartupOptions {
  std::filesystem::path file;
  std::filesystem::path out;  ///< folder for the files
  bool by_serial = true;      ///< SERIAL.tbl, else SERIAL/StartUp.tbl
  std::uint32_t tbl_version = 2;
  bool verifies = false;
  bool takes_partial = false;  ///< also what is hardly a table
};
ExitCode RunTableStartup(const StartupOptions& options);

}  // namespace orvane

#endif  // ORVANE_CLI_COMMANDS_H_
