// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/check.h"

#include "check/rule.h"
#include "check/steps.h"

namespace orvane {
namespace {

bool IsLive(const Rule& rule) { return rule.needs != Needs::kFiles; }
bool ReadsFiles(const Rule& rule) { return rule.needs != Needs::kNothing; }

std::vector<Finding> RunRules(const Situation& situation, bool (*is_chosen)(const Rule&)) {
  std::vector<Finding> findings;
  for (const Topic& topic : AllRules()) {
    for (const Rule& rule : topic.rules) {
      if (is_chosen(rule)) {
        rule.look(situation, Teller(rule, &findings));
      }
    }
  }
  return findings;
}

}  // namespace

std::vector<Finding> CheckTable(const ParamTable& table, const ParamTime& now) {
  const Places places;
  Situation situation(table, now, places);
  situation.steps = CalculatedSteps(situation);
  return RunRules(situation, IsLive);
}

std::vector<Finding> CheckFiles(const ParamTable& table, const ParamTime& now,
                                const Places& places) {
  Situation situation(table, now, places);
  situation.steps = FileSteps(situation);
  return RunRules(situation, ReadsFiles);
}

std::vector<Topic> AllRules() {
  return {{"Times", TimeRules()},       {"Sampling and space", SpaceRules()},
          {"Boxes", SerialRules()},     {"Texts and versions", TextRules()},
          {"Settings", SettingRules()}, {"Stepping", StepRules()},
          {"Sensors", SensorRules()},   {"Channels", ChannelRules()},
          {"Site", SiteRules()},        {"Start-up files", SetRules()}};
}

}  // namespace orvane
