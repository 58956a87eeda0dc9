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
#include "files/path_text.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/recording_size.h"
#include "table/startup_table.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

// The cells that explain a value, each behind a tab.
std::string ExplainingCells(const Meanings& meanings, const ParamEntry& entry) {
  return '\t' + NameAndUnit(meanings, ParamKey(entry.key)) + '\t' + meanings.ValueText(entry);
}

std::string HeaderOf(bool is_explained) {
  std::string text;
  for (std::size_t column = 0; column < kRawColumnNames.size(); ++column) {
    text += (column > 0 ? "\t" : "") + std::string(kRawColumnNames[column]);
  }
  return text + (is_explained ? "\tName\tUnit\tStands For\n" : "\n");
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

ExitCode RunTableShow(const std::filesystem::path& file, bool is_explained) {
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  const std::string text = RowsOf(&table, is_explained, [](ParamKey) { return true; });
  return PrintResult(text) ? kAllDone : kSomeFailed;
}

ExitCode RunTableShowAsBox(const std::filesystem::path& file, bool is_explained) {
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
  const auto say = [&file](const std::string& line) { PrintMessage(FileMessage(file, line)); };
  for (const LeftOutRecord& record : taken.left_out) {
    say(PrintableLatin1(record.key) + " is left out: " + record.reason);
  }
  if (const std::size_t more = taken.left_out_count - taken.left_out.size(); more > 0) {
    say(FormatInt(static_cast<std::int64_t>(more)) + " more records are left out");
  }
  if (report.cut_at > 0) {
    say("the record at offset " + FormatInt(static_cast<std::int64_t>(report.cut_at)) +
        " is cut and left out");
  }
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
    const ParamEntry* entry = key.size() <= kKeySize ? table.FindParam(key) : nullptr;
    if (entry == nullptr) {
      PrintMessage(PrintableUtf8(key) + ": " + std::string(StatusText(kKeyNotFound)));
      result = kSomeFailed;
      continue;
    }
    text += ParamKey(key).Text() + "=" + PrintableValue(*entry) + '\n';
  }
  return PrintResult(text) ? result : kSomeFailed;
}

// Reals that differ but are the same in ten digits are printed with all their digits.
std::pair<std::string, std::string> DifferingValues(const ParamEntry& a, const ParamEntry& b) {
  std::pair<std::string, std::string> texts{PrintableValue(a), PrintableValue(b)};
  if (texts.first == texts.second && a.type == FltPT) {
    texts = {FormatRealExactly(RealOf(a.value)), FormatRealExactly(RealOf(b.value))};
  }
  return texts;
}

// The cells that explain a difference, each behind a tab: name, unit and what both values stand
// for.
std::string ExplainedDifference(const Meanings& meanings, const ParamEntry& a,
                                const ParamEntry& b) {
  return ExplainingCells(meanings, a) + '\t' + meanings.ValueText(b);
}

ExitCode RunTableDiff(const std::filesystem::path& file_a, const std::filesystem::path& file_b,
                      bool is_explained) {
  ParamTable a;
  ParamTable b;
  TblReport report;
  if (!LoadTable(file_a, &a, &report) || !LoadTable(file_b, &b, &report)) {
    return kSomeFailed;
  }
  std::optional<Meanings> meanings;
  if (is_explained) {
    meanings.emplace();
  }
  std::string text;
  for (const ParamKey key : DifferingKeys(a, b)) {
    const ParamEntry& entry_a = *a.FindParam(key);
    const ParamEntry& entry_b = *b.FindParam(key);
    const auto [value_a, value_b] = DifferingValues(entry_a, entry_b);
    text.append(key.Text()).append("\t").append(value_a).append("\t").append(value_b);
    text.append(meanings ? ExplainedDifference(*meanings, entry_a, entry_b) : "").append("\n");
  }
  return PrintResult(text) && text.empty() ? kAllDone : kSomeFailed;
}

class GivenTime : public Clock {
 public:
  explicit GivenTime(const ParamTime& time) : time_(time) {}
  ParamTime Now() const override { return time_; }

 private:
  ParamTime time_;
};

ExitCode RunTableSize(const std::filesystem::path& file, int channels, const std::string& now) {
  ParamTime time = UtcClock().Now();
  if (!now.empty() && (!ParseParamTimeStrictly(now, &time) || HasNoDate(time))) {
    PrintMessage("--now: \"" + now + "\" is not a time such as 2009/06/30 14:05:00");
    return kWrongUsage;
  }
  ParamTable table;
  TblReport report;
  if (!LoadTable(file, &table, &report)) {
    return kSomeFailed;
  }
  const RecordingSize size = EstimateRecordingSize(table, channels, GivenTime(time));
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

}  // namespace

CLI::Validator NotEmpty() {
  return {[](const std::string& text) {
            return text.empty() ? std::string("the name is empty") : std::string();
          },
          "", "not empty"};
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
    std::filesystem::path other;
    std::vector<std::string> keys;
    SetOptions set;
    StartupOptions startup;
    std::string names = "serial";
    std::string tbl_version = "2";
    int channels = 6;
    bool is_as_box = false;
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
  show->add_flag("--explain", arguments->is_explained,
                 "add columns: name, unit and what a coded value stands for");
  show->callback([=] {
    *exit_code = arguments->is_as_box ? RunTableShowAsBox(arguments->file, arguments->is_explained)
                                      : RunTableShow(arguments->file, arguments->is_explained);
  });

  CLI::App* get = table->add_subcommand("get", "Print parameters as KEY=VALUE");
  AddPath(get, "FILE", &arguments->file, "a parameter table")->required();
  get->add_option("KEY", arguments->keys, "the parameters, in any case")->required();
  get->callback([=] { *exit_code = RunTableGet(arguments->file, arguments->keys); });

  CLI::App* set = table->add_subcommand("set", "Change parameters and write the table");
  SetOptions& options = arguments->set;
  AddPath(set, "FILE", &options.file, "a parameter table")->required();
  set->add_option("KEY=VALUE", options.assignments, "what to change")->required();
  const CLI::Option* to =
      AddPath(set, "--to", &options.to, "write this file instead of FILE")->check(NotEmpty());
  set->add_option("--tbl-version", arguments->tbl_version,
                  "version of the file written (default 2)")
      ->check(CLI::IsMember({"1", "2"}));
  set->callback([=] {
    SetOptions& given = arguments->set;
    given.to = to->empty() ? given.file : given.to;
    given.tbl_version = arguments->tbl_version == "1" ? 1 : 2;
    *exit_code = RunTableSet(given);
  });

  CLI::App* diff = table->add_subcommand(
      "diff", "Print the parameters in which two tables differ; exit code 1 where there are any");
  AddPath(diff, "A", &arguments->file, "a parameter table")->required();
  AddPath(diff, "B", &arguments->other, "the table to compare it with")->required();
  diff->add_flag("--explain", arguments->is_explained,
                 "add columns: name, unit and what the coded values stand for");
  diff->callback([=] {
    *exit_code = RunTableDiff(arguments->file, arguments->other, arguments->is_explained);
  });

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
  startup->callback([=] {
    arguments->startup.by_serial = arguments->names == "serial";
    arguments->startup.tbl_version = arguments->tbl_version == "1" ? 1 : 2;
    *exit_code = RunTableStartup(arguments->startup);
  });

  AddTableConversions(table, exit_code);
}

}  // namespace orvane
