// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_SITE_MAP_H_
#define ORVANE_SURVEY_SITE_MAP_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "editors/spread_map.h"
#include "survey/survey_findings.h"

namespace orvane {

/// Recordings by their places in the survey.
using SiteRows = std::vector<std::size_t>;

/// Where the sites of a survey are. A site is what the tables of its recordings name so, on one
/// line.
struct SiteMap {
  SpreadMap map;               ///< an item for each site with a place
  std::vector<SiteRows> rows;  ///< of each item

  struct Unplaced {
    std::string text;  ///< "S0450E: 3 recordings, no position", UTF-8
    SiteRows rows;
  };
  std::vector<Unplaced> unplaced;

  /// The item of a recording.
  std::optional<std::size_t> ItemOf(std::size_t row) const;
};

/// Metres on the grid of the survey where tables have such places; where more sites have a latitude
/// and a longitude, metres from the middle of these, on a sphere: a hundredth off at 100 km. The
/// two are never mixed, since nothing says where the grid begins. Places of a site nearer than a
/// metre, or 25 m by latitude and longitude, are one.
SiteMap SitesOf(SurveyRows rows);

}  // namespace orvane

#endif  // ORVANE_SURVEY_SITE_MAP_H_
