// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <system_error>
#include <thread>

#include "base/latin1.h"
#include "support.h"
#include "survey/survey_report.h"
#include "survey/survey_scan.h"

namespace orvane::fuzz {
namespace {

constexpr std::array kNames = {"1.TBL", "1.TSS",     "1.TS2",   "1.TSK",   "1.trs", "1.TFS",
                               "1.txt", "1_TS2.txt", "256.CLB", "256.CLC", "2.TSS", "1.tbl"};

void RequireText(const std::string& text) {
  Require(PrintableUtf8(text) == text, "what is shown can be printed");
}

void LookAt(const SurveyRow& row) {
  RequireText(row.name + row.failure + row.differs + CalibrationText(row) + FrequencyText(row));
  Require(row.bad <= row.records && row.end >= row.start, "a part is not more than the whole");
  Require(row.SaturatedShare() >= 0 && row.SaturatedShare() <= 1, "a share is one");
  Require(!row.files.empty(), "a row has a file");
  if (row.table != nullptr) {
    RequireText(row.table->site + row.table->line + row.table->firmware + row.table->hardware);
  }
}

}  // namespace

void FuzzSurvey(Bytes input) {
  std::error_code ignored;
  const auto folder = PathOf("survey");
  std::filesystem::remove_all(folder, ignored);
  std::filesystem::create_directory(folder, ignored);
  while (!input.empty()) {
    const std::string name =
        std::string("survey/").append(kNames[TakeByte(&input) % kNames.size()]);
    const std::size_t low = TakeByte(&input);
    const std::size_t told = low | TakeByte(&input) << 8U;
    const std::size_t size = std::min(told, input.size());
    PutFile(name, input.first(size));
    input = input.subspan(size);
  }
  SurveyOptions options;
  options.depth = ScanDepth::kDeep;
  SurveyScan scan(folder, options);
  while (!scan.IsDone()) {
    std::this_thread::yield();
  }
  Require(static_cast<bool>(scan.Outcome()) && scan.Notes().empty(), "a folder can be listed");
  const std::vector<SharedRow> rows = scan.Take(1000);
  for (const SharedRow& row : rows) {
    LookAt(*row);
  }
  for (const SurveyFinding& finding : scan.Findings()) {
    Require(!finding.sentence.empty(), "a finding says something");
    RequireText(finding.sentence + finding.path);
  }
  const std::string page = SurveyReportPage({"x", rows, scan.Findings(), scan.Notes()});
  Require(page.ends_with("</html>\n"), "a page is whole");
}

void FuzzSurveyFacts(Bytes input) {
  FileFacts facts;
  if (FactsFrom({reinterpret_cast<const char*>(input.data()), input.size()}, &facts)) {
    FileFacts again;
    const std::string image = FactsImage(facts);
    Require(FactsFrom(image, &again) && FactsImage(again) == image, "facts come back");
  }
}

}  // namespace orvane::fuzz
