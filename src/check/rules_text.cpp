// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/rule.h"

namespace orvane {
namespace {

constexpr std::string_view kIntroduction =
    R"(# What the morning check looks at

Made by `orvane-cli table check --rules`; a test compares it. An error means that the boxes would record
nothing, or nothing usable; a warning is probably not what is meant; a hint is worth a look and often right.
A rule speaks once for each box, or once for the table, and names all channels concerned. Rules marked * read
files; the rules of stepping from `step-long` on read the schedule file where "AUTO" names one.

Channels are those of the local box ("TCHN", or "NCHN" where that is 0) and of the auxiliary boxes; recorded
are those whose flag is not 0. The letter of a channel is the first of its definition. Times are UTC.
)";

std::string Row(const Rule& rule) {
  const std::string_view severity =
      rule.severities.empty() ? SeverityName(rule.severity) : rule.severities;
  return "| `" + std::string(rule.id) + "`" + (rule.needs == Needs::kFiles ? " *" : "") + " | " +
         std::string(severity) + " | " + std::string(rule.about) + " |\n";
}

}  // namespace

std::string RulesMarkdown() {
  std::string text(kIntroduction);
  for (const Topic& topic : AllRules()) {
    text += "\n## " + std::string(topic.title) + "\n\n| rule | severity | when |\n|---|---|---|\n";
    for (const Rule& rule : topic.rules) {
      text += Row(rule);
    }
  }
  return text;
}

}  // namespace orvane
