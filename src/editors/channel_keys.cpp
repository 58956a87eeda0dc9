// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/channel_keys.h"

#include <string>

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr std::array<ChannelColumnInfo, kChannelColumns> kColumns = {{
    {"Channel Definition", StrPT, 1, 1, "what it measures"},
    {"N+ (m)", FltPT, 1, 1, "positive electrode North", "m"},
    {"E+ (m)", FltPT, 1, 1, "positive electrode East", "m"},
    {"Z+ (m)", FltPT, 1, 1, "positive electrode elevation", "m"},
    {"N- (m)", FltPT, 1, 1, "negative electrode North", "m"},
    {"E- (m)", FltPT, 1, 1, "negative electrode East", "m"},
    {"Sensor size (m, m^2)", FltPT, 1, 1, "sensor size", "m or m^2"},
    {"Resistance (ohm)", FltPT, 1, 1, "contact resistance", "ohm"},
    {"DC (mv)", FltPT, 1000, 0.001, "DC voltage", "V"},
    {"AC (mv)", FltPT, 1000, 0.001, "AC voltage", "V"},
    {"Flag", IntPT, 1, 1, "flag"},
    {"Gain factor", FltPT, 1, 1, "gain factor"},
}};

// The families: a prefix for each column, after it what numbers the channel. "" is no key.
using Prefixes = std::array<std::string_view, kChannelColumns>;
constexpr Prefixes kMain = {"CHDEF",  "NPOS", "EPOS", "ZPOS", "NNEG", "ENEG",
                            "SENSIZ", "RES",  "DCV",  "ACV",  "FLAG", "GFC"};
constexpr Prefixes kTransmitter = {"CHDEF", "NPOS", "EPOS", "ZPOS", "NNEG", "ENEG",
                                   "",      "",     "",     "",     "FLAG", ""};
constexpr Prefixes kReference = {"CHDEFN", "NPOSN", "EPOSN", "",     "NNEGN", "ENEGN",
                                 "",       "RESN",  "DCVN",  "ACVN", "FLAGN", ""};
constexpr Prefixes kAuxiliary = {"DEF",  "NPOS", "EPOS", "ZPOS", "NNEG", "ENEG",
                                 "SSIZ", "RES",  "DCV",  "ACV",  "FLAG", ""};

ParamKey Joined(std::string_view prefix, const std::string& suffix) {
  return prefix.empty() ? ParamKey() : ParamKey(std::string(prefix) + suffix);
}

}  // namespace

const ChannelColumnInfo& InfoOf(ChannelColumn column) {
  return kColumns[static_cast<std::size_t>(column)];
}

int MaxChannels(BoxKind kind) {
  switch (kind) {
    case kTransmitterBox:
      return 1;
    case kLocalBox:
      return 8;
    case kReferenceBox:
      return 2;
    case kAuxiliaryBox:
      break;
  }
  return 3;
}

ParamKey ChannelKey(BoxKind kind, int slot, int channel, ChannelColumn column) {
  const auto at = static_cast<std::size_t>(column);
  switch (kind) {
    case kTransmitterBox:
      // These two have names of their own.
      if (column == kSensorSize) {
        return "TXLEN";
      }
      return column == kContactResistance ? ParamKey("TXRES") : Joined(kTransmitter[at], "TX");
    case kLocalBox:
      return Joined(kMain[at], FormatInt(channel));
    case kReferenceBox:
      return Joined(kReference[at], FormatInt(channel));
    case kAuxiliaryBox:
      break;
  }
  return Joined(kAuxiliary[at], FormatInt(slot) + "R" + FormatInt(channel));
}

}  // namespace orvane
