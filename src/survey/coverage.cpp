// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/coverage.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "base/number_text.h"
#include "survey/survey_findings.h"

namespace orvane {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr double kHour = 3600;

bool StartsBefore(const CoveragePart& a, const CoveragePart& b) { return a.start < b.start; }

// Where a row is drawn.
struct At {
  std::size_t lane;
  std::size_t part;
};

std::optional<At> Find(const Coverage& coverage, std::size_t row) {
  for (std::size_t lane = 0; lane < coverage.lanes.size(); ++lane) {
    const auto& parts = coverage.lanes[lane].recorded;
    const auto part = std::find_if(parts.begin(), parts.end(),
                                   [row](const CoveragePart& p) { return p.row == row; });
    if (part != parts.end()) {
      return At{lane, static_cast<std::size_t>(part - parts.begin())};
    }
  }
  return std::nullopt;
}

std::optional<std::size_t> NearestIn(const CoverageLane& lane, std::int64_t start) {
  const auto is_nearer = [start](const CoveragePart& a, const CoveragePart& b) {
    return std::abs(a.start - start) < std::abs(b.start - start);
  };
  const auto nearest = std::min_element(lane.recorded.begin(), lane.recorded.end(), is_nearer);
  return nearest == lane.recorded.end() ? std::nullopt : std::optional(nearest->row);
}

}  // namespace

Coverage CoverageOf(std::span<const std::shared_ptr<const SurveyRow>> rows) {
  Coverage coverage;
  std::map<std::int32_t, CoverageLane> lanes;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const SurveyRow& row = *rows[i];
    if (!row.IsRecording() || row.start == 0) {
      continue;
    }
    const std::int64_t end = std::max(row.start, row.end);
    const bool is_first = lanes.empty();
    coverage.start = is_first ? row.start : std::min(coverage.start, row.start);
    coverage.end = is_first ? end : std::max(coverage.end, end);
    lanes[row.box].recorded.push_back(
        {row.start, end, i, row.bad > 0 || !row.cut.empty(), row.name});
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const SurveyRow& row = *rows[i];
    if (row.table == nullptr || row.table->plan_start == 0 || row.table->plan_end == 0) {
      continue;
    }
    const std::int64_t start = std::max(row.table->plan_start, coverage.start - kDay);
    const std::int64_t end = std::min(row.table->plan_end, coverage.end + kDay);
    const auto lane = lanes.find(row.table->serial);
    if (start < end && lane != lanes.end()) {
      lane->second.planned.push_back({start, end, i, false, "planned by the table of " + row.name});
    }
  }
  for (auto& [serial, lane] : lanes) {
    lane.name = serial == 0 ? "?" : FormatInt(serial);
    std::stable_sort(lane.recorded.begin(), lane.recorded.end(), StartsBefore);
    std::stable_sort(lane.planned.begin(), lane.planned.end(), StartsBefore);
    for (const CoveragePart& part : lane.planned) {
      coverage.start = std::min(coverage.start, part.start);
      coverage.end = std::max(coverage.end, part.end);
    }
    coverage.lanes.push_back(std::move(lane));
  }
  return coverage;
}

std::string Summarize(const Coverage& coverage) {
  if (coverage.lanes.empty()) {
    return "Nothing was recorded";
  }
  std::string text = FormatInt(coverage.lanes.size()) +
                     (coverage.lanes.size() == 1 ? " box" : " boxes") + " from " +
                     SurveyTime(coverage.start) + " to " + SurveyTime(coverage.end);
  for (const CoverageLane& lane : coverage.lanes) {
    std::int64_t seconds = 0;
    for (const CoveragePart& part : lane.recorded) {
      seconds += part.end - part.start;
    }
    text.append("; ")
        .append(lane.name)
        .append(": ")
        .append(FormatInt(lane.recorded.size()))
        .append(lane.recorded.size() == 1 ? " recording, " : " recordings, ")
        .append(FormatReal(static_cast<double>(seconds) / kHour, 3))
        .append(" h");
  }
  return text;
}

std::optional<std::size_t> Neighbour(const Coverage& coverage, std::optional<std::size_t> row,
                                     int by, bool is_lane) {
  const auto at = row ? Find(coverage, *row) : std::nullopt;
  if (!at) {
    return coverage.lanes.empty() ? std::nullopt : NearestIn(coverage.lanes.front(), 0);
  }
  const auto& parts = coverage.lanes[at->lane].recorded;
  const auto next = static_cast<std::ptrdiff_t>(is_lane ? at->lane : at->part) + by;
  const auto count = static_cast<std::ptrdiff_t>(is_lane ? coverage.lanes.size() : parts.size());
  if (next < 0 || next >= count) {
    return std::nullopt;
  }
  const auto place = static_cast<std::size_t>(next);
  return is_lane ? NearestIn(coverage.lanes[place], parts[at->part].start)
                 : std::optional(parts[place].row);
}

}  // namespace orvane
