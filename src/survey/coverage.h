// SPDX-License-Identifier: GPL-3.0-or-later
// What the boxes of a survey recorded when, for a picture and in words.
#ifndef ORVANE_SURVEY_COVERAGE_H_
#define ORVANE_SURVEY_COVERAGE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "survey/recording.h"

namespace orvane {

/// Times are in seconds since 1970.
struct CoveragePart {
  std::int64_t start = 0;
  std::int64_t end = 0;
  std::size_t row = 0;  ///< place of the recording, or of the table that planned it, in the survey
  bool is_bad = false;  ///< it has bad records, or is cut
  std::string what;     ///< "Day 1/2417.TSS", "planned by Day 1/2417.TBL"
};

struct CoverageLane {
  std::string name;                    ///< the box's serial number; "?" where it is not known
  std::vector<CoveragePart> recorded;  ///< by their starts
  std::vector<CoveragePart> planned;   ///< likewise
};

/// By serial numbers. From the first start to the last end of what was recorded; plans are cut to
/// that and a day around it, so that a table with a far date does not make all else a dot.
struct Coverage {
  std::int64_t start = 0;
  std::int64_t end = 0;
  std::vector<CoverageLane> lanes;
};
Coverage CoverageOf(std::span<const std::shared_ptr<const SurveyRow>> rows);

/// "3 boxes from 2026/11/24 17:00:00 to 2026/11/26 09:00:00; 2417: 12 recordings, 30 h; ...".
std::string Summarize(const Coverage& coverage);

/// The recording after `row`, or with -1 before it, in its lane; `is_lane`: the one nearest in time
/// of the lane below or above. Without a row the first there is; none where there is no other.
std::optional<std::size_t> Neighbour(const Coverage& coverage, std::optional<std::size_t> row,
                                     int by, bool is_lane);

}  // namespace orvane

#endif  // ORVANE_SURVEY_COVERAGE_H_
