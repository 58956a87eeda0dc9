// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/line_layout.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "base/number_text.h"

namespace orvane {
namespace {

// Metres to north and east; also a direction, then of length 1.
struct Place {
  double north = 0;
  double east = 0;
};

Place Along(const Place& start, const Place& direction, double metres) {
  return {start.north + direction.north * metres, start.east + direction.east * metres};
}

Place RxStation(const SiteForm& form) {
  return {form.Real(SiteForm::kRxNorth), form.Real(SiteForm::kRxEast)};
}

Place TxStation(const SiteForm& form) {
  return {form.Real(SiteForm::kTxNorth), form.Real(SiteForm::kTxEast)};
}

// None where both stations are one place.
std::optional<Place> DirectionOf(const SiteForm& form) {
  if (form.Method() == kCsamt) {
    const double azimuth = form.Real(SiteForm::kAzimuth) * std::numbers::pi / 180;
    return Place{std::cos(azimuth), std::sin(azimuth)};
  }
  const Place rx = RxStation(form);
  const Place tx = TxStation(form);
  const double distance = std::hypot(rx.north - tx.north, rx.east - tx.east);
  if (!(distance > 0)) {
    return std::nullopt;
  }
  return Place{(rx.north - tx.north) / distance, (rx.east - tx.east) / distance};
}

bool HasElectrodes(const Spread& spread, int box, int channel) {
  const std::string definition = spread.ChannelCell(box, channel, kDefinition);
  return definition.empty() || definition.front() == 'E' || definition.front() == 'e';
}

int PlaceDipoles(const Place& start, const Place& direction, double length, Spread* spread) {
  int dipoles = 0;
  for (const BoxKind kind : {kLocalBox, kAuxiliaryBox}) {
    for (int box = 0; box < spread->BoxCount(); ++box) {
      for (int channel = 0; spread->Box(box).kind == kind && channel < spread->ChannelCount(box);
           ++channel) {
        if (HasElectrodes(*spread, box, channel)) {
          const Place near = Along(start, direction, dipoles * length);
          const Place far = Along(start, direction, ++dipoles * length);
          spread->PlaceElectrode(box, channel, Spread::kPositive, near.north, near.east);
          spread->PlaceElectrode(box, channel, Spread::kNegative, far.north, far.east);
        }
      }
    }
  }
  return 2 * dipoles;
}

int PlaceTransmitter(const SiteForm& form, const Place& direction, Spread* spread) {
  enum Array : int { kDipoleDipole = 1, kPoleDipole, kPolePole };
  const int array = form.Model().Index(SiteForm::kArrayType);
  if (form.Method() == kCsamt || array < kDipoleDipole || array > kPolePole) {
    return 0;
  }
  constexpr int kTransmitterRow = 0;
  const Place near = TxStation(form);
  spread->PlaceElectrode(kTransmitterRow, 0, Spread::kPositive, near.north, near.east);
  if (array != kDipoleDipole) {
    return 1;
  }
  const Place far = Along(near, direction, -form.Real(SiteForm::kTxLength));
  spread->PlaceElectrode(kTransmitterRow, 0, Spread::kNegative, far.north, far.east);
  return 2;
}

}  // namespace

std::string CalculateCoordinates(const SiteForm& form, Spread* spread) {
  const auto direction = DirectionOf(form);
  if (!direction) {
    return "No positions set: both stations are at the same place, so the line has no direction";
  }
  const int receivers =
      PlaceDipoles(RxStation(form), *direction, form.Real(SiteForm::kRxLength), spread);
  const int transmitter = PlaceTransmitter(form, *direction, spread);
  return FormatInt(receivers + transmitter) + " electrode positions set: " + FormatInt(receivers) +
         " of receivers, " + FormatInt(transmitter) + " of the transmitter";
}

}  // namespace orvane
