// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "survey/recorded_times.h"

namespace orvane {
namespace {

constexpr std::int64_t kTolerance = 60;  // seconds
constexpr std::int64_t kRounding = 2;    // seconds, of record times and their lengths

using ByBox = std::map<std::int32_t, std::vector<const SurveyRow*>>;

// The recordings of each box by their beginnings.
ByBox RecordingsByBox(SurveyRows rows) {
  ByBox boxes;
  for (const auto& row : rows) {
    if (row->HasTimes() && row->box != 0) {
      boxes[row->box].push_back(row.get());
    }
  }
  for (auto& [box, recordings] : boxes) {
    std::stable_sort(recordings.begin(), recordings.end(),
                     [](const auto* a, const auto* b) { return a->start < b->start; });
  }
  return boxes;
}

bool PlansAt(const SurveyRow& row, std::int64_t time) {
  const auto plan = PlanOf(row);
  return plan && plan->start <= time && time <= plan->end;
}

std::string Length(std::int64_t seconds) {
  return seconds < 120 ? FormatInt(seconds).append(" s")
                       : FormatInt(seconds / 60).append(" minutes");
}

// A box that was carried to another site had better things to do than what its old table planned.
bool IsAtPlaceOf(const SurveyRow& before, const SurveyRow& row) {
  return row.table == nullptr ||
         (before.table != nullptr && before.table->site == row.table->site &&
          before.table->line == row.table->line);
}

void LookAtGaps(SurveyRows rows, const SurveyTeller& tell) {
  for (const auto& [box, recordings] : RecordingsByBox(rows)) {
    std::int64_t end = 0;
    bool is_sure = true;  // records with odd dates may be what is missing
    const SurveyRow* before = nullptr;
    for (const SurveyRow* row : recordings) {
      const auto plans = [&](const SurveyRow& one) {
        return PlansAt(one, end) && PlansAt(one, row->start);
      };
      const bool is_planned =
          plans(*row) || (before != nullptr && IsAtPlaceOf(*before, *row) && plans(*before));
      is_sure = is_sure && row->odd_dates == 0;
      if (end > 0 && is_planned && is_sure && row->start - end > kTolerance) {
        tell(*row, std::string("Box ")
                       .append(FormatInt(box))
                       .append(" recorded nothing for ")
                       .append(Length(row->start - end))
                       .append(" from ")
                       .append(SurveyTime(end))
                       .append(" although its table plans to"));
      }
      is_sure = row->odd_dates == 0;
      before = before == nullptr || row->end >= end ? row : before;
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
      if (PlanOf(*row) && row->end >= row->table->plan_start &&
          seen.insert(row->table->plan_start).second && is_in_plan && row->odd_dates == 0 &&
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

std::string_view RoleText(BoxRole role) {
  return role == BoxRole::kTransmitter ? " (transmitter)"
         : role == BoxRole::kReference ? " (reference)"
                                       : "";
}

// Boxes whose tables plan that they record, each once for each plan.
class SilentBoxes {
 public:
  SilentBoxes(SurveyRows rows, const SurveyTeller& tell) : rows_(rows), tell_(tell), times_(rows) {}

  void Tell() {
    // Those have a finding of their own.
    for (const auto& row : rows_) {
      if ((row->IsRecording() && row->records == 0) || IsLost(*row, times_)) {
        const auto plan = PlanOf(*row);
        told_.emplace(row->box, plan ? plan->start : 0);
      }
    }
    // A recording names its spread better than a start-up file.
    for (const bool is_recording : {true, false}) {
      for (const auto& row : rows_) {
        if (row->IsRecording() == is_recording) {
          LookAt(*row);
        }
      }
    }
  }

 private:
  void LookAt(const SurveyRow& row) {
    auto planned = CountingPlanOf(row, times_);
    if (row.HasTimes()) {
      // A plan that was left in the table says nothing of this recording; one that is still to come
      // says when the others record.
      const TimeStretch own = {row.start, row.end};
      planned =
          planned && row.start <= planned->end
              ? TimeStretch{std::min(planned->start, own.start), std::max(planned->end, own.end)}
              : own;
    }
    if (!planned) {
      return;
    }
    for (const PlannedBox& box : PlannedBoxesOf(row)) {
      if (!times_.HasAny(box.serial, *planned) && tell_.IsTold(planned->end) &&
          told_.emplace(box.serial, planned->start).second) {
        tell_.OfSurvey(std::string("Box ")
                           .append(FormatInt(box.serial))
                           .append(RoleText(box.role))
                           .append(" of the spread of ")
                           .append(row.name)
                           .append(" recorded nothing from ")
                           .append(SurveyTime(planned->start))
                           .append(" to ")
                           .append(SurveyTime(planned->end)),
                       FormatInt(box.serial));
      }
    }
  }

  SurveyRows rows_;
  const SurveyTeller& tell_;
  RecordedTimes times_;
  std::set<std::pair<std::int32_t, std::int64_t>> told_;
};

void LookAtSpreads(SurveyRows rows, const SurveyTeller& tell) { SilentBoxes(rows, tell).Tell(); }

void LookAtLost(SurveyRows rows, const SurveyTeller& tell) {
  const RecordedTimes times(rows);
  std::set<std::pair<std::int32_t, std::int64_t>> told;  // of copies of a table one
  for (const auto& row : rows) {
    if (IsLost(*row, times) &&
        told.emplace(row->box, std::max(row->table->first, row->table->fix)).second) {
      std::string sentence = "The box has written this table after ";
      sentence.append(row->table->recorded > 0 ? FormatInt(row->table->recorded) : "its");
      sentence.append(row->table->recorded == 1 ? " record" : " records");
      if (row->table->first > 0) {
        sentence.append(" from ").append(SurveyTime(row->table->first)).append(" on");
      }
      tell(*row, sentence.append(", but they are not in the survey"));
    }
  }
}

// Satellites count weeks to 1024: a receiver that takes one round for another is almost 20 years
// from those beside it.
class WeekRounds {
 public:
  explicit WeekRounds(SurveyRows rows) {
    for (const auto& row : rows) {
      if (row->HasTimes()) {
        starts_.push_back(row->start);
      }
    }
    std::sort(starts_.begin(), starts_.end());
  }

  /// "before" or "after" those that are more than these; of as many the earlier are wrong. Empty
  /// where there are none a round away.
  std::string_view PlaceOf(const SurveyRow& row) const {
    constexpr std::int64_t kRound = 1024 * kWeek;
    const auto own = HowManyAt(row.start);
    const auto later = HowManyAt(row.start + kRound);
    const auto plan = PlanOf(row);
    const bool is_as_planned =
        plan && row.start >= plan->start - kWeek && row.start <= plan->end + kWeek;
    if (!row.HasTimes() || is_as_planned || (later == 0 && HowManyAt(row.start - kRound) <= own)) {
      return {};
    }
    return later == 0 ? "after" : later >= own ? "before" : "";
  }

 private:
  static constexpr std::int64_t kWeek = std::int64_t{7} * 86400;

  std::ptrdiff_t HowManyAt(std::int64_t time) const {
    return std::upper_bound(starts_.begin(), starts_.end(), time + kWeek) -
           std::lower_bound(starts_.begin(), starts_.end(), time - kWeek);
  }

  std::vector<std::int64_t> starts_;
};

void LookAtDates(SurveyRows rows, const SurveyTeller& tell) {
  const WeekRounds rounds(rows);
  for (const auto& row : rows) {
    const auto dated = [&row] {
      return std::string("The records are dated ").append(SurveyTime(row->start));
    };
    if (row->has_wrong_clock) {
      const auto plan = PlanOf(*row);
      tell(*row, plan ? dated() + ", planned for " + SurveyTime(plan->start)
                      : dated() + ": a clock that was not set");
    } else if (const auto place = rounds.PlaceOf(*row); !place.empty()) {
      tell(*row, dated() + ", 1024 weeks " + std::string(place) +
                     " others: a clock that took the week for one of another round");
    } else if (row->odd_dates > 0) {
      std::string sentence = FormatInt(row->odd_dates);
      sentence.append(" of ").append(FormatInt(row->records)).append(" records ");
      sentence.append(row->odd_dates == 1 ? "has" : "have");
      sentence.append(row->odd_date == 0 ? " no date" : " a date far from the others', ");
      tell(*row, sentence.append(SurveyTime(row->odd_date)));
    }
  }
}

constexpr auto kRules = std::to_array<SurveyRule>({
    {"recording-gap", Severity::kWarning,
     "a box recorded nothing for more than a minute between two recordings, both in the plan of "
     "one of them; of the earlier where it was not carried to another site or line",
     LookAtGaps},
    {"recording-overlap", Severity::kWarning,
     "two recordings of one box have times in common: a copy, or a wrong clock", LookAtOverlaps},
    {"start-late", Severity::kWarning,
     "the first recording of a box in a plan begins more than a minute after the plan does",
     LookAtStarts},
    {"box-silent", Severity::kWarning,
     "a box with channels in the table of a recording (auxiliary, transmitter and reference "
     "boxes), "
     "or in a start-up file of whose plan half had passed when the last recording ended (its own "
     "box "
     "too), has no recording in that plan (else, or where the recording began after it, in the "
     "time of the recording)",
     LookAtSpreads},
    {"recording-missing", Severity::kWarning,
     "a table without a waveform counts records (\"TOTL\", \"FTIM\") of a box that has no such "
     "recording in the survey; \"FTIM\", else \"LFIX\", is within the plan, and not more than two "
     "weeks before the survey",
     LookAtLost},
    {"date-odd", Severity::kWarning,
     "records without a date, or dated more than a month from the others of their file; or all "
     "more "
     "than a year before their plan, without a plan before 2000: such times count in no other rule "
     "and in no picture; or, not in their plan, 1024 weeks from as many or more other recordings",
     LookAtDates},
});

}  // namespace

std::span<const SurveyRule> TimesRules() { return kRules; }

}  // namespace orvane
