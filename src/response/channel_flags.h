// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_CHANNEL_FLAGS_H_
#define ORVANE_RESPONSE_CHANNEL_FLAGS_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "table/box_keys.h"

namespace orvane {

/// Which variants of the front-end model a channel takes: bits of its flag word.
enum : std::uint32_t { kFirstVariant = 1, kSecondVariant = 2 };

/// A word for each channel, the first one's first.
using ChannelModelFlags = std::array<std::uint32_t, kMostBoxChannels>;

/// The flags of a box's channels, judged by its hardware text in upper case.
ChannelModelFlags ChannelModelFlagsOf(std::string_view hardware);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CHANNEL_FLAGS_H_
