// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/check.h"

#include "check/check_memory.h"
#include "check/rule.h"
#include "check/steps.h"

namespace orvane {
namespace {

template <typename IsChosen>
std::vector<Finding> RunRules(const Situation& situation, const IsChosen& is_chosen) {
  std::vector<Finding> findings;
  for (const Topic& topic : AllRules()) {
    for (const Rule& rule : topic.rules) {
      if (is_chosen(rule.needs)) {
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
  return RunRules(situation, [](Needs needs) { return needs != Needs::kFiles; });
}

std::vector<Finding> CheckFiles(const ParamTable& table, const ParamTime& now,
                                const Places& places) {
  Places remembering = places;
  if (remembering.memory == nullptr) {
    remembering.memory = std::make_shared<CheckMemory>();
  }
  Situation situation(table, now, remembering);
  situation.steps = FileSteps(situation);
  situation.set_files = SetFilesOf(table, places.set, remembering.memory.get());
  return RunRules(situation, [&situation](Needs needs) {
    return needs == Needs::kFiles || (needs == Needs::kSteps && HasStepFile(situation));
  });
}

std::vector<Topic> AllRules() {
  return {{"Times", TimeRules()},       {"Sampling and space", SpaceRules()},
          {"Boxes", SerialRules()},     {"Texts and versions", TextRules()},
          {"Settings", SettingRules()}, {"Stepping", StepRules()},
          {"Sensors", SensorRules()},   {"Channels", ChannelRules()},
          {"Site", SiteRules()},        {"Start-up files", SetRules()}};
}

std::vector<Finding> CheckAll(const ParamTable& table, const ParamTime& now, const Places& places) {
  std::vector<Finding> findings = CheckTable(table, now);
  const std::vector<Finding> more = CheckFiles(table, now, places);
  findings.insert(findings.end(), more.begin(), more.end());
  return findings;
}

}  // namespace orvane
