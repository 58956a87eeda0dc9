// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <optional>

#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/table_explain.h"
#include "editors/box_list.h"
#include "editors/raw_table.h"
#include "editors/spread_map.h"
#include "files/path_text.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/recording_size.h"
#include "table/startup_table.h"

namespace orvane {
namespace {

std::string HeaderOf(bool is_explained) {
  std::string text;
  for (std::size_t column = 0; column < kRawColumnNames.size(); ++column) {
    text += (column > 0 ? "\t" : "") + std::string(kRawColumnNames[column]);
  }
  return text + (is_explained ? "\tName\tUnit\tMeans\n" : "\n");
}

// The rows of a table as text, all of them or those of some keys.
std::string RowsOf(ParamTable* table, bool is_explained,
                   const std::function<bool(ParamKey)>& is_wanted) {
  std::optional<Meanings> meanings;
  if (is_explained) {
    meanings.emplace();
  }
  std::string text = HeaderOf(is_explained);
  const RawTable rows(table);
  for (int ordinal = 1; ordinal <= rows.Count(); ++ordinal) {
    if (!is_wanted(rows.Cell(ordinal, kCodeColumn))) {
      continue;
    }
    for (const RawColumn column : {kNumberColumn, kCodeColumn, kTypeColumn, kPermissionColumn}) {
      text += rows.Cell(ordinal, column) + '\t';
    }
    text += PrintableLatin1(rows.Cell(ordinal, kValueColumn));
    text += meanings ? ExplainingCells(*meanings, *table->FindParam(rows.Row(ordinal).key)) : "";
    text += '\n';
  }
  return text;
}

void TellLeftOut(const std::filesystem::path& file, const LeftOutRecords& left_out,
                 bool with_offsets) {
  const auto say = [&file](const std::string& line) { PrintMessage(FileMessage(file, line)); };
  for (const LeftOutRecord& record : left_out.first) {
    say((with_offsets ? "offset " + FormatInt(record.offset) + ": " : "") + NameOf(record) +
        " is left out: " + record.reason);
  }
  if (const std::size_t more = left_out.count - left_out.first.size(); more > 0) {
    say(FormatInt(more) + " more records are left out");
  }
}

// Most of a whole table is protected from boxes, which buries what else is left out.
LeftOutRecords WithoutProtected(const std::filesystem::path& file, LeftOutRecords left_out) {
  constexpr std::size_t kMostNamed = 10;
  const auto is_protected = [](const LeftOutRecord& record) {
    return record.reason == StatusText(kWriteNotPermitted);
  };
  const auto count = static_cast<std::size_t>(
      std::count_if(left_out.first.begin(), left_out.first.end(), is_protected));
  if (count > kMostNamed) {
    PrintMessage(FileMessage(file, FormatInt(count) + " records are left out: " +
                                       std::string(StatusText(kWriteNotPermitted)) +
                                       " (--report names them)"));
    left_out.count -= std::erase_if(left_out.first, is_protected);
  }
  return left_out;
}

ExitCode RunTableShow(const std::filesystem::path& file, bool with_report, bool is_explained) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  if (with_report) {
    TellLeftOut(file, report.left_out, true);
    TellCut(file, report);
  }
  const std::string text = RowsOf(&table, is_explained, [](ParamKey) { return true; });
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

ExitCode RunTableShowAsBox(const std::filesystem::path& file, bool with_report, bool is_explained) {
  ParamTable table;
  TblReport report;
  StartupTaken taken;
  if (const Status status = table.BuildParamIndex(); status != kOk) {
    PrintMessage(StatusText(status));
    return kSomeFailed;
  }
  if (LoadAsBox(&table, file, &report, &taken) != kOk) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  TellLeftOut(file, with_report ? taken.left_out : WithoutProtected(file, taken.left_out),
              with_report);
  TellCut(file, report);
  PrintMessage(FileMessage(file, "a box takes " + FormatInt(taken.keys.size()) +
                                     " parameters of it; the others keep their values"));
  const std::string text =
      RowsOf(&table, is_explained, [&taken](ParamKey key) { return taken.Has(key); });
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

ExitCode RunTableGet(const std::filesystem::path& file, const std::vector<std::string>& keys) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  ExitCode result = kAllDone;
  std::string text;
  for (const std::string& key : keys) {
    const ParamEntry* entry = FindOrTell(table, key);
    if (entry == nullptr) {
      result = kSomeFailed;
      continue;
    }
    text += ParamKey(key).Text() + "=" + PrintableValue(*entry) + '\n';
  }
  return PrintResult(text) ? result : kSomeFailed;
}

ExitCode RunTableSize(const std::filesystem::path& file, int channels, const std::string& now) {
  ParamTime time;
  if (!TakeNow(now, &time)) {
    return kWrongUsage;
  }
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  const RecordingSize size = EstimateRecordingSize(table, channels, FixedClock(time));
  if (size.exact != size.stated) {
    PrintMessage("the figure starts again from 0 at 4096 megabytes; the true value is " +
                 FormatReal(size.exact, 17));
  }
  return PrintResult(FormatReal(size.stated, 17) + '\n') ? kAllDone : kSomeFailed;
}

ExitCode RunTableBoxes(const std::filesystem::path& file) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  BoxRows rows;
  std::string text;
  const int count = LoadBoxList(table, &rows);
  for (const BoxRow& row : std::span(rows).first(static_cast<std::size_t>(count))) {
    text += FormatInt(row.kind) + '\t' + FormatInt(row.serial) + '\t' + FormatInt(row.channels) +
            '\t' + FormatInt(row.control) + '\n';
  }
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

ExitCode RunTableElectrodes(const std::filesystem::path& file) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  for (const std::string& note : MapOf(table).notes) {
    PrintMessage(FileMessage(file, PrintableLatin1(note)));
  }
  return PrintResult(ElectrodeLines(table)) ? kAllDone : kSomeFailed;
}

}  // namespace

CLI::Validator NotEmpty() {
  return {[](const std::string& text) {
            return text.empty() ? std::string("the name is empty") : std::string();
          },
          "", "not empty"};
}

bool TakeNow(const std::string& text, ParamTime* now) {
  *now = UtcClock().Now();
  const bool is_right = text.empty() || (ParseParamTimeStrictly(text, now) && !HasNoDate(*now));
  if (!is_right) {
    PrintMessage("--now: \"" + text + "\" is not a time such as 2009/06/30 14:05:00");
  }
  return is_right;
}

CLI::Option* AddPath(CLI::App* verb, const std::string& name, std::filesystem::path* path,
                     const std::string& what) {
  const auto keep = [path](const std::string& text) { *path = PathOf(text); };
  return verb->add_option_function<std::string>(name, keep, what);
}

void AddTableCommands(CLI::App* app, ExitCode* exit_code) {
  // The options live as long as the callbacks that the parser keeps.
  struct Arguments {
    std::filesystem::path file;
    std::vector<std::string> keys;
    SetOptions set;
    StartupOptions startup;
    std::string names = "serial";
    std::string tbl_version = "2";
    int channels = 6;
    bool is_as_box = false;
    bool with_report = false;
    DiffOptions diff;
    bool is_explained = false;
    std::string now;
  };
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* table = app->add_subcommand("table", "Parameter tables (*.tbl)");
  table->require_subcommand(1);

  CLI::App* show = table->add_subcommand("show", "Print every parameter, tab-separated");
  AddPath(show, "FILE", &arguments->file, "a parameter table")->required();
  show->add_flag("--as-box", arguments->is_as_box,
                 "print what a box takes of it at power-up, and say what it leaves out");
  show->add_flag("--report", arguments->with_report,
                 "name each record of FILE that is left out, with its offset and the reason");
  show->add_flag("--explain", arguments->is_explained,
                 "add columns: name, unit and what a coded value means");
  show->callback([=] {
    const auto run = arguments->is_as_box ? RunTableShowAsBox : RunTableShow;
    *exit_code = run(arguments->file, arguments->with_report, arguments->is_explained);
  });

  CLI::App* get = table->add_subcommand("get", "Print parameters as KEY=VALUE");
  AddPath(get, "FILE", &arguments->file, "a parameter table")->required();
  get->add_option("KEY", arguments->keys, "the parameters, in any case")->required();
  get->callback([=] { *exit_code = RunTableGet(arguments->file, arguments->keys); });

  CLI::App* set = table->add_subcommand("set", "Change parameters and write the table");
  SetOptions& options = arguments->set;
  AddPath(set, "FILE", &options.file, "a parameter table")->required();
  set->add_option("KEY=VALUE", options.assignments, "what to change");
  const CLI::Option* from =
      AddPath(set, "--from", &options.from, "a file of KEY=VALUE lines to apply before")
          ->check(NotEmpty());
  const CLI::Option* to =
      AddPath(set, "--to", &options.to, "write this file instead of FILE")->check(NotEmpty());
  set->add_option("--tbl-version", arguments->tbl_version,
                  "version of the file written (default 2)")
      ->check(CLI::IsMember({"1", "2"}));
  set->callback([=] {
    SetOptions& given = arguments->set;
    if (given.assignments.empty() && from->empty()) {
      throw CLI::RequiredError("KEY=VALUE or --from");
    }
    given.to = to->empty() ? given.file : given.to;
    given.tbl_version = arguments->tbl_version == "1" ? 1 : 2;
    *exit_code = RunTableSet(given);
  });

  CLI::App* diff = table->add_subcommand(
      "diff", "Print the parameters in which two tables differ; exit code 1 where there are any");
  AddPath(diff, "A", &arguments->diff.a, "a parameter table")->required();
  AddPath(diff, "B", &arguments->diff.b, "the table to compare it with")->required();
  CLI::Option* as_values =
      diff->add_flag("--as-values", arguments->diff.as_values,
                     "print the KEY=VALUE lines that make B of A (table set --from)");
  diff->add_flag("--with-secrets", arguments->diff.with_secrets,
                 "print passwords, encryption keys, user names and phone numbers as well")
      ->needs(as_values);
  diff->add_flag("--explain", arguments->diff.is_explained,
                 "add columns: name, unit and what the coded values mean")
      ->excludes(as_values);
  diff->callback([=] { *exit_code = RunTableDiff(arguments->diff); });
  CLI::App* explain = table->add_subcommand(
      "explain", "Print what parameters are: type, who may change them, name, unit, range, values");
  explain->add_option("KEY", arguments->keys, "parameters; all of them without any");
  explain->callback([=] { *exit_code = RunTableExplain(arguments->keys); });

  CLI::App* size = table->add_subcommand(
      "size", "Estimate the megabytes that a scheduled MT/AMT recording will fill");
  AddPath(size, "FILE", &arguments->file, "a parameter table")->required();
  size->add_option("--channels", arguments->channels, "channels recorded (default 6)")
      ->check(CLI::Range(1, 20));
  size->add_option("--now", arguments->now, "the present time in UTC, instead of the clock's");
  size->callback(
      [=] { *exit_code = RunTableSize(arguments->file, arguments->channels, arguments->now); });

  CLI::App* boxes = table->add_subcommand(
      "boxes", "Print the boxes of the spread: kind, serial number, channels, mode control");
  AddPath(boxes, "FILE", &arguments->file, "a parameter table")->required();
  boxes->callback([=] { *exit_code = RunTableBoxes(arguments->file); });

  CLI::App* electrodes = table->add_subcommand("electrodes",
                                               "Print where the electrodes are: box, channel, "
                                               "name, easting, northing and elevation of both");
  AddPath(electrodes, "FILE", &arguments->file, "a parameter table")->required();
  electrodes->callback([=] { *exit_code = RunTableElectrodes(arguments->file); });

  CLI::App* startup =
      table->add_subcommand("startup", "Write one start-up file for each box of the spread");
  AddPath(startup, "FILE", &arguments->startup.file, "a parameter table")->required();
  AddPath(startup, "--out", &arguments->startup.out, "folder for the files")
      ->required()
      ->check(NotEmpty());
  startup
      ->add_option("--names", arguments->names,
                   "serial: SERIAL.tbl (default); startup: SERIAL/StartUp.tbl")
      ->check(CLI::IsMember({"serial", "startup"}));
  startup
      ->add_option("--tbl-version", arguments->tbl_version,
                   "version of the files where \"TBVO\" is 1 (default 2)")
      ->check(CLI::IsMember({"1", "2"}));
  startup->add_flag("--partial", arguments->startup.takes_partial,
                    "accept a table that lacks the box's serial number or most parameters");
  startup->add_flag(
      "--verify", arguments->startup.verifies,
      "read each file back from its disk and compare it with what was to be written;"
      " adds version, bytes, values that differ from FILE and what it was read from; a box without"
      " a file is a failure");
  startup->callback([=] {
    arguments->startup.by_serial = arguments->names == "serial";
    arguments->startup.tbl_version = arguments->tbl_version == "1" ? 1 : 2;
    *exit_code = RunTableStartup(arguments->startup);
  });

  AddTableCheck(table, exit_code);
  AddTableConversions(table, exit_code);
  AddTableJson(table, exit_code);
}

}  // namespace orvane
