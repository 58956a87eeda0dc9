// SPDX-License-Identifier: GPL-3.0-or-later
// What was recorded when, against what tables planned. Times are in seconds since 1970.
#ifndef ORVANE_SURVEY_RECORDED_TIMES_H_
#define ORVANE_SURVEY_RECORDED_TIMES_H_

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "survey/survey_findings.h"

namespace orvane {

/// When each box recorded. A recording whose clock was wrong counts for the plan of its table,
/// stack results without a waveform for themselves.
class RecordedTimes {
 public:
  explicit RecordedTimes(SurveyRows rows);

  bool HasBox(std::int32_t box) const { return times_.contains(box); }
  /// Whether a box recorded anything between two times.
  bool HasAny(std::int32_t box, const TimeStretch& within) const;
  /// From the first beginning to the last end of all boxes; none where nothing was recorded.
  const std::optional<TimeStretch>& All() const { return all_; }

 private:
  // For each beginning, in their order, the latest end so far.
  std::map<std::int32_t, std::vector<TimeStretch>> times_;
  std::optional<TimeStretch> all_;
};

/// "STIM" to "ETIM" of a row's table, where both have a date and are in order.
std::optional<TimeStretch> PlanOf(const SurveyRow& row);

/// Whether a table alone counts records ("TOTL", "FTIM") that the survey does not hold. The state
/// of an earlier recording, which a start-up file may have kept, does not count: the first record,
/// else the last time by satellites ("LFIX"), must be within the plan. Nor does a plan of weeks
/// before the survey, as templates have.
bool IsLost(const SurveyRow& row, const RecordedTimes& times);

/// The plan of a row that the survey is to be measured by: of a recording, of one that is lost, of
/// a start-up file of whose plan half has passed when the last recording ends. None of others.
std::optional<TimeStretch> CountingPlanOf(const SurveyRow& row, const RecordedTimes& times);

/// The boxes that such a row's table says record: those of its spread, and of a table alone its
/// own.
std::vector<PlannedBox> PlannedBoxesOf(const SurveyRow& row);

}  // namespace orvane

#endif  // ORVANE_SURVEY_RECORDED_TIMES_H_
