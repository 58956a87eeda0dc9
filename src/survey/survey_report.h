// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_SURVEY_REPORT_H_
#define ORVANE_SURVEY_SURVEY_REPORT_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "survey/survey_findings.h"

namespace orvane {

struct SurveyReport {
  std::string name;  ///< of the survey's folder; printable
  SurveyRows rows;
  std::span<const SurveyFinding> findings;
  std::span<const ScanNote> notes;
  std::filesystem::path folder = {};  ///< for pictures of what has findings; empty: none
  std::int64_t since = 0;             ///< seconds since 1970; earlier recordings were left out
  std::size_t hidden = 0;             ///< files and folders that were not looked at
  std::string maker = {};             ///< "Orvane 5.1"
};

/// "3 hidden files and folders were not looked at".
std::string HiddenText(std::size_t count);

/// One HTML page that needs no other file and no script: what was recorded when by which box, the
/// findings, the recordings and, where they were made, checksums of all files. The same rows give
/// the same bytes.
std::string SurveyReportPage(const SurveyReport& report);

/// A picture (SVG) of when boxes recorded: a line for each, from the first to the last plan or
/// recording; empty where nothing has a time.
std::string CoveragePicture(SurveyRows rows);

/// A text with the characters that HTML takes for its own escaped.
std::string HtmlText(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_REPORT_H_
