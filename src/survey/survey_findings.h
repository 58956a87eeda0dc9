// SPDX-License-Identifier: GPL-3.0-or-later
// What is wrong with a survey: the evening's list of rules, beside the morning's in check/.
#ifndef ORVANE_SURVEY_SURVEY_FINDINGS_H_
#define ORVANE_SURVEY_SURVEY_FINDINGS_H_

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"
#include "survey/recording.h"

namespace orvane {

struct SurveyFinding {
  std::string_view id;  ///< of the rule
  Severity severity = Severity::kHint;
  std::string sentence;  ///< UTF-8, printable, in one line
  std::string box;       ///< "2417"; empty: none in particular
  std::string path;      ///< of the row concerned, as `SurveyRow::name`; empty: the survey
  friend bool operator==(const SurveyFinding&, const SurveyFinding&) = default;
};

/// Takes the findings of one rule.
class SurveyTeller;

using SurveyRows = std::span<const std::shared_ptr<const SurveyRow>>;

struct SurveyRule {
  std::string_view id;
  Severity severity;       ///< of what it tells, unless it says otherwise
  std::string_view about;  ///< what it says and when, for docs/survey-checks.md
  void (*look)(SurveyRows rows, const SurveyTeller& tell);
  bool is_deep = false;              ///< needs samples
  std::string_view severities = {};  ///< where it tells with several
};

class SurveyTeller {
 public:
  SurveyTeller(const SurveyRule& rule, std::vector<SurveyFinding>* findings)
      : rule_(rule), findings_(*findings) {}
  void operator()(const SurveyRow& row, std::string sentence) const {
    As(rule_.severity, row, std::move(sentence));
  }
  void As(Severity severity, const SurveyRow& row, std::string sentence) const;
  /// Of the survey as a whole, or of a box that has no row.
  void OfSurvey(std::string sentence, std::string box = {}) const {
    findings_.push_back({rule_.id, rule_.severity, std::move(sentence), std::move(box), {}});
  }

 private:
  const SurveyRule& rule_;
  std::vector<SurveyFinding>& findings_;
};

/// The rules by topic, in the order of findings.
std::span<const SurveyRule> TimesRules();
std::span<const SurveyRule> QualityRules();
std::span<const SurveyRule> UnitRules();
std::span<const SurveyRule> FileRules();

using SharedFindings = std::shared_ptr<const std::vector<SurveyFinding>>;

/// What all rules say of the rows of a survey, in the order of the rules.
std::vector<SurveyFinding> FindInSurvey(SurveyRows rows);

/// docs/survey-checks.md, made of the rules.
std::string SurveyRulesMarkdown();

/// "2026/11/24 17:00:00" of seconds since 1970; empty for 0.
std::string SurveyTime(std::int64_t seconds);

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_FINDINGS_H_
