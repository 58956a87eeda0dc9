// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "survey/survey_findings.h"

namespace orvane {
namespace {

constexpr std::int64_t kTolerance = 60;  // seconds
constexpr std::int64_t kRounding = 2;    // seconds, of record times and their lengths

using ByBox = std::map<std::int32_t, std::vector<const SurveyRow*>>;

bool HasTimes(const SurveyRow& row) { return row.IsRecording() && row.start > 0; }

// The recordings of each box by their beginnings.
ByBox RecordingsByBox(SurveyRows rows) {
  ByBox boxes;
  for (const auto& row : rows) {
    if (HasTimes(*row) && row->box != 0) {
      boxes[row->box].push_back(row.get());
    }
  }
  for (auto& [box, recordings] : boxes) {
    std::stable_sort(recordings.begin(), recordings.end(),
                     [](const auto* a, const auto* b) { return a->start < b->start; });
  }
  return boxes;
}

bool HasPlan(const SurveyRow& row) {
  return row.table != nullptr && row.table->plan_start > 0 &&
         row.table->plan_end > row.table->plan_start;
}

bool PlansAt(const SurveyRow& row, std::int64_t time) {
  return HasPlan(row) && row.table->plan_start <= time && time <= row.table->plan_end;
}

std::string Length(std::int64_t seconds) {
  return seconds < 120 ? FormatInt(seconds).append(" s")
                       : FormatInt(seconds / 60).append(" minutes");
}

void LookAtGaps(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& [box, recordings] : RecordingsByBox(rows)) {
    std::int64_t end = 0;
    for (const SurveyRow* row : recordings) {
      const bool is_planned = PlansAt(*row, end) && PlansAt(*row, row->start);
      if (end > 0 && is_planned && row->start - end > kTolerance) {
        tell(*row, std::string("Box ")
                       .append(FormatInt(box))
                       .append(" recorded nothing for ")
                       .append(Length(row->start - end))
                       .append(" from ")
                       .append(SurveyTime(end))
                       .append(" although its table plans to"));
      }
      end = std::max(end, row->end);
    }
  }
}

void LookAtOverlaps(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& [box, recordings] : RecordingsByBox(rows)) {
    const SurveyRow* last = nullptr;  // the one that ends last
    for (const SurveyRow* row : recordings) {
      if (last != nullptr && last->end - row->start > kRounding) {
        tell(*row, std::string("Box ")
                       .append(FormatInt(box))
                       .append(" is in two recordings at ")
                       .append(SurveyTime(row->start))
                       .append(": also in ")
                       .append(last->name));
      }
      last = last == nullptr || row->end > last->end ? row : last;
    }
  }
}

// The first recording of each box in each plan.
void LookAtStarts(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& [box, recordings] : RecordingsByBox(rows)) {
    std::set<std::int64_t> seen;
    for (const SurveyRow* row : recordings) {
      const bool is_in_plan = PlansAt(*row, row->start);
      if (HasPlan(*row) && row->end >= row->table->plan_start &&
          seen.insert(row->table->plan_start).second && is_in_plan &&
          row->start - row->table->plan_start > kTolerance) {
        tell(*row, std::string("Box ")
                       .append(FormatInt(box))
                       .append(" began ")
                       .append(Length(row->start - row->table->plan_start))
                       .append(" late: planned for ")
                       .append(SurveyTime(row->table->plan_start)));
      }
    }
  }
}

// When each box recorded: for each beginning, in their order, the latest end so far.
class RecordedTimes {
 public:
  explicit RecordedTimes(SurveyRows rows) {
    for (const auto& [box, recordings] : RecordingsByBox(rows)) {
      auto& times = times_[box];
      std::int64_t end = 0;
      for (const SurveyRow* row : recordings) {
        end = std::max(end, row->end);
        times.emplace_back(row->start, end);
      }
    }
  }

  bool HasAny(std::int32_t box, std::int64_t start, std::int64_t end) const {
    const auto place = times_.find(box);
    if (place == times_.end()) {
      return false;
    }
    const auto after = std::upper_bound(
        place->second.begin(), place->second.end(), end,
        [](std::int64_t time, const auto& recording) { return time < recording.first; });
    return after != place->second.begin() && (after - 1)->second >= start;
  }

 private:
  std::map<std::int32_t, std::vector<std::pair<std::int64_t, std::int64_t>>> times_;
};

void LookAtSpreads(SurveyRows rows, const SurveyTeller& tell) {
  const RecordedTimes times(rows);
  std::set<std::pair<std::int32_t, std::int64_t>> told;
  for (const auto& row : rows) {
    if (!HasTimes(*row) || row->table == nullptr) {
      continue;
    }
    const std::int64_t start = HasPlan(*row) ? row->table->plan_start : row->start;
    const std::int64_t end = std::max(HasPlan(*row) ? row->table->plan_end : 0, row->end);
    for (const PlannedBox& box : row->table->boxes) {
      if (!times.HasAny(box.serial, start, end) && told.emplace(box.serial, start).second) {
        tell.OfSurvey(std::string("Box ")
                          .append(FormatInt(box.serial))
                          .append(" of the spread of ")
                          .append(row->name)
                          .append(" recorded nothing from ")
                          .append(SurveyTime(start))
                          .append(" to ")
                          .append(SurveyTime(end)),
                      FormatInt(box.serial));
      }
    }
  }
}

constexpr auto kRules = std::to_array<SurveyRule>({
    {"recording-gap", Severity::kWarning,
     "a box recorded nothing for more than a minute between two recordings, both in the plan of "
     "the later one",
     LookAtGaps},
    {"recording-overlap", Severity::kWarning,
     "two recordings of one box have times in common: a copy, or a wrong clock", LookAtOverlaps},
    {"start-late", Severity::kWarning,
     "the first recording of a box in a plan begins more than a minute after the plan does",
     LookAtStarts},
    {"box-silent", Severity::kWarning,
     "an auxiliary box with channels in the table of a recording has none of its own in that plan "
     "(else in the time of the recording)",
     LookAtSpreads},
});

}  // namespace

std::span<const SurveyRule> TimesRules() { return kRules; }

}  // namespace orvane
