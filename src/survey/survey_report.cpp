// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_report.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/number_text.h"
#include "files/path_text.h"
#include "timeseries/trace_outline.h"

namespace orvane {
namespace {

constexpr std::string_view kStyle = R"(<style>
:root{color-scheme:light dark;--text:#1b1f24;--back:#fff;--line:#c9ced6;--soft:#eef1f5;--done:#2f6fb3;--bad:#c2372e;--plan:#cbb26a}
@media (prefers-color-scheme:dark){:root{--text:#e4e7eb;--back:#16191d;--line:#454c56;--soft:#22272e;--done:#6ba7e6;--bad:#f0736a;--plan:#7d6c3a}}
body{font:14px/1.4 "Liberation Sans",Arial,sans-serif;color:var(--text);background:var(--back);margin:1.5em}
h1{font-size:1.6em;margin:0 0 .3em}h2{font-size:1.2em;margin:1.6em 0 .4em}
table{border-collapse:collapse;font-size:.86em}th,td{border-bottom:1px solid var(--line);padding:.2em .6em;text-align:left;vertical-align:top}
th{background:var(--soft)}td.n{text-align:right;font-variant-numeric:tabular-nums}td.t{white-space:nowrap}td.p{overflow-wrap:anywhere;min-width:10em}td.sum{font-family:"Liberation Mono",monospace;font-size:.9em}
.wide{overflow-x:auto}.error,.warning{font-weight:bold}.error{color:var(--bad)}
svg{width:100%;max-width:1100px}svg.trace{width:96px;height:22px}.trace path{stroke:var(--done);fill:none}svg text{font-size:11px;fill:var(--text)}.day{stroke:var(--line);fill:none}
.plan{fill:var(--plan)}.done{fill:var(--done)}.bad{fill:var(--bad)}
.key{display:inline-block;width:1.2em;height:.8em;margin:0 .3em 0 1em}
.key.plan{background:var(--plan)}.key.done{background:var(--done)}.key.bad{background:var(--bad)}
@media print{:root{color-scheme:light;--text:#000;--back:#fff;--line:#999;--soft:#eee;--done:#2f6fb3;--bad:#c2372e;--plan:#dccb94}
@page{size:A4 landscape;margin:12mm}body{margin:0;font-size:9pt;print-color-adjust:exact;-webkit-print-color-adjust:exact}
.wide{overflow:visible}thead{display:table-header-group}tr,svg{break-inside:avoid}h2{break-after:avoid}}
</style>
)";

std::string Counted(std::size_t count, std::string_view what, std::string_view many = "s") {
  return FormatInt(count).append(" ").append(what).append(count == 1 ? "" : many);
}

class Page {
 public:
  explicit Page(const SurveyReport& report) : report_(report) {}

  std::string Text() {
    const std::string name = HtmlText(report_.name);
    text_.append("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n");
    text_.append("<meta name=\"viewport\" content=\"width=device-width\">\n<title>Survey ");
    text_.append(name).append("</title>\n").append(kStyle).append("</head>\n<body>\n<h1>Survey ");
    text_.append(name).append("</h1>\n");
    AddSummary();
    AddCoverage();
    AddFindings();
    AddRecordings();
    AddOthers();
    AddChecksums();
    AddNotes();
    return std::move(text_.append("</body>\n</html>\n"));
  }

 private:
  void Begin(std::string_view title, std::initializer_list<std::string_view> heads) {
    text_.append("<h2>").append(title).append("</h2>\n<div class=\"wide\"><table>\n<thead><tr>");
    for (const std::string_view head : heads) {
      text_.append("<th>").append(head).append("</th>");
    }
    text_.append("</tr></thead>\n<tbody>\n");
  }
  void End() { text_.append("</tbody>\n</table></div>\n"); }
  void Cell(std::string_view text) { text_.append("<td>").append(HtmlText(text)).append("</td>"); }
  // A path, or a sentence with one, is broken anywhere, or a long name would be cut on paper.
  void Path(std::string_view text) {
    text_.append("<td class=\"p\">").append(HtmlText(text)).append("</td>");
  }
  // What is read at a glance stays in one line.
  void Word(std::string_view text) {
    text_.append("<td class=\"t\">").append(HtmlText(text)).append("</td>");
  }
  void Time(std::int64_t seconds) { Word(SurveyTime(seconds)); }
  void Figure(const std::string& text) {
    text_.append("<td class=\"n\">").append(text).append("</td>");
  }

  void AddSummary() {
    std::set<std::int32_t> boxes;
    std::set<std::string> sites;
    std::size_t recordings = 0;
    std::int64_t first = 0;
    std::int64_t last = 0;
    for (const auto& row : report_.rows) {
      if (row->IsRecording()) {
        ++recordings;
        boxes.insert(row->box);
        if (row->table && !row->table->site.empty()) {
          sites.insert(row->table->site);
        }
        if (row->HasTimes()) {
          first = first == 0 ? row->start : std::min(first, row->start);
          last = std::max(last, row->end);
        }
      }
    }
    boxes.erase(0);
    text_.append("<p>").append(Counted(recordings, "recording")).append(" of ");
    text_.append(Counted(boxes.size(), "box", "es")).append(" at ");
    text_.append(Counted(sites.size(), "site"));
    if (first > 0) {
      text_.append(", ").append(SurveyTime(first)).append(" to ").append(SurveyTime(last));
    }
    text_.append(" (UTC). ").append(Counted(report_.findings.size(), "finding"));
    text_.append(".</p>\n");
    AddScope(recordings);
  }

  // What the page does not show, and why.
  void AddScope(std::size_t recordings) {
    const auto deep = static_cast<std::size_t>(
        std::count_if(report_.rows.begin(), report_.rows.end(),
                      [](const auto& row) { return row->IsRecording() && row->is_deep; }));
    text_.append("<p>");
    if (deep == 0) {
      text_.append("Headers and tables were looked at, samples were not.");
    } else if (deep == recordings) {
      text_.append("Samples were looked at.");
    } else {
      text_.append("Samples of ").append(FormatInt(deep)).append(" recordings were looked at.");
    }
    if (report_.since > 0) {
      text_.append(" Recordings before ").append(SurveyTime(report_.since));
      text_.append(" are left out.");
    }
    if (report_.hidden > 0) {
      text_.append(" ").append(HiddenText(report_.hidden)).append(".");
    }
    if (!report_.maker.empty()) {
      text_.append(" Made by ").append(HtmlText(report_.maker)).append(".");
    }
    text_.append("</p>\n");
  }

  void AddCoverage() {
    const std::string picture = CoveragePicture(report_.rows);
    if (!picture.empty()) {
      text_.append("<h2>Coverage</h2>\n").append(picture);
      text_.append(
          "<p><span class=\"key done\"></span>recorded<span class=\"key bad\"></span>"
          "share of bad records<span class=\"key plan\"></span>planned by the table, "
          "nothing recorded; hours without either are left out</p>\n");
    }
  }

  void AddFindings() {
    if (report_.findings.empty()) {
      text_.append("<h2>Findings</h2>\n<p>None.</p>\n");
      return;
    }
    Begin("Findings", {"Severity", "Rule", "Box", "File", "What"});
    for (const SurveyFinding& finding : report_.findings) {
      const std::string_view severity = SeverityName(finding.severity);
      text_.append("<tr><td class=\"").append(severity).append("\">").append(severity);
      text_.append("</td>");
      Cell(finding.id);
      Cell(finding.box);
      Path(finding.path);
      Path(finding.sentence);
      text_.append("</tr>\n");
    }
    End();
  }

  void AddRecordings() {
    Begin("Recordings", {"Recording", "Box", "Site", "Line", "Method", "Start", "End", "Channels",
                         "Rate, Hz", "Frequencies, Hz", "Records", "Bad", "Saturated", "Table",
                         "Version", "Clock", "Calibration", "Remarks"});
    NoteFindings();
    for (const auto& row : report_.rows) {
      if (row->IsRecording()) {
        AddRecording(*row);
      }
    }
    End();
  }

  void AddRecording(const SurveyRow& row) {
    const TableFacts none;
    const TableFacts& table = row.table ? *row.table : none;
    text_.append("<tr>");
    Path(row.name);
    AddTrace(row);
    Figure(OrEmpty(row.box));
    Word(table.site);
    Word(table.line);
    Word(MethodName(table.method));
    Time(row.start);
    Time(row.end);
    Figure(OrEmpty(row.channels));
    Figure(row.rate > 0 ? FormatReal(row.rate) : std::string());
    Cell(FrequencyText(row));
    Figure(FormatInt(row.records));
    Figure(FormatInt(row.bad));
    Figure(row.is_deep ? FormatReal(100 * row.SaturatedShare(), 3) + " %" : std::string());
    Cell(TableStateName(row.table_state));
    Cell(VersionText(table));
    Cell(ClockText(table));
    Cell(CalibrationText(row));
    Cell(RemarksOf(row));
    text_.append("</tr>\n");
  }

  static std::string OrEmpty(std::int64_t number) {
    return number == 0 ? std::string() : FormatInt(number);
  }

  // Of the box and its program.
  static std::string VersionText(const TableFacts& table) {
    std::string text = table.hardware;
    return text.append(text.empty() || table.firmware.empty() ? "" : ", ").append(table.firmware);
  }

  static std::string RemarksOf(const SurveyRow& row) {
    std::string text;
    const auto add = [&text](std::string_view remark) {
      text.append(text.empty() ? "" : ", ").append(remark);
    };
    if (!row.failure.empty()) {
      add("not read");
    }
    if (!row.cut.empty()) {
      add("cut");
    }
    if (!row.empty.empty()) {
      add("empty");
    }
    if (row.has_wrong_clock) {
      add("wrong clock");
    }
    return text;
  }

  void NoteFindings() {
    for (const SurveyFinding& finding : report_.findings) {
      if (finding.severity != Severity::kHint && !finding.path.empty()) {
        told_of_.insert(finding.path);
      }
    }
  }

  // The first record, where something is wrong: of thousands the page would be too large.
  void AddTrace(const SurveyRow& row) {
    constexpr std::size_t kMostTraces = 500;
    constexpr std::size_t kColumns = 96;
    constexpr double kHeight = 22;
    const auto file = std::find_if(row.files.begin(), row.files.end(), [](const RowFile& one) {
      return one.type == FileType::kWaveform || one.type == FileType::kBand;
    });
    if (report_.folder.empty() || traces_ >= kMostTraces || !told_of_.contains(row.name) ||
        file == row.files.end() || row.records == 0) {
      return;
    }
    const TraceOutline outline =
        OutlineOfFirstRecord(report_.folder / row.place / PathOf(file->name), kColumns);
    if (outline.least.empty()) {
      return;
    }
    ++traces_;
    const double low = *std::min_element(outline.least.begin(), outline.least.end());
    const double high = *std::max_element(outline.most.begin(), outline.most.end());
    const auto y = [&](double value) {
      return FormatFixed(1 + (kHeight - 2) * (high - value) / std::max(high - low, 1.0), 1);
    };
    const double step = static_cast<double>(kColumns) / static_cast<double>(outline.least.size());
    text_.resize(text_.rfind("</td>"));  // into the cell of the name
    text_.append("<br><svg class=\"trace\" role=\"img\" aria-label=\"First record, channel 1\" ");
    text_.append("viewBox=\"0 0 96 22\"><path d=\"");
    for (std::size_t column = 0; column < outline.least.size(); ++column) {
      const std::string x = FormatFixed(static_cast<double>(column) * step, 1);
      text_.append(column == 0 ? "M" : "L").append(x).append(" ").append(y(outline.most[column]));
      text_.append("V").append(y(outline.least[column]));
    }
    text_.append("\"/></svg></td>");
  }

  void AddOthers() {
    const auto is_other = [](const auto& row) { return !row->IsRecording(); };
    if (std::none_of(report_.rows.begin(), report_.rows.end(), is_other)) {
      return;
    }
    Begin("Other files", {"File", "Kind", "Box", "Time"});
    for (const auto& row : report_.rows) {
      if (is_other(row)) {
        text_.append("<tr>");
        Path(row->name);
        Cell(RowKindName(row->kind));
        Figure(row->box == 0 ? std::string() : FormatInt(row->box));
        Time(row->start);
        text_.append("</tr>\n");
      }
    }
    End();
  }

  void AddChecksums() {
    const auto has_sum = [](const auto& row) {
      return std::any_of(row->files.begin(), row->files.end(),
                         [](const RowFile& file) { return !file.sha256.empty(); });
    };
    if (std::none_of(report_.rows.begin(), report_.rows.end(), has_sum)) {
      return;
    }
    Begin("Checksums", {"File", "Bytes", "SHA-256"});
    for (const auto& row : report_.rows) {
      for (const RowFile& file : row->files) {
        text_.append("<tr>");
        Path(file.shown);
        Figure(FormatInt(file.info.size));
        text_.append("<td class=\"sum\">").append(file.sha256).append("</td></tr>\n");
      }
    }
    End();
  }

  void AddNotes() {
    if (report_.notes.empty()) {
      return;
    }
    Begin("Not read", {"Path", "Why"});
    for (const ScanNote& note : report_.notes) {
      text_.append("<tr>");
      Path(note.path);
      Path(note.reason);
      text_.append("</tr>\n");
    }
    End();
  }

  const SurveyReport& report_;
  std::set<std::string_view> told_of_;
  std::size_t traces_ = 0;
  std::string text_;
};

}  // namespace

std::string HtmlText(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

std::string HiddenText(std::size_t count) {
  return Counted(count, count == 1 ? "hidden file or folder was" : "hidden files and folders were",
                 "")
      .append(" not looked at");
}

std::string SurveyReportPage(const SurveyReport& report) { return Page(report).Text(); }

}  // namespace orvane
