// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "cli/terminal.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"
#include "survey/survey_index.h"
#include "survey/survey_report.h"
#include "survey/survey_scan.h"
#include "table/param_time.h"

namespace orvane {
namespace {

// No result, which is not to be taken for findings.
constexpr ExitCode kNotDone = kWrongUsage;

struct ScanOptions {
  std::filesystem::path folder;
  std::filesystem::path calibrations;
  std::filesystem::path out;
  std::string format = "tsv";
  std::optional<std::string> since;
  bool is_deep = false;
  bool has_checksums = false;
  bool has_no_index = false;
  bool lists_rules = false;
};

// All that a scan found.
struct Scanned {
  std::vector<SharedRow> rows;
  std::vector<SurveyFinding> findings;
  std::vector<ScanNote> notes;
  std::size_t hidden = 0;
};

std::string OrEmpty(std::int64_t number) { return number == 0 ? std::string() : FormatInt(number); }

// Names of files without their folder, which is that of the row.
std::string FileNames(const SurveyRow& row) {
  std::string text;
  for (const RowFile& file : row.files) {
    text.append(text.empty() ? "" : ", ").append(file.shown.substr(file.shown.rfind('/') + 1));
  }
  return text;
}

struct Column {
  const char* name;
  std::string text;
  bool is_number = false;  // of JSON; one without a text is null
};
using Columns = std::vector<Column>;

Columns ColumnsOf(const SurveyRow& row) {
  const TableFacts none;
  const TableFacts& table = row.table ? *row.table : none;
  const bool is_recording = row.IsRecording();
  const bool is_counted = row.records > 0 || (is_recording && row.failure.empty());
  return {{"kind", std::string(RowKindName(row.kind))},
          {"file", row.name},
          {"box", OrEmpty(row.box), true},
          {"hardware", table.hardware},
          {"site", table.site},
          {"line", table.line},
          {"method", std::string(MethodName(table.method))},
          {"start", SurveyTime(row.start)},
          {"end", SurveyTime(row.end)},
          {"channels", OrEmpty(row.channels), true},
          {"rate", row.rate > 0 ? FormatReal(row.rate) : std::string(), true},
          {"frequencies", FrequencyText(row)},
          {"records", is_counted ? FormatInt(row.records) : "", true},
          {"bad", is_recording && is_counted ? FormatInt(row.bad) : std::string(), true},
          {"cut", row.cut.empty() ? std::string() : std::string("cut")},
          {"table", std::string(TableStateName(row.table_state))},
          {"table_version", OrEmpty(table.version), true},
          {"version", table.firmware},
          {"clock", ClockText(table)},
          {"calibrations", CalibrationText(row)},
          {"saturated", row.is_deep ? FormatReal(row.SaturatedShare(), 6) : std::string(), true},
          {"files", FileNames(row)}};
}

Columns ColumnsOf(const SurveyFinding& finding) {
  return {{"severity", std::string(SeverityName(finding.severity))},
          {"rule", std::string(finding.id)},
          {"box", finding.box, true},
          {"file", finding.path},
          {"sentence", finding.sentence}};
}

Columns ColumnsOf(const ScanNote& note) { return {{"path", note.path}, {"reason", note.reason}}; }

template <typename Items, typename Columned>
void AddLines(const char* what, const Items& items, const Columned& columned, std::string* text) {
  for (const auto& item : items) {
    text->append(what);
    for (const Column& column : columned(item)) {
      text->append("\t").append(column.text);
    }
    text->append("\n");
  }
}

std::string TsvOf(const Scanned& scanned) {
  std::string text = "what";
  for (const Column& column : ColumnsOf(SurveyRow())) {
    text.append("\t").append(column.name);
  }
  text.append("\n");
  AddLines(
      "row", scanned.rows, [](const SharedRow& row) { return ColumnsOf(*row); }, &text);
  AddLines(
      "finding", scanned.findings, [](const auto& one) { return ColumnsOf(one); }, &text);
  AddLines(
      "note", scanned.notes, [](const auto& one) { return ColumnsOf(one); }, &text);
  return text;
}

nlohmann::ordered_json ObjectOf(const Columns& columns) {
  auto object = nlohmann::ordered_json::object();
  for (const Column& column : columns) {
    if (!column.is_number) {
      object[column.name] = column.text;
    } else {
      object[column.name] =
          column.text.empty() ? nullptr : nlohmann::ordered_json::parse(column.text);
    }
  }
  return object;
}

nlohmann::ordered_json ObjectOf(const SurveyRow& row) {
  auto object = ObjectOf(ColumnsOf(row));
  auto files = nlohmann::ordered_json::array();
  for (const RowFile& file : row.files) {
    nlohmann::ordered_json one = {{"file", file.shown}, {"bytes", file.info.size}};
    if (!file.sha256.empty()) {
      one["sha256"] = file.sha256;
    }
    files.push_back(std::move(one));
  }
  object["files"] = std::move(files);
  return object;
}

std::string JsonOf(const Scanned& scanned) {
  auto all = nlohmann::ordered_json::object();
  for (const char* name : {"rows", "findings", "notes"}) {
    all[name] = nlohmann::ordered_json::array();
  }
  for (const SharedRow& row : scanned.rows) {
    all["rows"].push_back(ObjectOf(*row));
  }
  for (const SurveyFinding& finding : scanned.findings) {
    all["findings"].push_back(ObjectOf(ColumnsOf(finding)));
    if (!finding.also.empty()) {
      all["findings"].back()["also"] = finding.also;
    }
  }
  for (const ScanNote& note : scanned.notes) {
    all["notes"].push_back(ObjectOf(ColumnsOf(note)));
  }
  return all.dump(2) + '\n';
}

std::string NameOfFolder(const std::filesystem::path& folder) {
  std::error_code error;
  const auto whole = std::filesystem::absolute(folder, error).lexically_normal();
  const auto name = whole.has_filename() ? whole.filename() : whole.parent_path().filename();
  return PrintableUtf8(PathText(name));
}

std::string TextOf(const ScanOptions& options, std::int64_t since, const Scanned& scanned) {
  if (options.format == "html") {
    return SurveyReportPage({NameOfFolder(options.folder), scanned.rows, scanned.findings,
                             scanned.notes, options.folder, since, scanned.hidden,
                             "Orvane " ORVANE_VERSION});
  }
  return options.format == "json" ? JsonOf(scanned) : TsvOf(scanned);
}

void TellProgress(const SurveyScan& scan) {
  if (AreMessagesOnATerminal()) {
    std::fprintf(stderr, "\r%llu of %llu files ", static_cast<unsigned long long>(scan.FilesDone()),
                 static_cast<unsigned long long>(scan.FilesInAll()));
  }
}

// False, with a message, where the folder could not be listed, or the user ended it.
bool Scan(const ScanOptions& options, std::int64_t since, Scanned* scanned) {
  const InterruptWatch watch;
  SurveyOptions asked;
  asked.depth = options.is_deep ? ScanDepth::kDeep : ScanDepth::kHeaders;
  asked.has_checksums = options.has_checksums;
  asked.calibrations = options.calibrations;
  asked.index = options.has_no_index ? std::filesystem::path() : UsualIndexFile();
  asked.since = since;
  SurveyScan scan(options.folder, asked);
  auto told = std::chrono::steady_clock::now();
  while (!scan.IsDone()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    if (InterruptWatch::IsInterrupted()) {
      scan.Stop();
    }
    if (const auto now = std::chrono::steady_clock::now();
        now - told > std::chrono::milliseconds(200)) {
      told = now;
      TellProgress(scan);
    }
  }
  if (AreMessagesOnATerminal()) {
    std::fputs("\r\033[K", stderr);
  }
  for (auto rows = scan.Take(); !rows.empty(); rows = scan.Take()) {
    scanned->rows.insert(scanned->rows.end(), rows.begin(), rows.end());
  }
  if (!scan.Outcome()) {
    PrintMessage(FileMessage(options.folder, scan.Outcome().Message()));
    return false;
  }
  if (!scan.IndexNote().empty()) {
    PrintMessage("without an index: " + scan.IndexNote());
  }
  if (scan.Hidden() > 0) {
    PrintMessage(HiddenText(scan.Hidden()));
  }
  for (const ScanNote& note : scan.Notes()) {
    PrintMessage(std::string(note.path).append(": ").append(note.reason));
  }
  scanned->findings = scan.Findings();
  scanned->notes = scan.Notes();
  scanned->hidden = scan.Hidden();
  return !scan.WasStopped();
}

bool Put(const ScanOptions& options, const std::string& text) {
  if (options.out.empty()) {
    return PrintResult(text);
  }
  const Result<> written = WriteFile(options.out, std::as_bytes(std::span(text)));
  if (!written) {
    PrintMessage(FileMessage(options.out, written.Message()));
  }
  return static_cast<bool>(written);
}

// A page inside the survey would change what is only looked at.
ExitCode CheckOut(const ScanOptions& options) {
  const auto is_inside =
      options.out.empty() ? Result<bool>(false) : IsInsideFolder(options.out, options.folder);
  if (!is_inside) {
    PrintMessage(FileMessage(options.out, is_inside.Message()));
    return kNotDone;
  }
  if (*is_inside) {
    PrintMessage("--out: nothing is written into the survey's folder");
    return kWrongUsage;
  }
  return kAllDone;
}

// Also as other programs write times in UTC: "2026-11-24T17:00:00Z".
bool ParseSince(std::string text, ParamTime* since) {
  constexpr std::size_t kSeparator = 10;
  if (text.ends_with('Z')) {
    text.pop_back();
  }
  if (text.size() > kSeparator && text[kSeparator] == 'T') {
    text[kSeparator] = ' ';
    std::replace(text.begin(), text.begin() + kSeparator, '-', '/');
  }
  return ParseParamTimeStrictly(text, since) && !HasNoDate(*since);
}

ExitCode RunScan(const ScanOptions& options) {
  ParamTime since;
  if (options.since && !ParseSince(*options.since, &since)) {
    PrintMessage("--since: a date and time such as \"2026/11/24 17:00:00\" is expected");
    return kWrongUsage;
  }
  if (const ExitCode refused = CheckOut(options); refused != kAllDone) {
    return refused;
  }
  const std::int64_t seconds = options.since ? ParamTimeToSeconds(since) : 0;
  Scanned scanned;
  if (!Scan(options, seconds, &scanned) || !Put(options, TextOf(options, seconds, scanned))) {
    return kNotDone;
  }
  const bool is_more =
      std::any_of(scanned.findings.begin(), scanned.findings.end(),
                  [](const SurveyFinding& finding) { return finding.severity != Severity::kHint; });
  return is_more || !scanned.notes.empty() ? kSomeFailed : kAllDone;
}

}  // namespace

void AddSurveyCommands(CLI::App* app, ExitCode* exit_code) {
  CLI::App* survey = app->add_subcommand("survey", "Folders with everything that was recorded");
  survey->require_subcommand(1);
  const auto options = std::make_shared<ScanOptions>();
  CLI::App* scan = survey->add_subcommand("scan",
                                          "List what was recorded and what is wrong; exit code 1 "
                                          "where there is more than hints or a note, 2 where "
                                          "nothing could be listed or written");
  AddPath(scan, "DIR", &options->folder, "folder of the survey, with all below it")
      ->check(NotEmpty());
  scan->add_flag("--deep", options->is_deep, "look at samples too");
  scan->add_flag("--checksums", options->has_checksums,
                 "make a checksum (SHA-256) of each file, for json and html");
  scan->add_option("--format", options->format, "tsv (default); json; html: a page to print")
      ->check(CLI::IsMember({"tsv", "json", "html"}));
  AddPath(scan, "--out", &options->out, "file to write, outside the survey; else standard output")
      ->check(NotEmpty());
  AddPath(
      scan, "--calibrations", &options->calibrations,
      "folder of calibrations, itself and not below it, instead of each recording's own and the "
      "survey")
      ->check(NotEmpty());
  scan->add_option("--since", options->since, "leave out what ended before this time in UTC");
  scan->add_flag("--no-index", options->has_no_index,
                 "read all files, also those that did not change since the last scan");
  scan->add_flag("--rules", options->lists_rules, "print what is looked for, as Markdown");
  scan->callback([options, exit_code] {
    if (options->lists_rules) {
      *exit_code = PrintResult(SurveyRulesMarkdown()) ? kAllDone : kSomeFailed;
      return;
    }
    if (options->folder.empty()) {
      throw CLI::RequiredError("DIR");
    }
    *exit_code = RunScan(*options);
  });
}

}  // namespace orvane
