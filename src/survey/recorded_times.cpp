// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/recorded_times.h"

#include <algorithm>

namespace orvane {
namespace {

// Seconds.
constexpr std::int64_t kTolerance = 60;
constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kLongBefore = std::int64_t{14} * 86400;

}  // namespace

RecordedTimes::RecordedTimes(SurveyRows rows) {
  for (const auto& row : rows) {
    const bool has_records = row->IsRecording() || row->kind == RowKind::kStack;
    if (!has_records || row->box == 0 || row->start == 0) {
      continue;
    }
    const auto plan = PlanOf(*row);
    if (!row->has_wrong_clock) {
      times_[row->box].push_back({row->start, row->end});
    } else if (plan) {
      times_[row->box].push_back(*plan);
    }
    if (row->HasTimes()) {
      all_ = all_ ? TimeStretch{std::min(all_->start, row->start), std::max(all_->end, row->end)}
                  : TimeStretch{row->start, row->end};
    }
  }
  for (auto& [box, times] : times_) {
    std::sort(times.begin(), times.end(),
              [](const TimeStretch& a, const TimeStretch& b) { return a.start < b.start; });
    for (std::size_t i = 1; i < times.size(); ++i) {
      times[i].end = std::max(times[i].end, times[i - 1].end);
    }
  }
}

bool RecordedTimes::HasAny(std::int32_t box, const TimeStretch& within) const {
  const auto place = times_.find(box);
  if (place == times_.end()) {
    return false;
  }
  const auto after = std::upper_bound(
      place->second.begin(), place->second.end(), within.end,
      [](std::int64_t time, const TimeStretch& recording) { return time < recording.start; });
  return after != place->second.begin() && (after - 1)->end >= within.start;
}

std::optional<TimeStretch> PlanOf(const SurveyRow& row) {
  return row.table != nullptr && row.table->plan_start > 0 &&
                 row.table->plan_end > row.table->plan_start
             ? std::optional(TimeStretch{row.table->plan_start, row.table->plan_end})
             : std::nullopt;
}

bool IsLost(const SurveyRow& row, const RecordedTimes& times) {
  const TableFacts* const table = row.table.get();
  if (row.kind != RowKind::kTable || table == nullptr || row.box == 0 ||
      (table->recorded <= 0 && table->first == 0)) {
    return false;
  }
  const auto plan = PlanOf(row);
  const std::int64_t known = table->first > 0 ? table->first : table->fix;
  const auto& all = times.All();
  if (known == 0 || (plan && (known < plan->start - kTolerance || known > plan->end + kHour)) ||
      (all && known < all->start - kLongBefore)) {
    return false;
  }
  if (table->first > 0) {
    // One that ended when the first of these began is another.
    return !times.HasAny(row.box, {table->first + 1, table->first + kTolerance});
  }
  return plan ? !times.HasAny(row.box, *plan) : !times.HasBox(row.box);
}

std::optional<TimeStretch> CountingPlanOf(const SurveyRow& row, const RecordedTimes& times) {
  const auto plan = PlanOf(row);
  const auto& all = times.All();
  const bool is_met = plan && all && plan->end >= all->start &&
                      plan->start + (plan->end - plan->start) / 2 <= all->end;
  const bool counts =
      row.IsRecording() || (row.kind == RowKind::kTable && is_met) || IsLost(row, times);
  return counts ? plan : std::nullopt;
}

std::vector<PlannedBox> PlannedBoxesOf(const SurveyRow& row) {
  std::vector<PlannedBox> boxes;
  if (row.table != nullptr) {
    boxes = row.table->boxes;
    if (!row.IsRecording() && row.box != 0 && row.table->channels > 0) {
      boxes.push_back({row.box, row.table->channels, BoxRole::kAuxiliary});
    }
  }
  return boxes;
}

}  // namespace orvane
