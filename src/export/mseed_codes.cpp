// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/mseed_codes.h"

#include <algorithm>
#include <cmath>

#include "base/ascii.h"
#include "base/number_text.h"
#include "table/tech.h"

namespace orvane {
namespace {

constexpr int kMostLocation = 99;
constexpr std::size_t kMostNetwork = 2;
constexpr std::size_t kMostStation = 5;
constexpr double kStraight = 5;  // degrees

struct Band {
  double least;  // Hz; the first that a rate reaches
  char broad;
  char other;
};
constexpr Band kBands[] = {  // NOLINT(modernize-avoid-c-arrays)
    {5000, 'J', 'J'},
    {1000, 'F', 'G'},
    {250, 'C', 'D'},
    {80, 'H', 'E'},
    {10, 'B', 'S'}};
// Below 10 Hz: the name of the power of ten that is nearest.
constexpr Band kSlowBands[] = {  // NOLINT(modernize-avoid-c-arrays)
    {0.3, 'L', 'L'},
    {0.03, 'V', 'V'},
    {0, 'U', 'U'}};

std::string Digits(int number, std::size_t width) {
  std::string text = FormatInt(number);
  return std::string(width > text.size() ? width - text.size() : 0, '0') + text;
}

double Turned(double azimuth) {
  const double turned = std::fmod(azimuth, 360);
  return turned < 0 ? turned + 360 : turned;
}

// The site's dialog of MT/AMT asks for the azimuths of Ex and Hx; y is 90 degrees to the east of x.
ChannelDirection DirectionOf(const RecordingHeader& header, char letter, char axis) {
  if (axis == 'Z') {
    return {0.0, 90};
  }
  if (axis == '\0' || SettingInt(header, "TECH") != kMtAmt) {
    return {};
  }
  const double of_x = SettingReal(header, letter == 'E' ? "EAZM" : "HAZM");
  return {
      std::isfinite(of_x) ? std::optional(Turned(axis == 'X' ? of_x : of_x + 90)) : std::nullopt,
      0};
}

bool IsNear(const ChannelDirection& direction, double azimuth) {
  if (!direction.azimuth) {
    return false;
  }
  const double off = std::abs(*direction.azimuth - azimuth);
  return std::min(off, 360 - off) <= kStraight;
}

char Orientation(const ChannelDirection& direction, char axis) {
  return direction.dip != 0      ? 'Z'
         : IsNear(direction, 0)  ? 'N'
         : IsNear(direction, 90) ? 'E'
         : axis == 'Y'           ? '2'
                                 : '1';
}

}  // namespace

char MseedBand(double rate, bool is_broad) {
  for (const Band& band : kBands) {
    if (rate >= band.least) {
      return is_broad ? band.broad : band.other;
    }
  }
  if (rate > 1) {
    return 'M';
  }
  return std::find_if(std::begin(kSlowBands), std::end(kSlowBands),
                      [rate](const Band& band) { return rate >= band.least; })
      ->broad;
}

Result<std::vector<MseedChannel>> MseedChannels(const RecordingHeader& header, double rate) {
  if (header.channels > kMostLocation) {
    return Failure("a file of this format names no more than 99 channels, and a record has " +
                   FormatInt(header.channels));
  }
  // Coupled to AC a box's channel still begins at a few mHz; without a table it could be anything.
  const char band = MseedBand(rate, header.settings.IsLoaded());
  std::vector<MseedChannel> all;
  for (int number = 1; number <= header.channels; ++number) {
    const char letter = header.settings.IsLoaded() && number <= kMostChannels
                            ? DefinitionLetter(header, number)
                            : '\0';
    MseedChannel channel{Digits(number, 2), {}, {}};
    const bool is_field = letter == 'E' || letter == 'H';
    const char axis = is_field ? ComponentAxis(header, number) : '\0';
    channel.direction = is_field ? DirectionOf(header, letter, axis) : ChannelDirection();
    channel.code += band;
    channel.code += letter == 'E' ? 'Q' : letter == 'H' ? 'F' : 'Y';
    channel.code += Orientation(channel.direction, axis);
    all.push_back(std::move(channel));
  }
  return all;
}

Result<std::string> MseedStation(const std::string& network, int box) {
  const auto is_part = [](char c) {
    return IsDigit(c) || (UpperCased(c) >= 'A' && UpperCased(c) <= 'Z');
  };
  if (network.empty() || network.size() > kMostNetwork ||
      !std::all_of(network.begin(), network.end(), is_part)) {
    return Failure("\"" + network + "\" is no network: it has one or two letters or digits");
  }
  std::string station = Digits(box, kMostStation);
  return station.size() > kMostStation
             ? Failure("the serial number " + station + " has more than 5 digits")
             : Result<std::string>(std::move(station));
}

}  // namespace orvane
