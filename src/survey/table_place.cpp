// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/table_place.h"

#include "editors/spread.h"

namespace orvane {
namespace {

std::optional<MapPoint> MiddleOf(const SpreadMap& map) {
  const auto extent = map.Extent();
  return extent ? std::optional(MapPoint{(extent->least.east + extent->most.east) / 2,
                                         (extent->least.north + extent->most.north) / 2})
                : std::nullopt;
}

}  // namespace

std::optional<MapPoint> GridPlaceOf(const ParamTable& table) {
  ParamTable copy = table;  // a spread works on a table that it may change
  const Spread spread(&copy);
  const SpreadMap map = MapOf(spread, table);
  if (map.is_around_centre) {
    return std::nullopt;
  }
  SpreadMap local;
  SpreadMap stations;
  for (const MapItem& item : map.items) {
    if (item.box >= 0 && !item.is_transmitter && spread.Box(item.box).kind == kLocalBox) {
      local.items.push_back(item);
    } else if (item.kind == MapItem::kStation && !item.is_transmitter) {
      stations.items.push_back(item);
    }
  }
  return MiddleOf(local.items.empty() ? stations : local);
}

}  // namespace orvane
