// SPDX-License-Identifier: GPL-3.0-or-later
// Where a table says that its box stood.
#ifndef ORVANE_SURVEY_TABLE_PLACE_H_
#define ORVANE_SURVEY_TABLE_PLACE_H_

#include <optional>

#include "editors/spread_map.h"
#include "table/geo_text.h"

namespace orvane {

/// The middle of the electrodes and sensors of the local box on the grid of the survey, else the
/// receiver station. None where the table has neither: places of MT/AMT count from the middle of
/// the site, not from a grid.
std::optional<MapPoint> GridPlaceOf(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_SURVEY_TABLE_PLACE_H_
