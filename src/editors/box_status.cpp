// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/box_status.h"

#include "table/param_access.h"

namespace orvane {
namespace {

constexpr std::array<Choice, 6> kClockStates = {{{"Uninitialized"},
                                                 {"Based on CPU"},
                                                 {"Synch in progress"},
                                                 {"Aligned to OCXO"},
                                                 {"Locked to GPS"},
                                                 {"Unknown"}}};

constexpr double kVoltsPerMillivolt = 0.001;
constexpr double kMegabytesPerByte = 1.0 / (1024 * 1024);
constexpr int kDecimals = 2;

constexpr Field Shown(int control, std::string_view label, std::string_view key, ValueType type,
                      const Codec& codec = {}, std::span<const Choice> choices = {}) {
  return {control, Widget::kShown, label, key, type, codec, {}, choices};
}

// kept: the double blank of "FE FPGA  status".
constexpr auto kFields = std::to_array<Field>({
    Shown(1263, "Latitude", "LATG", PosPT),
    Shown(1264, "Longitude", "LNGG", PosPT),
    Shown(1266, "Elevation (m)", "ELEV", IntPT),
    Shown(1262, "GPS satellites", "NSAT", IntPT),
    Shown(1269, "Clock status", "CLST", IntPT, Offset(0, Unlisted::kLast), kClockStates),
    Shown(1270, "Time error (microsecond)", "TERR", IntPT),
    Shown(1268, "GPS time of last fix", "LFIX", AmxPT),
    Shown(1273, "Total records", "TOTL", IntPT),
    Shown(1260, "Saturated records", "SATR", IntPT),
    Shown(1259, "Bad records", "BADR", IntPT),
    Shown(1261, "Bad stack results", "STBADR", IntPT),
    Shown(1277, "First record time", "FTIM", AmxPT),
    Shown(1278, "Last record time", "LTIM", AmxPT),
    Shown(1276, "Battery (volt)", "BAT1", IntPT, ShownScaled(kVoltsPerMillivolt)),
    Shown(1275, "Temperature (Celsius)", "TEMP", IntPT),
    Shown(1274, "Disk space ( MB )", "DISK", IntPT, ShownScaled(kMegabytesPerByte, kDecimals)),
    Shown(1257, "FE FPGA  status", "FFPG", IntPT),
    Shown(1256, "GPS FPGA status", "GFPG", IntPT),
    Shown(1258, "DSP loader status", "DSP", IntPT),
    Shown(1267, "Radio master latitude", "MSTRLAT", PosPT),
    Shown(1265, "Radio master longitude", "MSTRLNG", PosPT),
    Shown(1272, "Radio master distance", "MSTRRNG", FltPT, ShownScaled(1, kDecimals)),
    Shown(1271, "Radio master bearing", "MSTRBRG", FltPT, ShownScaled(1, kDecimals)),
    {BoxStatusForm::kLocalTime, Widget::kCheck, "Local time", {}, IntPT, Unbound()},
});

}  // namespace

BoxStatusForm::BoxStatusForm(ParamTable* table) : table_(table), model_(table, kFields) {}

void BoxStatusForm::OnEdited(int control) {
  if (control == kLocalTime) {
    model_.SetHourOffset(model_.Index(kLocalTime) == 1 ? IntParam(*table_, "TMDIFF") : 0);
  }
}

}  // namespace orvane
