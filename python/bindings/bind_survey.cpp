// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>
#include <thread>

#include "bind.h"
#include "files/path_text.h"
#include "survey/survey_index.h"
#include "survey/survey_scan.h"

namespace orvane::python {
namespace {

py::object OrNone(std::int64_t seconds) {
  return seconds == 0 ? py::object(py::none()) : py::cast(seconds);
}

py::dict FromRow(const SurveyRow& row) {
  const TableFacts none;
  const TableFacts& table = row.table ? *row.table : none;
  py::list files;
  for (const RowFile& file : row.files) {
    files.append(py::make_tuple(file.shown, file.info.size, file.sha256));
  }
  py::dict told;
  told["kind"] = std::string(RowKindName(row.kind));
  told["file"] = row.name;
  told["box"] = row.box;
  told["site"] = table.site;
  told["line"] = table.line;
  told["method"] = std::string(MethodName(table.method));
  told["start"] = OrNone(row.start);
  told["end"] = OrNone(row.end);
  told["channels"] = row.channels;
  told["rate"] = row.rate;
  told["frequencies"] = row.frequencies;
  told["records"] = row.records;
  told["bad"] = row.bad;
  told["cut"] = row.cut;
  told["table"] = std::string(TableStateName(row.table_state));
  told["clock"] = ClockText(table);
  told["calibrations"] = CalibrationText(row);
  told["saturated"] = row.is_deep ? py::cast(row.SaturatedShare()) : py::object(py::none());
  told["failure"] = row.failure;
  told["files"] = files;
  return told;
}

py::dict FromSurveyFinding(const SurveyFinding& finding) {
  py::dict told;
  told["rule"] = std::string(finding.id);
  told["severity"] = std::string(SeverityName(finding.severity));
  told["sentence"] = finding.sentence;
  told["box"] = finding.box;
  told["file"] = finding.path;
  return told;
}

// (rows, findings, notes). The index is that of the tool and of the program; an interrupt from the
// keyboard ends the scan.
py::tuple Scan(const std::string& folder, const std::string& depth, const std::string& calibrations,
               bool has_checksums, bool has_index) {
  SurveyOptions options;
  options.depth = depth == "names"  ? ScanDepth::kNames
                  : depth == "deep" ? ScanDepth::kDeep
                                    : ScanDepth::kHeaders;
  options.calibrations = PathOf(calibrations);
  options.has_checksums = has_checksums;
  options.index = has_index ? UsualIndexFile() : std::filesystem::path();
  SurveyScan scan(PathOf(folder), options);
  py::list rows;
  const auto take = [&scan, &rows] {
    for (auto some = scan.Take(); !some.empty(); some = scan.Take()) {
      for (const SharedRow& row : some) {
        rows.append(FromRow(*row));
      }
    }
  };
  while (!scan.IsDone()) {
    {
      const py::gil_scoped_release free;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    if (PyErr_CheckSignals() != 0) {
      throw py::error_already_set();
    }
    take();
  }
  take();
  Check(scan.Outcome(), PathOf(folder));
  py::list findings;
  for (const SurveyFinding& finding : scan.Findings()) {
    findings.append(FromSurveyFinding(finding));
  }
  py::list notes;
  for (const ScanNote& note : scan.Notes()) {
    notes.append(py::make_tuple(note.path, note.reason));
  }
  return py::make_tuple(rows, findings, notes);
}

}  // namespace

void BindSurvey(py::module_* module) { module->def("scan", &Scan); }

}  // namespace orvane::python
