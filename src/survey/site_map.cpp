// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/site_map.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <utility>

#include "base/latin1.h"
#include "base/number_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMostPlaces = 200;  // of a site
constexpr double kNearOnGrid = 1;         // metres
constexpr double kNearOnEarth = 25;
constexpr double kDegree = std::numbers::pi / 180;

struct Site {
  std::string name;
  std::string line;
  SiteRows rows;
  std::set<std::int32_t> boxes;
  std::vector<MapPoint> on_grid;
  std::vector<GeoPlace> on_earth;
};

// Degrees to metres around a place; the sphere has the mean radius of the earth.
class Flat {
 public:
  explicit Flat(const GeoPlace& middle)
      : middle_(middle), along_(std::cos(middle.latitude * kDegree)) {}
  MapPoint operator()(const GeoPlace& place) const {
    constexpr double kRadius = 6'371'008.8;
    const double east = std::remainder(place.longitude - middle_.longitude, 360.0);
    return {std::round(kRadius * kDegree * east * along_),
            std::round(kRadius * kDegree * (place.latitude - middle_.latitude))};
  }

 private:
  GeoPlace middle_;
  double along_;
};

void AddPlace(const MapPoint& place, double near, std::vector<MapPoint>* places) {
  const bool is_known = std::any_of(places->begin(), places->end(), [&](const MapPoint& other) {
    return std::hypot(other.east - place.east, other.north - place.north) < near;
  });
  if (!is_known && places->size() < kMostPlaces) {
    places->push_back(place);
  }
}

// A receiver that stands still writes a little different numbers each time.
void AddPlace(const GeoPlace& place, std::vector<GeoPlace>* places) {
  constexpr double kSame = 5e-5;  // degrees, some metres
  const bool is_known = std::any_of(places->begin(), places->end(), [&](const GeoPlace& other) {
    return std::abs(other.latitude - place.latitude) < kSame &&
           std::abs(other.longitude - place.longitude) < kSame;
  });
  if (!is_known && places->size() < kMostPlaces) {
    places->push_back(place);
  }
}

std::vector<Site> Collect(SurveyRows rows) {
  std::map<std::pair<std::string, std::string>, Site> sites;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const SurveyRow& row = *rows[i];
    if (!row.IsRecording()) {
      continue;
    }
    const TableFacts none;
    const TableFacts& table = row.table ? *row.table : none;
    Site& site = sites[{table.line, table.site}];
    site.name = table.site;
    site.line = table.line;
    site.rows.push_back(i);
    site.boxes.insert(row.box);
    if (table.place) {
      AddPlace(*table.place, kNearOnGrid, &site.on_grid);
    }
    if (table.geo) {
      AddPlace(*table.geo, &site.on_earth);
    }
  }
  std::vector<Site> list;
  for (auto& [key, site] : sites) {
    list.push_back(std::move(site));
  }
  return list;
}

// Halfway between the outermost, also where the date line lies between them.
GeoPlace MiddleOf(const std::vector<Site>& sites) {
  std::optional<GeoPlace> first;
  GeoPlace least;
  GeoPlace most;
  for (const Site& site : sites) {
    for (const GeoPlace& place : site.on_earth) {
      first = first.value_or(place);
      const GeoPlace off = {place.latitude - first->latitude,
                            std::remainder(place.longitude - first->longitude, 360.0)};
      least = {std::min(least.latitude, off.latitude), std::min(least.longitude, off.longitude)};
      most = {std::max(most.latitude, off.latitude), std::max(most.longitude, off.longitude)};
    }
  }
  const GeoPlace start = first.value_or(GeoPlace());
  return {start.latitude + (least.latitude + most.latitude) / 2,
          std::remainder(start.longitude + (least.longitude + most.longitude) / 2, 360.0)};
}

// "52.5000 N, 13.2500 W".
std::string DegreesText(const GeoPlace& place) {
  constexpr int kDecimals = 4;
  return FormatFixed(std::abs(place.latitude), kDecimals)
      .append(place.latitude < 0 ? " S, " : " N, ")
      .append(FormatFixed(std::abs(place.longitude), kDecimals))
      .append(place.longitude < 0 ? " W" : " E");
}

// What the map shows is in the charset of tables.
std::string InTableBytes(const std::string& text) {
  auto bytes = Latin1FromUtf8(text);
  return bytes ? std::move(*bytes) : text;
}

std::string TitleOf(const Site& site) { return site.name.empty() ? "no site named" : site.name; }

std::string CountText(const Site& site) {
  return FormatInt(site.rows.size()).append(site.rows.size() == 1 ? " recording" : " recordings");
}

// "line L1200N, boxes 1203, 1207, 4 recordings".
std::string OwnerOf(const Site& site) {
  constexpr std::size_t kMostBoxes = 8;
  std::string text = site.line.empty() ? std::string() : std::string("line ").append(site.line);
  text.append(text.empty() ? "" : ", ").append(site.boxes.size() == 1 ? "box " : "boxes ");
  std::size_t count = 0;
  for (const std::int32_t box : site.boxes) {
    if (++count > kMostBoxes) {
      text.append(" ...");
      break;
    }
    text.append(count == 1 ? "" : ", ").append(box == 0 ? "?" : FormatInt(box));
  }
  return text.append(", ").append(CountText(site));
}

std::vector<MapPoint> PlacesOn(const Site& site, const std::optional<Flat>& earth) {
  if (!earth) {
    return site.on_grid;
  }
  std::vector<MapPoint> places;
  for (const GeoPlace& place : site.on_earth) {
    AddPlace((*earth)(place), kNearOnEarth, &places);
  }
  return places;
}

std::string WhyUnplaced(const Site& site, bool is_on_earth) {
  return !site.on_earth.empty() && !is_on_earth ? "by latitude and longitude only"
         : !site.on_grid.empty() && is_on_earth ? "on a grid of its own only"
                                                : "no position";
}

}  // namespace

std::optional<std::size_t> SiteMap::ItemOf(std::size_t row) const {
  for (std::size_t item = 0; item < rows.size(); ++item) {
    if (std::binary_search(rows[item].begin(), rows[item].end(), row)) {
      return item;
    }
  }
  return std::nullopt;
}

SiteMap SitesOf(SurveyRows rows) {
  const std::vector<Site> sites = Collect(rows);
  const auto grids = std::count_if(sites.begin(), sites.end(),
                                   [](const Site& site) { return !site.on_grid.empty(); });
  const auto earths = std::count_if(sites.begin(), sites.end(),
                                    [](const Site& site) { return !site.on_earth.empty(); });
  std::optional<Flat> earth;
  SiteMap result;
  if (earths > grids) {
    const GeoPlace middle = MiddleOf(sites);
    earth.emplace(middle);
    result.map.is_around_centre = true;
    result.map.notes.push_back(std::string("Metres from ").append(DegreesText(middle)));
  }
  for (const Site& site : sites) {
    std::vector<MapPoint> places = PlacesOn(site, earth);
    if (places.empty()) {
      std::string text = TitleOf(site).append(": ").append(CountText(site)).append(", ");
      result.unplaced.push_back({text.append(WhyUnplaced(site, earth.has_value())), site.rows});
      continue;
    }
    MapItem item;
    item.kind = MapItem::kSite;
    item.box = static_cast<int>(result.map.items.size()) + 1;  // its colour
    item.name = InTableBytes(TitleOf(site));
    item.owner = InTableBytes(OwnerOf(site));
    item.points = std::move(places);
    result.map.items.push_back(std::move(item));
    result.rows.push_back(site.rows);
  }
  return result;
}

}  // namespace orvane
