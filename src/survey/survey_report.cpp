// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_report.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/number_text.h"

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
svg{width:100%;max-width:1100px}svg text{font-size:11px;fill:var(--text)}.day{stroke:var(--line);fill:none}
.plan{fill:var(--plan)}.done{fill:var(--done)}.bad{fill:var(--bad)}
.key{display:inline-block;width:1.2em;height:.8em;margin:0 .3em 0 1em}
.key.plan{background:var(--plan)}.key.done{background:var(--done)}.key.bad{background:var(--bad)}
@media print{:root{color-scheme:light;--text:#000;--back:#fff;--line:#999;--soft:#eee;--done:#2f6fb3;--bad:#c2372e;--plan:#dccb94}
@page{size:A4 landscape;margin:12mm}body{margin:0;font-size:9pt;print-color-adjust:exact;-webkit-print-color-adjust:exact}
.wide{overflow:visible}thead{display:table-header-group}tr,svg{break-inside:avoid}h2{break-after:avoid}}
</style>
)";

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
  void Time(std::int64_t seconds) {
    text_.append("<td class=\"t\">").append(SurveyTime(seconds)).append("</td>");
  }
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
        first = first == 0 || (row->start > 0 && row->start < first) ? row->start : first;
        last = std::max(last, row->end);
      }
    }
    text_.append("<p>").append(FormatInt(recordings)).append(" recordings of ");
    text_.append(FormatInt(boxes.size())).append(" boxes at ").append(FormatInt(sites.size()));
    text_.append(" sites");
    if (first > 0) {
      text_.append(", ").append(SurveyTime(first)).append(" to ").append(SurveyTime(last));
    }
    text_.append(" (UTC). ").append(FormatInt(report_.findings.size())).append(" findings.</p>\n");
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
                         "Rate, Hz", "Frequencies, Hz", "Records", "Bad", "Clock", "Calibration"});
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
    Figure(FormatInt(row.box));
    Cell(table.site);
    Cell(table.line);
    Cell(MethodName(table.method));
    Time(row.start);
    Time(row.end);
    Figure(FormatInt(row.channels));
    Figure(FormatReal(row.rate));
    Cell(FrequencyText(row));
    Figure(FormatInt(row.records));
    Figure(FormatInt(row.bad));
    Cell(ClockText(table));
    Cell(CalibrationText(row));
    text_.append("</tr>\n");
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

std::string SurveyReportPage(const SurveyReport& report) { return Page(report).Text(); }

}  // namespace orvane
