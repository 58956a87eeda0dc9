// SPDX-License-Identifier: GPL-3.0-or-later
// A station's description as StationXML 1.1, for the programs that read its MiniSEED.
#ifndef ORVANE_EXPORT_STATION_XML_H_
#define ORVANE_EXPORT_STATION_XML_H_

#include <cstdint>
#include <string>
#include <vector>

#include "export/mseed_codes.h"

namespace orvane {

/// What a channel made of its input, counts for a unit.
struct ChannelResponse {
  struct Point {
    double frequency = 0;  ///< Hz
    double amplitude = 0;  ///< counts for a unit
    double phase = 0;      ///< degrees
  };
  std::string unit;           ///< "V", "V/m", "T", "A", "V/m^2"
  std::vector<Point> points;  ///< ascending; none: not known
};

/// A channel in records of one rate.
struct StationChannel {
  MseedChannel name;
  std::string definition;
  double rate = 0;
  std::int64_t begin = 0;  ///< microseconds since 1970
  std::int64_t end = 0;
  ChannelResponse response;
};

struct Station {
  std::string network;
  std::string code;
  std::string site;
  double latitude = 0;
  double longitude = 0;
  double elevation = 0;
  std::vector<StationChannel> channels;
};

/// The document. "Created" is the beginning of the recording: the same recording gives the same
/// text.
std::string StationXml(const Station& station);

/// The frequency that a response is told relative to: the highest power of ten that is at most a
/// twentieth of the rate.
double ReferenceFrequency(double rate);

}  // namespace orvane

#endif  // ORVANE_EXPORT_STATION_XML_H_
