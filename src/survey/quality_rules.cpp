// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "base/number_text.h"
#include "survey/survey_findings.h"

namespace orvane {
namespace {

constexpr double kMostBad = 0.05;
constexpr double kMostSaturated = 0.001;

// "Channel 3" or "Channels 3, 5".
std::string ChannelsText(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) {
    text.append(text.empty() ? "" : ", ").append(FormatInt(number));
  }
  return text.insert(0, numbers.size() == 1 ? "Channel " : "Channels ");
}

std::string Percent(double share) { return FormatFixed(100 * share, 2).append(" %"); }

void LookAtBad(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    const double share =
        row->records == 0 ? 0 : static_cast<double>(row->bad) / static_cast<double>(row->records);
    if (row->IsRecording() && share > kMostBad) {
      tell(*row, FormatInt(row->bad)
                     .append(" of ")
                     .append(FormatInt(row->records))
                     .append(row->bad == 1 ? " records is bad" : " records are bad"));
    }
  }
}

void LookAtSaturated(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    std::vector<int> channels;
    for (std::size_t i = 0; i < row->samples.size(); ++i) {
      const ChannelFacts& channel = row->samples[i];
      if (static_cast<double>(channel.saturated) >
          kMostSaturated * static_cast<double>(channel.samples)) {
        channels.push_back(static_cast<int>(i) + 1);
      }
    }
    if (row->IsRecording() && !channels.empty()) {
      tell(*row,
           ChannelsText(channels)
               .append(channels.size() == 1 ? " is saturated, in " : " are saturated, in up to ")
               .append(Percent(row->SaturatedShare()))
               .append(channels.size() == 1 ? " of its samples" : " of their samples"));
    }
  }
}

void LookAtDead(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    if (const auto dead = row->DeadChannels(); row->IsRecording() && !dead.empty()) {
      tell(*row, ChannelsText(dead).append(dead.size() == 1 ? " never changes" : " never change"));
    }
  }
}

void LookAtEqual(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& row : rows) {
    std::string pairs;
    for (const auto& [a, b] : row->EqualChannels()) {
      pairs.append(pairs.empty() ? "" : ", ").append(FormatInt(a)).append(" and ");
      pairs.append(FormatInt(b));
    }
    if (row->IsRecording() && !pairs.empty()) {
      tell(*row, std::string("Channels ").append(pairs).append(" recorded the same"));
    }
  }
}

constexpr auto kRules = std::to_array<SurveyRule>({
    {"records-bad", Severity::kWarning, "more than 5 % of the records of a recording are bad",
     LookAtBad},
    {"samples-saturated", Severity::kWarning,
     "more than 0.1 % of the samples of a channel are saturated, bad records left out",
     LookAtSaturated, true},
    {"channel-dead", Severity::kWarning, "all samples of a channel are the same", LookAtDead, true},
    {"channels-equal", Severity::kWarning,
     "two channels have the same least, greatest and sums in every record: one wire, or a wrong "
     "setting",
     LookAtEqual, true},
});

}  // namespace

std::span<const SurveyRule> QualityRules() { return kRules; }

}  // namespace orvane
