// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/spread_map.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/latin1.h"
#include "base/number_text.h"
#include "table/param_access.h"
#include "table/tech.h"

namespace orvane {
namespace {

constexpr double kFarthest = 1e8;  // metres; a number beyond is no position
constexpr double kDegree = std::numbers::pi / 180;

// Stored "ARRYTYP" of the arrays that leave out electrodes or have a wire in place of a loop.
enum Array : int { kPoleDipole = 2, kPolePole = 3, kTdemDipole = 13, kFdemDipole = 16 };

bool IsLoopMethod(Tech tech) { return tech == kTdem || tech == kFdem; }

bool HasLoop(const ParamTable& site) {
  const int array = IntParam(site, "ARRYTYP");
  return IsLoopMethod(TechOf(site)) && array != kTdemDipole && array != kFdemDipole;
}

// To the micrometre, so that half of a circle is no tiny number.
double Rounded(double metres) { return std::round(metres * 1e6) / 1e6 + 0.0; }

MapPoint From(const MapPoint& start, double azimuth, double metres) {
  return {Rounded(start.east + metres * std::sin(azimuth * kDegree)),
          Rounded(start.north + metres * std::cos(azimuth * kDegree))};
}

bool IsUsable(double metres) { return std::isfinite(metres) && std::abs(metres) < kFarthest; }

std::string NameOf(const Spread& spread, int box, int channel) {
  const std::string definition(Trimmed(spread.ChannelCell(box, channel, kDefinition)));
  if (definition.empty() && spread.Box(box).kind == kTransmitterBox) {
    return "Tx";
  }
  return definition.empty() ? "channel " + FormatInt(channel + 1) : definition;
}

// Whether anybody means to record it.
bool IsInUse(const Spread& spread, int box, int channel) {
  return !Trimmed(spread.ChannelCell(box, channel, kDefinition)).empty() ||
         ParseIntPrefix(spread.ChannelCell(box, channel, kFlagColumn)) != 0;
}

bool IsElectric(const std::string& definition) {
  return definition.empty() || definition.front() == 'E' || definition.front() == 'e';
}

struct Ends {
  MapPoint positive;
  MapPoint negative;
};

// None where the channel has no position.
std::optional<Ends> EndsOf(const Spread& spread, int box, int channel) {
  const auto real = [&](ChannelColumn column) {
    return spread.ChannelReal(box, channel, column).value_or(0);
  };
  const Ends ends = {{real(kPositiveEast), real(kPositiveNorth)},
                     {real(kNegativeEast), real(kNegativeNorth)}};
  const std::array all = {ends.positive.east, ends.positive.north, ends.negative.east,
                          ends.negative.north};
  const bool is_set = std::any_of(all.begin(), all.end(), [](double one) { return one != 0; });
  return is_set && std::all_of(all.begin(), all.end(), IsUsable) ? std::optional(ends)
                                                                 : std::nullopt;
}

// Puts a map together.
class Maker {
 public:
  Maker(const Spread& spread, const ParamTable& site)
      : spread_(spread), site_(site), tech_(TechOf(site)) {}

  SpreadMap Make() {
    if (tech_ == kMtAmt) {
      AddCross();
      return std::move(map_);
    }
    for (int box = 0; box < spread_.BoxCount(); ++box) {
      AddBox(box);
    }
    if (HasLoop(site_)) {
      AddLoop();
    }
    AddStations();
    return std::move(map_);
  }

 private:
  bool IsTransmitter(int box) const { return spread_.Box(box).kind == kTransmitterBox; }

  void AddBox(int box) {
    std::string missing;
    for (int channel = 0; channel < spread_.ChannelCount(box); ++channel) {
      const auto ends = EndsOf(spread_, box, channel);
      if (IsTransmitter(box) && IsDrawnAsLoop()) {
        continue;
      }
      if (ends) {
        AddChannel(box, channel, *ends);
      } else if (IsTransmitter(box) || IsInUse(spread_, box, channel)) {
        missing += (missing.empty() ? "" : ", ") + NameOf(spread_, box, channel);
      }
    }
    if (!missing.empty()) {
      map_.notes.push_back(spread_.BoxName(box) + ": no positions of " + missing);
    }
  }

  MapItem NewItem(int box, int channel) const {
    MapItem item;
    item.box = box;
    item.channel = channel;
    item.owner = spread_.BoxName(box);
    item.name = NameOf(spread_, box, channel);
    item.is_transmitter = IsTransmitter(box);
    item.elevation = spread_.ChannelReal(box, channel, kPositiveElevation);
    return item;
  }

  void AddChannel(int box, int channel, const Ends& ends) {
    MapItem item = NewItem(box, channel);
    const std::string definition = spread_.ChannelCell(box, channel, kDefinition);
    item.points = {ends.positive};
    if (!item.is_transmitter && !IsElectric(definition)) {
      item.kind = MapItem::kSensor;
    } else if (IsPole(item.is_transmitter) && ends.negative.east == 0 && ends.negative.north == 0) {
      item.kind = MapItem::kElectrode;
    } else {
      item.points.push_back(ends.negative);
    }
    map_.items.push_back(std::move(item));
  }

  // Whether the array has one electrode there, and the other far away.
  bool IsPole(bool is_transmitter) const {
    const int array = IntParam(site_, "ARRYTYP");
    return HasReferenceBox(tech_) &&
           (array == kPolePole || (array == kPoleDipole && is_transmitter));
  }

  bool IsDrawnAsLoop() const { return HasLoop(site_) && HasLoopSize(); }
  bool HasLoopSize() const {
    const double length = RealParam(site_, "LLENGTH");
    const double width = RealParam(site_, "LWIDTH");
    return length > 0 && width > 0 && IsUsable(length) && IsUsable(width);
  }

  void AddLoop() {
    if (!HasLoopSize()) {
      map_.notes.emplace_back("Transmitter loop: size not set");
      return;
    }
    const std::string name = "Transmitter loop " + FormatReal(RealParam(site_, "LLENGTH")) + " x " +
                             FormatReal(RealParam(site_, "LWIDTH")) + " m";
    const auto ends = EndsOf(spread_, 0, 0);
    if (!ends && !map_.items.empty()) {
      map_.notes.push_back(name + ": position not known");
      return;
    }
    MapPoint centre;
    if (ends) {
      centre = {(ends->positive.east + ends->negative.east) / 2,
                (ends->positive.north + ends->negative.north) / 2};
    } else {
      map_.notes.insert(map_.notes.begin(), name + ": position not known");
      map_.is_around_centre = true;
    }
    MapItem item = NewItem(0, 0);
    item.kind = MapItem::kLoop;
    item.name = name;
    item.points = LoopCorners(centre);
    map_.items.push_back(std::move(item));
  }

  // From BL along the width, then to TR, then back along the width.
  std::vector<MapPoint> LoopCorners(const MapPoint& centre) const {
    const double length = RealParam(site_, "LLENGTH");
    const double width = RealParam(site_, "LWIDTH");
    const double diagonal = RealParam(site_, "TXAZIM");
    const double azimuth =
        (std::isfinite(diagonal) ? diagonal : 0) - std::atan2(width, length) / kDegree;
    const auto corner = [&](double along, double across) {
      return From(From(centre, azimuth, along * length / 2), azimuth + 90, across * width / 2);
    };
    return {corner(-1, -1), corner(-1, 1), corner(1, 1), corner(1, -1)};
  }

  void AddStation(const char* name, bool is_transmitter, const MapPoint& at, bool is_set) {
    if (!is_set || !IsUsable(at.east) || !IsUsable(at.north)) {
      map_.notes.push_back(std::string(name) + ": position not set");
      return;
    }
    MapItem item;
    item.kind = MapItem::kStation;
    item.is_transmitter = is_transmitter;
    item.name = name;
    item.points = {at};
    map_.items.push_back(std::move(item));
  }

  // A station may be at 0, 0 where something else shows that the grid begins there.
  void AddStations() {
    const MapPoint rx = {RealParam(site_, "ERXPOS"), RealParam(site_, "NRXPOS")};
    const MapPoint tx = {RealParam(site_, "ETXCSRX"), RealParam(site_, "NTXCSRX")};
    const auto is_zero = [](const MapPoint& point) { return point.east == 0 && point.north == 0; };
    if (HasReferenceBox(tech_)) {
      const bool is_set = !is_zero(rx) || !is_zero(tx);
      AddStation("Rx station", false, rx, is_set);
      AddStation("Tx station", true, tx, is_set);
    } else if (tech_ == kCsamt) {
      AddStation("Start pot", false, rx, !is_zero(rx) || !map_.items.empty());
    }
  }

  // MT/AMT: the two dipoles cross in their middles, the coils stand between them.
  void AddCross() {
    map_.is_around_centre = true;
    map_.notes.emplace_back("Places count from the middle of the site");
    const double azimuth = RealParam(site_, "EAZM");
    AddArm("Ex", RealParam(site_, "EXLN"), azimuth, "CHEX");
    AddArm("Ey", RealParam(site_, "EYLN"), azimuth + 90, "CHEY");
    const auto extent = map_.Extent();
    constexpr double kAlone = 20;  // metres, without any dipole
    const double arm = extent ? std::hypot(extent->most.east - extent->least.east,
                                           extent->most.north - extent->least.north) /
                                    4
                              : kAlone;
    const double coil = RealParam(site_, "HAZM");
    if (!IsUsable(coil) || !IsUsable(azimuth)) {
      map_.notes.emplace_back("Coils: azimuth not set");
      return;
    }
    const MapPoint stand = From({}, azimuth + 45, extent ? arm : 0);
    AddCoil("Hx", stand, coil, arm / 2);
    AddCoil("Hy", stand, coil + 90, arm / 2);
    map_.notes.emplace_back("Coils: only their directions are known");
  }

  MapItem OfMainBox(const char* name) const {
    MapItem item;
    item.name = name;
    for (int box = 0; box < spread_.BoxCount(); ++box) {
      if (spread_.Box(box).kind == kLocalBox) {
        item.box = box;
        item.owner = spread_.BoxName(box);
      }
    }
    return item;
  }

  void AddArm(const char* name, double length, double azimuth, ParamKey channel) {
    if (!(length > 0) || !IsUsable(length) || !IsUsable(azimuth)) {
      map_.notes.push_back(std::string(name) + " dipole: length or azimuth not set");
      return;
    }
    MapItem item = OfMainBox(name);
    item.channel = IntParam(site_, channel) - 1;
    item.leads_to_positive = true;
    item.points = {From({}, azimuth, length / 2), From({}, azimuth, -length / 2)};
    map_.items.push_back(std::move(item));
  }

  void AddCoil(const char* name, const MapPoint& stand, double azimuth, double length) {
    MapItem item = OfMainBox(name);
    item.kind = MapItem::kDirection;
    item.points = {From(stand, azimuth, -length / 2), From(stand, azimuth, length / 2)};
    map_.items.push_back(std::move(item));
  }

  const Spread& spread_;
  const ParamTable& site_;
  Tech tech_;
  SpreadMap map_;
};

std::string Counted(std::size_t count, const std::string& one, const std::string& many) {
  return FormatInt(count) + " " + (count == 1 ? one : many);
}

std::string EndsText(const MapItem& item) {
  const MapPoint& first = item.points.front();
  switch (item.kind) {
    case MapItem::kDirection:
      return "azimuth " + FormatReal(AzimuthOf(item)) + " degrees";
    case MapItem::kLoop:
      return "BL at " + PlaceText(first) + ", TR at " + PlaceText(item.points[2]) + " (m)";
    case MapItem::kDipole:
      return "from " + PlaceText(first) + " to " + PlaceText(item.points.back()) + " (m), length " +
             FormatReal(LengthOf(item), 6) + " m, azimuth " + FormatReal(AzimuthOf(item), 5) +
             " degrees";
    case MapItem::kSite:
      return PlaceText(first) + " (m)" +
             (item.points.size() == 1
                  ? std::string()
                  : " and " + Counted(item.points.size() - 1, "other place", "other places"));
    default:
      return PlaceText(first) + " (m)";
  }
}

std::string LineOf(const std::string& box, int channel, const std::string& name,
                   const std::optional<Ends>& ends, std::optional<double> elevation) {
  std::string text =
      box + '\t' + (channel < 0 ? "" : FormatInt(channel + 1)) + '\t' + PrintableLatin1(name);
  for (const bool is_positive : {true, false}) {
    const auto number = [&text](std::optional<double> metres) {
      text += '\t' + (metres ? FormatReal(*metres) : std::string());
    };
    const MapPoint point = !ends ? MapPoint() : is_positive ? ends->positive : ends->negative;
    number(ends ? std::optional(point.east) : std::nullopt);
    number(ends ? std::optional(point.north) : std::nullopt);
    number(ends && is_positive ? elevation : std::nullopt);
  }
  return text + '\n';
}

}  // namespace

std::optional<MapExtent> SpreadMap::Extent() const {
  std::optional<MapExtent> extent;
  for (const MapItem& item : items) {
    for (const MapPoint& point : item.points) {
      if (!extent) {
        extent = {point, point};
      }
      extent->least = {std::min(extent->least.east, point.east),
                       std::min(extent->least.north, point.north)};
      extent->most = {std::max(extent->most.east, point.east),
                      std::max(extent->most.north, point.north)};
    }
  }
  return extent;
}

int SpreadMap::IndexOf(int box, int channel) const {
  const auto found = std::find_if(items.begin(), items.end(), [=](const MapItem& item) {
    return item.box == box && item.channel == channel;
  });
  return box < 0 || found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

SpreadMap MapOf(const Spread& spread, const ParamTable& site) { return Maker(spread, site).Make(); }

SpreadMap MapOf(const ParamTable& table) {
  ParamTable copy = table;  // a spread works on a table that it may change
  return MapOf(Spread(&copy), table);
}

double LengthOf(const MapItem& item) {
  if (item.points.size() != 2) {
    return 0;
  }
  return std::hypot(item.points[1].east - item.points[0].east,
                    item.points[1].north - item.points[0].north);
}

double AzimuthOf(const MapItem& item) {
  if (item.points.size() != 2) {
    return 0;
  }
  const MapPoint& start = item.points[item.leads_to_positive ? 1 : 0];
  const MapPoint& end = item.points[item.leads_to_positive ? 0 : 1];
  const double degrees = std::atan2(end.east - start.east, end.north - start.north) / kDegree;
  return Rounded(degrees < 0 ? degrees + 360 : degrees);
}

std::string PlaceText(const MapPoint& point) {
  return FormatReal(point.east) + " E, " + FormatReal(point.north) + " N";
}

std::string Describe(const MapItem& item) {
  std::string text = item.name + (item.owner.empty() ? "" : ", " + item.owner) + ": ";
  text += EndsText(item);
  if (item.elevation && *item.elevation != 0) {
    text += ", elevation " + FormatReal(*item.elevation) + " m";
  }
  return text;
}

std::string Summarize(const SpreadMap& map) {
  const auto count = [&map](MapItem::Kind kind, const char* one, const char* many) {
    const auto number = static_cast<std::size_t>(
        std::count_if(map.items.begin(), map.items.end(),
                      [kind](const MapItem& item) { return item.kind == kind; }));
    return number == 0 ? std::string() : Counted(number, one, many);
  };
  std::string text;
  for (const std::string& part :
       {count(MapItem::kDipole, "dipole", "dipoles"),
        count(MapItem::kElectrode, "single electrode", "single electrodes"),
        count(MapItem::kSensor, "sensor", "sensors"), count(MapItem::kDirection, "coil", "coils"),
        count(MapItem::kLoop, "loop", "loops"), count(MapItem::kStation, "station", "stations"),
        count(MapItem::kSite, "site", "sites")}) {
    text += (text.empty() || part.empty() ? "" : ", ") + part;
  }
  text = text.empty() ? "Nothing has a position" : text;
  for (const std::string& note : map.notes) {
    text += ". " + note;
  }
  return text;
}

std::string ElectrodeLines(const ParamTable& table) {
  std::string text = "Box\tChannel\tName\tE+ (m)\tN+ (m)\tZ+ (m)\tE- (m)\tN- (m)\tZ- (m)\n";
  if (TechOf(table) == kMtAmt) {
    for (const MapItem& item : MapOf(table).items) {
      if (item.kind == MapItem::kDipole) {
        text += LineOf(item.owner, item.channel, item.name,
                       Ends{item.points.front(), item.points.back()}, std::nullopt);
      }
    }
    return text;
  }
  ParamTable copy = table;
  const Spread spread(&copy);
  for (int box = 0; box < spread.BoxCount(); ++box) {
    for (int channel = 0; channel < spread.ChannelCount(box); ++channel) {
      text += LineOf(spread.BoxName(box), channel, NameOf(spread, box, channel),
                     EndsOf(spread, box, channel),
                     spread.ChannelReal(box, channel, kPositiveElevation));
    }
  }
  return text;
}

}  // namespace orvane
