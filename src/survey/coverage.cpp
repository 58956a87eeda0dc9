// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/coverage.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "survey/recorded_times.h"

namespace orvane {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr double kHour = 3600;

using Lanes = std::map<std::int32_t, CoverageLane>;

bool StartsBefore(const CoveragePart& a, const CoveragePart& b) { return a.start < b.start; }

void AddRecording(const SurveyRow& row, std::size_t place, Lanes* lanes) {
  const double share =
      row.records == 0 ? 0 : static_cast<double>(row.bad) / static_cast<double>(row.records);
  for (const TimeStretch& stretch : row.stretches) {
    (*lanes)[row.box].recorded.push_back(
        {stretch.start, std::max(stretch.end, stretch.start + 1), place, share, row.name});
  }
}

// Boxes that a table names have a lane too, which shows what they did not record.
class Plans {
 public:
  explicit Plans(Lanes* lanes) : lanes_(*lanes) {}

  void Add(const SurveyRow& row, const TimeStretch& planned, std::size_t place) {
    const char* const by = row.IsRecording() ? "planned by the table of " : "planned by ";
    const CoveragePart plan = {planned.start, planned.end, place, 0, by + row.name};
    if (row.IsRecording()) {
      Add(row.box, plan);
    }
    for (const PlannedBox& box : PlannedBoxesOf(row)) {
      Add(box.serial, plan);
    }
  }

 private:
  void Add(std::int32_t box, const CoveragePart& plan) {
    if (seen_.insert({box, {plan.start, plan.end}}).second) {
      lanes_[box].planned.push_back(plan);
    }
  }

  Lanes& lanes_;
  std::set<std::pair<std::int32_t, std::pair<std::int64_t, std::int64_t>>> seen_;
};

// To a day around what was recorded: a plan for a far date would make all else a dot.
void CutPlans(Lanes* lanes) {
  std::optional<CoverageStretch> all;
  for (const auto& [box, lane] : *lanes) {
    for (const CoveragePart& part : lane.recorded) {
      all = all ? CoverageStretch{std::min(all->start, part.start), std::max(all->end, part.end)}
                : CoverageStretch{part.start, part.end};
    }
  }
  if (!all) {
    return;
  }
  for (auto& [box, lane] : *lanes) {
    for (CoveragePart& part : lane.planned) {
      part.start = std::max(part.start, all->start - kDay);
      part.end = std::min(part.end, all->end + kDay);
    }
    std::erase_if(lane.planned, [](const CoveragePart& part) { return part.start >= part.end; });
  }
}

std::vector<CoverageStretch> StretchesOf(const std::vector<CoverageLane>& lanes) {
  constexpr std::int64_t kLeastBreak = 3600;
  std::vector<std::pair<std::int64_t, std::int64_t>> spans;
  for (const CoverageLane& lane : lanes) {
    for (const auto* parts : {&lane.recorded, &lane.planned}) {
      for (const CoveragePart& part : *parts) {
        spans.emplace_back(part.start, part.end);
      }
    }
  }
  std::sort(spans.begin(), spans.end());
  std::vector<CoverageStretch> stretches;
  for (const auto& [start, end] : spans) {
    if (stretches.empty() || start - stretches.back().end > kLeastBreak) {
      stretches.push_back({start, end});
    }
    stretches.back().end = std::max(stretches.back().end, end);
  }
  return stretches;
}

// Where a row is drawn.
struct Place {
  std::size_t lane;
  std::size_t part;
};

std::optional<Place> Find(const Coverage& coverage, std::size_t row) {
  for (std::size_t lane = 0; lane < coverage.lanes.size(); ++lane) {
    const auto& parts = coverage.lanes[lane].recorded;
    const auto part = std::find_if(parts.begin(), parts.end(),
                                   [row](const CoveragePart& p) { return p.row == row; });
    if (part != parts.end()) {
      return Place{lane, static_cast<std::size_t>(part - parts.begin())};
    }
  }
  return std::nullopt;
}

// In the first lane from one on, downwards or upwards, that has a recording.
std::optional<std::size_t> NearestFrom(const Coverage& coverage, std::ptrdiff_t lane, int by,
                                       std::int64_t start) {
  const auto is_nearer = [start](const CoveragePart& a, const CoveragePart& b) {
    return std::abs(a.start - start) < std::abs(b.start - start);
  };
  for (; lane >= 0 && lane < static_cast<std::ptrdiff_t>(coverage.lanes.size()); lane += by) {
    const auto& recorded = coverage.lanes[static_cast<std::size_t>(lane)].recorded;
    if (!recorded.empty()) {
      return std::min_element(recorded.begin(), recorded.end(), is_nearer)->row;
    }
  }
  return std::nullopt;
}

}  // namespace

std::string CoverageLane::Name() const { return box == 0 ? "?" : FormatInt(box); }

Coverage CoverageOf(SurveyRows rows) {
  Lanes lanes;
  Plans plans(&lanes);
  const RecordedTimes times(rows);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i]->HasTimes()) {
      AddRecording(*rows[i], i, &lanes);
    }
    if (const auto plan = CountingPlanOf(*rows[i], times)) {
      plans.Add(*rows[i], *plan, i);
    }
  }
  CutPlans(&lanes);
  Coverage coverage;
  for (auto& [box, lane] : lanes) {
    lane.box = box;
    std::stable_sort(lane.recorded.begin(), lane.recorded.end(), StartsBefore);
    std::stable_sort(lane.planned.begin(), lane.planned.end(), StartsBefore);
    coverage.lanes.push_back(std::move(lane));
  }
  coverage.stretches = StretchesOf(coverage.lanes);
  return coverage;
}

CoverageAxis::CoverageAxis(const Coverage& coverage, double left, double width)
    : coverage_(coverage), width_(width) {
  constexpr double kBetween = 14;
  constexpr double kMostBetween = 0.3;  // of the width, of all of them
  double seconds = 0;
  for (const CoverageStretch& stretch : coverage.stretches) {
    seconds += static_cast<double>(stretch.end - stretch.start);
  }
  const double breaks = static_cast<double>(coverage.stretches.size()) - 1;
  const double between = breaks <= 0 ? 0 : std::min(kBetween, kMostBetween * width / breaks);
  scale_ = (width - breaks * between) / seconds;
  for (const CoverageStretch& stretch : coverage.stretches) {
    lefts_.push_back(left);
    left += static_cast<double>(stretch.end - stretch.start) * scale_ + between;
  }
}

double CoverageAxis::At(std::int64_t time) const {
  const auto& stretches = coverage_.stretches;
  const auto after = std::upper_bound(
      stretches.begin(), stretches.end(), time,
      [](std::int64_t at, const CoverageStretch& stretch) { return at < stretch.start; });
  const auto at =
      static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - stretches.begin() - 1, 0));
  return lefts_[at] + static_cast<double>(time - stretches[at].start) * scale_;
}

std::vector<CoverageAxis::Tick> CoverageAxis::Ticks(double text_width) const {
  constexpr std::size_t kMost = 500;
  constexpr std::size_t kWithoutSeconds = 16;  // of "2026/11/24 17:00:00"
  std::vector<Tick> ticks;
  double free_from = lefts_.front();
  for (const CoverageStretch& stretch : coverage_.stretches) {
    for (std::int64_t time = stretch.start; time < stretch.end && ticks.size() < kMost;
         time = (time / kDay + 1) * kDay) {
      Tick tick{At(time), {}};
      if (tick.at >= free_from && tick.at + text_width <= lefts_.front() + width_) {
        tick.text = SurveyTime(time).substr(0, kWithoutSeconds);
        free_from = tick.at + text_width;
      }
      ticks.push_back(std::move(tick));
    }
  }
  return ticks;
}

std::string Summarize(const Coverage& coverage) {
  if (coverage.lanes.empty()) {
    return "Nothing was recorded";
  }
  std::string text = FormatInt(coverage.lanes.size()) +
                     (coverage.lanes.size() == 1 ? " box" : " boxes") + " from " +
                     SurveyTime(coverage.stretches.front().start) + " to " +
                     SurveyTime(coverage.stretches.back().end);
  for (const CoverageLane& lane : coverage.lanes) {
    std::int64_t seconds = 0;
    std::set<std::size_t> recordings;
    for (const CoveragePart& part : lane.recorded) {
      seconds += part.end - part.start;
      recordings.insert(part.row);
    }
    text.append("; ")
        .append(lane.Name())
        .append(": ")
        .append(FormatInt(recordings.size()))
        .append(recordings.size() == 1 ? " recording, " : " recordings, ")
        .append(FormatReal(static_cast<double>(seconds) / kHour, 3))
        .append(" h");
  }
  return text;
}

std::optional<std::size_t> Neighbour(const Coverage& coverage, std::optional<std::size_t> row,
                                     int by, bool is_lane) {
  const auto at = row ? Find(coverage, *row) : std::nullopt;
  if (!at) {
    return NearestFrom(coverage, 0, 1, 0);
  }
  const auto& parts = coverage.lanes[at->lane].recorded;
  if (is_lane) {
    return NearestFrom(coverage, static_cast<std::ptrdiff_t>(at->lane) + by, by,
                       parts[at->part].start);
  }
  auto next = static_cast<std::ptrdiff_t>(at->part) + by;
  while (next >= 0 && next < static_cast<std::ptrdiff_t>(parts.size()) &&
         parts[static_cast<std::size_t>(next)].row == *row) {
    next += by;  // of one recording with pauses
  }
  return next < 0 || next >= static_cast<std::ptrdiff_t>(parts.size())
             ? std::nullopt
             : std::optional(parts[static_cast<std::size_t>(next)].row);
}

}  // namespace orvane
