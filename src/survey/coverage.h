// SPDX-License-Identifier: GPL-3.0-or-later
// What the boxes of a survey recorded when, for pictures and in words.
#ifndef ORVANE_SURVEY_COVERAGE_H_
#define ORVANE_SURVEY_COVERAGE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "survey/survey_findings.h"

namespace orvane {

/// Times are in seconds since 1970.
struct CoveragePart {
  std::int64_t start = 0;
  std::int64_t end = 0;
  std::size_t row = 0;   ///< place of the recording, or of the one whose table planned it
  double bad_share = 0;  ///< of its records
  std::string what;      ///< "Day 1/2417.TSS", "planned by the table of Day 1/2417.TSS"
};

/// A box that recorded, or that the table of one that did names.
struct CoverageLane {
  std::int32_t box = 0;                ///< serial number; 0: not known
  std::vector<CoveragePart> recorded;  ///< by their starts
  std::vector<CoveragePart> planned;   ///< likewise, each time once

  std::string Name() const;  ///< "2417", "?"
};

/// A stretch of time in which something was planned or recorded. Those between them, nights mostly,
/// are of an hour and more.
struct CoverageStretch {
  std::int64_t start = 0;
  std::int64_t end = 0;
};

/// A recording has a part for each stretch between its pauses. Plans are cut to a day around all
/// that was recorded.
struct Coverage {
  std::vector<CoverageLane> lanes;         ///< by serial numbers
  std::vector<CoverageStretch> stretches;  ///< in their order
};
Coverage CoverageOf(SurveyRows rows);

/// Where times are on a picture that leaves out what lies between the stretches.
class CoverageAxis {
 public:
  /// The coverage must outlive the axis, and have a stretch.
  CoverageAxis(const Coverage& coverage, double left, double width);

  double At(std::int64_t time) const;

  struct Tick {
    double at = 0;
    std::string text;  ///< "2026/11/24 17:00"; empty where there is no room
  };
  /// The beginning of each stretch and each midnight within, at most 500; texts are at least so far
  /// apart, and none begins less than that before the end.
  std::vector<Tick> Ticks(double text_width) const;

 private:
  const Coverage& coverage_;
  double width_;
  std::vector<double> lefts_;  // of the stretches
  double scale_ = 0;           // of a second
};

/// "3 boxes from 2026/11/24 17:00:00 to 2026/11/26 09:00:00; 2417: 12 recordings, 30 h; ...".
std::string Summarize(const Coverage& coverage);

/// The recording after `row`, or with -1 before it, in its lane; `is_lane`: the one nearest in time
/// of the next lane below or above that has any. Without a row the first there is; none where there
/// is no other.
std::optional<std::size_t> Neighbour(const Coverage& coverage, std::optional<std::size_t> row,
                                     int by, bool is_lane);

}  // namespace orvane

#endif  // ORVANE_SURVEY_COVERAGE_H_
