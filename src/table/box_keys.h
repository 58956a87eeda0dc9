// SPDX-License-Identifier: GPL-3.0-or-later
// What a spread's boxes have and under which keys a table keeps it.
#ifndef ORVANE_TABLE_BOX_KEYS_H_
#define ORVANE_TABLE_BOX_KEYS_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "table/param_access.h"

namespace orvane {

/// Most channels that any box records.
inline constexpr int kMostBoxChannels = 12;

/// A box samples in band 0, at the full rate, and in bands 1 to this one.
inline constexpr int kLastBand = 19;

struct AuxiliaryKeys {
  std::string_view serial;    ///< 0: the place is empty
  std::string_view channels;  ///< how many
  std::string_view control;   ///< mode control word
};
/// Of auxiliary boxes 1 to 5.
inline constexpr std::array<AuxiliaryKeys, 5> kAuxiliaryKeys = {{
    {"SN01", "NCHN1R", "1RCTL"},
    {"SN02", "NCHN2R", "2RCTL"},
    {"SN03", "NCHN3R", "3RCTL"},
    {"SN04", "NCHN4R", "4RCTL"},
    {"SN05", "NCHN5R", "5RCTL"},
}};

/// Where the main box's number of channels is: as the box counted, else as the user set it.
inline constexpr std::string_view kCountedChannels = "TCHN";
inline constexpr std::string_view kSetChannels = "NCHN";

inline bool HasCountedChannels(const ParamTable& table) {
  return IntParam(table, kCountedChannels) != 0;
}
inline std::int32_t MainBoxChannels(const ParamTable& table) {
  return IntParam(table, HasCountedChannels(table) ? kCountedChannels : kSetChannels);
}

}  // namespace orvane

#endif  // ORVANE_TABLE_BOX_KEYS_H_
