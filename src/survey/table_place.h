// SPDX-License-Identifier: GPL-3.0-or-later
// Where a table says that its box stood.
#ifndef ORVANE_SURVEY_TABLE_PLACE_H_
#define ORVANE_SURVEY_TABLE_PLACE_H_

#include <optional>

#include "editors/spread_map.h"

namespace orvane {

/// Degrees to the north and to the east.
struct GeoPlace {
  double latitude = 0;
  double longitude = 0;
};

/// The middle of the electrodes and sensors of the local box on the grid of the survey, else the
/// receiver station. None where the table has neither: places of MT/AMT count from the middle of
/// the site, not from a grid.
std::optional<MapPoint> GridPlaceOf(const ParamTable& table);

/// Of "LATG" and "LNGG" in the form of the boxes (`geo_text.h`); none where one of them has
/// another, or where both are zero, which is what a receiver without a position writes.
std::optional<GeoPlace> GeoPlaceOf(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_SURVEY_TABLE_PLACE_H_
