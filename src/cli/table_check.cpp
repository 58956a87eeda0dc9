// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "base/latin1.h"
#include "check/check.h"
#include "check/rule.h"
#include "cli/commands.h"
#include "files/path_text.h"

namespace orvane {
namespace {

struct CheckOptions {
  std::vector<std::string> files;
  Places places;
  std::string now;
  std::string format = "tsv";
  bool lists_rules = false;
};

std::string KeysText(const Finding& finding, char divider) {
  std::string text;
  for (const ParamKey key : finding.keys) {
    text += (text.empty() ? "" : std::string(1, divider)) + key.Text();
  }
  return text;
}

std::string TsvRow(const std::string& file, const Finding& finding) {
  return file + '\t' + std::string(SeverityName(finding.severity)) + '\t' +
         std::string(finding.id) + '\t' + finding.box + '\t' + KeysText(finding, ' ') + '\t' +
         finding.sentence + '\n';
}

nlohmann::ordered_json JsonRow(const std::string& file, const Finding& finding) {
  std::vector<std::string> keys;
  for (const ParamKey key : finding.keys) {
    keys.push_back(key.Text());
  }
  return {{"file", file},     {"severity", SeverityName(finding.severity)},
          {"id", finding.id}, {"box", finding.box},
          {"keys", keys},     {"sentence", finding.sentence}};
}

ExitCode RunTableCheck(const CheckOptions& options) {
  ParamTime now;
  if (!TakeNow(options.now, &now)) {
    return kWrongUsage;
  }
  ExitCode result = kAllDone;
  std::string rows;
  auto objects = nlohmann::ordered_json::array();
  for (const std::string& name : options.files) {
    ParamTable table;
    TblReport report;
    Places places = options.places;
    places.table = PathOf(name);
    if (!LoadTable(places.table, &table, &report)) {
      result = kSomeFailed;
      continue;
    }
    const std::string file = PrintableUtf8(name);
    for (const Finding& finding : CheckAll(table, now, places)) {
      result = finding.severity == Severity::kHint ? result : kSomeFailed;
      rows += TsvRow(file, finding);
      objects.push_back(JsonRow(file, finding));
    }
  }
  return PrintResult(options.format == "json" ? objects.dump(2) + '\n' : rows) ? result
                                                                               : kSomeFailed;
}

}  // namespace

void AddTableCheck(CLI::App* table, ExitCode* exit_code) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* check = table->add_subcommand(
      "check",
      "Say whether boxes may leave with tables; exit code 1 where there is more than hints");
  check->add_option("FILE", options->files, "the main box's table of a survey")->check(NotEmpty());
  AddPath(check, "--set", &options->places.set,
          "folder of the boxes' start-up files, SERIAL.tbl or SERIAL/StartUp.tbl")
      ->check(NotEmpty());
  AddPath(check, "--calibrations", &options->places.calibrations, "folder of calibrations")
      ->check(NotEmpty());
  AddPath(check, "--card", &options->places.card, "folder on the card that will be recorded on")
      ->check(NotEmpty());
  check->add_option("--now", options->now, "the present time in UTC, instead of the clock's");
  check->add_option("--format", options->format, "tsv (default): a row for each finding; json")
      ->check(CLI::IsMember({"tsv", "json"}));
  check->add_flag("--rules", options->lists_rules, "print what is checked, as Markdown");
  check->callback([options, exit_code] {
    if (options->lists_rules) {
      *exit_code = PrintResult(RulesMarkdown()) ? kAllDone : kSomeFailed;
      return;
    }
    if (options->files.empty()) {
      throw CLI::RequiredError("FILE");
    }
    *exit_code = RunTableCheck(*options);
  });
}

}  // namespace orvane
