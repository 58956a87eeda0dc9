// SPDX-License-Identifier: GPL-3.0-or-later
// Under which keys the channels of each kind of box are kept.
#ifndef ORVANE_EDITORS_CHANNEL_KEYS_H_
#define ORVANE_EDITORS_CHANNEL_KEYS_H_

#include <array>
#include <string_view>

#include "editors/box_list.h"
#include "table/param_key.h"

namespace orvane {

/// What a channel has, in the order of the channel grid's columns after "Channel".
enum ChannelColumn : int {
  kDefinition,
  kPositiveNorth,
  kPositiveEast,
  kPositiveElevation,
  kNegativeNorth,
  kNegativeEast,
  kSensorSize,
  kContactResistance,
  kDcVoltage,
  kAcVoltage,
  kFlagColumn,
  kGainFactor,
  kChannelColumns,
};

struct ChannelColumnInfo {
  std::string_view title;
  ValueType type;
  double to_shown;  ///< shown = stored x this; voltages are shown in millivolts
  double to_stored;
  std::string_view meaning;    ///< of the key, after the channel
  std::string_view unit = {};  ///< of the stored value
};
const ChannelColumnInfo& InfoOf(ChannelColumn column);

/// Most channels that the keys of a kind of box hold.
int MaxChannels(BoxKind kind);

/// The key of a channel (from 1) of a box. `slot`: 1 to 5 of an auxiliary box, else 0. Empty where
/// the kind has no such column.
ParamKey ChannelKey(BoxKind kind, int slot, int channel, ChannelColumn column);

}  // namespace orvane

#endif  // ORVANE_EDITORS_CHANNEL_KEYS_H_
