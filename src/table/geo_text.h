// SPDX-License-Identifier: GPL-3.0-or-later
// Latitudes and longitudes as the boxes write them into their tables.
#ifndef ORVANE_TABLE_GEO_TEXT_H_
#define ORVANE_TABLE_GEO_TEXT_H_

#include <optional>
#include <string_view>

#include "table/param_table.h"

namespace orvane {

/// Degrees north of "4530.500,N": degrees and minutes, a comma, N or S. These are free texts; any
/// other form, and what lies beyond the poles, is none.
std::optional<double> LatitudeFrom(std::string_view text);
/// Degrees east of "01131.000,E", likewise with E or W.
std::optional<double> LongitudeFrom(std::string_view text);

/// Degrees to the north and to the east.
struct GeoPlace {
  double latitude = 0;
  double longitude = 0;
};

/// Of "LATG" and "LNGG" in the form of the boxes; none where one of them has
/// another, or where both are zero, which is what a receiver without a position writes.
std::optional<GeoPlace> GeoPlaceOf(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_TABLE_GEO_TEXT_H_
