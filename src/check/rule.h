// SPDX-License-Identifier: GPL-3.0-or-later
// What every rule is: a row of a table, and a function that looks and tells.
#ifndef ORVANE_CHECK_RULE_H_
#define ORVANE_CHECK_RULE_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"
#include "check/situation.h"

namespace orvane {

/// What a rule needs besides the table.
enum class Needs {
  kNothing,
  kSteps,  ///< the steps of the schedule, calculated or from a file
  kFiles,
};

class Teller;

struct Rule {
  std::string_view id;
  Severity severity;       ///< of what it tells, unless it says otherwise
  std::string_view about;  ///< what it says and when, for docs/checks.md
  void (*look)(const Situation& situation, const Teller& tell);
  Needs needs = Needs::kNothing;
  std::string_view severities = {};  ///< for docs/checks.md, where it tells with several
};

/// Takes the findings of one rule.
class Teller {
 public:
  Teller(const Rule& rule, std::vector<Finding>* findings) : rule_(rule), findings_(*findings) {}

  /// `keys`: the first is where it is mended.
  void operator()(std::vector<ParamKey> keys, std::string sentence, std::string box = {}) const {
    As(rule_.severity, std::move(keys), std::move(sentence), std::move(box));
  }
  void As(Severity severity, std::vector<ParamKey> keys, std::string sentence,
          std::string box = {}) const {
    findings_.push_back({rule_.id, severity, std::move(sentence), std::move(keys), std::move(box)});
  }

 private:
  const Rule& rule_;
  std::vector<Finding>& findings_;
};

/// The rules by topic.
std::span<const Rule> TimeRules();
std::span<const Rule> SpaceRules();
std::span<const Rule> SerialRules();
std::span<const Rule> TextRules();
std::span<const Rule> SettingRules();
std::span<const Rule> StepRules();
std::span<const Rule> SensorRules();
std::span<const Rule> ChannelRules();
std::span<const Rule> SiteRules();
std::span<const Rule> SetRules();

struct Topic {
  std::string_view title;
  std::span<const Rule> rules;
};
/// All of them, in the order in which findings come.
std::vector<Topic> AllRules();

/// docs/checks.md, made of the rules.
std::string RulesMarkdown();

}  // namespace orvane

#endif  // ORVANE_CHECK_RULE_H_
