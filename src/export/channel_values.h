// SPDX-License-Identifier: GPL-3.0-or-later
// What the numbers of a channel are, as other programs want to know it.
#ifndef ORVANE_EXPORT_CHANNEL_VALUES_H_
#define ORVANE_EXPORT_CHANNEL_VALUES_H_

#include <string>
#include <vector>

#include "timeseries/waveform_channels.h"

namespace orvane {

struct ChannelValues {
  std::string definition;  ///< as the display names it
  std::string name;        ///< letters, digits and _, a letter first; no two are alike in any case
  std::string unit;        ///< "V", "T", or "count" where the scale is not known
  double scale = 1;        ///< unit = sample (held value >> 8) x scale; 1 for counts
};

/// The channels of a record; `taken` are names that no channel may have.
std::vector<ChannelValues> ChannelValuesOf(const TsHeader& header, const TsCompanion* companion,
                                           const std::vector<std::string>& taken = {});

}  // namespace orvane

#endif  // ORVANE_EXPORT_CHANNEL_VALUES_H_
