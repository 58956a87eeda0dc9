// SPDX-License-Identifier: GPL-3.0-or-later
// Where everything of a spread is, for a map and for lists.
#ifndef ORVANE_EDITORS_SPREAD_MAP_H_
#define ORVANE_EDITORS_SPREAD_MAP_H_

#include <optional>
#include <string>
#include <vector>

#include "editors/spread.h"
#include "table/param_table.h"

namespace orvane {

/// Metres to the east and to the north.
struct MapPoint {
  double east = 0;
  double north = 0;
};

/// One thing on the map.
struct MapItem {
  enum Kind {
    kDipole,     ///< points: positive and negative electrode
    kElectrode,  ///< one electrode; the other one is far away
    kSensor,     ///< one place
    kDirection,  ///< a coil of which only the direction is known: from the first point to the
                 ///< second
    kLoop,       ///< the four corners, the first is "BL", the third "TR"
    kStation,    ///< one place
    kSite,       ///< the places of its boxes
  };
  Kind kind = kDipole;
  bool is_transmitter = false;
  bool leads_to_positive = false;  ///< the azimuth of a dipole counts towards its first point
  int box = -1;                    ///< row in the spread, from 0; below 0: of no box
  int channel = -1;                ///< from 0; below 0: of no channel
  std::string owner;               ///< "Local Box 2417"; empty without a box
  std::string name;                ///< "Ex1"; "channel 4" where it has no definition
  std::vector<MapPoint> points;
  std::optional<double> elevation;  ///< of the first point, metres
};

struct MapExtent {
  MapPoint least;
  MapPoint most;
};

struct SpreadMap {
  std::vector<MapItem> items;      ///< channels in the order of the boxes, then loop and stations
  std::vector<std::string> notes;  ///< what has no place and why, in sentences
  bool is_around_centre = false;   ///< places count from the middle of the site, not from a grid
  /// Of all points; none where there are none.
  std::optional<MapExtent> Extent() const;
  /// The item of a channel, or -1.
  int IndexOf(int box, int channel) const;
};

/// Something is wrong with a channel, or with a whole box where `channel` is below 0. Both count
/// from 0 as in the map's items.
struct MapMark {
  int box = 0;
  int channel = -1;
  std::string why;  ///< in words, UTF-8
};

/// A channel has no position where all its four numbers are 0, or one is not finite or 100,000 km
/// and more. Without a definition beginning with E it has one place, that of its positive
/// electrode.
///
/// A loop of "LLENGTH" by "LWIDTH" is centred between the transmitter's electrodes; its diagonal
/// from BL to TR leads to "TXAZIM", so that its long side leads to TXAZIM - atan(width / length).
/// MT/AMT is a cross of the two dipoles around 0, 0. Both count azimuths from north to the east.
/// `site` has the geometry and the method, `spread` the boxes.
SpreadMap MapOf(const Spread& spread, const ParamTable& site);
/// Of a table with the spread that it has.
SpreadMap MapOf(const ParamTable& table);

/// Metres from the first point to the second; 0 for what is no pair.
double LengthOf(const MapItem& item);
/// Degrees from north to the east, 0 to below 360, in which the item leads: from its first point to
/// the second, or where `leads_to_positive` the other way.
double AzimuthOf(const MapItem& item);
/// "450 E, 1200 N" in metres.
std::string PlaceText(const MapPoint& point);
/// An item in words: "Ex1, Local Box 2417: from 450 E, 1200 N to 500 E, 1200 N (m), length 50 m,
/// azimuth 90 degrees".
std::string Describe(const MapItem& item);
/// The whole in words: how many of what, and the notes.
std::string Summarize(const SpreadMap& map);

/// Box, channel, name, and of both ends easting, northing and elevation, tab-separated with a
/// header line: a line for each channel, in metres. What is not known is empty.
std::string ElectrodeLines(const ParamTable& table);

}  // namespace orvane

#endif  // ORVANE_EDITORS_SPREAD_MAP_H_
