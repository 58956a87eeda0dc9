// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_findings.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

struct Topic {
  std::string_view title;
  std::span<const SurveyRule> rules;
};

std::array<Topic, 4> Topics() {
  return {{{"When", TimesRules()},
           {"How well", QualityRules()},
           {"Boxes and calibrations", UnitRules()},
           {"Files", FileRules()}}};
}

constexpr std::string_view kIntroduction =
    R"(# What the evening's look at a survey says

Made by `orvane-cli survey scan --rules`; a test compares it. It goes on where [the morning's check](checks.md)
ends, with the same severities: a warning is probably not what is meant, a hint is worth a look and often right.
Rules marked * look at samples and need `--deep`. A recording is a waveform with its bands; its plan is "STIM"
to "ETIM" of its table, where both have a date. Times are UTC.
)";

}  // namespace

bool IsSince(const SurveyRow& row, std::int64_t since) {
  if (row.has_wrong_clock) {
    return true;
  }
  std::int64_t last = row.end;
  if (last == 0 && row.table != nullptr) {
    last = std::max(row.table->plan_end, row.table->first);
    last = last == 0 ? row.table->fix : last;
  }
  return last == 0 || last >= since;
}

void SurveyTeller::As(Severity severity, const SurveyRow& row, std::string sentence) const {
  if (IsTold(row)) {
    findings_.push_back({rule_.id,
                         severity,
                         std::move(sentence),
                         row.box == 0 ? std::string() : FormatInt(row.box),
                         row.name,
                         {}});
  }
}

void SurveyTeller::OfRows(std::span<const SurveyRow* const> rows, std::string sentence) const {
  As(rule_.severity, *rows.front(), std::move(sentence));
  for (const SurveyRow* row : rows.subspan(1)) {
    findings_.back().also.push_back(row->name);
  }
}

std::vector<SurveyFinding> FindInSurvey(SurveyRows rows, std::int64_t since) {
  std::vector<SurveyFinding> findings;
  for (const Topic& topic : Topics()) {
    for (const SurveyRule& rule : topic.rules) {
      rule.look(rows, SurveyTeller(rule, since, &findings));
    }
  }
  return findings;
}

std::string SurveyRulesMarkdown() {
  std::string text(kIntroduction);
  for (const Topic& topic : Topics()) {
    text.append("\n## ").append(topic.title);
    text.append("\n\n| rule | severity | when |\n|---|---|---|\n");
    for (const SurveyRule& rule : topic.rules) {
      text.append("| `").append(rule.id).append(rule.is_deep ? "` * | " : "` | ");
      text.append(rule.severities.empty() ? SeverityName(rule.severity) : rule.severities);
      text.append(" | ").append(rule.about).append(" |\n");
    }
  }
  return text;
}

std::string SurveyTime(std::int64_t seconds) {
  return seconds <= 0 ? std::string()
                      : FormatParamTime(SecondsToParamTime(static_cast<std::uint32_t>(seconds)));
}

}  // namespace orvane
