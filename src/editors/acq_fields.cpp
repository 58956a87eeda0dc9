// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/acq_fields.h"

#include <array>

#include "editors/file_close.h"

namespace orvane {
namespace {

// kept: labels with their trailing blanks, names of places as the users know them from the list.
constexpr auto kFunctions = std::to_array<Choice>({{"SIP", acq::kSipFunction},
                                                   {"TDIP", acq::kTdipFunction},
                                                   {"TDEM", acq::kTdemFunction},
                                                   {"CSAMT", acq::kCsamtFunction},
                                                   {"MT/AMT", acq::kMtAmtFunction},
                                                   {"FDEM", acq::kFdemFunction}});
constexpr auto kRequests = std::to_array<Choice>({{"Setup", acq::kRequestSetup},
                                                  {"Record", acq::kRequestRecord},
                                                  {"GPS reset", acq::kRequestGpsReset},
                                                  {"Box Cal", acq::kRequestBoxCalibration},
                                                  {"Sensor Cal", acq::kRequestSensorCalibration},
                                                  {"CS_Standby", acq::kRequestStandby},
                                                  {"CS_Pause", acq::kRequestPause},
                                                  {"CS_Record", acq::kRequestCsRecord}});
constexpr auto kECouplings =
    std::to_array<Choice>({{"DC coupling", acq::kEDcCoupling}, {"AC coupling", acq::kEAcCoupling}});
constexpr auto kHCouplings =
    std::to_array<Choice>({{"DC coupling", acq::kHDcCoupling}, {"AC coupling", acq::kHAcCoupling}});
constexpr auto kEGains = std::to_array<Choice>({{"x 0.25 ", acq::kEGainOfQuarter},
                                                {"x 1", acq::kEGainOf1},
                                                {"x 4", acq::kEGainOf4},
                                                {"x 16 ", acq::kEGainOf16}});
constexpr auto kHGains = std::to_array<Choice>({{"x 0.25", acq::kHGainOfQuarter},
                                                {"x 1", acq::kHGainOf1},
                                                {"x 4", acq::kHGainOf4},
                                                {"x 16", acq::kHGainOf16}});
constexpr auto kFilters = std::to_array<Choice>({{"Off", acq::kFilterOff},
                                                 {"0 (Weakest)", acq::kFilterWeakest},
                                                 {"1", acq::kFilter1},
                                                 {"2", acq::kFilter2},
                                                 {"3", acq::kFilter3},
                                                 {"4", acq::kFilter4}});
constexpr auto kLineFrequencies =
    std::to_array<Choice>({{"50 Hz", acq::k50Hz}, {"60 Hz", acq::k60Hz}});
constexpr auto kSamplings = std::to_array<Choice>(
    {{"AMT", acq::kAmtSampling}, {"MT", acq::kMtSampling}, {"DAMT", acq::kDamtSampling}});
constexpr auto kZoneKinds =
    std::to_array<Choice>({{"UTC", acq::kUtcTimes}, {"Local", acq::kLocalTimes}});
constexpr auto kZones = std::to_array<Choice>({
    {"(GMT-12) Internation Date Line West"},
    {"(GMT-11) Midway Island"},
    {"(GMT-10) Hawaii"},
    {"(GMT-09) Alaska"},
    {"(GMT-08) Pacific Time (US & Canada)"},
    {"(GMT-07) Mountain Time (US&Canada)"},
    {"(GMT-06) Central Time (US & Canada)"},
    {"(GMT-05) Eastern Time (US & Canada)"},
    {"(GMT-04) Atlantic Time (Canada), Santiago"},
    {"(GMT-03) Newfoundland"},
    {"(GMT-02) Mid-Atlantic"},
    {"(GMT-01) Azores"},
    {"(GMT) Greenwich Mean Time"},
    {"(GMT+01) Paris, Copenhagen, Madrid"},
    {"(GMT+02) Athens, Istambal, Cario"},
    {"(GMT+03) Moscow, Baghdad"},
    {"(GMT+04) Baku, Tbilisi"},
    {"(GMT+05) Islamabad, Tashkent"},
    {"(GMT+06) Almaty, Novosibirsk"},
    {"(GMT+07) Bankog, Hanoi, Jakarta"},
    {"(GMT+08) Beijing, Singapore, Perth"},
    {"(GMT+09) Tokyo, Seoul"},
    {"(GMT+10) Melbourne"},
    {"(GMT+11) Wellington"},
    {"(GMT+12) Fiji Kamchatka"},
    {"(GMT+13) Nuku'alofa"},
});

constexpr std::array kRequestCodes = {1, 2, 5, 7, 8, 11, 12, 13};
constexpr std::array kLineHertz = {50, 60};
constexpr int kSetup = 1;
constexpr int kNoCoupling = -1;
// kept: with neither button checked a box gets -1.
constexpr Codec kCoupling = {.kind = CodecKind::kOffset, .unset = &kNoCoupling};
constexpr Limits kTimeLimits = {0, 0, 19};
constexpr Limits kSerialLimits = {0, 0, 8};

constexpr auto kFields = std::to_array<Field>({
    Meaning(
        "Survey method",
        {acq::kFunction, Widget::kRadios, "Function", "TECH", IntPT, Offset(1), {}, kFunctions}),
    {acq::kRequest,
     Widget::kRadios,
     "Mode request",
     "RQST",
     IntPT,
     Map(kRequestCodes, Unlisted::kAsIndex, &kSetup),
     {},
     kRequests},
    {acq::kECoupling, Widget::kRadios, "E coupling", "ACDC", IntPT, kCoupling, {}, kECouplings},
    {acq::kEGain, Widget::kRadios, "E gain", "EGNC", IntPT, Offset(-1), {}, kEGains},
    {acq::kHCoupling, Widget::kRadios, "H coupling", "ACDH", IntPT, kCoupling, {}, kHCouplings},
    {acq::kHGain, Widget::kRadios, "H gain", "HGNC", IntPT, Offset(-1), {}, kHGains},
    {acq::kFilter, Widget::kRadios, "Low-pass filter", {}, IntPT, Unbound(), {}, kFilters},
    {acq::kVlfTrap, Widget::kCheck, "VLF trap", {}, IntPT, Unbound()},
    {acq::kLineFrequency,
     Widget::kRadios,
     "Line frequency",
     "LFRQ",
     IntPT,
     Map(kLineHertz, Unlisted::kAsIndex),
     {},
     kLineFrequencies},
    {acq::kCombFilter, Widget::kCheck, "Enable comb filter", "COMBON", IntPT, Flag()},
    {acq::kDrift, Widget::kReal, "Drift correction frequency (Hz)", "FDRIFT", FltPT, {}, {0, 100}},
    {acq::kSampling, Widget::kRadios, "MT/AMT sampling", "MTSR", IntPT, Offset(0), {}, kSamplings},
    {acq::kStart, Widget::kTime, "Data record start time", "STIM", AmxPT, {}, kTimeLimits},
    {acq::kEnd, Widget::kTime, "Data record end time", "ETIM", AmxPT, {}, kTimeLimits},
    {acq::kHighStart, Widget::kTime, "High freq. start time", "HTIM", AmxPT, {}, kTimeLimits},
    {acq::kHighEnd, Widget::kTime, "High freq. end time", "ETMH", AmxPT, {}, kTimeLimits},
    {acq::kBand2, Widget::kInteger, "Band 2 records per slot", "L2NS", IntPT, {}, {0, 4}},
    {acq::kBand3, Widget::kInteger, "Band 3 records per slot", "L3NS", IntPT, {}, {0, 2}},
    {acq::kBand4, Widget::kInteger, "Band 4 records per slot", "L4NS", IntPT, {}, {0, 16}},
    {acq::kSlotLength, Widget::kInteger, "Time slot length (s)", "HSMP", IntPT, {}, {1, 3600}},
    {acq::kChannels, Widget::kInteger, "Channels", {}, IntPT, Unbound(), {1, 20}},
    {acq::kSpace, Widget::kShown, "Required space (Mb)", {}, FltPT, Unbound()},
    {acq::kZoneKind, Widget::kRadios, "Times shown in", "TMZONE", IntPT, Flag(), {}, kZoneKinds},
    {acq::kZone, Widget::kCombo, "Time zone", "TMDIFF", IntPT, Offset(kFirstZone), {}, kZones},
    {acq::kHxSerial, Widget::kText, "Hx serial number", "HXSN", StrPT, {}, kSerialLimits},
    {acq::kHySerial, Widget::kText, "Hy serial number", "HYSN", StrPT, {}, kSerialLimits},
    {acq::kHzSerial, Widget::kText, "Hz serial number", "HZSN", StrPT, {}, kSerialLimits},
    {acq::kFileClose,
     Widget::kCombo,
     "File close time",
     "FLEN",
     IntPT,
     Map(kFileCloseHours, Unlisted::kFirst),
     {},
     kFileCloseTimes},
    {acq::kPowerUpWindow, Widget::kCheck, "Enter K3 acquisition window on power up", "DFTTECH",
     IntPT, Flag()},
});

}  // namespace

std::span<const Field> AcqFields() { return kFields; }

}  // namespace orvane
