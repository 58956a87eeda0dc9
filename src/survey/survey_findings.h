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
  std::vector<std::string> also = {};  ///< of others that it concerns too
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

/// Whether a row is of interest from a time on: it ends later, or its times cannot be trusted.
bool IsSince(const SurveyRow& row, std::int64_t since);

class SurveyTeller {
 public:
  /// What concerns rows before `since` alone is left out.
  SurveyTeller(const SurveyRule& rule, std::int64_t since, std::vector<SurveyFinding>* findings)
      : rule_(rule), since_(since), findings_(*findings) {}
  bool IsTold(const SurveyRow& row) const { return IsSince(row, since_); }
  bool IsTold(std::int64_t end) const { return since_ == 0 || end >= since_; }
  void operator()(const SurveyRow& row, std::string sentence) const {
    As(rule_.severity, row, std::move(sentence));
  }
  void As(Severity severity, const SurveyRow& row, std::string sentence) const;
  /// Of the first of some rows, and of the others too. None of them is left out.
  void OfRows(std::span<const SurveyRow* const> rows, std::string sentence) const;
  /// Of the survey as a whole, or of a box that has no row.
  void OfSurvey(std::string sentence, std::string box = {}) const {
    findings_.push_back({rule_.id, rule_.severity, std::move(sentence), std::move(box), {}, {}});
  }

 private:
  const SurveyRule& rule_;
  std::int64_t since_;
  std::vector<SurveyFinding>& findings_;
};

/// The rules by topic, in the order of findings.
std::span<const SurveyRule> TimesRules();
std::span<const SurveyRule> QualityRules();
std::span<const SurveyRule> UnitRules();
std::span<const SurveyRule> FileRules();

using SharedFindings = std::shared_ptr<const std::vector<SurveyFinding>>;

/// What all rules say of the rows of a survey, in the order of the rules; with `since` (seconds
/// since 1970) only of those from then on, though all are looked at.
std::vector<SurveyFinding> FindInSurvey(SurveyRows rows, std::int64_t since = 0);

/// docs/survey-checks.md, made of the rules.
std::string SurveyRulesMarkdown();

/// "2026/11/24 17:00:00" of seconds since 1970; empty for 0.
std::string SurveyTime(std::int64_t seconds);

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_FINDINGS_H_
