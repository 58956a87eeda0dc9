// SPDX-License-Identifier: GPL-3.0-or-later
// The names that seismological archives give to channels; docs/formats/mseed.md has the tables.
#ifndef ORVANE_EXPORT_MSEED_CODES_H_
#define ORVANE_EXPORT_MSEED_CODES_H_

#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "response/recording_header.h"

namespace orvane {

/// How a channel stands in the field.
struct ChannelDirection {
  std::optional<double> azimuth;  ///< degrees east of north, as the table has it
  double dip = 0;                 ///< degrees below the horizon
};

struct MseedChannel {
  std::string location;  ///< "01" .. "99": the channel's number
  std::string code;      ///< band, instrument, orientation: "FQN"
  ChannelDirection direction;
};

/// The first letter of a channel's code. A rate has two where it matters whether the channel
/// reaches 0.1 Hz.
char MseedBand(double rate, bool is_broad);

/// The names of a recording's channels at this rate, which is above 0. Fails where a channel's
/// number has more than two digits.
Result<std::vector<MseedChannel>> MseedChannels(const RecordingHeader& header, double rate);

/// Network and station; fails where a name has no or too many characters, or others than letters
/// and digits.
Result<std::string> MseedStation(const std::string& network, int box);

}  // namespace orvane

#endif  // ORVANE_EXPORT_MSEED_CODES_H_
