// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/geo_text.h"

#include <cmath>

#include "base/ascii.h"
#include "base/number_text.h"
#include "table/param_access.h"

namespace orvane {
namespace {

// `positive` and `negative` are the letters of the two sides.
std::optional<double> DegreesFrom(std::string_view text, std::string_view positive,
                                  std::string_view negative, double most) {
  const std::size_t comma = text.find(',');
  const auto number = ParseReal(text.substr(0, comma));
  const std::string_view side =
      comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
  const bool is_negative = EqualsWithoutCase(side, negative);
  if (!number || !(*number >= 0 && *number <= 100 * most) ||
      (!is_negative && !EqualsWithoutCase(side, positive))) {
    return std::nullopt;
  }
  const double degrees = std::floor(*number / 100);
  const double all = degrees + (*number - 100 * degrees) / 60;
  return is_negative ? -all : all;
}

}  // namespace

std::optional<double> LatitudeFrom(std::string_view text) {
  constexpr double kPole = 90;
  return DegreesFrom(text, "N", "S", kPole);
}

std::optional<double> LongitudeFrom(std::string_view text) {
  constexpr double kHalfTurn = 180;
  return DegreesFrom(text, "E", "W", kHalfTurn);
}

std::optional<GeoPlace> GeoPlaceOf(const ParamTable& table) {
  const auto latitude = LatitudeFrom(Trimmed(ParamAsText(table, "LATG")));
  const auto longitude = LongitudeFrom(Trimmed(ParamAsText(table, "LNGG")));
  const bool is_set = latitude && longitude && (*latitude != 0 || *longitude != 0);
  return is_set ? std::optional(GeoPlace{*latitude, *longitude}) : std::nullopt;
}

}  // namespace orvane
