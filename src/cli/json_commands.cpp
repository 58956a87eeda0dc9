// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>
#include <span>

#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "export/json_reading.h"
#include "export/schedule_json.h"
#include "export/table_json.h"
#include "files/file_io.h"
#include "stepping/tfs_file.h"

namespace orvane {
namespace {

constexpr std::string_view kIsInput = "is the input file and was not written";

struct JsonArguments {
  std::filesystem::path file;
  std::filesystem::path to;
  bool with_secrets = false;
};

ExitCode Refused(const std::filesystem::path& file, const std::string& reason) {
  PrintMessage(FileMessage(file, reason));
  return kSomeFailed;
}

// To standard output where no file is named.
ExitCode PutText(const JsonArguments& arguments, const std::string& text) {
  if (arguments.to.empty()) {
    return PrintResult(text) ? kAllDone : kSomeFailed;
  }
  const InterruptWatch watch;
  const Result<> written = WriteFile(arguments.to, std::as_bytes(std::span(text)));
  return written ? kAllDone : Refused(arguments.to, written.Message());
}

template <typename Names>
std::string Joined(const Names& names, std::string text) {
  for (const auto& name : names) {
    text.append(" ").append(ParamKey(name).Text());
  }
  return text;
}

ExitCode RunTableJson(const JsonArguments& arguments) {
  if (IsInput(arguments.to, arguments.file, kIsInput)) {
    return kSomeFailed;
  }
  const auto json = WriteTableJson(arguments.file, arguments.with_secrets);
  if (!json) {
    PrintMessage(json.Message());
    return kSomeFailed;
  }
  if (!json->left_out.empty()) {
    PrintMessage(Joined(json->left_out, "passwords and the like are left out (--with-secrets):"));
  }
  if (const std::string left_out = json->report.left_out.Summary(); !left_out.empty()) {
    PrintMessage(FileMessage(arguments.file, left_out));
  }
  return PutText(arguments, json->text);
}

ExitCode RunTableFromJson(const JsonArguments& arguments) {
  if (IsInput(arguments.to, arguments.file, kIsInput)) {
    return kSomeFailed;
  }
  const auto text = LoadJsonText(arguments.file);
  auto read = text ? ReadTableJson(*text) : Failure(text.Message());
  if (!read) {
    return Refused(arguments.file, read.Message());
  }
  TblReport report;
  const InterruptWatch watch;
  if (SaveParamFile(&read->table, arguments.to, read->save, &report) != kOk) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  if (!read->left_out.empty()) {
    PrintMessage(Joined(read->left_out, "left out of the JSON, so they have their defaults:"));
  }
  return kAllDone;
}

ExitCode RunScheduleJson(const JsonArguments& arguments) {
  if (IsInput(arguments.to, arguments.file, kIsInput)) {
    return kSomeFailed;
  }
  const ScheduleRows read = ReadScheduleRows(arguments.file);
  if (!read.outcome || !read.refusal.empty()) {
    return Refused(arguments.file, read.outcome ? read.refusal : read.outcome.Message());
  }
  return PutText(arguments, WriteScheduleJson(read.rows));
}

ExitCode RunScheduleFromJson(const JsonArguments& arguments) {
  if (IsInput(arguments.to, arguments.file, kIsInput)) {
    return kSomeFailed;
  }
  const auto text = LoadJsonText(arguments.file);
  const auto rows = text ? ReadScheduleJson(*text) : Failure(text.Message());
  if (!rows) {
    return Refused(arguments.file, rows.Message());
  }
  const InterruptWatch watch;
  const Result<> written = WriteScheduleFile(arguments.to, *rows);
  return written ? kAllDone : Refused(arguments.to, written.Message());
}

struct Verb {
  const char* name;
  const char* what;
  const char* file;
  ExitCode (*run)(const JsonArguments&);
  bool writes_table;  // or schedule: needs a file to write
};

CLI::App* AddVerb(CLI::App* noun, const Verb& verb, const std::shared_ptr<JsonArguments>& arguments,
                  ExitCode* exit_code) {
  CLI::App* added = noun->add_subcommand(verb.name, verb.what);
  AddPath(added, "FILE", &arguments->file, verb.file)->required()->check(NotEmpty());
  AddPath(added, "--to", &arguments->to,
          verb.writes_table ? "the file to write" : "the file to write (default: print it)")
      ->required(verb.writes_table)
      ->check(NotEmpty());
  added->callback([=, run = verb.run] { *exit_code = run(*arguments); });
  return added;
}

}  // namespace

void AddTableJson(CLI::App* table, ExitCode* exit_code) {
  const auto arguments = std::make_shared<JsonArguments>();
  AddVerb(table,
          {"json", "Print the values of a table as JSON", "a parameter table", RunTableJson, false},
          arguments, exit_code)
      ->add_flag("--with-secrets", arguments->with_secrets,
                 "with passwords, encryption keys, user names and phone numbers as well");
  AddVerb(table,
          {"from-json", "Write the table of a JSON text", "a text as table json prints it",
           RunTableFromJson, true},
          arguments, exit_code);
}

void AddScheduleJson(CLI::App* schedule, ExitCode* exit_code) {
  const auto arguments = std::make_shared<JsonArguments>();
  AddVerb(
      schedule,
      {"json", "Print the steps of a schedule as JSON", "a schedule file", RunScheduleJson, false},
      arguments, exit_code);
  AddVerb(schedule,
          {"from-json", "Write the schedule of a JSON text", "a text as schedule json prints it",
           RunScheduleFromJson, true},
          arguments, exit_code);
}

}  // namespace orvane
