// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/box_status.h"

#include "table/param_access.h"

namespace orvane {
namespace {

using Form = BoxStatusForm;

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
    Shown(Form::kLatitude, "Latitude", "LATG", PosPT),
    Shown(Form::kLongitude, "Longitude", "LNGG", PosPT),
    Shown(Form::kElevation, "Elevation (m)", "ELEV", IntPT),
    Shown(Form::kSatellites, "GPS satellites", "NSAT", IntPT),
    Shown(Form::kClock, "Clock status", "CLST", IntPT, Offset(0, Unlisted::kLast), kClockStates),
    Shown(Form::kTimeError, "Time error (microsecond)", "TERR", IntPT),
    Shown(Form::kLastFix, "GPS time of last fix", "LFIX", AmxPT),
    Shown(Form::kRecords, "Total records", "TOTL", IntPT),
    Shown(Form::kSaturated, "Saturated records", "SATR", IntPT),
    Shown(Form::kBad, "Bad records", "BADR", IntPT),
    Shown(Form::kBadStacks, "Bad stack results", "STBADR", IntPT),
    Shown(Form::kFirstRecord, "First record time", "FTIM", AmxPT),
    Shown(Form::kLastRecord, "Last record time", "LTIM", AmxPT),
    StoredIn("mV", Shown(Form::kBattery, "Battery (volt)", "BAT1", IntPT,
                         ShownScaled(kVoltsPerMillivolt))),
    Shown(Form::kTemperature, "Temperature (Celsius)", "TEMP", IntPT),
    StoredIn("byte", Shown(Form::kDisk, "Disk space ( MB )", "DISK", IntPT,
                           ShownScaled(kMegabytesPerByte, kDecimals))),
    Shown(Form::kFrontEnd, "FE FPGA  status", "FFPG", IntPT),
    Shown(Form::kGps, "GPS FPGA status", "GFPG", IntPT),
    Shown(Form::kLoader, "DSP loader status", "DSP", IntPT),
    Shown(Form::kMasterLatitude, "Radio master latitude", "MSTRLAT", PosPT),
    Shown(Form::kMasterLongitude, "Radio master longitude", "MSTRLNG", PosPT),
    Shown(Form::kMasterDistance, "Radio master distance", "MSTRRNG", FltPT,
          ShownScaled(1, kDecimals)),
    StoredIn("degree", Shown(Form::kMasterBearing, "Radio master bearing", "MSTRBRG", FltPT,
                             ShownScaled(1, kDecimals))),
    {Form::kLocalTime, Widget::kCheck, "Local time", {}, IntPT, Unbound()},
});

}  // namespace

BoxStatusForm::BoxStatusForm(ParamTable* table) : table_(table), model_(table, kFields) {}

void BoxStatusForm::OnEdited(int control) {
  if (control == kLocalTime) {
    model_.SetHourOffset(model_.Index(kLocalTime) == 1 ? IntParam(*table_, "TMDIFF") : 0);
  }
}

}  // namespace orvane
